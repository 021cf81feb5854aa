#ifndef MVT_ARRAY_API_H
#define MVT_ARRAY_API_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Requests addressed to one element of a container: any element request
// (get, set, variant get and set, action, is-enabled) wrapped with an index.
struct KELPLATFORM_EXPORT Mvt_Array_API
{
    class MsgElement : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgElement(long index, const Mv_MessageInterface& inner)
            : Mv_MessageInterface(&kType), mIndex(index), mInnerP(&inner) {}
        bool isModifying() const override { return mInnerP->isModifying(); }
        long index() const { return mIndex; }
        const Mv_MessageInterface& inner() const { return *mInnerP; }

    private:
        long mIndex;
        const Mv_MessageInterface* mInnerP;
    };
};

#endif
