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

} // namespace

bool Mve_DirectAccess::getVariant(Mv_ModelBase* model, Mv_Variant* result)
{
    typedef Mv_VariantImpl::Scalar Scalar;
    switch (model ? Scalar(model->plainKind()) : Scalar::None) {
    case Scalar::Bool:
        return getAs<bool>(model, result);
    case Scalar::Long:
        return getAs<long>(model, result);
    case Scalar::Double:
        return getAs<double>(model, result);
    case Scalar::String:
        return getAs<QString>(model, result);
    case Scalar::Timecode:
        return getAs<Mv_Timecode>(model, result);
    case Scalar::None:
        break;
    }
    return false;
}

int Mve_DirectAccess::setVariant(Mv_ModelBase* model, const Mv_Variant& value)
{
    typedef Mv_VariantImpl::Scalar Scalar;
    switch (model ? Scalar(model->plainKind()) : Scalar::None) {
    case Scalar::Bool:
        return setAs<bool>(model, value);
    case Scalar::Long:
        return setAs<long>(model, value);
    case Scalar::Double:
        return setAs<double>(model, value);
    case Scalar::String:
        return setAs<QString>(model, value);
    case Scalar::Timecode:
        return setAs<Mv_Timecode>(model, value);
    case Scalar::None:
        break;
    }
    return Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
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
