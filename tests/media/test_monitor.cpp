// Kel_Monitor: the picture rectangle fitted to the current ratio and
// published, the play-rate overlay's texts, its hiding in both modes on the
// task scheduler's manual clock, and the models the monitor publishes.
#include "AssertRecorder.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_KeymapMgr.h"
#include "Kel_Monitor.h"
#include "Kel_TransparentOverlay.h"
#include "Mve_Action.h"
#include "Mve_Clip.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "TaskScheduler.h"
#include "TestImages.h"
#include "TestSupport.h"

#include <QMimeData>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The application's side of a monitor bound to "Mon": the ratio list, the
// current ratio, the models it writes, and the transport.
struct MonitorModels
{
    MonitorModels()
    {
        ratios.addField<QString>("id");
        ratios.addField<long>("numerator");
        ratios.addField<long>("denominator");
        addRatio("4 x 3", 4, 3);
        addRatio("16 x 9", 16, 9);
        addRatio("broken", 5, 0);
        publishAll({&ratios, &current, &rectangle, &offset, &moved, &setWidget, &remember, &playState, &playRate});
    }
    void addRatio(const char* id, long n, long d)
    {
        const long row = ratios.appendRow();
        ratios.setValue<QString>(row, "id", QString::fromLatin1(id));
        ratios.setValue<long>(row, "numerator", n);
        ratios.setValue<long>(row, "denominator", d);
    }

    Mve_RecordArray ratios{"Mon.AspectRatios"};
    Mve_SimpleValue<QString> current{"16 x 9", "Mon.Current.AspectRatio"};
    Mve_SimpleValue<QRect> rectangle{QRect(), "Mon.AspectRatio.Rectangle"};
    Mve_SimpleValue<QPoint> offset{QPoint(-1, -1), "Mon.AspectRatio.RectangleGlobalOffset"};
    int movedCount = 0;
    Mve_Action<void()> moved{[this] { ++movedCount; }, "Mon.MonitorMoved"};
    QWidget* givenWidget = nullptr;
    Mve_Action<void(QWidget*)> setWidget{[this](QWidget* w) { givenWidget = w; }, "Mon.setMonWidget"};
    QStringList remembered;
    Mve_Action<void(QString, QString)> remember{[this](const QString& key, const QString& value) {
                                                    remembered << key + QLatin1Char('=') + value;
                                                },
                                                "Settings.User.Set"};
    Mve_SimpleValue<QString> playState{"stopped", "MainMonitor.PlayState"};
    Mve_SimpleValue<double> playRate{1.0, "PlayInterface.playRate"};
};

class MonitorTest : public ::testing::Test
{
protected:
    void SetUp() override { TaskScheduler::instance()->setManualClock(true); }
    void TearDown() override
    {
        monitor.reset();
        TaskScheduler::instance()->setManualClock(false);
    }
    // A shown monitor of size, connected to "Mon".
    void makeMonitor(QSize size)
    {
        monitor.reset(new Kel_Monitor(nullptr, QStringLiteral("Record"), QStringLiteral("Mon")));
        monitor->resize(size);
        monitor->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(monitor.get()));
        Kel_ConnectionUtils::recursiveConnect(monitor.get(), Mv_ConnectionEnvironment::blankEnvironment());
    }
    void advance(int ms) { TaskScheduler::instance()->advanceClock(ms); }
    Kel_TransparentOverlay* overlay() const { return monitor->playRateOverlay(); }

    MonitorModels models;
    std::unique_ptr<Kel_Monitor> monitor;
};

} // namespace

