#include "Mv_ListenerBase.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"
#include "Mv_ModelBase.h"
#include "Mvt_Action_Notifications.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_Array_API.h"
#include "Mvt_Root_Notifications.h"
#include "Mvt_SimpleValue_API.h"
#include "Mvt_SimpleValue_Notifications.h"
#include "Ost_Assert.h"

#include <algorithm>

namespace {

const int kMaxIndexNesting = 8;

// Position of the "[" that matches the final "]" of name, or -1.
int openingBracketOfIndex(const QString& name)
{
    if (name.isEmpty() || name.at(name.size() - 1) != QLatin1Char(']'))
        return -1;
    int depth = 0;
    for (int i = name.size() - 1; i >= 0; --i) {
        const QChar c = name.at(i);
        if (c == QLatin1Char(']'))
            ++depth;
        else if (c == QLatin1Char('[') && --depth == 0)
            return i;
    }
    return -1;
}

// Whether name resolves to itself in every environment.
bool isLiteralName(const QString& name)
{
    if (name.isEmpty() || name.at(0).isSpace() || name.at(name.size() - 1).isSpace())
        return false;
    const QChar* begin = name.constData();
    const QChar* end = begin + name.size();
    return std::find(begin, end, QChar(QLatin1Char('$'))) == end;
}

} // namespace

Mv_ListenerBase::Mv_ListenerBase(const QString& connectionName, Mv_ConnectionEnvironment::ConstPtr environment)
    : mConnectionName(connectionName), mLiteralName(isLiteralName(connectionName))
{
    if (!connectionName.isEmpty())
        connect(environment);
}

Mv_ListenerBase::~Mv_ListenerBase()
{
    detach();
}

void Mv_ListenerBase::SetConnectionName(const QString& name)
{
    mConnectionName = name;
    mLiteralName = isLiteralName(name);
}

bool Mv_ListenerBase::connect(const Mv_ConnectionEnvironment::ConstPtr& environment)
{
    mConnecting = true;
    detach();
    const Mv_ConnectionEnvironment* env = environment ? environment.get() : Mv_ConnectionEnvironment::blankEnvironment().get();
    if (mLiteralName) {
        mResolvedName = mConnectionName;
    } else {
        mResolvedName = env->replaceVariableNames(mConnectionName);
        // Names rarely carry blanks; trimming only those saves a scan on every connect.
        // (at(), not front(): a non-const front() would detach the shared text.)
        const int last = mResolvedName.size() - 1;
        if (last >= 0 && (mResolvedName.at(0).isSpace() || mResolvedName.at(last).isSpace()))
            mResolvedName = mResolvedName.trimmed();
    }
    if (!mResolvedName.isEmpty())
        attachTo(mResolvedName, env->getDictionary(), 0);
    mConnecting = false;
    mConnected = computeConnected();
    mSeenStamp = mConnected ? attachmentStamp() : 0;
    const bool connected = mConnected;
    deliver(Mvt_Root_Notifications::MsgConnectedChanged(connected)); // may destroy this
    return connected;
}

void Mv_ListenerBase::ClearConnection()
{
    const bool wasConnected = mConnected;
    detach();
    mConnectionName.clear();
    mLiteralName = false;
    mResolvedName.clear();
    mConnected = false;
    mSeenStamp = 0;
    if (wasConnected)
        deliver(Mvt_Root_Notifications::MsgConnectedChanged(false));
}

Mv_ModelBase* Mv_ListenerBase::model() const
{
    return mEntryP ? mEntryP->model : nullptr;
}

Mv_ModelBase* Mv_ListenerBase::directModel() const
{
    // The conditions under which SendMessageToModel hands the message on unchanged.
    return mConnected && mIndexMode == kNoIndex && mEntryP ? mEntryP->model : nullptr;
}

void Mv_ListenerBase::attachTo(const QString& name, Mv_ConnectionDict* dict, int depth)
{
    const QString* entryName = &name;
    QString arrayName;
    mIndexMode = kNoIndex;
    const int open = depth < kMaxIndexNesting ? openingBracketOfIndex(name) : -1;
    if (open > 0) {
        const QString index = name.mid(open + 1, name.size() - open - 2).trimmed();
        if (!index.isEmpty()) {
            arrayName = name.left(open);
            entryName = &arrayName;
            bool isNumber = false;
            const long fixed = index.toLong(&isNumber, 10);
            if (isNumber) {
                mIndexMode = kFixedIndex;
                mFixedIndex = fixed;
            } else {
                mIndexMode = kModelIndex;
                mIndexListenerP.reset(new Mv_ListenerBase());
                mIndexListenerP->mElementListenerP = this;
                mIndexListenerP->mResolvedName = index;
                mIndexListenerP->attachTo(index, dict, depth + 1);
            }
        }
    }
    // A dictionary being destroyed takes no new listeners.
    if (Mv_DictEntry* entry = dict->acquire(*entryName))
        Mv_ConnectionDict::link(entry, this);
    if (mElementListenerP) {
        mConnected = computeConnected();
        mSeenStamp = mConnected ? attachmentStamp() : 0;
    }
}

