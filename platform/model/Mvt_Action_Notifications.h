#ifndef MVT_ACTION_NOTIFICATIONS_H
#define MVT_ACTION_NOTIFICATIONS_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Notifications of action models.
struct KELPLATFORM_EXPORT Mvt_Action_Notifications
{
    // Whether the action can run changed; listeners ask MsgIsEnabled again.
    class MsgEnabledChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgEnabledChanged() : Mv_MessageInterface(&kType) {}
    };
};

#endif
