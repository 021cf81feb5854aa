#ifndef MV_TIMECODE_H
#define MV_TIMECODE_H

#include "kelplatform_export.h"

#include <QMetaType>
#include <QString>
#include <QtGlobal>

// A video timecode: hours, minutes, seconds and frames, each a 16-bit field,
// and a drop-frame flag (drop frame when greater than zero). The fields are
// stored as given; no range is enforced (75 seconds stays 75).
class KELPLATFORM_EXPORT Mv_Timecode
{
public:
    Mv_Timecode() = default;
    Mv_Timecode(quint16 h, quint16 m, quint16 s, quint16 f, qint16 drop = 0)
        : hours(h), minutes(m), seconds(s), frames(f), dropFrame(drop) {}

    bool isDropFrame() const { return dropFrame > 0; }
    // ":" between the fields, ";" for drop frame.
    QChar separator() const { return isDropFrame() ? QLatin1Char(';') : QLatin1Char(':'); }

    // "hh:mm:ss:ff" (or with ";" for drop frame).
    QString toString() const;
    // Reads "hh:mm:ss:ff" or "hh:mm:ss" with ":" or ";" separators (";" or a
    // "." before the frames marks drop frame). False, and *out untouched, on
    // anything else.
    static bool fromString(const QString& text, Mv_Timecode* out);

    bool operator==(const Mv_Timecode& o) const
    {
        return hours == o.hours && minutes == o.minutes && seconds == o.seconds && frames == o.frames
            && isDropFrame() == o.isDropFrame();
    }
    bool operator!=(const Mv_Timecode& o) const { return !(*this == o); }

    quint16 hours = 0;
    quint16 minutes = 0;
    quint16 seconds = 0;
    quint16 frames = 0;
    qint16 dropFrame = 0;
};

Q_DECLARE_METATYPE(Mv_Timecode)

#endif
