#ifndef MVT_SIMPLEVALUE_H
#define MVT_SIMPLEVALUE_H

#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mvt_SimpleValue_API.h"
#include "Mvt_SimpleValue_BaseAPI.h"
#include "Mvt_SimpleValue_Notifications.h"

template <class T, class Kind>
class Mve_SimpleValue;

// The value model kind for values of type T. It answers the typed requests
// (Mvt_SimpleValue_API<T>::MsgGet, MsgSet) and the variant requests
// (Mvt_SimpleValue_BaseAPI::MsgGetVariant, MsgSetVariant) through two
// virtual handlers. Without a subclass, an owner can answer the typed
// requests itself through the receive callback (setReceiveMessageCB); the
// variant requests then reach it as typed ones. Mve_SimpleValue is the
// concrete model that stores its value.
template <class T>
class Mvt_SimpleValue : public Mv_ModelBase
{
public:
    typedef T ValueType;
    typedef Mvt_SimpleValue_API<T> API;
    class Listener;

    explicit Mvt_SimpleValue(const QString& name = QString()) : Mv_ModelBase(name) {}

    bool ReceiveMessage(const Mv_MessageInterface& message) override
    {
        if (isValueRequest(message)) {
            return handleValueRequest(
                message, [this](T& v) { return handleGet(v); }, [this](const T& v) { return handleSet(v); });
        }
        return Mv_ModelBase::ReceiveMessage(message);
    }

    // Tells the listeners that the value changed.
    void notifyValueChanged() { SendToListeners(Mvt_SimpleValue_Notifications::MsgValueChanged()); }

    static bool isValueRequest(const Mv_MessageInterface& m)
    {
        return m.is<typename API::MsgGet>() || m.is<typename API::MsgSet>()
            || m.is<Mvt_SimpleValue_BaseAPI::MsgGetVariant>() || m.is<Mvt_SimpleValue_BaseAPI::MsgSetVariant>();
    }

    // Answers a value request through get (bool(T&): false when there is no
    // value) and set (int(const T&): a SetStatus). Shared with the
    // containers, whose elements are value models. False for other messages.
    template <class Get, class Set>
    static bool handleValueRequest(const Mv_MessageInterface& m, Get&& get, Set&& set)
    {
        typedef Mvt_SimpleValue_BaseAPI Base;
        if (const auto* g = m.as<typename API::MsgGet>())
            return g->result() && get(*g->result());
        if (const auto* s = m.as<typename API::MsgSet>()) {
            const int status = set(s->value());
            s->setStatus(status);
            return status != Base::kSetRefused && status != Base::kSetNotAnswered;
        }
        if (const auto* gv = m.as<Base::MsgGetVariant>()) {
            T value{};
            if (!gv->result() || !get(value))
                return false;
            *gv->result() = toVariant(value);
            return true;
        }
        if (const auto* sv = m.as<Base::MsgSetVariant>()) {
            T value{};
            int status = Base::kSetRefused;
            if (sv->value().get(value))
                status = set(value);
            if (sv->status())
                *sv->status() = status;
            return status != Base::kSetRefused && status != Base::kSetNotAnswered;
        }
        return false;
    }

    // The variant form of a value (int widened to long, float to double).
    static Mv_Variant toVariant(const T& value) { return Mv_Variant::wrap(value); }

protected:
    // Reads the value; false when there is none to give. The base passes a
    // typed get to the receive callback.
    virtual bool handleGet(T& value)
    {
        return callReceiveMessageCB(typename API::MsgGet(&value));
    }
    // Takes a value and answers a SetStatus. The base passes a typed set to
    // the receive callback (a callback that accepts without writing a status
    // counts as kSetChanged).
    virtual int handleSet(const T& value)
    {
        int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
        if (!callReceiveMessageCB(typename API::MsgSet(value, &status)))
            return Mvt_SimpleValue_BaseAPI::kSetRefused;
        return status == Mvt_SimpleValue_BaseAPI::kSetNotAnswered ? int(Mvt_SimpleValue_BaseAPI::kSetChanged) : status;
    }
};

// A listener to a value model holding a T, with typed helpers. They read
// and write a plain stock model directly (see Mve_SimpleValue), any other
// model through its messages.
template <class T>
class Mvt_SimpleValue<T>::Listener : public Mv_ListenerBase
{
public:
    using Mv_ListenerBase::Mv_ListenerBase;

    // Reads the value into value; false (value untouched) when unconnected.
    bool get(T& value) const
    {
        if (!isConnectedToModel())
            return false; // what the message would answer, without the calls
        if (const auto* model = plainModel()) {
            value = model->getValue();
            return true;
        }
        return SendMessageToModel(typename API::MsgGet(&value), false);
    }
    // The value, or def when unconnected.
    T value(const T& def = T()) const
    {
        T v = def;
        return get(v) ? v : def;
    }
    // Sends a set; answers the model's status (kSetNotAnswered when unconnected).
    int set(const T& value) const
    {
        if (!isConnectedToModel())
            return Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
        // A validator is the owner's say on sets: those go as messages.
        auto* model = plainModel();
        if (model && !model->hasValidator())
            return model->setFromListener(value);
        int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
        SendMessageToModel(typename API::MsgSet(value, &status), true);
        return status;
    }

private:
    typedef Mve_SimpleValue<T, Mvt_SimpleValue<T>> PlainModel;
    PlainModel* plainModel() const
    {
        if constexpr (Mv_VariantImpl::ScalarOf<T>::value == Mv_VariantImpl::Scalar::None)
            return nullptr; // no direct access for this type: spare the lookup
        else
            return PlainModel::plainModel(directModel());
    }
};

// The listener's direct access needs the stock model whole.
#include "Mve_SimpleValue.h"

#endif
