// The value widgets bound to one model each: Kel_Double, Kel_Busy,
// Kel_Bitmap, Kel_PlayButton and Kel_ImageMappedButtons, driven with real input.
#include "Kel_Bitmap.h"
#include "Kel_Busy.h"
#include "Kel_Double.h"
#include "Kel_ImageMappedButtons.h"
#include "Kel_PlayButton.h"
#include "Kel_QtCompat.h"
#include "Mve_Action.h"
#include "Mve_ActionArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"
#include "WidgetTestSupport.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A shown window whose widgets the test adds; the resource path points at
// the test images (red normal, green tracking, grey disabled, 8 x 8).
class ValueWidgetTest : public WidgetWindowTest
{
protected:
    void SetUp() override
    {
        WidgetWindowTest::SetUp();
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("factory/"));
    }
    void TearDown() override { Ost_Resource::setResourcePath(previousResourcePath); }
    static QRgb pixelOf(QWidget* w, int x, int y) { return w->grab().toImage().pixel(x, y) | 0xff000000; }

    const QString previousResourcePath = Ost_Resource::getResourcePath();
};

} // namespace

TEST_F(ValueWidgetTest, DoubleShowsItsModelAndSendsFinishedEdits)
{
    Mve_SimpleValue<double> gain(1.5, "Value.Gain");
    gain.Publish();
    auto* spin = add<Kel_Double>("gain");
    spin->setConnectionSpec("Value.Gain");
    show();
    connect();
    EXPECT_TRUE(spin->isEnabled());
    EXPECT_DOUBLE_EQ(spin->value(), 1.5);
    gain.setValue(-250.25);
    EXPECT_DOUBLE_EQ(spin->value(), -250.25);

    // Typing sends nothing until Return; then the model takes the value.
    spin->setFocus();
    spin->selectAll();
    QTest::keyClicks(spin, QStringLiteral("7.5"));
    EXPECT_DOUBLE_EQ(gain.getValue(), -250.25);
    QTest::keyClick(spin, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(gain.getValue(), 7.5);
    // A step goes at once.
    QTest::keyClick(spin, Qt::Key_Up);
    EXPECT_DOUBLE_EQ(gain.getValue(), 8.5);

    // A value the model rejects is taken back.
    gain.setValidator([](const double& v) { return v < 9.0; });
    QTest::keyClick(spin, Qt::Key_Up);
    EXPECT_DOUBLE_EQ(gain.getValue(), 8.5);
    EXPECT_DOUBLE_EQ(spin->value(), 8.5);
    gain.setReadOnly(true);
    QTest::keyClick(spin, Qt::Key_Down);
    EXPECT_DOUBLE_EQ(spin->value(), 8.5);
}

TEST_F(ValueWidgetTest, DoubleWithoutItsModelIsDisabledAtZero)
{
    auto* spin = add<Kel_Double>("lost");
    spin->setConnectionSpec("Value.NotPublished");
    show();
    connect();
    EXPECT_FALSE(spin->isEnabled());
    EXPECT_DOUBLE_EQ(spin->value(), 0.0);
    auto late = std::make_unique<Mve_SimpleValue<double>>(3.25, "Value.NotPublished");
    late->Publish();
    EXPECT_TRUE(spin->isEnabled());
    EXPECT_DOUBLE_EQ(spin->value(), 3.25);
    late.reset();
    EXPECT_FALSE(spin->isEnabled());
    EXPECT_DOUBLE_EQ(spin->value(), 0.0);
}

TEST_F(ValueWidgetTest, BusyAnimatesOnlyWhileItsModelSaysBusyAndItIsShown)
{
    Mve_SimpleValue<bool> busy(false, "Value.Busy");
    busy.Publish();
    auto* indicator = add<Kel_Busy>("busy");
    auto* unbound = add<Kel_Busy>("unbound");
    indicator->setConnection("Value.Busy");
    indicator->setInterval(10);
    show();
    connect();
    EXPECT_FALSE(indicator->isBusy() || indicator->isAnimating());
    EXPECT_FALSE(unbound->isBusy() || unbound->isAnimating());

    busy.setValue(true);
    EXPECT_TRUE(indicator->isAnimating());
    const int first = indicator->frame();
    EXPECT_TRUE(waitFor([&] { return indicator->frame() != first; }));

    indicator->hide();
    EXPECT_TRUE(indicator->isBusy());
    EXPECT_FALSE(indicator->isAnimating());
    indicator->show();
    EXPECT_TRUE(indicator->isAnimating());

    // Idle draws nothing: the indicator looks like the window behind it.
    busy.setValue(false);
    EXPECT_FALSE(indicator->isAnimating());
    const QImage idle = indicator->grab().toImage();
    EXPECT_EQ(idle.pixel(idle.width() / 2, 3), idle.pixel(0, 0));
    busy.UnPublish();
    EXPECT_FALSE(indicator->isBusy());
}

TEST_F(ValueWidgetTest, BitmapShowsThePixmapModelElseThePathModel)
{
    Mve_SimpleValue<QString> path(QStringLiteral("Images/normal.png"), "Value.Path");
    Mve_SimpleValue<QPixmap> picture(QPixmap(), "Value.Picture");
    publishAll({&path, &picture});
    auto* bitmap = add<Kel_Bitmap>("bitmap");
    bitmap->setPathConnection("Value.Path");
    bitmap->setPixmapConnection("Value.Picture");
    auto* plain = add<Kel_Bitmap>("plain");
    QPixmap own(4, 4);
    own.fill(Qt::blue);
    plain->setPixmap(own);
    show();
    connect();
    ASSERT_FALSE(Kel_QtCompat::labelPixmap(bitmap).isNull());
    EXPECT_EQ(Kel_QtCompat::labelPixmap(bitmap).toImage().pixel(1, 1) | 0xff000000, qRgb(255, 0, 0));

    QPixmap blue(6, 6);
    blue.fill(Qt::blue);
    picture.setValue(blue);
    EXPECT_EQ(Kel_QtCompat::labelPixmap(bitmap).size(), QSize(6, 6));
    picture.setValue(QPixmap());
    path.setValue(QStringLiteral("Images/tracking.png"));
    EXPECT_EQ(Kel_QtCompat::labelPixmap(bitmap).toImage().pixel(1, 1) | 0xff000000, qRgb(0, 255, 0));

    // A path that does not load, or a model that goes away, shows nothing.
    path.setValue(QStringLiteral("Images/missing.png"));
    EXPECT_TRUE(Kel_QtCompat::labelPixmap(bitmap).isNull());
    path.setValue(QStringLiteral("Images/normal.png"));
    path.UnPublish();
    EXPECT_TRUE(Kel_QtCompat::labelPixmap(bitmap).isNull());
    // A bitmap with no model named keeps its own picture.
    EXPECT_EQ(Kel_QtCompat::labelPixmap(plain).size(), QSize(4, 4));
}

TEST_F(ValueWidgetTest, PlayButtonDrawsItsPlayingImagesWhileTheTransportPlays)
{
    Mve_SimpleValue<QString> state(QStringLiteral("stopped"), "Value.PlayState");
    Mve_SimpleValue<bool> playing(false, "Value.Playing");
    int presses = 0;
    Mve_Action<void()> toggle([&] { ++presses; }, "Value.TogglePlay");
    publishAll({&state, &playing, &toggle});
    auto* play = add<Kel_PlayButton>("play");
    play->setNormalImage("Images/normal.png");
    play->setPlayingNormalImage("Images/tracking.png");
    play->setActionScript("Value.TogglePlay()");
    play->setPlayStateConnSpec("Value.PlayState");
    auto* unbound = add<Kel_PlayButton>("unbound");
    unbound->setNormalImage("Images/normal.png");
    unbound->setPlayingNormalImage("Images/tracking.png");
    show();
    connect();
    EXPECT_FALSE(play->isPlaying());
    EXPECT_EQ(pixelOf(play, 2, 2), qRgb(255, 0, 0));
    state.setValue(QStringLiteral("playing"));
    EXPECT_TRUE(play->isPlaying());
    EXPECT_EQ(pixelOf(play, 2, 2), qRgb(0, 255, 0));
    state.setValue(QStringLiteral("cueing"));
    EXPECT_FALSE(play->isPlaying());

    // The press runs the script, as any immediate action button's.
    QTest::mouseClick(play, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_EQ(presses, 1);

    // A bool model says it directly.
    play->setPlayStateConnSpec("Value.Playing");
    connect();
    EXPECT_FALSE(play->isPlaying());
    playing.setValue(true);
    EXPECT_TRUE(play->isPlaying());
    playing.UnPublish();
    EXPECT_FALSE(play->isPlaying());
    EXPECT_FALSE(unbound->isPlaying());
    EXPECT_EQ(pixelOf(unbound, 2, 2), qRgb(255, 0, 0));
}

namespace {

// Three buttons side by side on a 30 x 10 picture: red, green and blue areas
// of the map, white picture, black tracking image.
class ImageMapTest : public ValueWidgetTest
{
protected:
    void SetUp() override
    {
        ValueWidgetTest::SetUp();
        ASSERT_TRUE(dir.isValid());
        QImage map(30, 10, QImage::Format_ARGB32);
        map.fill(Qt::transparent);
        QPainter painter(&map);
        painter.fillRect(0, 0, 10, 10, Qt::red);
        painter.fillRect(10, 0, 10, 10, Qt::green);
        painter.fillRect(20, 0, 10, 10, Qt::blue);
        painter.end();
        ASSERT_TRUE(map.save(dir.filePath(QStringLiteral("map.png"))));
        QImage picture(30, 10, QImage::Format_ARGB32);
        picture.fill(Qt::white);
        ASSERT_TRUE(picture.save(dir.filePath(QStringLiteral("picture.png"))));
        picture.fill(Qt::black);
        ASSERT_TRUE(picture.save(dir.filePath(QStringLiteral("tracking.png"))));
        Ost_Resource::setResourcePath(dir.path() + QStringLiteral("/"));

        buttons = add<Kel_ImageMappedButtons>("map");
        buttons->setImage("picture.png");
        buttons->setTrackingImage("tracking.png");
        buttons->setMapImage("map.png");
        buttons->setButtonColors({QStringLiteral("#ff0000"), QStringLiteral("#00ff00"), QStringLiteral("#0000ff")});
        buttons->setFixedSize(30, 10);
    }
    void click(int x) { QTest::mouseClick(buttons, Qt::LeftButton, Qt::NoModifier, QPoint(x, 5)); }

    QTemporaryDir dir;
    Kel_ImageMappedButtons* buttons = nullptr;
    std::vector<long> calls;
    Mve_ActionArray<void()> actions{[this](long i) { calls.push_back(i); }, 3, "Value.MapButtons"};
};

bool allButTheSecond(long button)
{
    return button != 1;
}

} // namespace

TEST_F(ImageMapTest, AClickOnAButtonsAreaCallsItsAction)
{
    actions.Publish();
    buttons->setBaseConnectionSpec("Value.MapButtons");
    show();
    connect();
    EXPECT_EQ(buttons->buttonAt(QPoint(15, 5)), 1);
    click(25);
    click(3);
    EXPECT_EQ(calls, (std::vector<long>{2, 0}));

    // While held the area shows the tracking image; released elsewhere, nothing runs.
    QTest::mousePress(buttons, Qt::LeftButton, Qt::NoModifier, QPoint(15, 5));
    EXPECT_EQ(buttons->pressedButton(), 1);
    EXPECT_EQ(pixelOf(buttons, 15, 5), qRgb(0, 0, 0));
    EXPECT_EQ(pixelOf(buttons, 5, 5), qRgb(255, 255, 255));
    QTest::mouseRelease(buttons, Qt::LeftButton, Qt::NoModifier, QPoint(25, 5));
    EXPECT_EQ(buttons->pressedButton(), -1);
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ImageMapTest, DisabledOrMissingActionsLeaveTheirButtonsInert)
{
    actions.setEnabledFunction(&allButTheSecond);
    actions.Publish();
    buttons->setBaseConnectionSpec("Value.MapButtons");
    show();
    connect();
    EXPECT_FALSE(buttons->isButtonEnabled(1));
    click(15);
    EXPECT_TRUE(calls.empty());
    // The disabled area is dimmed: the window shows through its white.
    EXPECT_EQ(pixelOf(buttons, 5, 5), qRgb(255, 255, 255));
    EXPECT_NE(pixelOf(buttons, 15, 5), qRgb(255, 255, 255));

    // Fewer actions than areas: the last area has none.
    actions.setSize(2);
    EXPECT_FALSE(buttons->isButtonEnabled(2));
    click(25);
    EXPECT_TRUE(calls.empty());
    actions.UnPublish();
    click(5);
    EXPECT_TRUE(calls.empty());
    EXPECT_FALSE(buttons->isButtonEnabled(0));
}

TEST_F(ImageMapTest, ArrowsChooseAmongTheEnabledButtonsAndSpaceOrReturnPressTheChosenOne)
{
    actions.setEnabledFunction(&allButTheSecond);
    actions.Publish();
    buttons->setBaseConnectionSpec("Value.MapButtons");
    show();
    connect();
    buttons->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(buttons->window()));
    buttons->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(waitFor([&] { return buttons->hasFocus(); }));
    EXPECT_EQ(buttons->keyboardButton(), 0); // the first enabled one
    QTest::keyClick(buttons, Qt::Key_Right); // the disabled second is skipped
    EXPECT_EQ(buttons->keyboardButton(), 2);
    QTest::keyClick(buttons, Qt::Key_Right); // round the end
    EXPECT_EQ(buttons->keyboardButton(), 0);
    QTest::keyClick(buttons, Qt::Key_Left);
    EXPECT_EQ(buttons->keyboardButton(), 2);

    QTest::keyPress(buttons, Qt::Key_Space);
    EXPECT_EQ(buttons->pressedButton(), 2); // held: shown pressed, nothing called yet
    EXPECT_TRUE(calls.empty());
    QTest::keyRelease(buttons, Qt::Key_Space);
    EXPECT_EQ(calls, std::vector<long>{2});
    QTest::keyClick(buttons, Qt::Key_Left);
    QTest::keyClick(buttons, Qt::Key_Return);
    EXPECT_EQ(calls, (std::vector<long>{2, 0}));

    // Everything disabled: nothing to choose, nothing pressed.
    actions.setEnabledFunction([](long) { return false; });
    buttons->updateAppearance();
    QTest::keyClick(buttons, Qt::Key_Right);
    EXPECT_EQ(buttons->keyboardButton(), -1);
    QTest::keyClick(buttons, Qt::Key_Return);
    EXPECT_EQ(calls.size(), 2u);
}
