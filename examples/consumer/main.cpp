// kelcore_consumer: publishes a model, binds a check box to it and checks
// that the box shows the model's value, then that a click reaches the model;
// then that the menu compiled in from ConsumerMenu.xml is found by its name.
// Exits 0 when all hold.
#include <Kel_Application.h>
#include <Kel_CheckBox.h>
#include <Kel_ConnectionUtils.h>
#include <Mnu_QtManager.h>
#include <Mve_SimpleValue.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Kel_Application app(argc, argv);

    Mve_SimpleValue<bool> muted(true, "Consumer.Muted");
    muted.Publish();

    Kel_CheckBox box(nullptr, "muted");
    box.setText("Muted");
    box.setCheckedStateConnectionSpec("Consumer.Muted");
    Kel_ConnectionUtils::recursiveConnect(&box, Mv_ConnectionEnvironment::blankEnvironment());

    const bool shown = box.isChecked() && box.isEnabled();
    box.click();
    const bool sent = !muted.getValue() && !box.isChecked();
    std::printf("check box shows the model: %s; click reaches the model: %s\n", shown ? "yes" : "no",
                sent ? "yes" : "no");

#ifdef CONSUMER_COMPILED_MENU
    QByteArray menuName("ConsumerMenu");
    Mnu_QtManager menu(nullptr, menuName.data());
    const bool compiled = Mnu_QtManager::getMenuFactory("ConsumerMenu") && menu.getMenu()
                          && menu.getMenu()->getName() == QLatin1String("Consumer")
                          && menu.getMenu()->getSegmentCount() == 2;
    std::printf("compiled menu found: %s\n", compiled ? "yes" : "no");
#else
    const bool compiled = true;
#endif
    return shown && sent && compiled ? 0 : 1;
}
