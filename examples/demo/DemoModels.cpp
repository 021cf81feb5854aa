#include "DemoModels.h"

DemoModels::DemoModels()
{
    play.SetConnectionName("Transport.Play");
    play.setFunction([this] {
        playing.setValue(true);
        state.setValue("playing");
    });
    stop.SetConnectionName("Transport.Stop");
    stop.setFunction([this] {
        playing.setValue(false);
        state.setValue("stopped");
    });
    nudgeVolume.SetConnectionName("Mixer.NudgeVolume");
    nudgeVolume.setFunction([this](long delta) { volume.setValue(qBound(0L, volume.getValue() + delta, 100L)); });
    volume.setValidator([](const long& v) { return v >= 0 && v <= 100; });
    locked.setReadOnly(true);

    clips.addField<QString>("name");
    clips.addField<long>("duration");
    clips.addField<bool>("selected", false);
    addClip("Opening titles", 12);
    addClip("Interview A", 184);
    addClip("B-roll harbour", 47);
    addClip("Closing credits", 30);

    for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&playing, &speed, &state, &play, &stop, &volume,
                                                                 &muted, &locked, &nudgeVolume, &clips,
                                                                 &lastKey, &lastKeyUsed})
        m->Publish();
}

DemoModels& DemoModels::instance()
{
    static DemoModels models;
    return models;
}

void DemoModels::addClip(const QString& name, long seconds)
{
    const long row = clips.appendRow();
    clips.setValue<QString>(row, "name", name);
    clips.setValue<long>(row, "duration", seconds);
}
