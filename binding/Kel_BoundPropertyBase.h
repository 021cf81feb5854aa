#ifndef KEL_BOUNDPROPERTYBASE_H
#define KEL_BOUNDPROPERTYBASE_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"
#include "Mv_ListenerBase.h"

#include <QList>
#include <QString>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <initializer_list>
#include <memory>

class Kel_ViewInterface;
class Mv_MessageInterface;
class QObject;

// The untyped part of a bound property: one owned listener, its connection
// specification, where its notifications go, and the guard that notices
// when a notification deleted the owner. See Kel_BoundProperty.
class KELCORE_EXPORT Kel_BoundPropertyBase
{
public:
    enum ConnectPolicy
    {
        // An empty specification leaves the listener unconnected (and the
        // owner at its default); connecting does not notify the owner.
        kConnectWhenNamed,
        // Connected even with an empty specification, so that every
        // connection of the owner ends with a notification and a refresh.
        kConnectAlways
    };
    // Answered by sends whose notification deleted the owner.
    static constexpr int kOwnerDeleted = -1;

    typedef std::function<void(const Mv_MessageInterface&)> MessageHandler;

    virtual ~Kel_BoundPropertyBase();
    Kel_BoundPropertyBase(const Kel_BoundPropertyBase&) = delete;
    Kel_BoundPropertyBase& operator=(const Kel_BoundPropertyBase&) = delete;

    // The specification; a new one takes effect at the next connect.
    void setSpec(const QString& spec) { mSpec = spec; }
    const QString& spec() const { return mSpec; }
    bool isNamed() const { return !mSpec.isEmpty(); }

    // Leaves the current model at once and takes spec for the next connect.
    void rename(const QString& spec);

    // Every notification of the model (value changed, connected or
    // disconnected) calls handler; onMessage hands it the message.
    void onNotify(const std::function<void()>& handler);
    void onMessage(const MessageHandler& handler);

    // Connects the listener in environment (null: the blank one) as the
    // policy says. False when a notification meanwhile deleted the owner:
    // the caller must then return without touching its members.
    bool connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    // Connects properties in order, stopping when the owner goes away (then false).
    static bool connectAll(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                           std::initializer_list<Kel_BoundPropertyBase*> properties);

    bool isConnected() const { return mListenerP->isConnectedToModel(); }
    Mv_ListenerBase& listenerBase() const { return *mListenerP; }

    // The bound properties alive whose owner is the given widget (or view),
    // oldest first: what a model inspector shows for the widget under the
    // cursor. Walks every live property; meant for tools, not for hot paths.
    static QList<const Kel_BoundPropertyBase*> propertiesOf(const QObject* owner);
    static QList<const Kel_BoundPropertyBase*> propertiesOf(const Kel_ViewInterface* view);

protected:
    // listener is the derived property's own member, not built yet: it is
    // only remembered here. owner is the QObject that a notification may
    // delete (null for owners that are not QObjects); view, the light-weight
    // view that owns the property (only named, for tools).
    Kel_BoundPropertyBase(Mv_ListenerBase* listener, QObject* owner, ConnectPolicy policy);
    Kel_BoundPropertyBase(Mv_ListenerBase* listener, const Kel_ViewInterface* view, ConnectPolicy policy);

    QObject* owner() const { return mOwnerIsView ? nullptr : mOwner.object; }
    // Silences the listener; the derived property calls it first thing in
    // its destructor, while the listener is still there.
    void release();

private:
    enum HandlerKind : unsigned char
    {
        kNoHandler,
        kNotifyHandler,
        kMessageHandler
    };

    void link();
    // Silences the listener and destroys the handler in place.
    void clearHandler();
    void destroyHandler();

    // Cold data first: what connecting and the inspector need.
    // Every live property, for propertiesOf(): two pointers and no
    // allocation, so that binding pays nothing for the inspector.
    Kel_BoundPropertyBase* mPrevP = nullptr;
    Kel_BoundPropertyBase* mNextP = nullptr;
    QString mSpec;
    union Owner {
        QObject* object;
        const Kel_ViewInterface* view;
    } mOwner;
    ConnectPolicy mPolicy;
    bool mOwnerIsView;
    HandlerKind mHandlerKind = kNoHandler;

    // Hot data last, next to the listener that the derived property puts
    // right after it: a notification reads the listener's callback, this
    // handler and the listener's links in two or three neighbouring cache
    // lines. The listener is the derived property's own member (no
    // allocation of its own); it calls back through the handler, which is
    // one of the two kinds at a time.
    Mv_ListenerBase* mListenerP;
    union Handler {
        Handler() {}
        ~Handler() {}
        std::function<void()> notify;
        MessageHandler message;
    } mHandler;
};

#endif
