#ifndef MV_VARIANT_H
#define MV_VARIANT_H

#include "kelplatform_export.h"

#include "Mv_Timecode.h"
#include "Mv_VariantImpl.h"

#include <QString>
#include <memory>
#include <new>
#include <type_traits>

class QWidget;

// The model library's value holder: empty, or one value of any copyable type.
// Scripts evaluate into it and the variant get/set messages carry it.
//
// get(T&) and value<T>() convert between the scalar kinds: bool, long (and
// int), double, QString and Mv_Timecode. Numbers convert among themselves (a double only
// to long when it is integral), texts convert to numbers when the whole text
// parses ("true"/"false" and "1"/"0" for bool), numbers and timecodes
// convert to text. Every other type (pointers, QRect, QPixmap, ...) is only
// read back as exactly the type it was stored as.
class KELPLATFORM_EXPORT Mv_Variant
{
public:
    Mv_Variant() = default;
    Mv_Variant(const Mv_Variant& other) : mShared(other.mShared) { adopt(other); }
    Mv_Variant(Mv_Variant&& other) noexcept : mShared(std::move(other.mShared))
    {
        adopt(other);
        other.mHolderP = nullptr;
    }
    Mv_Variant& operator=(const Mv_Variant& other)
    {
        if (this != &other) {
            mShared = other.mShared;
            adopt(other);
        }
        return *this;
    }
    Mv_Variant& operator=(Mv_Variant&& other) noexcept
    {
        if (this != &other) {
            mShared = std::move(other.mShared);
            adopt(other);
            other.mHolderP = nullptr;
        }
        return *this;
    }
    Mv_Variant(bool v) : Mv_Variant(fromValue(v)) {}
    Mv_Variant(int v) : Mv_Variant(fromValue(long(v))) {}
    Mv_Variant(long v) : Mv_Variant(fromValue(v)) {}
    Mv_Variant(double v) : Mv_Variant(fromValue(v)) {}
    Mv_Variant(const QString& v) : Mv_Variant(fromValue(v)) {}
    Mv_Variant(const char* v) : Mv_Variant(fromValue(QString::fromUtf8(v))) {}
    Mv_Variant(const Mv_Timecode& v) : Mv_Variant(fromValue(v)) {}
    template <class T> Mv_Variant(T* pointer) : Mv_Variant(fromValue<T*>(pointer)) {}

    // A variant holding exactly a T (use for types without a constructor above).
    template <class T>
    static Mv_Variant fromValue(const T& value)
    {
        Mv_Variant v;
        if constexpr (isInline<T>()) {
            v.mHolderP = new (v.mInline) Mv_VariantImpl::Holder<T>(value);
        } else {
            auto holder = std::make_shared<const Mv_VariantImpl::Holder<T>>(value);
            v.mHolderP = holder.get();
            v.mShared = std::move(holder);
        }
        return v;
    }

    // Like fromValue, but small integers are widened to long and float to
    // double, so that they read back through the scalar conversions.
    template <class T>
    static Mv_Variant wrap(const T& value)
    {
        if constexpr (std::is_integral<T>::value && !std::is_same<T, bool>::value && sizeof(T) <= sizeof(long))
            return fromValue<long>(long(value));
        else if constexpr (std::is_same<T, float>::value)
            return fromValue<double>(double(value));
        else
            return fromValue<T>(value);
    }

    bool isEmpty() const { return !mHolderP; }
    void clear()
    {
        mShared.reset();
        mHolderP = nullptr;
    }

    // True when the variant holds exactly a T (no conversion).
    template <class T> bool holds() const { return Mv_VariantImpl::exact<T>(mHolderP) != nullptr; }

    // Converts into out; false (out untouched) when the value does not convert.
    template <class T> bool get(T& out) const;

    // The converted value, or def when it does not convert.
    template <class T> T value(const T& def = T()) const
    {
        T out = def;
        return get(out) ? out : def;
    }

    // Name of the held type, for debug output ("empty" when empty).
    const char* typeName() const;
    // A readable form for debug output.
    QString toDebugString() const;

    const Mv_VariantImpl::HolderBase* holder() const { return mHolderP; }

private:
    // bool, long and double, what scripts and actions pass most, are held
    // in the variant itself: making, copying and dropping one then costs
    // no allocation and no atomic count. Every other type is in a shared,
    // immutable holder.
    template <class T> static constexpr bool isInline()
    {
        return std::is_same<T, bool>::value || std::is_same<T, long>::value || std::is_same<T, double>::value;
    }

    // Takes other's holder: mShared is already other's, an inline value is copied.
    void adopt(const Mv_Variant& other)
    {
        if (other.mHolderP != other.inlineHolder()) {
            mHolderP = other.mHolderP;
            return;
        }
        typedef Mv_VariantImpl::Scalar Scalar;
        switch (other.mHolderP->scalar()) {
        case Scalar::Bool:
            mHolderP = new (mInline) Mv_VariantImpl::Holder<bool>(*Mv_VariantImpl::exact<bool>(other.mHolderP));
            break;
        case Scalar::Long:
            mHolderP = new (mInline) Mv_VariantImpl::Holder<long>(*Mv_VariantImpl::exact<long>(other.mHolderP));
            break;
        default:
            mHolderP = new (mInline) Mv_VariantImpl::Holder<double>(*Mv_VariantImpl::exact<double>(other.mHolderP));
            break;
        }
    }
    const Mv_VariantImpl::HolderBase* inlineHolder() const
    {
        return reinterpret_cast<const Mv_VariantImpl::HolderBase*>(mInline);
    }

    std::shared_ptr<const Mv_VariantImpl::HolderBase> mShared;
    // The holder: in mInline or mShared's, null when empty. Inline holders
    // own nothing, so they are never destroyed, only overwritten.
    const Mv_VariantImpl::HolderBase* mHolderP = nullptr;
    alignas(Mv_VariantImpl::Holder<double>) unsigned char mInline[sizeof(Mv_VariantImpl::Holder<double>)];
};

namespace Mv_VariantImpl {

// Conversions among the scalar kinds; exact match for everything else.
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, bool& out);
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, long& out);
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, int& out);
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, double& out);
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, QString& out);
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, Mv_Timecode& out);

template <class T>
KELPLATFORM_EXPORT bool convert(const HolderBase* holder, T& out)
{
    const T* v = exact<T>(holder);
    if (!v)
        return false;
    out = *v;
    return true;
}

} // namespace Mv_VariantImpl

template <class T>
bool Mv_Variant::get(T& out) const
{
    return Mv_VariantImpl::convert(mHolderP, out);
}

#endif
