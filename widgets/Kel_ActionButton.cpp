#include "Kel_ActionButton.h"

#include "Kel_WhatsThis.h"

#include <QKeyEvent>

Kel_ActionButton::Kel_ActionButton(QWidget* parent, const char* name, QString text, QString actionScript,
                                   QString /*ignoredText*/, bool defaultEnabledState)
    : QPushButton(text, parent), mDefaultEnabledState(defaultEnabledState)
{
    setObjectName(QString::fromLatin1(name));
    SetActionScript(actionScript.toLatin1());

    connect(this, &QPushButton::clicked, this, &Kel_ActionButton::slotClicked);
    connect(this, &QPushButton::pressed, this, &Kel_ActionButton::slotPressed);
    connect(this, &QPushButton::released, this, &Kel_ActionButton::slotReleased);

    // Connected-changed and value-changed alike lead to a re-read, and so
    // does a change of whether the script can run.
    mEnabledState.onNotify([this] { updateEnabledAppearance(); });
    mScript.onReadinessChanged([this] { updateEnabledAppearance(); });
    updateEnabledAppearance();

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ActionButton");
}

Kel_ActionButton::~Kel_ActionButton() = default;

void Kel_ActionButton::SetActionScript(const QByteArray& script)
{
    mScript.setScript(script);
}

void Kel_ActionButton::SetDefaultEnabledState(bool enabled)
{
    if (enabled == mDefaultEnabledState)
        return;
    mDefaultEnabledState = enabled;
    updateEnabledAppearance();
}

void Kel_ActionButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!mScript.connect(environment) || !mEnabledState.connect(environment))
        return; // a notification deleted the form
    updateEnabledAppearance();
}

void Kel_ActionButton::updateEnabledAppearance()
{
    bool enabled = mDefaultEnabledState;
    if (mEnabledState.isConnected())
        mEnabledState->get(enabled);
    setEnabled(enabled && mScript.isReady());
}

void Kel_ActionButton::slotClicked()
{
    if (mScript.run())
        emit afterClickAction();
}

void Kel_ActionButton::slotPressed()
{
    mScript.startRepeat();
}

void Kel_ActionButton::slotReleased()
{
    mScript.stopRepeat();
}

void Kel_ActionButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        slotClicked();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void Kel_ActionButton::hideEvent(QHideEvent* event)
{
    mScript.stopRepeat();
    QPushButton::hideEvent(event);
}
