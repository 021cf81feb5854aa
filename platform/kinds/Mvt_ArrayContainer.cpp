#include "Mvt_ArrayContainer.h"

Mvt_ArrayContainer::Mvt_ArrayContainer(const QString& name)
    : Mv_ModelBase(name)
{
}

bool Mvt_ArrayContainer::ReceiveMessage(const Mv_MessageInterface& message)
{
    if (const auto* m = message.as<Mvt_ArrayContainer_API::MsgGetSize>()) {
        if (m->size())
            *m->size() = handleGetSize();
        return true;
    }
    if (const auto* m = message.as<Mvt_ArrayContainer_API::MsgMoveElements>()) {
        const bool moved = handleMoveElements(m->from(), m->to());
        if (m->moved())
            *m->moved() = moved;
        return true;
    }
    return Mv_ModelBase::ReceiveMessage(message);
}

bool Mvt_ArrayContainer::handleMoveElements(long, long)
{
    return false;
}

void Mvt_ArrayContainer::notifyElementsReplaced(long first, long removedEnd, long insertedCount)
{
    SendToListeners(
        Mvt_ArrayContainer_Notifications::MsgElementsReplaced(first, removedEnd, insertedCount, handleGetSize()));
}

void Mvt_ArrayContainer::notifyElementsMoved(long from, long to)
{
    SendToListeners(Mvt_ArrayContainer_Notifications::MsgElementsMoved(from, to));
}

void Mvt_ArrayContainer::notifyElementValueChanged(long index)
{
    SendToListeners(Mvt_ArrayContainer_Notifications::MsgElementValueChanged(index));
}

long Mvt_ArrayContainer::Listener::size() const
{
    long size = 0;
    if (!SendMessageToModel(Mvt_ArrayContainer_API::MsgGetSize(&size), false))
        return 0;
    return size;
}

bool Mvt_ArrayContainer::Listener::requestMove(long from, long to) const
{
    bool moved = false;
    return SendMessageToModel(Mvt_ArrayContainer_API::MsgMoveElements(from, to, &moved), true) && moved;
}
