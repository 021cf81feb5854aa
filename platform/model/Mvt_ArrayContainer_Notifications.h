#ifndef MVT_ARRAYCONTAINER_NOTIFICATIONS_H
#define MVT_ARRAYCONTAINER_NOTIFICATIONS_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"

// Notifications of array containers.
struct KELPLATFORM_EXPORT Mvt_ArrayContainer_Notifications
{
    // The elements [first, removedEnd) were replaced by insertedCount new
    // elements; the array now holds newSize elements. Covers insertion
    // (first == removedEnd), removal (insertedCount == 0) and replacement.
    class MsgElementsReplaced : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgElementsReplaced(long first, long removedEnd, long insertedCount, long newSize)
            : Mv_MessageInterface(&kType), mFirst(first), mRemovedEnd(removedEnd),
              mInsertedCount(insertedCount), mNewSize(newSize) {}
        long first() const { return mFirst; }
        long removedEnd() const { return mRemovedEnd; }
        long insertedCount() const { return mInsertedCount; }
        long newSize() const { return mNewSize; }

    private:
        long mFirst, mRemovedEnd, mInsertedCount, mNewSize;
    };

    // The element at position from moved to position to; the elements in
    // between shifted by one towards from.
    class MsgElementsMoved : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgElementsMoved(long from, long to) : Mv_MessageInterface(&kType), mFrom(from), mTo(to) {}
        long from() const { return mFrom; }
        long to() const { return mTo; }

    private:
        long mFrom, mTo;
    };

    // The value of one element changed.
    class MsgElementValueChanged : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgElementValueChanged(long index) : Mv_MessageInterface(&kType), mIndex(index) {}
        long index() const { return mIndex; }

    private:
        long mIndex;
    };
};

#endif
