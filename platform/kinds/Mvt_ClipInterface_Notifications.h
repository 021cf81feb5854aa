#ifndef MVT_CLIPINTERFACE_NOTIFICATIONS_H
#define MVT_CLIPINTERFACE_NOTIFICATIONS_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Notifications of clip models (Mvt_ClipInterface); listeners re-read the
// value that changed.
struct KELPLATFORM_EXPORT Mvt_ClipInterface_Notifications
{
    class MsgMarkInChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgMarkInChanged() : Mv_MessageInterface(&kType) {}
    };

    class MsgMarkOutChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgMarkOutChanged() : Mv_MessageInterface(&kType) {}
    };

    // The model now stands for another clip (another mob id).
    class MsgMobIDChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgMobIDChanged() : Mv_MessageInterface(&kType) {}
    };
};

#endif
