#ifndef MVT_ARRAYCONTAINER_API_H
#define MVT_ARRAYCONTAINER_API_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Requests of array containers.
struct KELPLATFORM_EXPORT Mvt_ArrayContainer_API
{
    // Writes the number of elements into *size.
    class MsgGetSize : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgGetSize(long* size) : Mv_MessageInterface(&kType), mSizeP(size) {}
        long* size() const { return mSizeP; }

    private:
        long* mSizeP;
    };
};

#endif
