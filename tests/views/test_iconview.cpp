// The icon view: an image chosen by name, by index or as a picture, found
// under the resource path, drawn scaled into the view.
#include "Kel_IconView.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "ViewTestSupport.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

namespace {

// A resource folder with Images/red.png (8x8) and Images/blue.png (40x20).
struct ImageFolder
{
    ImageFolder()
    {
        previous = Ost_Resource::getResourcePath();
        QDir(dir.path()).mkpath(QStringLiteral("Images"));
        save(QStringLiteral("red.png"), QSize(8, 8), Qt::red);
        save(QStringLiteral("blue.png"), QSize(40, 20), Qt::blue);
        Ost_Resource::setResourcePath(dir.path() + QLatin1Char('/'));
    }
    ~ImageFolder() { Ost_Resource::setResourcePath(previous); }
    void save(const QString& name, const QSize& size, Qt::GlobalColor color)
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        image.save(dir.path() + QStringLiteral("/Images/") + name);
    }
    QTemporaryDir dir;
    QString previous;
};

QImage drawn(Kel_IconView& view)
{
    QImage image(view.getSize(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    view.drawContents(&painter, view.getLocalDrawingRect());
    return image;
}

} // namespace

TEST(IconView, DrawsTheImageItsModelNames)
{
    ImageFolder images;
    Mve_SimpleValue<QString> status(QStringLiteral("red.png"), "IconView.Status");
    status.Publish();
    RecordingParent parent;
    Kel_IconView view;
    view.setName(QStringLiteral("Status"));
    view.setSize(QSize(20, 10));
    view.setParent(&parent);
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(view.currentPixmap().isNull());
    EXPECT_EQ(drawn(view).pixelColor(10, 5), QColor(Qt::white));

    view.SetConnectionID(QStringLiteral("IconView.Status"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    // Small images keep their size, centred.
    QImage image = drawn(view);
    EXPECT_EQ(image.pixelColor(10, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(2, 5), QColor(Qt::white));

    // Large ones shrink to fit, keeping their proportions (40x20 into 20x10).
    parent.log.clear();
    status.setValue(QStringLiteral("blue.png"));
    EXPECT_EQ(parent.log, QStringList{"bits Status 0,0 20x10"});
    image = drawn(view);
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(18, 8), QColor(Qt::blue));

    // Missing files and empty names draw nothing.
    for (const QString& name : {QStringLiteral("missing.png"), QString(), QStringLiteral("../../nowhere")}) {
        status.setValue(name);
        EXPECT_TRUE(view.currentPixmap().isNull());
        EXPECT_EQ(drawn(view).pixelColor(10, 5), QColor(Qt::white));
    }
    // Absolute paths are taken as they are.
    status.setValue(images.dir.path() + QStringLiteral("/Images/red.png"));
    EXPECT_EQ(view.currentPixmap().size(), QSize(8, 8));
}

TEST(IconView, PicksByIndexOrTakesThePictureItself)
{
    ImageFolder images;
    Mve_SimpleValue<long> level(1, "IconView.Level");
    Mve_SimpleValue<bool> armed(false, "IconView.Armed");
    QPixmap green(6, 6);
    green.fill(Qt::green);
    Mve_SimpleValue<QPixmap> picture(green, "IconView.Picture");
    publishAll({&level, &armed, &picture});
    Kel_IconView view;
    view.setSize(QSize(40, 40));
    view.setConnectionType(Kel_IconView::kImageIndexConnection);
    view.setImageNames({QStringLiteral("red.png"), QStringLiteral("blue.png")});
    view.SetConnectionID(QStringLiteral("IconView.Level"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(view.currentPixmap().size(), QSize(40, 20));
    for (long outside : {-1L, 2L, 1000L}) {
        level.setValue(outside);
        EXPECT_TRUE(view.currentPixmap().isNull());
    }

    // A bool model picks the first or the second.
    view.SetConnectionID(QStringLiteral("IconView.Armed"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(view.currentPixmap().size(), QSize(8, 8));
    armed.setValue(true);
    EXPECT_EQ(view.currentPixmap().size(), QSize(40, 20));

    view.setConnectionType(Kel_IconView::kPixmapConnection);
    view.SetConnectionID(QStringLiteral("IconView.Picture"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(drawn(view).pixelColor(20, 20), QColor(Qt::green));
    // A picture model read as a name finds nothing.
    view.setConnectionType(Kel_IconView::kImageNameConnection);
    EXPECT_TRUE(view.currentPixmap().isNull());

    std::unique_ptr<Kel_ViewInterface> copy(view.clone());
    auto* copied = static_cast<Kel_IconView*>(copy.get());
    EXPECT_EQ(copied->getImageNames().size(), 2);
    EXPECT_TRUE(copied->currentPixmap().isNull()); // unconnected
}
