#ifndef MVT_SIMPLEVALUE_NOTIFICATIONS_H
#define MVT_SIMPLEVALUE_NOTIFICATIONS_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Notifications of value models.
struct KELPLATFORM_EXPORT Mvt_SimpleValue_Notifications
{
    // The model's value changed; listeners re-read it with a get message.
    class MsgValueChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgValueChanged() : Mv_MessageInterface(&kType) {}
    };
};

#endif
