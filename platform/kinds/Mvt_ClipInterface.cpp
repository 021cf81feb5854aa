#include "Mvt_ClipInterface.h"

const Mv_MessageType Mvt_ClipInterface_API::MsgGetMobID::kType{"Mvt_ClipInterface_API::MsgGetMobID"};
const Mv_MessageType Mvt_ClipInterface_API::MsgGetMarkIn::kType{"Mvt_ClipInterface_API::MsgGetMarkIn"};
const Mv_MessageType Mvt_ClipInterface_API::MsgGetMarkOut::kType{"Mvt_ClipInterface_API::MsgGetMarkOut"};
const Mv_MessageType Mvt_ClipInterface_Notifications::MsgMobIDChanged::kType{
    "Mvt_ClipInterface_Notifications::MsgMobIDChanged"};
const Mv_MessageType Mvt_ClipInterface_Notifications::MsgMarkInChanged::kType{
    "Mvt_ClipInterface_Notifications::MsgMarkInChanged"};
const Mv_MessageType Mvt_ClipInterface_Notifications::MsgMarkOutChanged::kType{
    "Mvt_ClipInterface_Notifications::MsgMarkOutChanged"};

Mvt_ClipInterface::Mvt_ClipInterface(const QString& name) : Mv_ModelBase(name)
{
}

bool Mvt_ClipInterface::ReceiveMessage(const Mv_MessageInterface& message)
{
    if (const auto* m = message.as<Mvt_ClipInterface_API::MsgGetMobID>())
        return m->mobID() && handleGetMobID(*m->mobID());
    if (const auto* m = message.as<Mvt_ClipInterface_API::MsgGetMarkIn>())
        return m->markIn() && handleGetMarkIn(*m->markIn());
    if (const auto* m = message.as<Mvt_ClipInterface_API::MsgGetMarkOut>())
        return m->markOut() && handleGetMarkOut(*m->markOut());
    return Mv_ModelBase::ReceiveMessage(message);
}

void Mvt_ClipInterface::notifyMobIDChanged()
{
    SendToListeners(Mvt_ClipInterface_Notifications::MsgMobIDChanged());
}

void Mvt_ClipInterface::notifyMarkInChanged()
{
    SendToListeners(Mvt_ClipInterface_Notifications::MsgMarkInChanged());
}

void Mvt_ClipInterface::notifyMarkOutChanged()
{
    SendToListeners(Mvt_ClipInterface_Notifications::MsgMarkOutChanged());
}

namespace {

// Sends a get request of type Request and copies the answer into value
// only when the model answered.
template <class Request, class T>
bool read(const Mv_ListenerBase& listener, T& value)
{
    T answer{};
    if (!listener.SendMessageToModel(Request(&answer), false))
        return false;
    value = answer;
    return true;
}

} // namespace

bool Mvt_ClipInterface::Listener::getMobID(QString& mobID) const
{
    return read<Mvt_ClipInterface_API::MsgGetMobID>(*this, mobID);
}

bool Mvt_ClipInterface::Listener::getMarkIn(Mv_Timecode& markIn) const
{
    return read<Mvt_ClipInterface_API::MsgGetMarkIn>(*this, markIn);
}

bool Mvt_ClipInterface::Listener::getMarkOut(Mv_Timecode& markOut) const
{
    return read<Mvt_ClipInterface_API::MsgGetMarkOut>(*this, markOut);
}

QString Mvt_ClipInterface::Listener::mobID() const
{
    QString value;
    getMobID(value);
    return value;
}
