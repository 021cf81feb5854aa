#include "Mve_DirectAccess.h"

#include "Mv_Timecode.h"
#include "Mv_Variant.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QString>

namespace {

template <class T>
bool getAs(Mv_ModelBase* model, Mv_Variant* result)
{
    const auto* plain = Mve_SimpleValue<T>::plainModel(model);
    if (!plain)
        return false;
    if (result)
        *result = Mvt_SimpleValue<T>::toVariant(plain->getValue());
    return true;
}

template <class T>
int setAs(Mv_ModelBase* model, const Mv_Variant& value)
{
    auto* plain = Mve_SimpleValue<T>::plainModel(model);
    if (!plain || plain->hasValidator())
        return Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
    T converted{};
    if (!value.get(converted))
        return Mvt_SimpleValue_BaseAPI::kSetRefused;
    return plain->setFromListener(converted);
}

template <class T>
int copyAs(Mv_ModelBase* from, Mv_ModelBase* to)
{
    const auto* source = Mve_SimpleValue<T>::plainModel(from);
    auto* target = Mve_SimpleValue<T>::plainModel(to);
    if (!source || !target || target->hasValidator())
        return Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
    return target->setFromListener(source->getValue());
}

template <class T>
struct TypeTag
{
    typedef T Type;
};

// use(TypeTag<T>()) for the value type T of a plain value model's kind;
// otherwise when the kind is not a value model's.
template <class R, class Use>
R byValueType(quint8 kind, R otherwise, Use&& use)
{
    typedef Mv_VariantImpl::Scalar Scalar;
    switch (Scalar(kind)) {
    case Scalar::Bool:
        return use(TypeTag<bool>());
    case Scalar::Long:
        return use(TypeTag<long>());
    case Scalar::Double:
        return use(TypeTag<double>());
    case Scalar::String:
        return use(TypeTag<QString>());
    case Scalar::Timecode:
        return use(TypeTag<Mv_Timecode>());
    case Scalar::None:
        break;
    }
    return otherwise;
}

} // namespace

bool Mve_DirectAccess::getVariant(Mv_ModelBase* model, Mv_Variant* result)
{
    return byValueType(model ? model->plainKind() : 0, false,
                       [&](auto type) { return getAs<typename decltype(type)::Type>(model, result); });
}

int Mve_DirectAccess::setVariant(Mv_ModelBase* model, const Mv_Variant& value)
{
    return byValueType(model ? model->plainKind() : 0, int(Mvt_SimpleValue_BaseAPI::kSetNotAnswered),
                       [&](auto type) { return setAs<typename decltype(type)::Type>(model, value); });
}

int Mve_DirectAccess::copyValue(Mv_ModelBase* from, Mv_ModelBase* to)
{
    // Within one type the variant gives back exactly the value it was made
    // from, so the value can skip it.
    const quint8 kind = from && to && from->plainKind() == to->plainKind() ? to->plainKind() : 0;
    return byValueType(kind, int(Mvt_SimpleValue_BaseAPI::kSetNotAnswered),
                       [&](auto type) { return copyAs<typename decltype(type)::Type>(from, to); });
}

namespace {

// The plain action behind model, of either signature, handed to use.
template <class Use>
bool withPlainAction(Mv_ModelBase* model, Use&& use)
{
    if (auto* action = Mve_Action<void()>::plainModel(model))
        return use(*action);
    if (auto* action = Mve_Action<bool()>::plainModel(model))
        return use(*action);
    return false;
}

} // namespace

bool Mve_DirectAccess::callAction(Mv_ModelBase* model, Mv_Variant* result, bool* answer)
{
    return withPlainAction(model, [result, answer](auto& action) {
        *answer = action.run(std::tuple<>(), result);
        return true;
    });
}

bool Mve_DirectAccess::isActionEnabled(Mv_ModelBase* model, bool* enabled)
{
    return withPlainAction(model, [enabled](auto& action) {
        *enabled = action.isEnabled();
        return true;
    });
}
