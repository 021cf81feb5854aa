#ifndef KEL_BOUNDPROPERTY_H
#define KEL_BOUNDPROPERTY_H

#include "Kel_BoundPropertyBase.h"

#include <QObject>
#include <QPointer>

#include <cstddef>

// One bound property of a widget, view or menu segment: a listener of the
// given kind (Mvt_SimpleValue<bool>::Listener, an action or array listener)
// with its connection specification. Declaring one, naming where its
// notifications go and listing it in makeConnections is all a property needs:
//
//   Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mChecked{this};
//   mChecked.onNotify([this] { updateAppearance(); });         // constructor
//   Kel_BoundPropertyBase::connectAll(env, {&mVisible, &mChecked}); // makeConnections
//   bool checked = false; mChecked->get(checked);              // on notification
//
// The listener leaves its model and stops calling back when the property is destroyed.
template <class Listener>
class Kel_BoundProperty : public Kel_BoundPropertyBase
{
public:
    explicit Kel_BoundProperty(QObject* owner = nullptr, ConnectPolicy policy = kConnectWhenNamed)
        : Kel_BoundPropertyBase(&mListener, owner, policy)
    {
    }
    // A property of a light-weight view (views are not QObjects: nothing to
    // guard, but tools can name the view).
    explicit Kel_BoundProperty(const Kel_ViewInterface* view, ConnectPolicy policy = kConnectWhenNamed)
        : Kel_BoundPropertyBase(&mListener, view, policy)
    {
    }
    // An owner nobody needs to know.
    Kel_BoundProperty(std::nullptr_t, ConnectPolicy policy)
        : Kel_BoundPropertyBase(&mListener, static_cast<QObject*>(nullptr), policy)
    {
    }
    ~Kel_BoundProperty() override { release(); }

    Listener& listener() const { return mListener; }
    Listener* operator->() const { return &mListener; }

    // Sends a set of value (value models only) and answers the model's
    // status, or kOwnerDeleted when the resulting notification deleted the
    // owner (the caller must then return at once).
    template <class V>
    int set(const V& value)
    {
        const bool guarded = owner() != nullptr;
        const QPointer<QObject> self(owner());
        const int status = listener().set(value);
        return guarded && !self ? kOwnerDeleted : status;
    }

private:
    // Mutable: reading through a const property sends requests, as the
    // listener it used to point to did.
    mutable Listener mListener;
};

#endif
