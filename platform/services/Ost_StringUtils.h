#ifndef OST_STRINGUTILS_H
#define OST_STRINGUTILS_H

#include "kelplatform_export.h"

#include <QChar>
#include <QString>
#include <QStringList>

// Small string helpers shared by the platform services.
class KELPLATFORM_EXPORT Ost_StringUtils
{
public:
    // s after a round trip through the local 8-bit encoding: what survives
    // being handed to an API that only speaks that encoding.
    static QString throughLocal8Bit(const QString& s);
    // Lower-case hex of the address, no "0x" and no padding (null gives "0").
    static QString pointerToHex(const void* p);
    // Splits s at every separator, keeping empty parts ("a||b" gives 3 parts).
    static QStringList splitKeepEmpty(const QString& s, QChar separator);
};

#endif
