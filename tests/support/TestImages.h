#ifndef KEL_TEST_IMAGES_H
#define KEL_TEST_IMAGES_H

#include "Ost_Resource.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

// A temporary resource folder for widgets that load images: the resource
// path points at it while it lives, and add() writes plain images into it.
class TestImageFolder
{
public:
    TestImageFolder() : mPrevious(Ost_Resource::getResourcePath()) { Ost_Resource::setResourcePath(mDir.path()); }
    ~TestImageFolder() { Ost_Resource::setResourcePath(mPrevious); }
    TestImageFolder(const TestImageFolder&) = delete;
    TestImageFolder& operator=(const TestImageFolder&) = delete;

    // Writes an image of size filled with color at relativePath ("Images/a.png").
    bool add(const QString& relativePath, QSize size, QColor color) const
    {
        const QString path = mDir.filePath(relativePath);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        return image.save(path, "PNG");
    }

private:
    QTemporaryDir mDir;
    QString mPrevious;
};

#endif
