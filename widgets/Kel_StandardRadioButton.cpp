#include "Kel_StandardRadioButton.h"

#include "Kel_WhatsThis.h"

#include <QMouseEvent>

Kel_StandardRadioButton::Kel_StandardRadioButton(QWidget* parent, const char* name)
    : Kel_StandardBistateButton(parent, name)
{
    for (StringProperty* property : {&mRadioState, &mRadioDisabled})
        property->onNotify([this] { handleStateChangeMsgDefault(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_StandardRadioButton");
}

Kel_StandardRadioButton::~Kel_StandardRadioButton() = default;

void Kel_StandardRadioButton::SetStateName(const QString& name)
{
    if (name == mStateName)
        return;
    mStateName = name;
    handleStateChangeMsgDefault();
}

void Kel_StandardRadioButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (connectModelsAndScripts(environment, mRadioState, mRadioDisabled))
        handleStateChangeMsgDefault();
}

void Kel_StandardRadioButton::handleStateChangeMsgDefault()
{
    QString disabled;
    if (mRadioDisabled.isConnected() && mRadioDisabled->get(disabled) && !disabled.isEmpty()) {
        setState(kDisabledState);
    } else if (mRadioState.isConnected()) {
        QString value;
        mRadioState->get(value);
        setState(value == mStateName ? kOnState : kOffState);
    } else {
        setState(kDisabledState);
    }
}

void Kel_StandardRadioButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isPressed()) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    event->accept();
    setPressed(false);
    if (getState() == kOffTrackingState)
        runScript(onScript());
    else if (getState() == kOnTrackingState)
        setState(kOnState); // already chosen: nothing to do
}
