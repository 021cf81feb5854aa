// Kel_StatusWindow and Kel_ProgressThermometer: the progress of long work,
// shown from its models and cancelled through an action.
#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_ProgressThermometer.h"
#include "Kel_StatusWindow.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <limits>

TEST(ProgressThermometer, ShowsTheFractionOfItsModel)
{
    Mve_SimpleValue<double> progress(0.25, "Status.Progress");
    progress.Publish();
    QWidget window;
    auto* bar = new Kel_ProgressThermometer(&window, "bar");
    auto* unbound = new Kel_ProgressThermometer(&window, "unbound");
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(bar);
    layout->addWidget(unbound);
    bar->setProgressConnectionSpec("Status.Progress");
    window.resize(200, 60);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_DOUBLE_EQ(bar->fraction(), 0.25);
    EXPECT_EQ(bar->text(), QStringLiteral("25%"));
    // The filled part is drawn in the highlight colour, the rest in the base colour.
    const QImage image = bar->grab().toImage();
    const int y = bar->height() - 3;
    EXPECT_EQ(image.pixel(3, y), bar->palette().color(QPalette::Highlight).rgb());
    EXPECT_EQ(image.pixel(bar->width() - 4, y), bar->palette().color(QPalette::Base).rgb());

    // Out of range values are clamped; a negative one is work of unknown size.
    progress.setValue(1.7);
    EXPECT_EQ(bar->text(), QStringLiteral("100%"));
    progress.setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(bar->text().isEmpty());
    progress.setValue(-1.0);
    EXPECT_TRUE(bar->isIndeterminate());
    EXPECT_TRUE(bar->text().isEmpty());
    const QImage first = bar->grab().toImage();
    EXPECT_TRUE(waitFor([&] { return bar->grab().toImage() != first; }));

    EXPECT_TRUE(unbound->text().isEmpty());
    EXPECT_FALSE(unbound->isIndeterminate());
    progress.UnPublish();
    EXPECT_FALSE(bar->isIndeterminate());
    EXPECT_DOUBLE_EQ(bar->fraction(), -1.0);
}

namespace {

// A status window bound to a message, a progress, a cancel action and an
// active state: "the work" runs while Status.Active holds true.
class StatusWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&message, &progress, &active, &cancel});
        window.setMessageConnectionSpec("Status.Message");
        window.setProgressConnectionSpec("Status.Progress");
        window.setCancelConnectionSpec("Status.Cancel");
        window.setActiveStateConnectionSpec("Status.Active");
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    void start()
    {
        active.setValue(true);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    Mve_SimpleValue<QString> message{QStringLiteral("Rendering"), "Status.Message"};
    Mve_SimpleValue<double> progress{0.5, "Status.Progress"};
    Mve_SimpleValue<bool> active{false, "Status.Active"};
    int cancels = 0;
    Mve_Action<void()> cancel{[this] { ++cancels; }, "Status.Cancel"};
    Kel_StatusWindow window{nullptr, "status"};
};

} // namespace

TEST_F(StatusWindowTest, ShowsItselfWhileTheWorkRunsWithItsMessageAndProgress)
{
    connect();
    EXPECT_FALSE(window.isVisible());
    start();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.messageLabel()->text(), QStringLiteral("Rendering"));
    EXPECT_EQ(window.thermometer()->text(), QStringLiteral("50%"));
    progress.setValue(0.75);
    message.setValue(QStringLiteral("Writing"));
    EXPECT_EQ(window.thermometer()->text(), QStringLiteral("75%"));
    EXPECT_EQ(window.messageLabel()->text(), QStringLiteral("Writing"));
    active.setValue(false);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(StatusWindowTest, CancelCallsTheActionOnceAndWaitsForTheWorkToEnd)
{
    connect();
    start();
    QPushButton* button = window.cancelButton();
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(window.isCancelRequested());
    EXPECT_FALSE(button->isEnabled());
    EXPECT_EQ(button->text(), QStringLiteral("Cancelling..."));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(window.isVisible());

    // The next piece of work can be cancelled again.
    active.setValue(false);
    start();
    EXPECT_TRUE(button->isEnabled());
    EXPECT_EQ(button->text(), QStringLiteral("Cancel"));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(cancels, 2);
}

TEST_F(StatusWindowTest, WorkThatCannotBeCancelledKeepsGoing)
{
    cancel.setEnabled(false);
    connect();
    start();
    EXPECT_FALSE(window.cancelButton()->isEnabled());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(cancels, 0);
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isCancelRequested());
    cancel.setEnabled(true);
    EXPECT_TRUE(window.cancelButton()->isEnabled());
    cancel.UnPublish();
    EXPECT_FALSE(window.cancelButton()->isEnabled());
}

TEST(StatusWindowUnbound, ItsOwnerShowsAndClosesIt)
{
    Kel_StatusWindow window(nullptr, "plain");
    window.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.cancelButton()->isEnabled());
    EXPECT_TRUE(window.thermometer()->text().isEmpty());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());

    // With a cancel action but no active state, a taken cancel closes it.
    int cancels = 0;
    Mve_Action<void()> cancel([&] { ++cancels; }, "StatusUnbound.Cancel");
    cancel.Publish();
    window.setCancelConnectionSpec("StatusUnbound.Cancel");
    window.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(window.cancelButton(), Qt::LeftButton);
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window.isVisible());
}
