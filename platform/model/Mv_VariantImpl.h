#ifndef MV_VARIANTIMPL_H
#define MV_VARIANTIMPL_H

#include "kelplatform_export.h"

#include <typeinfo>

// Type-erased value holders behind Mv_Variant. A holder is immutable once
// made, so variants share them freely.
class QString;
class Mv_Timecode;

namespace Mv_VariantImpl {

// The scalar kinds that variants convert among, told by a tag instead of
// by comparing type_info: across shared libraries that comparison falls
// back to comparing names, and conversions ask about several types in turn.
enum class Scalar : unsigned char { None, Bool, Long, Double, String, Timecode };
template <class T> struct ScalarOf { static constexpr Scalar value = Scalar::None; };
template <> struct ScalarOf<bool> { static constexpr Scalar value = Scalar::Bool; };
template <> struct ScalarOf<long> { static constexpr Scalar value = Scalar::Long; };
template <> struct ScalarOf<double> { static constexpr Scalar value = Scalar::Double; };
template <> struct ScalarOf<QString> { static constexpr Scalar value = Scalar::String; };
template <> struct ScalarOf<Mv_Timecode> { static constexpr Scalar value = Scalar::Timecode; };

class KELPLATFORM_EXPORT HolderBase
{
public:
    explicit HolderBase(Scalar scalar) : mScalar(scalar) {}
    virtual ~HolderBase() = default;
    virtual const std::type_info& type() const = 0;
    Scalar scalar() const { return mScalar; }

private:
    Scalar mScalar;
};

template <class T>
class Holder : public HolderBase
{
public:
    explicit Holder(const T& value) : HolderBase(ScalarOf<T>::value), mValue(value) {}
    const std::type_info& type() const override { return typeid(T); }
    const T& value() const { return mValue; }

private:
    T mValue;
};

// The holder's value when it holds exactly a T, else null.
template <class T>
const T* exact(const HolderBase* holder)
{
    if (!holder)
        return nullptr;
    if constexpr (ScalarOf<T>::value != Scalar::None) {
        if (holder->scalar() != ScalarOf<T>::value)
            return nullptr;
    } else if (holder->scalar() != Scalar::None || holder->type() != typeid(T)) {
        return nullptr;
    }
    return &static_cast<const Holder<T>*>(holder)->value();
}

} // namespace Mv_VariantImpl

#endif
