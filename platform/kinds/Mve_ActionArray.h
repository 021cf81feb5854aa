#ifndef MVE_ACTIONARRAY_H
#define MVE_ACTIONARRAY_H

#include "Mvt_Action.h"
#include "Mvt_Array.h"

#include <boost/function.hpp>

template <class F>
class Mve_ActionArray;

// An array of actions of signature R(Args...) served by one function that
// receives the element index first ("hide column i", "show column i at
// position p"). Elements outside [0, size) refuse; an optional function
// says whether element i is enabled.
template <class R, class... Args>
class Mve_ActionArray<R(Args...)> : public Mvt_Array<Mvt_Action<R(Args...)>>
{
public:
    typedef boost::function<R(long, Args...)> Function;
    typedef boost::function<bool(long)> EnabledFunction;
    typedef Mvt_Action<R(Args...)> ElementKind;

    explicit Mve_ActionArray(const Function& function = Function(), long size = 0, const QString& name = QString())
        : Mvt_Array<ElementKind>(name), mFunction(function), mSize(size) {}

    void setFunction(const Function& function) { mFunction = function; }
    void setEnabledFunction(const EnabledFunction& enabled) { mEnabled = enabled; }

    long size() const { return mSize; }
    // Changes the number of elements and tells the listeners.
    void setSize(long size)
    {
        if (size < 0 || size == mSize)
            return;
        const long old = mSize;
        mSize = size;
        if (size > old)
            this->notifyElementsReplaced(old, old, size - old);
        else
            this->notifyElementsReplaced(size, old, 0);
    }

protected:
    long handleGetSize() override { return mSize; }

    bool handleElementMessage(long index, const Mv_MessageInterface& request) override
    {
        if (index < 0 || index >= mSize)
            return false;
        const bool enabled = !mFunction.empty() && (mEnabled.empty() || mEnabled(index));
        if (const auto* e = request.as<Mvt_Action_API::MsgIsEnabled>()) {
            if (e->enabled())
                *e->enabled() = enabled;
            return true;
        }
        if (const auto* a = request.as<Mvt_Action_API::MsgAction>()) {
            typename ElementKind::ArgumentTuple args;
            if (!enabled || !ElementKind::convertArguments(a->arguments(), args))
                return false;
            Function f = mFunction;
            auto bound = [&f, index](auto&&... values) { return f(index, values...); };
            return ElementKind::invoke(bound, args, a->result());
        }
        return false;
    }

private:
    Function mFunction;
    EnabledFunction mEnabled;
    long mSize;
};

#endif
