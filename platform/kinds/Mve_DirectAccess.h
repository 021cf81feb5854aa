#ifndef MVE_DIRECTACCESS_H
#define MVE_DIRECTACCESS_H

#include "kelplatform_export.h"

class Mv_ModelBase;
class Mv_Variant;

// The requests of scripts answered without a message for plain models,
// whatever their value type or signature, with the same results and
// notifications: the variant requests (Mvt_SimpleValue_BaseAPI::MsgGetVariant
// and MsgSetVariant) of value models (see Mve_SimpleValue::plainModel), and
// the requests of actions without parameters (Mvt_Action_API::MsgAction with
// an empty argument list, MsgIsEnabled; see Mve_Action::plainModel). For
// senders that do not know the type; any other model must be sent the
// message.
class KELPLATFORM_EXPORT Mve_DirectAccess
{
public:
    // Stores the model's value in *result (null: discarded); false, and
    // *result untouched, when model is null or not plain.
    static bool getVariant(Mv_ModelBase* model, Mv_Variant* result);
    // Sets the model to value converted to its type, as MsgSetVariant does,
    // and answers the SetStatus (kSetRefused when the value does not
    // convert). kSetNotAnswered, with nothing done, when model is null, not
    // plain or has a validator.
    static int setVariant(Mv_ModelBase* model, const Mv_Variant& value);
    // Sets to the value of from, as setVariant with getVariant's variant
    // would, when both models are plain and hold the same type (the value
    // then needs no variant); else kSetNotAnswered, with nothing done.
    static int copyValue(Mv_ModelBase* from, Mv_ModelBase* to);

    // Calls a plain action without arguments, its return value (if any) into
    // *result (null: discarded), its answer into *answer; false, with
    // nothing done, when model is null or not a plain action.
    static bool callAction(Mv_ModelBase* model, Mv_Variant* result, bool* answer);
    // Whether a plain action can run now into *enabled; false, *enabled
    // untouched, when model is null or not a plain action.
    static bool isActionEnabled(Mv_ModelBase* model, bool* enabled);
};

#endif
