#ifndef MV_LISTENERBASE_H
#define MV_LISTENERBASE_H

#include "kelplatform_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <boost/function.hpp>
#include <memory>

class Mv_MessageInterface;
class Mv_ModelBase;
struct Mv_DictEntry;

// One connection of an owner (a widget, a view, a script node) to a model.
// The owner gives it a connection specification (SetConnectionName) and
// connects it in an environment; the listener expands the specification's
// "$" variables, finds the model published under the resulting name (now or
// whenever it is published later), forwards the owner's requests to it and
// the model's notifications to the owner's receive callback.
//
// Element addressing: a name ending in "[index]" addresses one element of the
// array model published under the part before the brackets. The index is a
// decimal number, or the name of an index model (any model answering
// Mvt_SimpleValue_API<long>::MsgGet, typically an Mve_Index<long>): the
// listener then follows whatever element that model designates. Requests are
// sent as Mvt_Array_API::MsgElement for the current index, and the owner
// receives Mvt_SimpleValue_Notifications::MsgValueChanged when the index
// model changes or when the array reports a change that may concern the
// element. Such a listener counts as connected while both the array and the
// index model are published and the listener that follows the index model
// has been told of it (the element's connected state and its index come from
// that one listener). Index models may themselves be element addresses, up
// to eight levels deep.
//
// The owner hears Mvt_Root_Notifications::MsgConnectedChanged whenever the
// model behind the listener changes, even when the connected flag ends where
// it began (a model replaced under the same name, from inside a
// notification): it then reads everything again.
class KELPLATFORM_EXPORT Mv_ListenerBase
{
public:
    typedef boost::function<void(const Mv_MessageInterface&)> ReceiveMessageCB;

    explicit Mv_ListenerBase(const QString& connectionName = QString(),
                             Mv_ConnectionEnvironment::ConstPtr environment = Mv_ConnectionEnvironment::blankEnvironment());
    virtual ~Mv_ListenerBase();
    Mv_ListenerBase(const Mv_ListenerBase&) = delete;
    Mv_ListenerBase& operator=(const Mv_ListenerBase&) = delete;

    // Stores the specification; it takes effect at the next connect().
    void SetConnectionName(const QString& name);
    QString GetConnectionName() const { return mConnectionName; }
    // The name after variable expansion at the last connect().
    QString GetResolvedName() const { return mResolvedName; }

    // Resolves the specification in the environment and attaches to the
    // model of that name, leaving any previous model. Returns whether the
    // listener is attached to a model now; when the model is not published
    // yet the listener still waits for it and attaches later. Afterwards the
    // owner always receives one Mvt_Root_Notifications::MsgConnectedChanged
    // telling the outcome. An empty specification leaves it unconnected.
    bool connect(const Mv_ConnectionEnvironment::ConstPtr& environment);

    // Leaves the model and forgets the specification.
    void ClearConnection();

    bool isConnectedToModel() const { return mConnected; }

    // Sends a request to the model and returns its answer (false when not
    // connected). mayModify must be true for requests that can change the
    // model (sets, actions); such a request sent with false is refused and
    // reported as a programming error.
    bool SendMessageToModel(const Mv_MessageInterface& message, bool mayModify) const;

    // Where the model's notifications go.
    void setReceiveMessageCB(const ReceiveMessageCB& callback) { mReceiveCB = callback; }

    // The model attached to, or null.
    Mv_ModelBase* model() const;
    // The model that a request sent now would reach as it is (connected, and
    // not through an element index), or null. Typed helpers read and write
    // a plain value model through it without a message (Mve_SimpleValue).
    Mv_ModelBase* directModel() const;
    // For element listeners: the element index now addressed; false when
    // the listener addresses no element or the index model is absent.
    bool currentIndex(long* index) const;

private:
    friend class Mv_ConnectionDict;
    friend class Mv_Diagnostics;

    void attachTo(const QString& resolvedName, Mv_ConnectionDict* dict, int depth);
    void detach();
    void receiveFromModel(const Mv_MessageInterface& message);
    void modelAttachmentChanged();
    void refreshConnected();
    void deliver(const Mv_MessageInterface& message);
    bool computeConnected() const;
    quint64 attachmentStamp() const;

    QString mConnectionName;
    QString mResolvedName;
    ReceiveMessageCB mReceiveCB;

    // Membership in the dictionary entry of the (array) model's name. The
    // entry's first listener has the last one as its mPrevP.
    Mv_DictEntry* mEntryP = nullptr;
    Mv_ListenerBase* mPrevP = nullptr;
    Mv_ListenerBase* mNextP = nullptr;
    // Membership in the entry's chain of the listeners that element
    // notifications for the current index reach (see Mv_DictEntry).
    Mv_ListenerBase* mChainPrevP = nullptr;
    Mv_ListenerBase* mChainNextP = nullptr;
    long mChainIndex = 0;
    enum ChainKind : char { kNoChain, kPlainChain, kIndexChain };
    ChainKind mChain = kNoChain;

    enum IndexMode { kNoIndex, kFixedIndex, kModelIndex };
    IndexMode mIndexMode = kNoIndex;
    long mFixedIndex = 0;
    std::unique_ptr<Mv_ListenerBase> mIndexListenerP; // follows the index model
    Mv_ListenerBase* mElementListenerP = nullptr;     // set on an index listener: whom it serves

    // What the owner was last told: connected, and to which models (the
    // attachment stamp of the array and index models at that time).
    bool mConnected = false;
    quint64 mSeenStamp = 0;
    bool mConnecting = false;
    // The specification is its own resolved name: no variable to expand, no
    // blank to trim (found once per specification, not at every connect).
    bool mLiteralName = false;
};

#endif
