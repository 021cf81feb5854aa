#ifndef MVE_COMPUTEDCONTAINER_H
#define MVE_COMPUTEDCONTAINER_H

#include "Mvt_Container_API.h"
#include "Mvt_SimpleValue.h"

#include <boost/function.hpp>

// A container of T values that stores nothing: element gets are answered by
// a function of the index, element sets (when a setter is given) by another,
// and the size by a third (0 without one). The owner calls the notify
// functions when what the functions answer changes.
template <class T>
class Mve_ComputedContainer : public Mvt_Container_API<long, Mvt_SimpleValue<T>>
{
public:
    typedef boost::function<bool(long index, T& value)> Getter;
    typedef boost::function<int(long index, const T& value)> Setter;
    typedef boost::function<long()> SizeFunction;

    explicit Mve_ComputedContainer(const Getter& getter = Getter(), const QString& name = QString())
        : Mvt_Container_API<long, Mvt_SimpleValue<T>>(name), mGetter(getter) {}

    void setGetter(const Getter& getter) { mGetter = getter; }
    void setSetter(const Setter& setter) { mSetter = setter; }
    void setSizeFunction(const SizeFunction& size) { mSize = size; }

protected:
    long handleGetSize() override { return mSize.empty() ? 0 : mSize(); }

    bool handleElementMessage(long index, const Mv_MessageInterface& request) override
    {
        return Mvt_SimpleValue<T>::handleValueRequest(
            request, [this, index](T& v) { return !mGetter.empty() && mGetter(index, v); },
            [this, index](const T& v) {
                return mSetter.empty() ? int(Mvt_SimpleValue_BaseAPI::kSetRefused) : mSetter(index, v);
            });
    }

private:
    Getter mGetter;
    Setter mSetter;
    SizeFunction mSize;
};

#endif
