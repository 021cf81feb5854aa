#ifndef MVT_CLIPINTERFACE_H
#define MVT_CLIPINTERFACE_H

#include "kelplatform_export.h"

#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mv_Timecode.h"
#include "Mvt_ClipInterface_API.h"
#include "Mvt_ClipInterface_Notifications.h"

#include <QString>

// The kind of clip models: a clip of the application's media (the sequence
// loaded in a monitor, say) with its media object id and its mark-in and
// mark-out points. It answers the requests of Mvt_ClipInterface_API through
// three handlers and tells its listeners when a value changes. Mve_Clip is
// the concrete clip that stores its values.
class KELPLATFORM_EXPORT Mvt_ClipInterface : public Mv_ModelBase
{
public:
    class Listener;

    explicit Mvt_ClipInterface(const QString& name = QString());

    bool ReceiveMessage(const Mv_MessageInterface& message) override;

    // Notifications, sent by the concrete clips after they changed.
    void notifyMobIDChanged();
    void notifyMarkInChanged();
    void notifyMarkOutChanged();

protected:
    // Each reads one value; false when the clip has none to give.
    virtual bool handleGetMobID(QString& mobID) = 0;
    virtual bool handleGetMarkIn(Mv_Timecode& markIn) = 0;
    virtual bool handleGetMarkOut(Mv_Timecode& markOut) = 0;
};

// A listener to a clip model.
class KELPLATFORM_EXPORT Mvt_ClipInterface::Listener : public Mv_ListenerBase
{
public:
    using Mv_ListenerBase::Mv_ListenerBase;

    // Each reads one value into its argument; false (argument untouched)
    // when unconnected or when the clip has no such value.
    bool getMobID(QString& mobID) const;
    bool getMarkIn(Mv_Timecode& markIn) const;
    bool getMarkOut(Mv_Timecode& markOut) const;

    // The mob id, or an empty text.
    QString mobID() const;
};

#endif