TEST_F(MonitorTest, ThePictureIsPillarBoxedOrLetterBoxedAndPublished)
{
    makeMonitor(QSize(720, 400));
    EXPECT_EQ(models.givenWidget, monitor.get());
    EXPECT_EQ(monitor->pictureRect(), QRect(4, 0, 711, 400));
    EXPECT_EQ(models.rectangle.getValue(), QRect(4, 0, 711, 400));
    EXPECT_EQ(models.offset.getValue(), monitor->mapToGlobal(QPoint(0, 0)));

    const int movedBefore = models.movedCount;
    monitor->resize(640, 480);
    EXPECT_EQ(models.rectangle.getValue(), QRect(0, 60, 640, 360));
    EXPECT_EQ(models.movedCount, movedBefore + 1);

    // A new ratio is fitted, announced and remembered for the next session.
    models.current.setValue(QStringLiteral("4 x 3"));
    EXPECT_TRUE(monitor->is4x3());
    EXPECT_EQ(models.rectangle.getValue(), QRect(0, 0, 640, 480));
    EXPECT_EQ(models.movedCount, movedBefore + 2);
    EXPECT_EQ(models.remembered.last(), QStringLiteral("Monitor.AspectRatio=4 x 3"));

    // Disconnected, the monitor leaves the rectangle as it was.
    monitor->disconnectMonitor();
    monitor->resize(720, 400);
    EXPECT_EQ(models.rectangle.getValue(), QRect(0, 0, 640, 480));
    monitor->connectMonitor();
    EXPECT_EQ(models.rectangle.getValue(), QRect(93, 0, 533, 400));
}

TEST_F(MonitorTest, AnUnknownRatioOrAZeroDenominatorIsAnAssertionAndChangesNothing)
{
    AssertRecorder asserts;
    makeMonitor(QSize(720, 400));
    ASSERT_TRUE(asserts.conditions.isEmpty());
    models.current.setValue(QStringLiteral("21 x 9"));
    models.current.setValue(QStringLiteral("broken"));
    EXPECT_EQ(asserts.conditions, (QStringList{
                          "( 0 != aspectRatioN ) && \"Could not find aspect ratio in model: \" && "
                          "!cAspectRatio.isEmpty()",
                          "0 != aspectRatioD", // not found: no denominator either
                          "0 != aspectRatioD"}));
    EXPECT_EQ(monitor->pictureRect(), QRect(4, 0, 711, 400));
}

TEST_F(MonitorTest, TheOverlayTellsTheRateBandWhilePlaying)
{
    makeMonitor(QSize(720, 400));
    ASSERT_NE(overlay(), nullptr);
    EXPECT_FALSE(overlay()->isVisible());
    models.playState.setValue(QStringLiteral("playing"));
    EXPECT_TRUE(overlay()->isVisible());
    EXPECT_EQ(overlay()->alpha(), 143);
    EXPECT_EQ(overlay()->pos(), monitor->mapToGlobal(QPoint(6, 400 - 8 - overlay()->height())));

    const std::pair<double, const char*> bands[] = {{-3.7, "<< 3x"}, {-1.0, "< 1x"}, {-0.5, "< .25x"},
                                                    {0.0, "||"},     {0.5, ".25x >"}, {1.0, "1x >"},
                                                    {2.5, "2x >>"},  {40.0, "40x >>"}};
    for (const auto& band : bands) {
        models.playRate.setValue(band.first);
        EXPECT_EQ(monitor->playRateOverlayText(), QString::fromLatin1(band.second)) << band.first;
    }

    // Switched off by its model, the overlay goes; back on, it returns.
    Mvt_SimpleValue<bool>::Listener enabled(QStringLiteral("Monitor.PlayRateOverlayEnabled"),
                                            Mv_ConnectionEnvironment::blankEnvironment());
    enabled.set(false);
    advance(750);
    EXPECT_EQ(overlay()->alpha(), 0);
    enabled.set(true);
    EXPECT_EQ(overlay()->alpha(), 143);
}

TEST_F(MonitorTest, InAlphaModeTheOverlayEmptiesAtOnceAndGoes750msLater)
{
    makeMonitor(QSize(720, 400));
    models.playState.setValue(QStringLiteral("playing"));
    models.playState.setValue(QStringLiteral("stopped"));
    EXPECT_TRUE(monitor->isPlayRateOverlayHidePending());
    EXPECT_EQ(monitor->playRateOverlayText(), QString());
    EXPECT_EQ(overlay()->alpha(), 143);

    // A second gentle hide (a rate change while stopped) neither adds a task nor delays the first.
    advance(500);
    models.playRate.setValue(2.0);
    advance(249);
    EXPECT_EQ(overlay()->alpha(), 143);
    advance(1);
    EXPECT_EQ(overlay()->alpha(), 0);
    EXPECT_TRUE(overlay()->isVisible()); // transparent, not hidden
    EXPECT_FALSE(monitor->isPlayRateOverlayHidePending());

    // Play resumed while the hide waited: the overlay stays.
    models.playState.setValue(QStringLiteral("playing"));
    models.playState.setValue(QStringLiteral("stopped"));
    advance(300);
    models.playState.setValue(QStringLiteral("playing"));
    advance(450);
    EXPECT_EQ(overlay()->alpha(), 143);
    EXPECT_EQ(monitor->playRateOverlayText(), QStringLiteral("2x >>"));
}

