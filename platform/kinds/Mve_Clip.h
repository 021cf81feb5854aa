#ifndef MVE_CLIP_H
#define MVE_CLIP_H

#include "kelplatform_export.h"

#include "Mvt_ClipInterface.h"

// A clip model that stores its mob id and marks; each setter notifies the
// listeners when the value changes.
class KELPLATFORM_EXPORT Mve_Clip : public Mvt_ClipInterface
{
public:
    explicit Mve_Clip(const QString& name = QString());

    const QString& mobID() const { return mMobID; }
    const Mv_Timecode& markIn() const { return mMarkIn; }
    const Mv_Timecode& markOut() const { return mMarkOut; }

    // Each answers whether the value changed.
    bool setMobID(const QString& mobID);
    bool setMarkIn(const Mv_Timecode& markIn);
    bool setMarkOut(const Mv_Timecode& markOut);

protected:
    bool handleGetMobID(QString& mobID) override;
    bool handleGetMarkIn(Mv_Timecode& markIn) override;
    bool handleGetMarkOut(Mv_Timecode& markOut) override;

private:
    QString mMobID;
    Mv_Timecode mMarkIn;
    Mv_Timecode mMarkOut;
};

#endif
