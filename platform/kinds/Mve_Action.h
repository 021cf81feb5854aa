#ifndef MVE_ACTION_H
#define MVE_ACTION_H

#include "Mvt_Action.h"

#include <boost/function.hpp>

template <class F>
class Mve_Action;

// An action model that calls a function. It is enabled unless told
// otherwise; a disabled action, or one without a function, refuses calls.
template <class R, class... Args>
class Mve_Action<R(Args...)> : public Mvt_Action<R(Args...)>
{
public:
    typedef boost::function<R(Args...)> Function;
    typedef Mvt_Action<R(Args...)> Kind;

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

protected:
    bool handleIsEnabled() override { return isEnabled(); }
    bool handleAction(const typename Kind::ArgumentTuple& args, Mv_Variant* result) override
    {
        if (mFunction.empty())
            return false;
        Function f = mFunction; // the call may replace or destroy the action
        return Kind::invoke(f, args, result);
    }

private:
    Function mFunction;
    bool mEnabled = true;
};

#endif
