// "Form": the demo's main page is a form file, Forms/DemoMain.ui, built by
// the widget factory and connected with one Kel_ConnectionUtils::recursiveConnect.
// Its action buttons carry scripts that change the demo models.
#include "DemoModels.h"
#include "DemoPanel.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_ImmediateActionButton.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace {

// Models that only the form uses, published beside the demo models.
class FormPanelModels
{
public:
    FormPanelModels()
    {
        // Form.RewindEnabled follows the enabled state of the Form.Rewind
        // action: a listener to the action re-reads it on every notification
        // (enabled changed, connected changed) and stores it in the bool
        // model that the Rewind button names as its enabled state.
        mRewindWatcher.setReceiveMessageCB(
            [this](const Mv_MessageInterface&) { rewindEnabled.setValue(mRewindWatcher.isEnabled()); });
        rewind.setEnabled(false); // nothing to rewind in the demo
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&volumeStep, &volumeStepDown, &defaultVolume,
                                                                     &transportReady, &rewindEnabled, &rewind})
            m->Publish();
        mRewindWatcher.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }
    static FormPanelModels& instance()
    {
        static FormPanelModels models;
        return models;
    }

    Mve_SimpleValue<long> volumeStep{5, "Form.VolumeStep"};
    Mve_SimpleValue<long> volumeStepDown{-5, "Form.VolumeStepDown"};
    Mve_SimpleValue<long> defaultVolume{60, "Form.DefaultVolume"};
    Mve_SimpleValue<bool> transportReady{true, "Form.TransportReady"};
    Mve_SimpleValue<bool> rewindEnabled{false, "Form.RewindEnabled"};
    Mve_Action<void()> rewind{[] {}, "Form.Rewind"};

private:
    Mvt_Action<void()>::Listener mRewindWatcher{"Form.Rewind", Mv_ConnectionEnvironment::blankEnvironment()};
};

QWidget* createFormPanel(QWidget* parent)
{
    DemoModels::instance();
    FormPanelModels::instance();

    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    QWidget* form = Kel_CreateWidgetFromUILayout(QStringLiteral("DemoMain"), page, "demoMain", true);
    if (!form) {
        layout->addWidget(new QLabel(QStringLiteral("Forms/DemoMain.ui was not found under the resource path."), page));
        return page;
    }
    // "$Bus" stands for the mixer, as a form reused per channel would see it.
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Bus"), QStringLiteral("Mixer"));
    Kel_ConnectionUtils::recursiveConnect(form, env);
    return page;
}

// Presses the immediate Play button the way a mouse would: the transport
// starts on the press, before the release.
void pressPlay(QWidget* page)
{
    auto* play = page->findChild<Kel_ImmediateActionButton*>(QStringLiteral("playImmediate"));
    if (!play)
        return;
    const QPoint centre = play->rect().center();
    QMouseEvent press(QEvent::MouseButtonPress, centre, play->mapToGlobal(centre), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(play, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, centre, play->mapToGlobal(centre), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(play, &release);
}

const DemoPanelRegistrar registrar({QStringLiteral("Form"), 50, &createFormPanel, &pressPlay});

} // namespace
