// Kel_ImmediateActionButton: press and release rules, the context menu,
// enabled and visible models, images and auto-repeat.
#include "Kel_ConnectionUtils.h"
#include "Kel_ImmediateActionButton.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TaskScheduler.h"
#include "TestSupport.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <vector>

namespace {

// A shown window with one button whose script calls Immediate.Count(), and
// a bool model Immediate.Enabled (true) that most tests name as its enabled state.
class ImmediateButtonTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("factory/"));
        TaskScheduler::instance()->setManualClock(true);
        count.Publish();
        enabled.Publish();
        button = new Kel_ImmediateActionButton(&window, "playButton", QStringLiteral("Immediate.Count()"));
        auto* layout = new QHBoxLayout(&window);
        layout->addWidget(button);
        layout->addStretch();
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void TearDown() override
    {
        TaskScheduler::instance()->setManualClock(false);
        Ost_Resource::setResourcePath(previousResourcePath);
    }

    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    void press(Qt::MouseButton b = Qt::LeftButton)
    {
        pressTime = TaskScheduler::instance()->now();
        QTest::mousePress(button, b, Qt::NoModifier, QPoint(4, 4));
    }
    void release(QPoint at = QPoint(4, 4), Qt::MouseButton b = Qt::LeftButton) { QTest::mouseRelease(button, b, Qt::NoModifier, at); }
    void advance(int ms) { TaskScheduler::instance()->advanceClock(ms); }
    QRgb pixel(int x, int y) { return button->grab().toImage().pixel(x, y) | 0xff000000; }

    const QString previousResourcePath = Ost_Resource::getResourcePath();
    std::vector<qint64> runs;
    qint64 pressTime = 0;
    Mve_Action<void()> count{[this] { runs.push_back(TaskScheduler::instance()->now() - pressTime); }, "Immediate.Count"};
    Mve_SimpleValue<bool> enabled{true, "Immediate.Enabled"};
    QWidget window;
    Kel_ImmediateActionButton* button = nullptr;
};

} // namespace

TEST_F(ImmediateButtonTest, PressRunsTheScriptAtOnceAndReleaseDoesNot)
{
    connect();
    press();
    EXPECT_EQ(runs.size(), 1u);
    release();
    EXPECT_EQ(runs.size(), 1u);
    // Without an enabled model nothing brings the state back from tracking.
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kTrackingState);
}

