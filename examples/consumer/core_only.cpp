// kelcore_consumer_core: an application that calls KelCore functions only
// (no model-library class of its own). Prints the library version and
// exits 0 when the library initialised itself.
#include <Kel_Application.h>
#include <Kel_Initialize.h>
#include <Kel_Version.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Kel_Application app(argc, argv);
    std::printf("KelCore %s, initialised: %s\n", Kel_Version(), Kel_IsInitialized() ? "yes" : "no");
    return Kel_IsInitialized() ? 0 : 1;
}
