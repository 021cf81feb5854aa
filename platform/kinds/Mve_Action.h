#ifndef MVE_ACTION_H
#define MVE_ACTION_H

#include "Mvt_Action.h"

#include <boost/function.hpp>
#include <type_traits>
#include <typeinfo>

template <class F>
class Mve_Action;

// An action model that calls a function. It is enabled unless told
// otherwise; a disabled action, or one without a function, refuses calls.
//
// An action of exactly this class without parameters, returning void or
// bool, is called directly by scripts, without building and dispatching
// a message, unless its owner has a receive callback (see plainModel()).
template <class R, class... Args>
class Mve_Action<R(Args...)> : public Mvt_Action<R(Args...)>
{
public:
    typedef boost::function<R(Args...)> Function;
    typedef Mvt_Action<R(Args...)> Kind;

    // plainKind() of a plain action without parameters returning void, bool.
    enum { kPlainVoid = 16, kPlainBool = 17 };

    explicit Mve_Action(const Function& function = Function(), const QString& name = QString())
        : Kind(name), mFunction(function) {}

    void setFunction(const Function& function) { mFunction = function; }

    // Enables or disables the action and tells the listeners when it changes.
    void setEnabled(bool enabled)
    {
        if (enabled == mEnabled)
            return;
        mEnabled = enabled;
        this->notifyEnabledChanged();
    }
    bool isEnabled() const { return mEnabled && !mFunction.empty(); }

    // The action when model is one that may be called directly (isEnabled(),
    // run()); else null. Not for a subclass, which may answer requests
    // itself, nor while the owner has a receive callback: publishing finds
    // out (once, with typeid) and setReceiveMessageCB withdraws it.
    static Mve_Action* plainModel(Mv_ModelBase* model)
    {
        if constexpr (kPlainKind == 0)
            return nullptr;
        else
            return model && model->plainKind() == kPlainKind ? static_cast<Mve_Action*>(model) : nullptr;
    }

    // What an action request with converted arguments does: false when the
    // action is disabled, else the function's answer (see Mvt_Action).
    bool run(const typename Kind::ArgumentTuple& args, Mv_Variant* result)
    {
        return isEnabled() && callFunction(args, result);
    }

    bool publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement) override
    {
        // Only now is the object whole, so that typeid tells a subclass.
        const bool plain = kPlainKind != 0 && typeid(*this) == typeid(Mve_Action) && !this->hasReceiveMessageCB();
        this->setPlainKind(plain ? kPlainKind : 0);
        return Kind::publishQuietly(dict, announcement);
    }

protected:
    bool handleIsEnabled() override { return isEnabled(); }
    bool handleAction(const typename Kind::ArgumentTuple& args, Mv_Variant* result) override
    {
        return callFunction(args, result);
    }

private:
    bool callFunction(const typename Kind::ArgumentTuple& args, Mv_Variant* result)
    {
        if (mFunction.empty())
            return false;
        Function f = mFunction; // the call may replace or destroy the action
        return Kind::invoke(f, args, result);
    }

    static constexpr quint8 kPlainKind = sizeof...(Args) != 0 ? 0
        : std::is_void<R>::value                              ? quint8(kPlainVoid)
        : std::is_same<R, bool>::value                        ? quint8(kPlainBool)
                                                              : 0;

    // First, so that it fills the padding at the end of Mv_ModelBase.
    bool mEnabled = true;
    Function mFunction;
};

#endif
