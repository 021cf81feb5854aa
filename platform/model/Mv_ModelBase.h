#ifndef MV_MODELBASE_H
#define MV_MODELBASE_H

#include "kelplatform_export.h"

#include <QString>
#include <boost/function.hpp>
#include <memory>

class Mv_Announcement;
class Mv_ConnectionDict;
class Mv_MessageInterface;
struct Mv_DictEntry;

// Base of every model: something that is published under a name, answers the
// requests of the listeners attached to it and notifies them of changes.
// The model kinds (Mvt_SimpleValue, Mvt_Action, Mvt_ArrayContainer, ...)
// decode their requests; the concrete models (Mve_...) store values.
//
// Publishing, unpublishing and renaming take effect at once; the listeners
// hear of it afterwards, and may publish, unpublish, rename or destroy this
// or any other model from their callbacks. Destroying a model unpublishes
// it: its listeners detach and are told so.
class KELPLATFORM_EXPORT Mv_ModelBase
{
public:
    typedef boost::function<bool(const Mv_MessageInterface&)> ReceiveMessageCB;
    class Guard;

    explicit Mv_ModelBase(const QString& name = QString());
    virtual ~Mv_ModelBase();
    Mv_ModelBase(const Mv_ModelBase&) = delete;
    Mv_ModelBase& operator=(const Mv_ModelBase&) = delete;

    // The name under which the model is (or will be) published. Renaming a
    // published model moves it to the new name in one step: the listeners
    // of the old name and of the new one hear of it once both are settled.
    // When the new name is taken (or empty) the model ends unpublished.
    void SetConnectionName(const QString& name);
    QString GetConnectionName() const { return mName; }

    // Publishes the model under its name in dict (null: the process-wide
    // dictionary), leaving any other dictionary it was published in. False
    // when the name is empty or another model already holds it (a debug
    // message says so). Listeners waiting for the name attach now.
    bool Publish(Mv_ConnectionDict* dict = nullptr);
    bool publish(Mv_ConnectionDict* dict = nullptr) { return Publish(dict); }
    // Withdraws the model; its listeners detach and wait for a new model.
    void UnPublish();
    bool isPublished() const { return mEntryP != nullptr; }
    Mv_ConnectionDict* dictionary() const;

    // The dictionary changes of Publish and UnPublish, made now and told to
    // the listeners when the announcement runs. A model made of several
    // published parts overrides both to take its parts along (see
    // Mv_Announcement); the overrides call the base first.
    virtual bool publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement);
    virtual void unpublishQuietly(Mv_Announcement& announcement);

    // Listeners currently attached (waiting ones included once the model is
    // published, since they attach at once).
    int listenerCount() const;

    // Delivers a notification to every attached listener, synchronously.
    // A listener may destroy the model on the way (see Guard).
    void SendToListeners(const Mv_MessageInterface& message);

    // Answers one request of a listener; true when it was handled (for sets
    // and actions: accepted). The base hands the message to the receive
    // callback when one is set, else refuses it.
    virtual bool ReceiveMessage(const Mv_MessageInterface& message);

    // Lets an owner answer requests itself (typically through an
    // Mv_MessageDispatcher) instead of subclassing.
    void setReceiveMessageCB(const ReceiveMessageCB& callback)
    {
        // An owner that answers requests must see them: no more direct access.
        mPlainKind = 0;
        if (mReceiveCBP)
            *mReceiveCBP = callback;
        else if (!callback.empty())
            mReceiveCBP.reset(new ReceiveMessageCB(callback));
    }
    bool hasReceiveMessageCB() const { return mReceiveCBP && !mReceiveCBP->empty(); }

    // Nonzero while listeners may use the model directly instead of sending
    // it messages: the model is of a stock class that answers every request
    // the stock way, and the number says which (below 16 a value model, the
    // Mv_VariantImpl::Scalar of its value, see Mve_SimpleValue; from 16 an
    // action, see Mve_Action).
    quint8 plainKind() const { return mPlainKind; }

protected:
    void setPlainKind(quint8 kind) { mPlainKind = kind; }

    bool callReceiveMessageCB(const Mv_MessageInterface& message)
    {
        return hasReceiveMessageCB() && (*mReceiveCBP)(message);
    }

private:
    friend class Mv_ConnectionDict;

    void withdraw(Mv_Announcement& announcement);

    // Every model has these, so they are kept few: the dictionary is the
    // entry's, and guards are found from a list of their own.
    QString mName;
    Mv_DictEntry* mEntryP;
    // Few models have one: a pointer costs a published model 8 bytes where
    // the callback itself would take 32.
    std::unique_ptr<ReceiveMessageCB> mReceiveCBP;
    // Last, so that a subclass's first small members fill the padding after it.
    quint8 mPlainKind = 0;
};

// Tells whether a model outlived the calls made since the guard was made.
// Code that notifies several times in a row checks it after each call, since
// any listener may destroy the model:
//     Guard guard(this);
//     notifyA(); if (!guard.alive()) return;
//     notifyB();
// Guards are scoped (on the stack); they cost no allocation, and the model
// nothing while none is active.
class KELPLATFORM_EXPORT Mv_ModelBase::Guard
{
public:
    explicit Guard(Mv_ModelBase* model);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    bool alive() const { return mModelP != nullptr; }

private:
    friend class Mv_ModelBase;
    Mv_ModelBase* mModelP;
    Guard* mOuterP; // the active guards, of any model, innermost first
};

#endif
