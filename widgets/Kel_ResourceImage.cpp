#include "Kel_ResourceImage.h"

#include "Ost_Resource.h"

#include <QFileInfo>
#include <QGuiApplication>

QPixmap Kel_ResourceImage::load(const QString& relativePath, qreal devicePixelRatio)
{
    if (relativePath.isEmpty())
        return QPixmap();
    if (devicePixelRatio <= 0)
        devicePixelRatio = qGuiApp ? qGuiApp->devicePixelRatio() : 1.0;
    const QString path = Ost_Resource::getResourcePath() + relativePath;
    if (devicePixelRatio > 1.0) {
        const QString dense = highDensityName(path);
        if (QFileInfo::exists(dense)) {
            QImage image(dense);
            if (!image.isNull()) {
                // QImageReader sets the ratio from the "@2x" name already; say it anyway.
                image.setDevicePixelRatio(2.0);
                return QPixmap::fromImage(image);
            }
        }
    }
    QImage image(path);
    if (image.isNull())
        return QPixmap();
    image.setDevicePixelRatio(1.0);
    return QPixmap::fromImage(image);
}

QString Kel_ResourceImage::highDensityName(const QString& path)
{
    const int slash = qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    if (dot <= slash)
        return path + QStringLiteral("@2x");
    return path.left(dot) + QStringLiteral("@2x") + path.mid(dot);
}

QSize Kel_ResourceImage::logicalSize(const QPixmap& pixmap)
{
    if (pixmap.isNull())
        return QSize();
    const qreal ratio = pixmap.devicePixelRatio() > 0 ? pixmap.devicePixelRatio() : 1.0;
    return QSize(qRound(pixmap.width() / ratio), qRound(pixmap.height() / ratio));
}
