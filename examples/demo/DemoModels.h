#ifndef DEMOMODELS_H
#define DEMOMODELS_H

#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QString>

// The models that the demo application publishes, as a real application
// would publish its own: a transport, a mixer, the last key and a clip list.
class DemoModels
{
public:
    DemoModels();
    DemoModels(const DemoModels&) = delete;
    DemoModels& operator=(const DemoModels&) = delete;

    static DemoModels& instance();

    // "Transport.*"
    Mve_SimpleValue<bool> playing{false, "Transport.Playing"};
    Mve_SimpleValue<double> speed{1.0, "Transport.Speed"};
    Mve_SimpleValue<QString> state{"stopped", "Transport.State"};
    Mve_Action<void()> play;
    Mve_Action<void()> stop;
    // "Mixer.*"
    Mve_SimpleValue<long> volume{60, "Mixer.Volume"};
    Mve_SimpleValue<bool> muted{false, "Mixer.Muted"};
    Mve_SimpleValue<bool> locked{true, "Mixer.Locked"}; // read-only: sets are refused
    Mve_Action<void(long)> nudgeVolume;
    // "Keymaps.*": the last key the window offered to the keymap, and whether the keymap used it
    Mve_SimpleValue<QString> lastKey{"", "Keymaps.LastKey"};
    Mve_SimpleValue<bool> lastKeyUsed{false, "Keymaps.LastKeyUsed"};
    // "Clips" with the fields name, duration (seconds) and selected
    Mve_RecordArray clips{"Clips"};

    void addClip(const QString& name, long seconds);
};

#endif
