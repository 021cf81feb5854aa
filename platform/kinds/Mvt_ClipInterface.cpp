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

bool Mvt_ClipInterface::Listener::getMobID(QString& mobID) const
{
    QString value;
    if (!SendMessageToModel(Mvt_ClipInterface_API::MsgGetMobID(&value), false))
        return false;
    mobID = value;
    return true;
}

bool Mvt_ClipInterface::Listener::getMarkIn(Mv_Timecode& markIn) const
{
    Mv_Timecode value;
    if (!SendMessageToModel(Mvt_ClipInterface_API::MsgGetMarkIn(&value), false))
        return false;
    markIn = value;
    return true;
}

bool Mvt_ClipInterface::Listener::getMarkOut(Mv_Timecode& markOut) const
{
    Mv_Timecode value;
    if (!SendMessageToModel(Mvt_ClipInterface_API::MsgGetMarkOut(&value), false))
        return false;
    markOut = value;
    return true;
}

QString Mvt_ClipInterface::Listener::mobID() const
{
    QString value;
    getMobID(value);
    return value;
}
