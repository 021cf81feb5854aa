#ifndef MV_MODELBASE_H
#define MV_MODELBASE_H

#include <QString>
#include <boost/function.hpp>

class Mv_ConnectionDict;
class Mv_MessageInterface;
struct Mv_DictEntry;

// Base of every model: something that is published under a name, answers the
// requests of the listeners attached to it and notifies them of changes.
// The model kinds (Mvt_SimpleValue, Mvt_Action, Mvt_ArrayContainer, ...)
// decode their requests; the concrete models (Mve_...) store values.
//
// Destroying a model unpublishes it: its listeners detach and are told so.
class Mv_ModelBase
{
public:
    typedef boost::function<bool(const Mv_MessageInterface&)> ReceiveMessageCB;

    explicit Mv_ModelBase(const QString& name = QString());
    virtual ~Mv_ModelBase();
    Mv_ModelBase(const Mv_ModelBase&) = delete;
    Mv_ModelBase& operator=(const Mv_ModelBase&) = delete;

    // The name under which the model is (or will be) published. Renaming a
    // published model moves it to the new name.
    void SetConnectionName(const QString& name);
    QString GetConnectionName() const { return mName; }

    // Publishes the model under its name in dict (null: the process-wide
    // dictionary). False when the name is empty or another model already
    // holds it (a debug message says so). Listeners waiting for the name
    // attach now.
    virtual bool Publish(Mv_ConnectionDict* dict = nullptr);
    bool publish(Mv_ConnectionDict* dict = nullptr) { return Publish(dict); }
    // Withdraws the model; its listeners detach and wait for a new model.
    virtual void UnPublish();
    bool isPublished() const { return mEntryP != nullptr; }
    Mv_ConnectionDict* dictionary() const { return mDictP; }

    // Listeners currently attached (waiting ones included once the model is
    // published, since they attach at once).
    int listenerCount() const;

    // Delivers a notification to every attached listener, synchronously.
    void SendToListeners(const Mv_MessageInterface& message);

    // Answers one request of a listener; true when it was handled (for sets
    // and actions: accepted). The base hands the message to the receive
    // callback when one is set, else refuses it.
    virtual bool ReceiveMessage(const Mv_MessageInterface& message);

    // Lets an owner answer requests itself (typically through an
    // Mv_MessageDispatcher) instead of subclassing.
    void setReceiveMessageCB(const ReceiveMessageCB& callback) { mReceiveCB = callback; }
    bool hasReceiveMessageCB() const { return !mReceiveCB.empty(); }

protected:
    bool callReceiveMessageCB(const Mv_MessageInterface& message)
    {
        return !mReceiveCB.empty() && mReceiveCB(message);
    }

private:
    void unpublish();

    QString mName;
    Mv_DictEntry* mEntryP;
    Mv_ConnectionDict* mDictP;
    ReceiveMessageCB mReceiveCB;
};

#endif
