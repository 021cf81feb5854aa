#ifndef MV_VARIANTIMPL_H
#define MV_VARIANTIMPL_H

#include "kelplatform_export.h"

#include <typeinfo>

// Type-erased value holders behind Mv_Variant. A holder is immutable once
// made, so variants share them freely.
namespace Mv_VariantImpl {

class KELPLATFORM_EXPORT HolderBase
{
public:
    virtual ~HolderBase() = default;
    virtual const std::type_info& type() const = 0;
};

template <class T>
class Holder : public HolderBase
{
public:
    explicit Holder(const T& value) : mValue(value) {}
    const std::type_info& type() const override { return typeid(T); }
    const T& value() const { return mValue; }

private:
    T mValue;
};

// The holder's value when it holds exactly a T, else null.
template <class T>
const T* exact(const HolderBase* holder)
{
    if (!holder || holder->type() != typeid(T))
        return nullptr;
    return &static_cast<const Holder<T>*>(holder)->value();
}

} // namespace Mv_VariantImpl

#endif
