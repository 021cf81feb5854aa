#ifndef MV_VARIANT_H
#define MV_VARIANT_H

#include "kelplatform_export.h"

#include "Mv_Timecode.h"
#include "Mv_VariantImpl.h"

#include <QString>
#include <memory>
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
        v.mHolder = std::make_shared<const Mv_VariantImpl::Holder<T>>(value);
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

    bool isEmpty() const { return !mHolder; }
    void clear() { mHolder.reset(); }

    // True when the variant holds exactly a T (no conversion).
    template <class T> bool holds() const { return Mv_VariantImpl::exact<T>(mHolder.get()) != nullptr; }

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

    const Mv_VariantImpl::HolderBase* holder() const { return mHolder.get(); }

private:
    std::shared_ptr<const Mv_VariantImpl::HolderBase> mHolder;
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
    return Mv_VariantImpl::convert(mHolder.get(), out);
}

#endif
