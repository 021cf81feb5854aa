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

    // Asks the container to move the element at from to position to, the
    // elements in between shifting by one towards from. *moved (when given)
    // tells whether it did: a read-only container, a container that cannot
    // reorder its elements, or a position out of range leave it unchanged.
    // A container that moves tells its listeners as for any other move.
    class MsgMoveElements : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgMoveElements(long from, long to, bool* moved = nullptr)
            : Mv_MessageInterface(&kType), mFrom(from), mTo(to), mMovedP(moved) {}
        long from() const { return mFrom; }
        long to() const { return mTo; }
        bool* moved() const { return mMovedP; }

    private:
        long mFrom, mTo;
        bool* mMovedP;
    };
};

#endif
