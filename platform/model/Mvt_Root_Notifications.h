#ifndef MVT_ROOT_NOTIFICATIONS_H
#define MVT_ROOT_NOTIFICATIONS_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Notifications that every listener may receive, whatever its model kind.
struct KELPLATFORM_EXPORT Mvt_Root_Notifications
{
    // The listener was attached to, or detached from, its model. It is also
    // delivered once after every connect(), telling the outcome, so that an
    // owner can refresh from a single place.
    class MsgConnectedChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgConnectedChanged(bool connected) : Mv_MessageInterface(&kType), mConnected(connected) {}
        bool isConnected() const { return mConnected; }

    private:
        bool mConnected;
    };
};

#endif
