// Kel_RelativeMouseTracker: relative motion while a button is held, with
// the pointer put back before it strays far, driven with real mouse events.
#include "Kel_RelativeMouseTracker.h"
#include "TestSupport.h"

#include <QCursor>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class TrackerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // On a real display server the pointer moves arrive later, from the
        // server, and each warp back sends a move of its own: the exact
        // sequences below hold only where test moves are delivered at once.
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            GTEST_SKIP() << "pointer moves are delivered at once only offscreen";
        jog.resize(200, 200);
        jog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&jog));
        tracker = new Kel_RelativeMouseTracker(&jog);
        tracker->connect(tracker, &Kel_RelativeMouseTracker::moved,
                         [this](int dx, int dy) { motion << QPoint(dx, dy); });
    }
    QPoint global(const QPoint& local) const { return jog.mapToGlobal(local); }
    QWidget jog;
    Kel_RelativeMouseTracker* tracker = nullptr;
    QList<QPoint> motion;
};

} // namespace

TEST_F(TrackerTest, ReportsMotionWhileTheButtonIsHeld)
{
    QSignalSpy started(tracker, &Kel_RelativeMouseTracker::started);
    QSignalSpy finished(tracker, &Kel_RelativeMouseTracker::finished);

    // Moves without the button are not tracked.
    QTest::mouseMove(&jog, QPoint(100, 100));
    EXPECT_TRUE(motion.isEmpty());

    QTest::mousePress(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    EXPECT_EQ(started.count(), 1);
    EXPECT_TRUE(tracker->isTracking());
    EXPECT_EQ(jog.cursor().shape(), Qt::BlankCursor);
    QTest::mouseMove(&jog, QPoint(110, 95));
    QTest::mouseMove(&jog, QPoint(113, 95));
    EXPECT_EQ(motion, (QList<QPoint>{QPoint(10, -5), QPoint(3, 0)}));

    // Far from where the button went down, the pointer is put back there;
    // the move that causes counts for nothing.
    motion.clear();
    QTest::mouseMove(&jog, QPoint(190, 95));
    EXPECT_EQ(motion, QList<QPoint>{QPoint(77, 0)});
    EXPECT_EQ(QCursor::pos(), global(QPoint(100, 100)));
    QTest::mouseMove(&jog, QPoint(100, 100));
    QTest::mouseMove(&jog, QPoint(95, 100));
    EXPECT_EQ(motion, (QList<QPoint>{QPoint(77, 0), QPoint(-5, 0)}));

    // Another button changes nothing; the release ends with the sum.
    QTest::mouseClick(&jog, Qt::RightButton, Qt::NoModifier, QPoint(95, 100));
    EXPECT_TRUE(tracker->isTracking());
    QTest::mouseRelease(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(95, 100));
    EXPECT_FALSE(tracker->isTracking());
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].toPoint(), QPoint(85, -5));
    EXPECT_EQ(tracker->totalMotion(), QPoint(85, -5));
    EXPECT_NE(jog.cursor().shape(), Qt::BlankCursor);
    motion.clear();
    QTest::mouseMove(&jog, QPoint(50, 50));
    EXPECT_TRUE(motion.isEmpty());
}

TEST_F(TrackerTest, StopsWhenTheWidgetGoesAwayMidDrag)
{
    QSignalSpy finished(tracker, &Kel_RelativeMouseTracker::finished);
    QTest::mousePress(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    QTest::mouseMove(&jog, QPoint(60, 50));
    jog.setEnabled(false);
    EXPECT_FALSE(tracker->isTracking());
    EXPECT_EQ(finished.count(), 1);
    // A disabled widget is not tracked; a hidden one stops too.
    QTest::mousePress(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_FALSE(tracker->isTracking());
    jog.setEnabled(true);
    tracker->setHidesCursor(false);
    QTest::mousePress(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_TRUE(tracker->isTracking());
    EXPECT_NE(jog.cursor().shape(), Qt::BlankCursor);
    jog.hide();
    EXPECT_FALSE(tracker->isTracking());
    EXPECT_EQ(finished.count(), 2);

    // A tracker destroyed mid-drag lets the mouse go.
    jog.show();
    QTest::mousePress(&jog, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_EQ(QWidget::mouseGrabber(), &jog);
    delete tracker;
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}