TEST_F(ImmediateButtonTest, WithActionDelayOnlyAReleaseInsideRunsTheScript)
{
    button->setProperty("actionDelay", true);
    button->setEnabledStateConnSpec("Immediate.Enabled");
    connect();
    press();
    EXPECT_TRUE(runs.empty());
    release();
    EXPECT_EQ(runs.size(), 1u);
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kNormalState);
    press();
    QEvent leave(QEvent::Leave); // dragged out of the button: the tracking image goes
    QApplication::sendEvent(button, &leave);
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kNormalState);
    release(QPoint(button->width() + 5, 4));
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(ImmediateButtonTest, MissingModelOfTheScriptGreysTheButtonOutUntilPublished)
{
    button->setEnabledStateConnSpec("Immediate.Enabled");
    button->setActionScript("Immediate.Later(); Immediate.Count()");
    connect();
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kDisabledState);
    press();
    release();
    EXPECT_TRUE(runs.empty());
    Mve_Action<void()> later([] {}, "Immediate.Later");
    later.Publish();
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kNormalState);
    press();
    release();
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(ImmediateButtonTest, DisabledActionGreysTheButtonOutWithoutAnEnabledModel)
{
    connect();
    count.setEnabled(false);
    EXPECT_FALSE(button->isEnabled());
    press();
    count.setEnabled(true);
    EXPECT_TRUE(button->isEnabled());
    press();
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(ImmediateButtonTest, RightClickGoesToTheContextMenuModelWhenOneIsNamed)
{
    QPoint menuPos;
    Mve_Action<void(QWidget*, QContextMenuEvent*)> menu(
        [&](QWidget* w, QContextMenuEvent* e) { EXPECT_EQ(w, button); menuPos = e->pos(); }, "Immediate.Menu");
    menu.Publish();
    button->setEnabledStateConnSpec("Immediate.Enabled");
    connect();
    press(Qt::RightButton); // without a context-menu model, like the left button
    release(QPoint(4, 4), Qt::RightButton);
    EXPECT_EQ(runs.size(), 1u);

    button->setProperty("contexMenuConnSpec", QByteArray("Immediate.Menu"));
    button->setActionDelay(true);
    connect();
    // Through the window, as the platform delivers a right-click.
    const QPoint at = button->mapTo(&window, QPoint(6, 7));
    QTest::mousePress(window.windowHandle(), Qt::RightButton, Qt::NoModifier, at);
    EXPECT_EQ(button->getVisualState(), Kel_ImmediateActionButton::kNormalState);
    QTest::mouseRelease(window.windowHandle(), Qt::RightButton, Qt::NoModifier, at);
    EXPECT_EQ(runs.size(), 1u);
    EXPECT_EQ(menuPos, QPoint(6, 7));
}

TEST_F(ImmediateButtonTest, VisibleModelHides)
{
    Mve_SimpleValue<bool> visible(false, "Immediate.Visible");
    visible.Publish();
    button->setProperty("visibleStateConnection", QByteArray("Immediate.Visible"));
    connect();
    EXPECT_FALSE(button->isVisible());
    visible.setValue(true);
    EXPECT_TRUE(button->isVisible());
    visible.setValue(false);
    visible.UnPublish(); // a named model that is missing keeps it hidden
    visible.setValue(true);
    EXPECT_FALSE(button->isVisible());
    visible.Publish();
    EXPECT_TRUE(button->isVisible());
}

TEST_F(ImmediateButtonTest, ImagesDecideSizeAndAppearanceAndDisabledButtonsDoNothing)
{
    EXPECT_EQ(button->sizeHint(), QSize(32, 32));
    button->setNormalImage("Images/normal.png");
    button->setTrackingImage("Images/tracking.png");
    button->setDisabledImage("Images/disabled.png");
    EXPECT_EQ(button->sizeHint(), QSize(24, 16));
    button->resize(button->sizeHint());
    EXPECT_EQ(pixel(2, 2), qRgb(255, 0, 0));
    button->setEnabledStateConnSpec("Immediate.Enabled");
    connect();
    press();
    EXPECT_EQ(pixel(2, 2), qRgb(0, 255, 0));
    release();
    enabled.setValue(false);
    EXPECT_EQ(pixel(2, 2), qRgb(128, 128, 128));
    press(); // a disabled button runs nothing
    release();
    EXPECT_EQ(runs.size(), 1u);

    // Reversing mirrors images loaded afterwards; a file that does not load keeps the old image.
    enabled.setValue(true);
    button->setProperty("iconReversed", true);
    EXPECT_EQ(pixel(2, 2), qRgb(255, 0, 0));
    button->setNormalImage("Images/normal.png");
    EXPECT_EQ(pixel(2, 2), qRgb(0, 0, 255));
    button->setNormalImage("Images/missing.png");
    EXPECT_EQ(pixel(2, 2), qRgb(0, 0, 255));
}

TEST_F(ImmediateButtonTest, AutoRepeatWhileHeld)
{
    button->setQuorAutoRepeat(true);
    button->setRepeatDelay(300);
    button->setRepeatInterval(100);
    connect();
    press();
    advance(550);
    release();
    advance(1000);
    EXPECT_EQ(runs, (std::vector<qint64>{0, 300, 400, 500}));

    runs.clear();
    press();
    button->hide(); // the release never comes, the repeat stops anyway
    advance(1000);
    EXPECT_EQ(runs, (std::vector<qint64>{0}));
}

TEST_F(ImmediateButtonTest, AScriptThatDisablesOrHidesTheButtonStartsNoRepeat)
{
    Mve_SimpleValue<bool> visible(true, "Immediate.Visible");
    visible.Publish();
    button->setEnabledStateConnSpec("Immediate.Enabled");
    button->setVisibleStateConnectionSpec("Immediate.Visible");
    button->setQuorAutoRepeat(true);
    for (const char* script : {"Immediate.Count(); Immediate.Enabled = false",
                               "Immediate.Count(); Immediate.Visible = false"}) {
        SCOPED_TRACE(script);
        enabled.setValue(true);
        visible.setValue(true);
        button->setActionScript(script);
        connect();
        runs.clear();
        press(); // nobody can release a disabled or hidden button
        advance(3000);
        EXPECT_EQ(runs, (std::vector<qint64>{0}));
    }
}

TEST_F(ImmediateButtonTest, SpaceHeldPressesAndRepeatsAsTheMouseDoesAndReturnPressesOnce)
{
    button->setQuorAutoRepeat(true);
    button->setRepeatDelay(300);
    button->setRepeatInterval(100);
    connect();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    button->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(waitFor([&] { return button->hasFocus(); }));
    pressTime = TaskScheduler::instance()->now();
    QTest::keyPress(button, Qt::Key_Space);
    advance(550);
    QTest::keyRelease(button, Qt::Key_Space);
    advance(1000);
    EXPECT_EQ(runs, (std::vector<qint64>{0, 300, 400, 500}));

    runs.clear();
    QTest::keyClick(button, Qt::Key_Return);
    advance(1000);
    EXPECT_EQ(runs.size(), 1u);

    // Losing the focus while Space is held lets go, as a release would.
    runs.clear();
    QTest::keyPress(button, Qt::Key_Space);
    button->clearFocus();
    advance(1000);
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(ImmediateButtonTest, ReadersSeeAButtonWhosePressRunsTheScript)
{
    connect();
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(button);
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->role(), QAccessible::Button);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("playButton"));
    iface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(runs.size(), 1u);
    count.setEnabled(false); // a disabled action greys the button out
    EXPECT_TRUE(iface->state().disabled);
}

TEST_F(ImmediateButtonTest, TheFocusFrameShowsOverTheButtonOnlyWhileItHasTheFocus)
{
    connect();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    // Frames drawn over the whole button.
    const auto shownFrames = [&] {
        int shown = 0;
        for (const QWidget* child : button->findChildren<QWidget*>())
            shown += child->isVisible() && child->geometry() == button->rect();
        return shown;
    };
    button->clearFocus(); // the window's activation may have given it the focus
    EXPECT_EQ(shownFrames(), 0);
    for (int round = 0; round < 2; ++round) {
        button->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(waitFor([&] { return button->hasFocus(); }));
        EXPECT_EQ(shownFrames(), 1);
        button->setFixedSize(button->width() + 6, button->height() + 4); // it follows the button's size
        ASSERT_TRUE(waitFor([&] { return shownFrames() == 1; }));
        button->clearFocus();
        EXPECT_EQ(shownFrames(), 0);
    }
    EXPECT_EQ(button->findChildren<QWidget*>().size(), 1); // one frame, made once
}
