#ifndef MVT_ARRAYCONTAINER_H
#define MVT_ARRAYCONTAINER_H

#include "kelplatform_export.h"

#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mvt_ArrayContainer_API.h"
#include "Mvt_ArrayContainer_Notifications.h"

// The kind of array containers: models that have a number of elements and
// tell their listeners when elements are replaced (inserted, removed),
// moved, or change value. Arrays (Mvt_Array) add access to the elements.
class KELPLATFORM_EXPORT Mvt_ArrayContainer : public Mv_ModelBase
{
public:
    class Listener;

    explicit Mvt_ArrayContainer(const QString& name = QString());

    bool ReceiveMessage(const Mv_MessageInterface& message) override;

    // The current number of elements.
    long containerSize() { return handleGetSize(); }

    // Notifications, sent by the concrete containers after they changed.
    void notifyElementsReplaced(long first, long removedEnd, long insertedCount);
    void notifyElementsMoved(long from, long to);
    // Virtual so that a container whose elements belong to a larger whole
    // (the field arrays of a record array) can tell that whole too.
    virtual void notifyElementValueChanged(long index);

protected:
    virtual long handleGetSize() = 0;
    // Answers a listener's request to move an element: true when moved (and
    // the listeners told). Containers that cannot reorder keep the default,
    // which refuses.
    virtual bool handleMoveElements(long from, long to);
};

// A listener to an array container.
class KELPLATFORM_EXPORT Mvt_ArrayContainer::Listener : public Mv_ListenerBase
{
public:
    using Mv_ListenerBase::Mv_ListenerBase;

    // The number of elements; 0 when unconnected.
    long size() const;
    // Asks the container to move the element at from to position to; true
    // when it did (false unconnected, read-only or out of range).
    bool requestMove(long from, long to) const;
};

#endif
