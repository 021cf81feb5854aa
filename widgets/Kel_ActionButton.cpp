#include "Kel_ActionButton.h"

#include "Kel_WhatsThis.h"
#include "Mv_MessageDispatcher.h"
#include "Mv_Variant.h"
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QKeyEvent>
#include <QPointer>

namespace {

const char* const kRepeatTaskName = "ActionButtonAutoRepeatTask";
const int kRepeatTaskPriority = 5;

// Connected-changed and value-changed alike lead to a re-read.
const Mv_MessageDispatcher<Kel_ActionButton>& enabledStateDispatcher()
{
    static const Mv_MessageDispatcher<Kel_ActionButton> dispatcher(&Kel_ActionButton::updateEnabledAppearance);
    return dispatcher;
}

} // namespace

Kel_ActionButton::Kel_ActionButton(QWidget* parent, const char* name, QString text, QString actionScript,
                                   QString /*ignoredText*/, bool defaultEnabledState)
    : QPushButton(text, parent)
    , mQuorAutoRepeat(false)
    , mRepeatDelay(1000)
    , mRepeatInterval(500)
    , mRepeatState(0)
    , mDefaultEnabledState(defaultEnabledState)
{
    setObjectName(QString::fromLatin1(name));
    SetActionScript(actionScript.toLatin1());

    connect(this, &QPushButton::clicked, this, &Kel_ActionButton::slotClicked);
    connect(this, &QPushButton::pressed, this, &Kel_ActionButton::slotPressed);
    connect(this, &QPushButton::released, this, &Kel_ActionButton::slotReleased);

    mEnabledStateListenerP.reset(
        new Mvt_SimpleValue<bool>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()));
    mEnabledStateListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { enabledStateDispatcher().dispatch(this, m); });
    updateEnabledAppearance();

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ActionButton");
}

Kel_ActionButton::~Kel_ActionButton()
{
    mRepeatTaskP.reset();
    // Leave the model before the widget part goes away.
    mEnabledStateListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mEnabledStateListenerP.reset();
}

void Kel_ActionButton::SetActionScript(const QByteArray& script)
{
    const QString text = QString::fromLatin1(script);
    if (text == mActionScript)
        return;
    mActionScript = text;
    mScriptP.reset();
    if (!text.isEmpty())
        mScriptP.reset(Uip_ParseScript(text, nullptr));
}

void Kel_ActionButton::SetQuorAutoRepeat(bool on)
{
    mQuorAutoRepeat = on;
    if (!on)
        stopRepeat();
}

void Kel_ActionButton::SetRepeatDelay(int ms)
{
    mRepeatDelay = ms;
}

void Kel_ActionButton::SetRepeatInterval(int ms)
{
    mRepeatInterval = ms;
    // Applied to a running repeat at once, even while it still waits for its
    // first run.
    if (mRepeatTaskP)
        mRepeatTaskP->setTimer(ms);
}

void Kel_ActionButton::setEnabledStateConnectionSpec(const QByteArray& spec)
{
    mEnabledStateConnection = QString::fromUtf8(spec);
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
    QPointer<Kel_ActionButton> self(this); // a notification may delete the form
    if (mScriptP) {
        const std::shared_ptr<Uip_ParseNode> script = mScriptP;
        const bool connected = script->ConnectAndTypeCheck(environment, this);
        if (!self)
            return;
        if (!connected && mScriptP == script)
            mScriptP.reset(); // inert until it is given a new script
    }
    if (!mEnabledStateConnection.isEmpty()) {
        mEnabledStateListenerP->SetConnectionName(mEnabledStateConnection);
        mEnabledStateListenerP->connect(environment);
    }
}

void Kel_ActionButton::updateEnabledAppearance()
{
    bool enabled = mDefaultEnabledState;
    if (mEnabledStateListenerP->isConnectedToModel())
        mEnabledStateListenerP->get(enabled);
    setEnabled(enabled);
}

void Kel_ActionButton::slotClicked()
{
    QPointer<Kel_ActionButton> self(this);
    runScript();
    if (self)
        emit afterClickAction();
}

void Kel_ActionButton::slotPressed()
{
    if (!mQuorAutoRepeat || mRepeatTaskP)
        return;
    mRepeatTaskP.reset(new TaskSchedulerTask(QString::fromLatin1(kRepeatTaskName), kRepeatTaskPriority,
                                             [this] { repeatHandler(); }, false, mRepeatDelay, true));
    mRepeatState = 1;
    TaskScheduler::instance()->addTask(mRepeatTaskP.get(), false);
}

void Kel_ActionButton::slotReleased()
{
    stopRepeat();
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
    stopRepeat();
    QPushButton::hideEvent(event);
}

void Kel_ActionButton::runScript()
{
    if (!mScriptP)
        return;
    // Keeps the tree alive even if the script's models delete this button.
    const std::shared_ptr<Uip_ParseNode> script = mScriptP;
    Mv_Variant result;
    script->Evaluate(&result);
}

void Kel_ActionButton::repeatHandler()
{
    if (mRepeatState == 0)
        return;
    QPointer<Kel_ActionButton> self(this);
    runScript();
    // The script may have released, disabled or deleted the button.
    if (!self || !mRepeatTaskP || mRepeatState != 1)
        return;
    mRepeatState = 2;
    mRepeatTaskP->setTimer(mRepeatInterval);
}

void Kel_ActionButton::stopRepeat()
{
    mRepeatTaskP.reset();
    mRepeatState = 0;
}