void Mv_ListenerBase::detach()
{
    if (mIndexListenerP) {
        mIndexListenerP->detach();
        mIndexListenerP.reset();
    }
    mIndexMode = kNoIndex;
    Mv_ConnectionDict::unlink(this);
}

bool Mv_ListenerBase::computeConnected() const
{
    if (!mEntryP || !mEntryP->model)
        return false;
    // What the index listener was told, not whether its model is there now:
    // the index is read through that listener, so the element must not
    // count as connected before it does.
    if (mIndexMode == kModelIndex)
        return mIndexListenerP && mIndexListenerP->mConnected;
    return true;
}

// Generations come from one process-wide counter, so the largest of the
// array's and the index chain's changes whenever either model is replaced.
quint64 Mv_ListenerBase::attachmentStamp() const
{
    quint64 stamp = mEntryP ? mEntryP->generation : 0;
    if (mIndexMode == kModelIndex && mIndexListenerP)
        stamp = std::max(stamp, mIndexListenerP->mSeenStamp);
    return stamp;
}

void Mv_ListenerBase::refreshConnected()
{
    if (mConnecting)
        return;
    const bool now = computeConnected();
    const quint64 stamp = now ? attachmentStamp() : 0;
    if (now == mConnected && stamp == mSeenStamp)
        return;
    mConnected = now;
    mSeenStamp = stamp;
    deliver(Mvt_Root_Notifications::MsgConnectedChanged(now));
}

void Mv_ListenerBase::modelAttachmentChanged()
{
    refreshConnected();
}

bool Mv_ListenerBase::currentIndex(long* index) const
{
    switch (mIndexMode) {
    case kFixedIndex:
        *index = mFixedIndex;
        return true;
    case kModelIndex: {
        long value = -1;
        if (!mIndexListenerP || !mIndexListenerP->SendMessageToModel(Mvt_SimpleValue_API<long>::MsgGet(&value), false))
            return false;
        *index = value;
        return true;
    }
    case kNoIndex:
        break;
    }
    return false;
}

void Mv_ListenerBase::receiveFromModel(const Mv_MessageInterface& message)
{
    if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        refreshConnected();
        return;
    }
    if (!mConnected)
        return;
    if (mIndexMode == kNoIndex) {
        deliver(message);
        return;
    }
    long index = 0;
    if (!currentIndex(&index))
        return;
    bool concerned = false;
    if (const auto* changed = message.as<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>()) {
        concerned = changed->index() == index;
    } else if (const auto* replaced = message.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
        concerned = index >= replaced->first();
    } else if (const auto* moved = message.as<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()) {
        concerned = index >= std::min(moved->from(), moved->to()) && index <= std::max(moved->from(), moved->to());
    } else if (message.is<Mvt_SimpleValue_Notifications::MsgValueChanged>()
               || message.is<Mvt_Action_Notifications::MsgEnabledChanged>()) {
        deliver(message);
        return;
    }
    if (concerned)
        deliver(Mvt_SimpleValue_Notifications::MsgValueChanged());
}

void Mv_ListenerBase::deliver(const Mv_MessageInterface& message)
{
    if (mElementListenerP) {
        // An index listener: its index model changing moves the element.
        Mv_ListenerBase* element = mElementListenerP;
        Mv_ConnectionDict::rechain(element);
        if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            element->refreshConnected();
        else if (message.is<Mvt_SimpleValue_Notifications::MsgValueChanged>() && element->mConnected)
            element->deliver(Mvt_SimpleValue_Notifications::MsgValueChanged());
        return;
    }
    if (!mReceiveCB.empty())
        mReceiveCB(message);
}

bool Mv_ListenerBase::SendMessageToModel(const Mv_MessageInterface& message, bool mayModify) const
{
    if (!mayModify && message.isModifying()) {
        Ost_Assert::handleFailedAssert("mayModify || !message.isModifying()", __FILE__, __LINE__);
        return false;
    }
    if (!mConnected || !mEntryP || !mEntryP->model)
        return false;
    Mv_ModelBase* target = mEntryP->model;
    if (mIndexMode == kNoIndex)
        return target->ReceiveMessage(message);
    long index = 0;
    if (!currentIndex(&index))
        return false;
    return target->ReceiveMessage(Mvt_Array_API::MsgElement(index, message));
}
