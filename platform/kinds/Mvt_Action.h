#ifndef MVT_ACTION_H
#define MVT_ACTION_H

#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mvt_Action_API.h"
#include "Mvt_Action_Notifications.h"

#include <tuple>
#include <type_traits>
#include <utility>

template <class F>
class Mvt_Action;

// The action model kind for actions of signature R(Args...). It answers
// Mvt_Action_API::MsgIsEnabled and MsgAction: the variant arguments are
// converted to the parameter types (Mv_Variant::get), and a call whose
// argument count or types do not fit, or that reaches a disabled action, is
// refused. An action returning bool reports failure by returning false;
// other return values are handed back in the result variant. Mve_Action is
// the concrete action that calls a function.
template <class R, class... Args>
class Mvt_Action<R(Args...)> : public Mv_ModelBase
{
public:
    typedef R Signature(Args...);
    typedef std::tuple<std::decay_t<Args>...> ArgumentTuple;
    class Listener;

    explicit Mvt_Action(const QString& name = QString()) : Mv_ModelBase(name) {}

    bool ReceiveMessage(const Mv_MessageInterface& message) override
    {
        if (const auto* e = message.as<Mvt_Action_API::MsgIsEnabled>()) {
            if (e->enabled())
                *e->enabled() = handleIsEnabled();
            return true;
        }
        if (const auto* a = message.as<Mvt_Action_API::MsgAction>()) {
            if (!handleIsEnabled())
                return false;
            ArgumentTuple args;
            if (!convertArguments(a->arguments(), args))
                return false;
            return handleAction(args, a->result());
        }
        return Mv_ModelBase::ReceiveMessage(message);
    }

    // Tells the listeners that the enabled state changed.
    void notifyEnabledChanged() { SendToListeners(Mvt_Action_Notifications::MsgEnabledChanged()); }

    // Converts a variant argument list to the parameter types.
    static bool convertArguments(const Mvt_Action_API::ArgumentList& list, ArgumentTuple& args)
    {
        if (list.size() != sizeof...(Args))
            return false;
        return convertEach(list, args, std::index_sequence_for<Args...>());
    }

    // Calls f with the converted arguments and stores its return value.
    template <class Function>
    static bool invoke(Function& f, const ArgumentTuple& args, Mv_Variant* result)
    {
        if constexpr (std::is_void<R>::value) {
            std::apply(f, args);
            return true;
        } else if constexpr (std::is_same<R, bool>::value) {
            const bool ok = std::apply(f, args);
            if (result)
                *result = Mv_Variant(ok);
            return ok;
        } else {
            R value = std::apply(f, args);
            if (result)
                *result = Mv_Variant::fromValue<R>(value);
            return true;
        }
    }

protected:
    virtual bool handleIsEnabled() { return true; }
    virtual bool handleAction(const ArgumentTuple& args, Mv_Variant* result) = 0;

private:
    template <size_t... I>
    static bool convertEach(const Mvt_Action_API::ArgumentList& list, ArgumentTuple& args, std::index_sequence<I...>)
    {
        return (true && ... && list[I].get(std::get<I>(args)));
    }
};

// A listener to an action model with helpers to ask and to call it.
template <class R, class... Args>
class Mvt_Action<R(Args...)>::Listener : public Mv_ListenerBase
{
public:
    using Mv_ListenerBase::Mv_ListenerBase;

    // Whether the action can run now; false when unconnected.
    bool isEnabled() const
    {
        bool enabled = false;
        return SendMessageToModel(Mvt_Action_API::MsgIsEnabled(&enabled), false) && enabled;
    }
    // Runs the action with the arguments; the model's answer.
    bool call(Args... args) const
    {
        Mv_Variant ignored;
        return trigger(Mvt_Action_API::ArgumentList{Mv_Variant::wrap(args)...}, &ignored);
    }
    // Runs the action with a ready-made argument list.
    bool trigger(const Mvt_Action_API::ArgumentList& args, Mv_Variant* result = nullptr) const
    {
        Mv_Variant local;
        return SendMessageToModel(Mvt_Action_API::MsgAction(args, result ? result : &local), true);
    }
};

#endif
