// What the diagnostics tell a developer whose binding does nothing: which
// listeners wait, for which name, and what they probably meant.
#include "ModelTestSupport.h"

#include "Mv_Diagnostics.h"
#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

namespace {

class Diagnostics : public DictTest
{
protected:
    Mv_Diagnostics::ListenerInfo find(const QString& specification) const
    {
        for (const auto& info : Mv_Diagnostics::listeners(&dict)) {
            if (info.specification == specification)
                return info;
        }
        return {};
    }
};

TEST_F(Diagnostics, AMisspeltNameIsListedUnconnectedWithWhatItProbablyMeant)
{
    Mve_SimpleValue<bool> muted(false, "Mixer.Track1.muted");
    Mve_SimpleValue<double> volume(0.5, "Mixer.Track1.volume");
    Mve_SimpleValue<bool> solo(false, "Mixer.Track1.solo");
    for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&muted, &volume, &solo})
        m->Publish(&dict);
    auto trackEnv = env();
    trackEnv->set("Track", "Mixer.Track1");
    Mvt_SimpleValue<bool>::Listener good("$Track.muted", trackEnv);
    Mvt_SimpleValue<bool>::Listener swapped("$Track.mtued", trackEnv);   // two letters swapped
    Mvt_SimpleValue<bool>::Listener wrongCase("mixer.track1.SOLO", env()); // case slip
    Mvt_SimpleValue<bool>::Listener unrelated("Transport.playing", env());

    const auto listed = Mv_Diagnostics::listeners(&dict);
    ASSERT_EQ(listed.size(), 4);
    const auto goodInfo = find("$Track.muted");
    EXPECT_TRUE(goodInfo.connected);
    EXPECT_EQ(goodInfo.resolvedName, "Mixer.Track1.muted");
    EXPECT_TRUE(goodInfo.missingName.isEmpty());

    const auto swappedInfo = find("$Track.mtued");
    EXPECT_FALSE(swappedInfo.connected);
    EXPECT_EQ(swappedInfo.missingName, "Mixer.Track1.mtued");
    EXPECT_EQ(Mv_Diagnostics::suggestions(swappedInfo.missingName, &dict).value(0), "Mixer.Track1.muted");
    EXPECT_EQ(Mv_Diagnostics::suggestions("mixer.track1.SOLO", &dict), QStringList{"Mixer.Track1.solo"});
    EXPECT_TRUE(Mv_Diagnostics::suggestions("Transport.playing", &dict).isEmpty());
    EXPECT_EQ(Mv_Diagnostics::waitingNames(&dict),
              (QStringList{"Mixer.Track1.mtued", "Transport.playing", "mixer.track1.SOLO"}));

    // Publishing the intended name settles it.
    Mve_SimpleValue<bool> playing(false, "Transport.playing");
    playing.Publish(&dict);
    EXPECT_TRUE(find("Transport.playing").connected);
    EXPECT_FALSE(Mv_Diagnostics::waitingNames(&dict).contains("Transport.playing"));
}

TEST_F(Diagnostics, AnElementAddressNamesWhicheverOfArrayAndIndexIsMissing)
{
    Mve_RecordArray clips("Clips");
    clips.addField<QString>("name");
    clips.appendRow();
    clips.Publish(&dict);
    auto rowEnv = env();
    rowEnv->set("Row", "Bin.Row");
    Mvt_SimpleValue<QString>::Listener cell("Clips.name[$Row]", rowEnv);
    Mvt_SimpleValue<QString>::Listener typo("Clips.nmae[$Row]", rowEnv);

    // The arrays are there, the row index is not.
    EXPECT_EQ(find("Clips.name[$Row]").missingName, "Bin.Row");
    EXPECT_EQ(find("Clips.nmae[$Row]").missingName, "Clips.nmae");
    EXPECT_EQ(Mv_Diagnostics::suggestions("Clips.nmae[Bin.Row]", &dict), QStringList{"Clips.name[Bin.Row]"});
    // Index followers are part of their element listener, not listed apart.
    EXPECT_EQ(Mv_Diagnostics::listeners(&dict).size(), 2);

    Mve_Index<long> row(0, "Bin.Row");
    row.Publish(&dict);
    EXPECT_TRUE(find("Clips.name[$Row]").connected);
    EXPECT_TRUE(find("Clips.name[$Row]").missingName.isEmpty());
    EXPECT_EQ(find("Clips.nmae[$Row]").missingName, "Clips.nmae");
}

TEST_F(Diagnostics, ModelsShowTheirKindAndSimpleValuesCanBeReadAndWrittenAsText)
{
    Mve_SimpleValue<long> gain(-6, "Mixer.gain");
    Mve_SimpleValue<bool> locked(true, "Mixer.locked");
    locked.setReadOnly(true);
    Mve_Array<long> widths(std::vector<long>{1, 2}, "Widths");
    for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&gain, &locked, &widths})
        m->Publish(&dict);
    Mvt_SimpleValue<long>::Listener a("Mixer.gain", env()), b("Mixer.gain", env());
    long heard = 0;
    a.setReceiveMessageCB([&](const Mv_MessageInterface&) { heard = a.value(); });

    const auto models = Mv_Diagnostics::models(&dict);
    ASSERT_EQ(models.size(), 3);
    EXPECT_EQ(models[0].name, "Mixer.gain");
    EXPECT_TRUE(models[0].kind.startsWith("Mve_SimpleValue<long")) << models[0].kind.toStdString();
    EXPECT_TRUE(models[0].hasValue);
    EXPECT_EQ(models[0].value, "-6");
    EXPECT_EQ(models[0].listenerCount, 2);
    EXPECT_EQ(models[2].name, "Widths");
    EXPECT_FALSE(models[2].hasValue);

    EXPECT_EQ(Mv_Diagnostics::setValueText(gain, " 3 "), int(Mvt_SimpleValue_BaseAPI::kSetChanged));
    EXPECT_EQ(heard, 3); // listeners hear an edit made through the diagnostics
    EXPECT_EQ(Mv_Diagnostics::setValueText(gain, "loud"), int(Mvt_SimpleValue_BaseAPI::kSetRefused));
    EXPECT_EQ(Mv_Diagnostics::setValueText(locked, "false"), int(Mvt_SimpleValue_BaseAPI::kSetRefused));
    EXPECT_EQ(Mv_Diagnostics::setValueText(widths, "1"), int(Mvt_SimpleValue_BaseAPI::kSetRefused));
    EXPECT_EQ(gain.getValue(), 3);
}

TEST_F(Diagnostics, TheReportLogsEachUnconnectedNameOnce)
{
    Mve_SimpleValue<bool> playing(false, "Deck.playing");
    playing.Publish(&dict);
    Mvt_SimpleValue<bool>::Listener first("Deck.plaing", env()), second("Deck.plaing", env());
    Mvt_SimpleValue<bool>::Listener other("Deck.reverse", env());
    QStringList logged;
    {
        DebugMessageCollector capture;
        EXPECT_EQ(Mv_Diagnostics::reportUnconnected(&dict), 2);
        EXPECT_EQ(Mv_Diagnostics::reportUnconnected(&dict), 0); // once per name and process
        logged = capture.messages();
    }
    ASSERT_EQ(logged.size(), 2);
    EXPECT_TRUE(logged.filter("\"Deck.plaing\"").value(0).contains("did you mean \"Deck.playing\"")) << logged.join('\n').toStdString();
    EXPECT_FALSE(logged.filter("\"Deck.reverse\"").value(0).contains("did you mean"));
}

} // namespace
