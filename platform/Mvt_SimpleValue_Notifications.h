#ifndef MVT_SIMPLEVALUE_NOTIFICATIONS_H
#define MVT_SIMPLEVALUE_NOTIFICATIONS_H

#include "Mv_MessageInterface.h"

// Notifications of value models.
struct Mvt_SimpleValue_Notifications
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
