// The plain bridge: size, painting, names and tool tips of its view.
#include "Kel_BridgeQWidget.h"
#include "Kel_ContainerViewBase.h"
#include "ViewTestSupport.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace {

struct HostedBox
{
    HostedBox()
    {
        bridge = new Kel_BridgeQWidget(&window, "Bridge");
        panel = new Kel_ContainerViewBase;
        panel->setName(QStringLiteral("Panel"));
        panel->setSize(QSize(120, 40));
        box = new ProbeView(QStringLiteral("Box"), QRect(10, 10, 20, 20));
        box->fill = Qt::blue;
        box->tip = QStringLiteral("Box tip");
        panel->AddSubView(box);
        bridge->setChild(panel);
        window.resize(300, 100);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    QWidget window;
    Kel_BridgeQWidget* bridge;
    Kel_ContainerViewBase* panel;
    ProbeView* box;
};

} // namespace

TEST(BridgeQWidget, TakesTheSizeOfItsViewAndPaintsIt)
{
    HostedBox host;
    EXPECT_EQ(host.bridge->size(), QSize(120, 40));
    EXPECT_EQ(host.panel->getParent(), host.bridge);
    host.panel->setSizeAndNotifyParent(QSize(160, 50));
    EXPECT_EQ(host.bridge->size(), QSize(160, 50));
    host.bridge->resize(200, 60);
    EXPECT_EQ(host.panel->getSize(), QSize(200, 60));

    host.bridge->setBridgeBackgroundColor(Qt::red);
    QImage image = host.bridge->grab().toImage();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(15, 15), QColor(Qt::blue));

    // A picture over the colour, tiled from the corner or scaled to the whole widget.
    QPixmap pattern(10, 10);
    pattern.fill(Qt::green);
    QPainter(&pattern).fillRect(5, 0, 5, 10, Qt::yellow);
    host.bridge->setBridgeBackgroundPixmap(pattern, true);
    EXPECT_EQ(host.bridge->grab().toImage().pixelColor(16, 45), QColor(Qt::yellow));
    host.bridge->setBridgeBackgroundPixmap(pattern, false);
    EXPECT_EQ(host.bridge->grab().toImage().pixelColor(16, 45), QColor(Qt::green));

    // Removing the view empties the bridge; what needs a view then does nothing.
    host.bridge->removeView(host.panel);
    EXPECT_EQ(host.bridge->getChild(), nullptr);
    host.bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    QTest::mouseClick(host.bridge, Qt::LeftButton);
    EXPECT_EQ(host.bridge->findUiName(QPoint(15, 15)), QStringLiteral("Bridge"));
}

TEST(BridgeQWidget, NamesAndPointsOfInterest)
{
    HostedBox host;
    EXPECT_EQ(host.bridge->findUiName(QPoint(15, 15)), QStringLiteral("Bridge.Panel.Box"));
    EXPECT_EQ(host.bridge->findUiName(QPoint(50, 15)), QStringLiteral("Bridge.Panel"));
    EXPECT_EQ(host.bridge->findUiName(QPoint(150, 15)), QStringLiteral("Bridge"));
    EXPECT_EQ(host.bridge->findPoi(QStringLiteral("Bridge.Panel.Box")),
              QRect(host.bridge->mapToGlobal(QPoint(10, 10) + QRect(0, 0, 20, 20).center()), QSize(1, 1)));
    EXPECT_EQ(host.bridge->findPoi(QStringLiteral("Bridge")), QRect(host.bridge->mapToGlobal(QPoint()), QSize(120, 40)));
    EXPECT_TRUE(host.bridge->findPoi(QStringLiteral("Other.Panel")).isNull());

    host.bridge->setObjectName(QString());
    EXPECT_EQ(host.bridge->findUiName(QPoint(15, 15)), QStringLiteral("Panel.Box"));
}

TEST(BridgeQWidget, ShowsATipOnlyWhereTheViewHasOne)
{
    HostedBox host;
    host.window.setToolTip(QStringLiteral("window tip"));
    auto help = [&host](const QPoint& p) {
        QHelpEvent event(QEvent::ToolTip, p, host.bridge->mapToGlobal(p));
        QApplication::sendEvent(host.bridge, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(help(QPoint(15, 15)), QStringLiteral("Box tip"));
    // Elsewhere the bridge has nothing to say and the window behind it speaks.
    EXPECT_EQ(help(QPoint(60, 20)), QStringLiteral("window tip"));
    EXPECT_EQ(help(QPoint(25, 25)), QStringLiteral("Box tip"));
    QToolTip::hideText();
}
