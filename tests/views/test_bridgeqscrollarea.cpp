// The scroll-area bridge: content never smaller than the visible area,
// scrolling rectangles into sight, drag auto-scroll, input in content
// coordinates.
#define QTEST_QPA_MOUSE_HANDLING
#include "Kel_BridgeQScrollArea.h"
#include "ViewTestSupport.h"

#include <QApplication>
#include <QMimeData>
#include <QRegularExpression>
#include <QScrollBar>
#include <cstdlib>

namespace {

// Auto-scroll steers by a cursor position that the test sets.
class SteeredScrollArea : public Kel_BridgeQScrollArea
{
public:
    using Kel_BridgeQScrollArea::Kel_BridgeQScrollArea;
    QPoint cursor;

protected:
    QPoint cursorPosInViewport() const override { return cursor; }
};

// A 200 x 100 bridge in a shown window, hosting "Content" of the given minimum size.
struct ScrollHost
{
    explicit ScrollHost(const QSize& contentSize, bool scrollBars = false)
    {
        area = new SteeredScrollArea(&window);
        area->setObjectName(QStringLiteral("Scroller"));
        if (!scrollBars) {
            area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        }
        area->setGeometry(0, 0, 200, 100);
        content = new ProbeView(QStringLiteral("Content"), QRect(QPoint(), contentSize), 0, &log);
        content->setMinSize(contentSize);
        area->setChild(content);
        window.resize(200, 100);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    QScrollBar* h() const { return area->horizontalScrollBar(); }
    QScrollBar* v() const { return area->verticalScrollBar(); }
    QRect visible() const { return QRect(h()->value(), v()->value(), 200, 100); }
    // What reached the content, paints left out.
    QStringList input() const { return log.filter(QRegularExpression(QStringLiteral("^(?!paint)"))); }

    QWidget window;
    SteeredScrollArea* area;
    ProbeView* content;
    QStringList log;
};

} // namespace

TEST(BridgeQScrollArea, ContentIsNeverSmallerThanTheVisibleArea)
{
    ScrollHost host(QSize(50, 50), true);
    EXPECT_EQ(host.content->getSize(), QSize(200, 100));
    EXPECT_FALSE(host.v()->isVisible());

    host.content->setMinSize(QSize(400, 600));
    host.content->setSizeAndNotifyParent(QSize(400, 600));
    EXPECT_TRUE(waitFor([&] { return host.v()->isVisible() && host.h()->isVisible(); }));
    EXPECT_EQ(host.area->viewportWidget()->size(), QSize(400, 600));

    // Only taller than the area: the vertical bar must not cost a horizontal one.
    host.content->setMinSize(QSize(50, 600));
    host.content->setSizeAndNotifyParent(QSize(50, 600));
    EXPECT_TRUE(waitFor([&] { return !host.h()->isVisible(); }));
    EXPECT_EQ(host.content->getSize(), QSize(host.area->visibleWidth(), 600));
}

TEST(BridgeQScrollArea, DragNearAnEdgeScrollsFasterAndFaster)
{
    ScrollHost host(QSize(400, 20000));
    host.area->setAcceptDrops(true);
    host.area->setDragAutoScroll(true);
    QTimer* timer = host.area->findChild<QTimer*>(QStringLiteral("autoScrollTimer"));
    ASSERT_NE(timer, nullptr);
    QMimeData data;
    data.setText(QStringLiteral("clip"));
    QWidget* viewport = host.area->viewport();
    auto send = [&](const QPoint& p) {
        QDragMoveEvent event(p, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &event);
    };
    auto tick = [&] {
        const QPoint before(host.h()->value(), host.v()->value());
        QMetaObject::invokeMethod(timer, "timeout");
        return QPoint(host.h()->value(), host.v()->value()) - before;
    };

    QDragEnterEvent enter(QPoint(100, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &enter);
    EXPECT_TRUE(enter.isAccepted());
    send(QPoint(100, 50));
    EXPECT_FALSE(host.area->isDragAutoScrolling());
    send(QPoint(100, 90));
    EXPECT_TRUE(host.area->isDragAutoScrolling());

    // Held 10 pixels from the bottom: one pixel per tick, then one more every sixth tick, up to 30.
    host.area->cursor = QPoint(100, 90);
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(tick().y(), std::min(30, i < 11 ? 1 : 2 + (i - 11) / 6)) << "tick " << i;

    // Back in the middle: the next tick stops without scrolling.
    host.area->cursor = QPoint(100, 50);
    EXPECT_EQ(tick(), QPoint(0, 0));
    EXPECT_FALSE(host.area->isDragAutoScrolling());

    // The top-left corner scrolls up and left, from the first speed again.
    host.h()->setValue(50);
    send(QPoint(5, 5));
    host.area->cursor = QPoint(5, 5);
    EXPECT_EQ(tick(), QPoint(-1, -1));
}

// A content far taller and a little wider than the area.
class TallContent : public ::testing::Test
{
protected:
    ScrollHost host{QSize(400, 2000)};
};

TEST_F(TallContent, EnsureRectVisibleScrollsOnlyAsFarAsNeeded)
{
    host.area->ensureRectVisible(QRect(10, 10, 50, 20));
    EXPECT_EQ(host.visible().topLeft(), QPoint(0, 0));

    // Below: centred; an empty width leaves the horizontal position alone.
    const QRect below(500, 300, 0, 20);
    host.area->ensureRectVisible(below);
    EXPECT_EQ(host.h()->value(), 0);
    EXPECT_LE(std::abs(host.visible().center().y() - below.center().y()), 1);

    // Above: lined up with the top edge.
    host.area->ensureRectVisible(QRect(0, 100, 10, 20));
    EXPECT_EQ(host.visible().topLeft(), QPoint(0, 100));

    // Right: the right edges line up, the last column of the rectangle one short.
    host.area->ensureRectVisible(QRect(300, 120, 50, 10));
    EXPECT_EQ(host.visible().right(), 348);
}

TEST_F(TallContent, MouseInputArrivesInContentCoordinates)
{
    host.v()->setValue(300);
    host.h()->setValue(20);
    QTest::mousePress(host.area->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseRelease(host.area->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_EQ(host.input(), (QStringList{"press Content 30,310", "release Content 30,310"}));
    EXPECT_EQ(host.area->findUiName(QPoint(10, 10)), QStringLiteral("Scroller.Content"));
}

TEST_F(TallContent, FocusLandsOnTheContentAndKeysItLeavesScroll)
{
    host.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host.window));
    host.area->setFocus();
    host.log.clear();
    QTest::keyClick(host.window.windowHandle(), Qt::Key_A);
    host.content->takesKeys = false;
    QTest::keyClick(host.window.windowHandle(), Qt::Key_Down);
    EXPECT_EQ(host.input(), (QStringList{"key Content a", "key Content "}));
    EXPECT_GT(host.v()->value(), 0);
}

TEST_F(TallContent, OverlaidEditorIsScrolledIntoSightFirst)
{
    QWidget editor(host.area);
    editor.resize(50, 20);
    host.area->overlayChildEditWidget(host.content, &editor, 100, 1500);
    EXPECT_TRUE(host.area->viewport()->geometry().contains(editor.geometry()));
}
