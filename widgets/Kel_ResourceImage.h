#ifndef KEL_RESOURCEIMAGE_H
#define KEL_RESOURCEIMAGE_H

#include "kelcore_export.h"

#include <QPixmap>
#include <QString>

// Loads the library's images from the resource path. On a high-density
// screen an image "name@2x.png" lying beside "name.png" is taken instead,
// with its device pixel ratio set, so that it is drawn sharp at the same
// logical size.
class KELCORE_EXPORT Kel_ResourceImage
{
public:
    Kel_ResourceImage() = delete;

    // The image at resource path + relativePath (joined as they are, no
    // separator added); a null pixmap when it does not load.
    // devicePixelRatio 0 means the highest ratio of the application's screens.
    static QPixmap load(const QString& relativePath, qreal devicePixelRatio = 0);

    // The "@2x" file name of path ("Images/a.png" gives "Images/a@2x.png").
    static QString highDensityName(const QString& path);

    // A pixmap's size in device-independent pixels.
    static QSize logicalSize(const QPixmap& pixmap);
};

#endif
