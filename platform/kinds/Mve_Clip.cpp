#include "Mve_Clip.h"

Mve_Clip::Mve_Clip(const QString& name) : Mvt_ClipInterface(name)
{
}

bool Mve_Clip::setMobID(const QString& mobID)
{
    if (mobID == mMobID)
        return false;
    mMobID = mobID;
    notifyMobIDChanged();
    return true;
}

bool Mve_Clip::setMarkIn(const Mv_Timecode& markIn)
{
    if (markIn == mMarkIn)
        return false;
    mMarkIn = markIn;
    notifyMarkInChanged();
    return true;
}

bool Mve_Clip::setMarkOut(const Mv_Timecode& markOut)
{
    if (markOut == mMarkOut)
        return false;
    mMarkOut = markOut;
    notifyMarkOutChanged();
    return true;
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
