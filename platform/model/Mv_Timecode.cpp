#include "Mv_Timecode.h"

#include <QStringList>

QString Mv_Timecode::toString() const
{
    const char sep = isDropFrame() ? ';' : ':';
    return QString::asprintf("%02u%c%02u%c%02u%c%02u", unsigned(hours), sep, unsigned(minutes), sep,
                             unsigned(seconds), sep, unsigned(frames));
}

bool Mv_Timecode::fromString(const QString& text, Mv_Timecode* out)
{
    const QString t = text.trimmed();
    if (t.isEmpty() || !out)
        return false;
    bool drop = false;
    QString normal = t;
    for (QChar& c : normal) {
        if (c == QLatin1Char(';') || c == QLatin1Char('.')) {
            drop = true;
            c = QLatin1Char(':');
        }
    }
    const QStringList parts = normal.split(QLatin1Char(':'));
    if (parts.size() != 3 && parts.size() != 4)
        return false;
    quint16 values[4] = {0, 0, 0, 0};
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        const uint v = parts.at(i).toUInt(&ok, 10);
        if (!ok || v > 0xFFFF)
            return false;
        values[i] = quint16(v);
    }
    Mv_Timecode tc(values[0], values[1], values[2], parts.size() == 4 ? values[3] : out->frames, drop ? 1 : 0);
    *out = tc;
    return true;
}
