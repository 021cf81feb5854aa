// Kel_ActionButton: scripts run by clicks and keys, the enabled-state model,
// and the auto-repeat timeline on the task scheduler's manual clock.
#include "Kel_ActionButton.h"
#include "Kel_ConnectionUtils.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TaskScheduler.h"

#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <vector>

namespace {

// A shown window with one button whose script calls Button.Count(), which
// records when it ran, in ms after the last press.
class ActionButtonTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        TaskScheduler::instance()->setManualClock(true);
        count.Publish();
        button = new Kel_ActionButton(&window, "countButton", QStringLiteral("Count"),
                                      QStringLiteral("Button.Count()"));
        (new QVBoxLayout(&window))->addWidget(button);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void TearDown() override { TaskScheduler::instance()->setManualClock(false); }

    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    void press()
    {
        pressTime = TaskScheduler::instance()->now();
        QTest::mousePress(button, Qt::LeftButton);
    }
    void release() { QTest::mouseRelease(button, Qt::LeftButton); }
    void advance(int ms) { TaskScheduler::instance()->advanceClock(ms); }

    std::vector<qint64> runs;
    qint64 pressTime = 0;
    Mve_Action<void()> count{[this] { runs.push_back(TaskScheduler::instance()->now() - pressTime); }, "Button.Count"};
    QWidget window;
    Kel_ActionButton* button = nullptr;
};

} // namespace

TEST_F(ActionButtonTest, ClicksAndReturnRunTheScriptThenAnnounceIt)
{
    connect();
    QSignalSpy clicked(button, &QPushButton::clicked);
    std::vector<size_t> runsSeenAfterClick;
    QObject::connect(button, &Kel_ActionButton::afterClickAction,
                     [this, &runsSeenAfterClick] { runsSeenAfterClick.push_back(runs.size()); });
    press(); // held without auto-repeat: runs once, on release
    advance(5000);
    release();
    EXPECT_EQ(runsSeenAfterClick, (std::vector<size_t>{1}));

    // Return and Enter click without a visible press or clicked(); Space is a real press.
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    QTest::keyClick(button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(runs.size(), 3u);
    EXPECT_EQ(clicked.count(), 1);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_EQ(runsSeenAfterClick, (std::vector<size_t>{1, 2, 3, 4}));
}

TEST_F(ActionButtonTest, BrokenScriptRunsNothingButTheClickIsStillAnnounced)
{
    QSignalSpy afterClick(button, &Kel_ActionButton::afterClickAction);
    button->SetActionScript("Button.Count(");
    connect();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(runs.empty());
    EXPECT_EQ(afterClick.count(), 1);
}

TEST_F(ActionButtonTest, MissingModelGreysTheButtonOutUntilItIsPublished)
{
    button->SetActionScript("Button.Missing(); Button.Count()");
    connect();
    EXPECT_FALSE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    Mve_Action<void()> late([] {}, "Button.Missing");
    late.Publish();
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(runs.size(), 1u);
}

// The button bound to the published enabled-state model "Button.Enabled".
class EnabledStateTest : public ActionButtonTest
{
protected:
    void SetUp() override
    {
        ActionButtonTest::SetUp();
        enabled.Publish();
        button->setProperty("enabledStateConnection", QByteArray("Button.Enabled"));
        connect();
    }
    Mve_SimpleValue<bool> enabled{true, "Button.Enabled"};
};

TEST_F(EnabledStateTest, DisabledByTheModelTheButtonRunsNothing)
{
    enabled.setValue(false);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(runs.empty());
    enabled.setValue(true);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(EnabledStateTest, DisabledActionOfTheScriptWinsOverTheModel)
{
    count.setEnabled(false);
    EXPECT_FALSE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(runs.empty());
    count.setEnabled(true);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(runs.size(), 1u);
}

TEST_F(EnabledStateTest, WithoutItsModelTheButtonTakesTheDefault)
{
    button->SetDefaultEnabledState(false);
    EXPECT_TRUE(button->isEnabled());
    enabled.UnPublish();
    EXPECT_FALSE(button->isEnabled());
}

TEST_F(ActionButtonTest, AutoRepeatRunsAfterTheDelayThenEveryIntervalAndOnceMoreOnRelease)
{
    button->setProperty("quorAutoRepeat", true);
    connect();
    press();
    advance(999);
    EXPECT_TRUE(runs.empty());
    advance(601);
    release(); // the click on release runs it once more
    advance(2000);
    press();
    advance(900);
    release();
    advance(2000);
    EXPECT_EQ(runs, (std::vector<qint64>{1000, 1500, 1600, 900}));

    // The interval changes at once, the delay at the next press.
    runs.clear();
    press();
    button->SetRepeatDelay(200);
    advance(1000);
    button->SetRepeatInterval(100);
    advance(350);
    release();
    press();
    advance(450);
    release();
    EXPECT_EQ(runs, (std::vector<qint64>{1000, 1100, 1200, 1300, 1350, 200, 300, 400, 450}));
}

TEST_F(ActionButtonTest, RepeatStopsWhenTheButtonIsDisabledOrDeleted)
{
    button->SetQuorAutoRepeat(true);
    connect();
    press();
    advance(1000);
    button->setEnabled(false); // a disabled button is never released by the mouse
    advance(2000);
    EXPECT_EQ(runs, (std::vector<qint64>{1000}));

    // Deleted by its own script while repeating: nothing runs on a dangling button.
    Mve_Action<void()> close([this] { delete button; }, "Button.Close");
    close.Publish();
    button->SetActionScript("Button.Count(); Button.Close()");
    button->setEnabled(true);
    connect();
    runs.clear();
    press();
    advance(3000);
    EXPECT_EQ(runs, (std::vector<qint64>{1000}));
    EXPECT_TRUE(window.findChildren<Kel_ActionButton*>().isEmpty());
}
