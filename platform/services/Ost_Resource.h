#ifndef OST_RESOURCE_H
#define OST_RESOURCE_H

#include "kelplatform_export.h"

#include <QString>

// The folder the application loads its resources (images, layouts) from.
class KELPLATFORM_EXPORT Ost_Resource
{
public:
    // Stores path, adding a trailing "/" unless it already ends with "/" or "\";
    // an empty path stays empty.
    static void setResourcePath(const QString& path);
    static QString getResourcePath();
};

#endif
