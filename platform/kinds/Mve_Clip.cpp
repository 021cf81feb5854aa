#include "Mve_Clip.h"

Mve_Clip::Mve_Clip(const QString& name) : Mvt_ClipInterface(name)
{
}

namespace {

// Stores value in member and tells the listeners when it differs.
template <class T, class Notify>
bool assign(T& member, const T& value, Notify notify)
{
    if (value == member)
        return false;
    member = value;
    notify();
    return true;
}

} // namespace

bool Mve_Clip::setMobID(const QString& mobID)
{
    return assign(mMobID, mobID, [this] { notifyMobIDChanged(); });
}

bool Mve_Clip::setMarkIn(const Mv_Timecode& markIn)
{
    return assign(mMarkIn, markIn, [this] { notifyMarkInChanged(); });
}

bool Mve_Clip::setMarkOut(const Mv_Timecode& markOut)
{
    return assign(mMarkOut, markOut, [this] { notifyMarkOutChanged(); });
}

bool Mve_Clip::handleGetMobID(QString& mobID)
{
    mobID = mMobID;
    return true;
}

bool Mve_Clip::handleGetMarkIn(Mv_Timecode& markIn)
{
    markIn = mMarkIn;
    return true;
}

bool Mve_Clip::handleGetMarkOut(Mv_Timecode& markOut)
{
    markOut = mMarkOut;
    return true;
}
