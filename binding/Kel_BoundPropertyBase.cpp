#include "Kel_BoundPropertyBase.h"

#include "Mv_ListenerBase.h"

#include <QObject>
#include <QPointer>

#include <new>

namespace {

// The live properties, oldest first. Widgets and views live on the GUI
// thread, and so does this list.
Kel_BoundPropertyBase* gFirst = nullptr;
Kel_BoundPropertyBase* gLast = nullptr;

} // namespace

Kel_BoundPropertyBase::Kel_BoundPropertyBase(Mv_ListenerBase* listener, QObject* owner, ConnectPolicy policy)
    : mPolicy(policy), mOwnerIsView(false), mListenerP(listener)
{
    mOwner.object = owner;
    link();
}

Kel_BoundPropertyBase::Kel_BoundPropertyBase(Mv_ListenerBase* listener, const Kel_ViewInterface* view,
                                             ConnectPolicy policy)
    : mPolicy(policy), mOwnerIsView(true), mListenerP(listener)
{
    mOwner.view = view;
    link();
}

void Kel_BoundPropertyBase::link()
{
    mPrevP = gLast;
    (gLast ? gLast->mNextP : gFirst) = this;
    gLast = this;
}

Kel_BoundPropertyBase::~Kel_BoundPropertyBase()
{
    // The derived property has silenced its listener already (release()),
    // and the listener is gone: only the handler is left to destroy.
    destroyHandler();
    (mPrevP ? mPrevP->mNextP : gFirst) = mNextP;
    (mNextP ? mNextP->mPrevP : gLast) = mPrevP;
}

void Kel_BoundPropertyBase::release()
{
    // The owner is partly destroyed already: leaving the model must not call back into it.
    mListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
}

void Kel_BoundPropertyBase::rename(const QString& spec)
{
    mSpec = spec;
    mListenerP->ClearConnection();
    mListenerP->SetConnectionName(spec);
}

void Kel_BoundPropertyBase::clearHandler()
{
    mListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    destroyHandler();
}

void Kel_BoundPropertyBase::destroyHandler()
{
    switch (mHandlerKind) {
    case kNotifyHandler:
        mHandler.notify.~function();
        break;
    case kMessageHandler:
        mHandler.message.~function();
        break;
    case kNoHandler:
        break;
    }
    mHandlerKind = kNoHandler;
}

// The listener's callback captures only this property, so that it fits in
// the callback without an allocation; the handler itself is kept here.
void Kel_BoundPropertyBase::onNotify(const std::function<void()>& handler)
{
    // Copied first: handler may be the one being replaced.
    std::function<void()> copy(handler);
    clearHandler();
    if (!copy)
        return;
    new (&mHandler.notify) std::function<void()>(std::move(copy));
    mHandlerKind = kNotifyHandler;
    mListenerP->setReceiveMessageCB([this](const Mv_MessageInterface&) { mHandler.notify(); });
}

void Kel_BoundPropertyBase::onMessage(const MessageHandler& handler)
{
    MessageHandler copy(handler);
    clearHandler();
    if (!copy)
        return;
    new (&mHandler.message) MessageHandler(std::move(copy));
    mHandlerKind = kMessageHandler;
    mListenerP->setReceiveMessageCB([this](const Mv_MessageInterface& message) { mHandler.message(message); });
}

bool Kel_BoundPropertyBase::connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    // Only locals after the listener calls: a notification may delete the
    // owner and this property with it.
    const bool guarded = owner() != nullptr;
    const QPointer<QObject> owner(this->owner());
    if (mSpec.isEmpty() && mPolicy == kConnectWhenNamed) {
        // No longer bound: leave a model named at an earlier connection.
        if (!mListenerP->GetConnectionName().isEmpty())
            mListenerP->ClearConnection();
    } else {
        mListenerP->SetConnectionName(mSpec);
        mListenerP->connect(environment ? environment : Mv_ConnectionEnvironment::blankEnvironment());
    }
    return !guarded || owner;
}

bool Kel_BoundPropertyBase::connectAll(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                       std::initializer_list<Kel_BoundPropertyBase*> properties)
{
    for (Kel_BoundPropertyBase* property : properties) {
        if (!property->connect(environment))
            return false;
    }
    return true;
}

QList<const Kel_BoundPropertyBase*> Kel_BoundPropertyBase::propertiesOf(const QObject* owner)
{
    QList<const Kel_BoundPropertyBase*> found;
    for (const Kel_BoundPropertyBase* p = gFirst; p && owner; p = p->mNextP) {
        if (!p->mOwnerIsView && p->mOwner.object == owner)
            found.append(p);
    }
    return found;
}

QList<const Kel_BoundPropertyBase*> Kel_BoundPropertyBase::propertiesOf(const Kel_ViewInterface* view)
{
    QList<const Kel_BoundPropertyBase*> found;
    for (const Kel_BoundPropertyBase* p = gFirst; p && view; p = p->mNextP) {
        if (p->mOwnerIsView && p->mOwner.view == view)
            found.append(p);
    }
    return found;
}
