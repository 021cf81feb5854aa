// The type identities of the model library's non-template messages.
#include "Mvt_Action_API.h"
#include "Mvt_Action_Notifications.h"
#include "Mvt_ArrayContainer_API.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_Array_API.h"
#include "Mvt_Root_Notifications.h"
#include "Mvt_SimpleValue_BaseAPI.h"
#include "Mvt_SimpleValue_Notifications.h"

const Mv_MessageType Mvt_Root_Notifications::MsgConnectedChanged::kType{"Mvt_Root_Notifications::MsgConnectedChanged"};
const Mv_MessageType Mvt_SimpleValue_Notifications::MsgValueChanged::kType{"Mvt_SimpleValue_Notifications::MsgValueChanged"};
const Mv_MessageType Mvt_SimpleValue_BaseAPI::MsgGetVariant::kType{"Mvt_SimpleValue_BaseAPI::MsgGetVariant"};
const Mv_MessageType Mvt_SimpleValue_BaseAPI::MsgSetVariant::kType{"Mvt_SimpleValue_BaseAPI::MsgSetVariant"};
const Mv_MessageType Mvt_Action_API::MsgAction::kType{"Mvt_Action_API::MsgAction"};
const Mv_MessageType Mvt_Action_API::MsgIsEnabled::kType{"Mvt_Action_API::MsgIsEnabled"};
const Mv_MessageType Mvt_Action_Notifications::MsgEnabledChanged::kType{"Mvt_Action_Notifications::MsgEnabledChanged"};
const Mv_MessageType Mvt_ArrayContainer_API::MsgGetSize::kType{"Mvt_ArrayContainer_API::MsgGetSize"};
const Mv_MessageType Mvt_ArrayContainer_API::MsgMoveElements::kType{"Mvt_ArrayContainer_API::MsgMoveElements"};
const Mv_MessageType Mvt_ArrayContainer_Notifications::MsgElementsReplaced::kType{"Mvt_ArrayContainer_Notifications::MsgElementsReplaced"};
const Mv_MessageType Mvt_ArrayContainer_Notifications::MsgElementsMoved::kType{"Mvt_ArrayContainer_Notifications::MsgElementsMoved"};
const Mv_MessageType Mvt_ArrayContainer_Notifications::MsgElementValueChanged::kType{"Mvt_ArrayContainer_Notifications::MsgElementValueChanged"};
const Mv_MessageType Mvt_Array_API::MsgElement::kType{"Mvt_Array_API::MsgElement"};
