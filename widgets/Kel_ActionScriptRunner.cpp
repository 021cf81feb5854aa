#include "Kel_ActionScriptRunner.h"

#include "Mv_ListenerBase.h"
#include "Mv_Variant.h"
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"
#include "Uip_Assign_ParseNode.h"
#include "Uip_FunctionCall_ParseNode.h"
#include "Uip_Identifier_ParseNode.h"
#include "Uip_ParseScript.h"
#include "Uip_StatementBlock_ParseNode.h"

namespace {

const int kRepeatTaskPriority = 5;

// Calls visit with the listener of every identifier of the tree.
template <class Visit>
void forEachIdentifierListener(Uip_ParseNode* node, const Visit& visit)
{
    if (!node)
        return;
    if (auto* identifier = dynamic_cast<Uip_Identifier_ParseNode*>(node)) {
        visit(*identifier->listener());
    } else if (auto* call = dynamic_cast<Uip_FunctionCall_ParseNode*>(node)) {
        forEachIdentifierListener(call->callee(), visit);
        forEachIdentifierListener(call->argument(), visit);
    } else if (auto* assign = dynamic_cast<Uip_Assign_ParseNode*>(node)) {
        forEachIdentifierListener(assign->left(), visit);
        forEachIdentifierListener(assign->right(), visit);
    } else if (auto* block = dynamic_cast<Uip_StatementBlock_ParseNode*>(node)) {
        for (int i = 0; i < block->count(); ++i)
            forEachIdentifierListener(block->statement(i), visit);
    }
}

} // namespace

Kel_ActionScriptRunner::Kel_ActionScriptRunner(QWidget* owner, const char* repeatTaskName)
    : mOwnerP(owner), mRepeatTaskName(repeatTaskName), mTreeConnected(false), mLastReady(true), mAutoRepeat(false),
      mRepeatDelay(1000), mRepeatInterval(500), mRepeatState(kRepeatIdle)
{
}

Kel_ActionScriptRunner::~Kel_ActionScriptRunner()
{
    mRepeatTaskP.reset();
    // A script still running keeps its tree: its models must not call back here.
    listenToScriptModels(false);
}

void Kel_ActionScriptRunner::setScript(const QByteArray& script)
{
    if (script == mScript)
        return;
    listenToScriptModels(false);
    mScript = script;
    mTreeP.reset();
    mTreeConnected = false;
    if (!script.isEmpty())
        mTreeP.reset(Uip_ParseScript(QString::fromLatin1(script), nullptr));
    listenToScriptModels(true);
}

bool Kel_ActionScriptRunner::connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!mTreeP)
        return true;
    const QPointer<QWidget> owner(mOwnerP);
    // Kept whatever the outcome: a missing model may be published later.
    const std::shared_ptr<Uip_ParseNode> tree = mTreeP;
    tree->ConnectAndTypeCheck(environment, mOwnerP);
    if (!owner)
        return false;
    if (mTreeP == tree)
        mTreeConnected = true;
    return true;
}

bool Kel_ActionScriptRunner::isReady()
{
    mLastReady = !mTreeP || !mTreeConnected || mTreeP->isConnected();
    return mLastReady;
}

bool Kel_ActionScriptRunner::run()
{
    if (!mTreeP)
        return true;
    const QPointer<QWidget> owner(mOwnerP);
    // Keeps the tree alive even if the script's models delete the owner.
    const std::shared_ptr<Uip_ParseNode> tree = mTreeP;
    Mv_Variant result;
    tree->Evaluate(&result);
    return !owner.isNull();
}

void Kel_ActionScriptRunner::setAutoRepeat(bool on)
{
    mAutoRepeat = on;
    if (!on)
        stopRepeat();
}

void Kel_ActionScriptRunner::setRepeatInterval(int ms)
{
    mRepeatInterval = ms;
    if (mRepeatTaskP)
        mRepeatTaskP->setTimer(ms);
}

void Kel_ActionScriptRunner::startRepeat()
{
    if (!mAutoRepeat || mRepeatTaskP)
        return;
    mRepeatTaskP.reset(new TaskSchedulerTask(QString::fromLatin1(mRepeatTaskName), kRepeatTaskPriority,
                                             [this] { repeat(); }, false, mRepeatDelay, true));
    mRepeatState = kWaitingForFirstRepeat;
    TaskScheduler::instance()->addTask(mRepeatTaskP.get(), false);
}

void Kel_ActionScriptRunner::stopRepeat()
{
    mRepeatTaskP.reset();
    mRepeatState = kRepeatIdle;
}

void Kel_ActionScriptRunner::repeat()
{
    if (mRepeatState == kRepeatIdle)
        return;
    // The script may release, disable or delete the button.
    if (!run() || !mRepeatTaskP || mRepeatState != kWaitingForFirstRepeat)
        return;
    mRepeatState = kRepeating;
    mRepeatTaskP->setTimer(mRepeatInterval);
}

void Kel_ActionScriptRunner::listenToScriptModels(bool on)
{
    forEachIdentifierListener(mTreeP.get(), [this, on](Mv_ListenerBase& listener) {
        if (on)
            listener.setReceiveMessageCB([this](const Mv_MessageInterface&) { scriptModelsChanged(); });
        else
            listener.setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    });
}

void Kel_ActionScriptRunner::scriptModelsChanged()
{
    const bool before = mLastReady;
    if (isReady() != before && mReadinessHandler)
        mReadinessHandler();
}
