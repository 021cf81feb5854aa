#include "Kel_BoundPropertyBase.h"

#include "Mv_ListenerBase.h"

#include <QObject>
#include <QPointer>

Kel_BoundPropertyBase::Kel_BoundPropertyBase(Mv_ListenerBase* listener, QObject* owner, ConnectPolicy policy)
    : mListenerP(listener), mOwnerP(owner), mPolicy(policy)
{
}

Kel_BoundPropertyBase::~Kel_BoundPropertyBase()
{
    // The owner is partly destroyed already: leaving the model must not call back into it.
    mListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mListenerP.reset();
}

void Kel_BoundPropertyBase::rename(const QString& spec)
{
    mSpec = spec;
    mListenerP->ClearConnection();
    mListenerP->SetConnectionName(spec);
}

void Kel_BoundPropertyBase::onNotify(const std::function<void()>& handler)
{
    if (!handler) {
        mListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
        return;
    }
    mListenerP->setReceiveMessageCB([handler](const Mv_MessageInterface&) { handler(); });
}

void Kel_BoundPropertyBase::onMessage(const MessageHandler& handler)
{
    if (!handler) {
        mListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
        return;
    }
    mListenerP->setReceiveMessageCB(handler);
}

bool Kel_BoundPropertyBase::connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    // Only locals after the listener calls: a notification may delete the
    // owner and this property with it.
    const bool guarded = mOwnerP != nullptr;
    const QPointer<QObject> owner(mOwnerP);
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

bool Kel_BoundPropertyBase::isConnected() const
{
    return mListenerP->isConnectedToModel();
}
