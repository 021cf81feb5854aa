#include "Ost_StringUtils.h"

QString Ost_StringUtils::throughLocal8Bit(const QString& s)
{
    return QString::fromLocal8Bit(s.toLocal8Bit());
}

QString Ost_StringUtils::pointerToHex(const void* p)
{
    return QString::number(reinterpret_cast<quintptr>(p), 16);
}

QStringList Ost_StringUtils::splitKeepEmpty(const QString& s, QChar separator)
{
    return s.split(separator, Qt::KeepEmptyParts);
}
