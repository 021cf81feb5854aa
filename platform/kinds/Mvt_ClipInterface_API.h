#ifndef MVT_CLIPINTERFACE_API_H
#define MVT_CLIPINTERFACE_API_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"
#include "Mv_Timecode.h"

#include <QString>

// Requests of clip models (Mvt_ClipInterface): each writes one value of the
// clip into the caller's variable.
struct KELPLATFORM_EXPORT Mvt_ClipInterface_API
{
    // The clip's media object id ("mob id").
    class MsgGetMobID : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgGetMobID(QString* mobID) : Mv_MessageInterface(&kType), mMobIDP(mobID) {}
        QString* mobID() const { return mMobIDP; }

    private:
        QString* mMobIDP;
    };

    // The clip's mark-in point.
    class MsgGetMarkIn : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgGetMarkIn(Mv_Timecode* markIn) : Mv_MessageInterface(&kType), mMarkP(markIn) {}
        Mv_Timecode* markIn() const { return mMarkP; }

    private:
        Mv_Timecode* mMarkP;
    };

    // The clip's mark-out point.
    class MsgGetMarkOut : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgGetMarkOut(Mv_Timecode* markOut) : Mv_MessageInterface(&kType), mMarkP(markOut) {}
        Mv_Timecode* markOut() const { return mMarkP; }

    private:
        Mv_Timecode* mMarkP;
    };
};

#endif
