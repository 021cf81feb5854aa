// The plain bridge: size, painting, names and tool tips of its view.
#include "ViewTestSupport.h"

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

TEST(BridgeQWidget, FollowsItsViewInSizePaintNamesAndTips)
{
    HostedPanel host(QSize(120, 40));
    Kel_BridgeQWidget* bridge = host.bridge;
    Kel_ContainerViewBase* panel = host.panel;
    ProbeView* box = host.add(QStringLiteral("Box"), QRect(10, 10, 20, 20));
    box->fill = Qt::blue;
    box->tip = QStringLiteral("Box tip");
    host.window.setToolTip(QStringLiteral("window tip"));

    EXPECT_EQ(bridge->size(), QSize(120, 40));
    panel->setSizeAndNotifyParent(QSize(160, 50));
    EXPECT_EQ(bridge->size(), QSize(160, 50));
    bridge->resize(200, 60);
    EXPECT_EQ(panel->getSize(), QSize(200, 60));

    bridge->setBridgeBackgroundColor(Qt::red);
    QImage image = bridge->grab().toImage();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(15, 15), QColor(Qt::blue));

    EXPECT_EQ(bridge->findUiName(QPoint(15, 15)), QStringLiteral("Bridge.Panel.Box"));
    EXPECT_EQ(bridge->findUiName(QPoint(50, 15)), QStringLiteral("Bridge.Panel"));
    EXPECT_EQ(bridge->findUiName(QPoint(250, 15)), QStringLiteral("Bridge"));
    EXPECT_EQ(bridge->findPoi(QStringLiteral("Bridge.Panel.Box")),
              QRect(bridge->mapToGlobal(QPoint(10, 10) + QRect(0, 0, 20, 20).center()), QSize(1, 1)));
    EXPECT_TRUE(bridge->findPoi(QStringLiteral("Other.Panel")).isNull());

    // A tip where the view has one; elsewhere the window behind the bridge speaks.
    auto help = [&](const QPoint& p) {
        QHelpEvent event(QEvent::ToolTip, p, bridge->mapToGlobal(p));
        QApplication::sendEvent(bridge, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(help(QPoint(15, 15)), QStringLiteral("Box tip"));
    EXPECT_EQ(help(QPoint(60, 20)), QStringLiteral("window tip"));
    QToolTip::hideText();

    // Removing the view empties the bridge; what needs a view then does nothing.
    bridge->removeView(panel);
    EXPECT_EQ(bridge->getChild(), nullptr);
    QTest::mouseClick(bridge, Qt::LeftButton);
    EXPECT_EQ(bridge->findUiName(QPoint(15, 15)), QStringLiteral("Bridge"));
}