TEST_F(MonitorTest, InHideWidgetModeTheOverlayGoesAtOnce)
{
    Mve_SimpleValue<QString> mode("UseHideWidget", "TYDevParams.MonitorOverlays.OffspeedPlayOverlayHide");
    mode.Publish();
    makeMonitor(QSize(720, 400));
    models.playState.setValue(QStringLiteral("playing"));
    EXPECT_TRUE(overlay()->isVisible());
    models.playState.setValue(QStringLiteral("stopped"));
    EXPECT_FALSE(overlay()->isVisible());
    EXPECT_FALSE(monitor->isPlayRateOverlayHidePending());
}

TEST_F(MonitorTest, TheOverlayCanBeSwitchedOffAndGoesWhenTheWindowCloses)
{
    {
        Mve_SimpleValue<QString> off("no", "TYDevParams.MonitorOverlays.OffspeedPlayOverlayEnabled");
        off.Publish();
        makeMonitor(QSize(720, 400));
        EXPECT_EQ(overlay(), nullptr);
        models.playState.setValue(QStringLiteral("playing"));
        models.playRate.setValue(3.0);
        EXPECT_EQ(monitor->playRateOverlayText(), QString());
    }
    makeMonitor(QSize(720, 400));
    Mve_SimpleValue<bool> closing(false, "MainWindow.AboutToClose");
    closing.Publish();
    models.playState.setValue(QStringLiteral("stopped"));
    models.playState.setValue(QStringLiteral("playing"));
    ASSERT_TRUE(overlay()->isVisible());
    closing.setValue(true);
    EXPECT_FALSE(overlay()->isVisible());
}

TEST_F(MonitorTest, TheEraseActionPaintsThePictureAndTheSlugShowsUnconnected)
{
    TestImageFolder images;
    images.add(QStringLiteral("Images/Monitor/VideoMonitorSlug.png"), QSize(30, 20), Qt::green);
    images.add(QStringLiteral("Images/Monitor/Video2ndMonitorSlug4x3.png"), QSize(30, 20), Qt::blue);
    makeMonitor(QSize(720, 400));
    Mvt_Action<void(QColor)>::Listener erase(QStringLiteral("Monitor.EraseToColor.Action"),
                                             Mv_ConnectionEnvironment::blankEnvironment());
    ASSERT_TRUE(erase.call(QColor(Qt::red)));
    QImage shown = monitor->grab().toImage();
    EXPECT_EQ(shown.pixelColor(360, 200), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(1, 200), QColor(Qt::black)); // the pillar

    monitor->setShowSlug(true);
    monitor->disconnectMonitor();
    shown = monitor->grab().toImage();
    EXPECT_EQ(shown.pixelColor(5, 5), QColor(Qt::green));
    models.current.setValue(QStringLiteral("4 x 3"));
    EXPECT_EQ(monitor->grab().toImage().pixelColor(5, 5), QColor(Qt::blue));
    EXPECT_EQ(monitor->grab().toImage().pixelColor(360, 200), QColor(Qt::black));

    // A second monitor finds the names taken and leaves them to the first,
    // until the first goes.
    std::unique_ptr<Kel_Monitor> second(new Kel_Monitor(nullptr, QStringLiteral("Source"), QStringLiteral("Mon")));
    second->resize(720, 400);
    Kel_ConnectionUtils::recursiveConnect(second.get(), Mv_ConnectionEnvironment::blankEnvironment());
    monitor->connectMonitor();
    ASSERT_TRUE(erase.call(QColor(Qt::white)));
    EXPECT_EQ(monitor->grab().toImage().pixelColor(360, 200), QColor(Qt::white));
    EXPECT_NE(second->grab().toImage().pixelColor(360, 200), QColor(Qt::white));
    monitor.reset();
    ASSERT_TRUE(erase.call(QColor(Qt::white)));
    EXPECT_EQ(second->grab().toImage().pixelColor(360, 200), QColor(Qt::white));
}

