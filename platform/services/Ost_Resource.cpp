#include "Ost_Resource.h"

namespace {

QString& storedResourcePath()
{
    static QString path;
    return path;
}

} // namespace

void Ost_Resource::setResourcePath(const QString& path)
{
    QString stored = path;
    if (!stored.isEmpty() && !stored.endsWith(QLatin1Char('/')) && !stored.endsWith(QLatin1Char('\\')))
        stored += QLatin1Char('/');
    storedResourcePath() = stored;
}

QString Ost_Resource::getResourcePath()
{
    return storedResourcePath();
}