TEST_F(MonitorTest, ASequenceMonitorDragsItsClipOnlyWhenAllowed)
{
    monitor.reset(new Kel_Monitor(nullptr, QStringLiteral("Record"), QStringLiteral("Mon"), true));
    Mve_SimpleValue<bool> canDrag(false, "Mon.CanBeDragged");
    Mve_Clip sequence(QStringLiteral("MonitorSequence"));
    publishAll({&canDrag, &sequence});
    Kel_ConnectionUtils::recursiveConnect(monitor.get(), Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(monitor->createDragData(), nullptr); // not allowed
    canDrag.setValue(true);
    EXPECT_EQ(monitor->createDragData(), nullptr); // no clip
    sequence.setMobID(QStringLiteral("060a2b34"));
    sequence.setMarkIn(Mv_Timecode(0, 0, 10, 5));
    std::unique_ptr<QMimeData> data(monitor->createDragData());
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->text(), QStringLiteral("<mobIDDragObjectList>\n"
                                           " <mobIDDragObject>\n"
                                           "  <mobID>060a2b34</mobID>\n"
                                           "  <markIn>00:00:10:05</markIn>\n"
                                           " </mobIDDragObject>\n"
                                           "</mobIDDragObjectList>\n"));
}

TEST_F(MonitorTest, TheOverlayLeavesWithTheMonitorAndWithTheApplication)
{
    Mve_SimpleValue<bool> active(true, "Application.Active");
    active.Publish();
    makeMonitor(QSize(720, 400));
    models.playState.setValue(QStringLiteral("playing"));
    ASSERT_TRUE(overlay()->isVisible());

    // A window of its own, the overlay would stay on screen without the monitor.
    monitor->hide();
    EXPECT_FALSE(overlay()->isVisible());
    models.playRate.setValue(2.0);
    EXPECT_FALSE(overlay()->isVisible());
    monitor->show();
    EXPECT_TRUE(overlay()->isVisible());
    EXPECT_EQ(monitor->playRateOverlayText(), QStringLiteral("2x >>"));

    active.setValue(false);
    EXPECT_FALSE(overlay()->isVisible());
    active.setValue(true);
    EXPECT_TRUE(overlay()->isVisible());
    EXPECT_EQ(overlay()->alpha(), 143);
}

TEST_F(MonitorTest, TheOverlayFollowsTheWindowHoldingTheMonitor)
{
    QWidget window;
    window.setGeometry(40, 40, 800, 500);
    monitor.reset(new Kel_Monitor(&window, QStringLiteral("Record"), QStringLiteral("Mon")));
    struct DeleteFirst // the monitor, before the window that holds it
    {
        std::unique_ptr<Kel_Monitor>& held;
        ~DeleteFirst() { held.reset(); }
    } deleteFirst{monitor};
    monitor->setGeometry(20, 30, 720, 400);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(monitor.get(), Mv_ConnectionEnvironment::blankEnvironment());
    models.playState.setValue(QStringLiteral("playing"));
    ASSERT_TRUE(overlay()->isVisible());

    window.move(window.pos() + QPoint(50, 30));
    QTRY_COMPARE(overlay()->pos(), monitor->mapToGlobal(QPoint(6, 400 - 8 - overlay()->height())));
}

TEST_F(MonitorTest, KeysMappedInTheMainMonitorContextRunThereAndOthersGoOn)
{
    int stops = 0;
    Mve_Action<void()> stop([&stops] { ++stops; }, "Test.MonitorStop");
    stop.Publish();
    Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
    ASSERT_TRUE(keymap->add(QKeySequence(QStringLiteral("K")), QStringLiteral("Test.MonitorStop"), QStringLiteral("Stop"),
                            QString(), QStringLiteral("MainMonitor"), QString(), false));
    makeMonitor(QSize(320, 180));
    QTest::keyClick(monitor.get(), Qt::Key_K);
    QTest::keyClick(monitor.get(), Qt::Key_J); // not mapped: ignored here
    keymap->removeKeysOfContext(QStringLiteral("MainMonitor"));
    EXPECT_EQ(stops, 1);
}
