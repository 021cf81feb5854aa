// Kel_Slider: pixels and values, dragging with real mouse events, values out
// of the range corrected and written back, and the enabled model.
#define QTEST_QPA_MOUSE_HANDLING
#include "Kel_ConnectionUtils.h"
#include "Kel_Slider.h"
#include "Mve_SimpleValue.h"
#include "TestImages.h"
#include "TestSupport.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QRandomGenerator>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QColor kRamp(0, 0, 255);
const QColor kHandle(255, 0, 0);

// A shown 220-pixel slider with a 20-pixel handle, bound to "Vol" with the
// range "VolRange.min" to "VolRange.max" (0 to 100) and enabled by "Vol.enabled".
class SliderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        images.add(QStringLiteral("Images/Horiz_Slider_Ramp.png"), QSize(220, 20), kRamp);
        images.add(QStringLiteral("Images/slider_handle_horiz_slider.png"), QSize(20, 20), kHandle);
        publishAll({&value, &minimum, &maximum, &enabled});
        slider.reset(new Kel_Slider(nullptr, "volume"));
        slider->setFixedSize(220, 20);
        slider->setValueConnSpec("Vol");
        slider->setRangeConnSpec("VolRange");
        slider->setEnabledStateConnSpec("Vol.enabled");
        slider->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(slider.get()));
        Kel_ConnectionUtils::recursiveConnect(slider.get(), Mv_ConnectionEnvironment::blankEnvironment());
    }
    void drag(int fromX, int toX)
    {
        QTest::mousePress(slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(fromX, 10));
        QTest::mouseMove(slider.get(), QPoint(toX, 10));
        QTest::mouseRelease(slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(toX, 10));
    }
    QColor pixel(int x) { return slider->grab().toImage().pixelColor(x, 10); }

    TestImageFolder images;
    Mve_SimpleValue<long> value{0, "Vol"};
    Mve_SimpleValue<long> minimum{0, "VolRange.min"};
    Mve_SimpleValue<long> maximum{100, "VolRange.max"};
    Mve_SimpleValue<bool> enabled{true, "Vol.enabled"};
    std::unique_ptr<Kel_Slider> slider;
};

} // namespace

TEST_F(SliderTest, PixelsMapToValuesWithinTheRange)
{
    EXPECT_EQ(slider->pixelsPerUnit(), 2.0);
    EXPECT_EQ(slider->convertPixToValue(51), 25);
    EXPECT_EQ(slider->convertValueToPix(25), 50);
    EXPECT_EQ(slider->convertPixToValue(-40), 0);
    EXPECT_EQ(slider->convertPixToValue(5000), 100);

    minimum.setValue(10); // 200 pixels for 90 units
    EXPECT_EQ(slider->convertPixToValue(0), 10);
    EXPECT_EQ(slider->convertValueToPix(100), 200);
    EXPECT_EQ(slider->getGainButtonRect(), QRect(0, 0, 20, 20)); // the value was raised to 10

    // An empty or inverted range keeps the last scale and lets nothing through.
    maximum.setValue(10);
    EXPECT_EQ(slider->convertPixToValue(150), 10);
}

TEST_F(SliderTest, DraggingTheHandleSendsValuesAndTheModelMovesIt)
{
    drag(5, 51);
    EXPECT_EQ(value.getValue(), 25);
    EXPECT_EQ(slider->getGainButtonRect(), QRect(50, 0, 20, 20));
    EXPECT_EQ(pixel(55), kHandle);
    EXPECT_EQ(pixel(5), kRamp);

    drag(55, -30); // left of the ramp: the minimum, never less
    EXPECT_EQ(value.getValue(), 0);
    drag(5, 400);
    EXPECT_EQ(value.getValue(), 100);

    // A press on the ramp beside the handle does nothing.
    drag(20, 60);
    EXPECT_EQ(value.getValue(), 100);

    // A refused value leaves the handle where the model has it.
    value.setReadOnly(true);
    drag(205, 100);
    EXPECT_EQ(slider->value(), 100);
}

TEST_F(SliderTest, AValueModelThatRefusesTheCorrectionIsLeftAlone)
{
    // Corrections in every order are played at random below. A model that
    // refuses the correction is left alone; the slider shows the bound.
    maximum.setValue(55);
    value.setReadOnly(true);
    value.setValue(90);
    EXPECT_EQ(value.getValue(), 90);
    EXPECT_EQ(slider->value(), 55);
}

TEST_F(SliderTest, ADisabledSliderShowsTheRampAloneAndIgnoresTheMouse)
{
    slider->setEnabledToolTip(QStringLiteral("Volume"));
    slider->setDisabledToolTip(QStringLiteral("Muted"));
    EXPECT_EQ(slider->toolTip(), QStringLiteral("Volume"));
    enabled.setValue(false);
    EXPECT_EQ(slider->toolTip(), QStringLiteral("Muted"));
    EXPECT_EQ(pixel(5), kRamp);
    drag(5, 51);
    EXPECT_EQ(value.getValue(), 0);

    // Disabled in the middle of a drag, the drag ends there.
    enabled.setValue(true);
    EXPECT_EQ(slider->toolTip(), QStringLiteral("Volume"));
    QTest::mousePress(slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 10));
    enabled.setValue(false);
    enabled.setValue(true);
    QTest::mouseMove(slider.get(), QPoint(51, 10));
    QTest::mouseRelease(slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(51, 10));
    EXPECT_EQ(value.getValue(), 0);
}

TEST_F(SliderTest, ReconnectingToAnotherRangeNeverWritesToThePreviousValueModel)
{
    Mve_SimpleValue<long> otherValue(5, "Other.Vol");
    Mve_SimpleValue<long> otherMin(0, "Other.Range.min");
    Mve_SimpleValue<long> otherMax(10, "Other.Range.max");
    publishAll({&otherValue, &otherMin, &otherMax});
    value.setValue(80);
    auto env = environmentWith(QStringLiteral("Bus"), QStringLiteral("Other"));
    slider->setValueConnSpec("$Bus.Vol");
    slider->setRangeConnSpec("$Bus.Range");
    slider->makeConnections(env);
    EXPECT_EQ(value.getValue(), 80);
    EXPECT_EQ(otherValue.getValue(), 5);
    EXPECT_EQ(slider->maximum(), 10);
}

// Whatever the order of range and value changes, the model's value ends in
// the range and the slider shows it.
TEST_F(SliderTest, RandomRangeAndValueChangesAlwaysEndInRange)
{
    QRandomGenerator random(19);
    for (int step = 0; step < 400; ++step) {
        const long n = long(random.bounded(-50, 150));
        switch (random.bounded(3)) {
        case 0:
            minimum.setValue(n);
            break;
        case 1:
            maximum.setValue(n);
            break;
        default:
            value.setValue(n);
            break;
        }
        SCOPED_TRACE(step);
        if (minimum.getValue() < maximum.getValue()) {
            EXPECT_GE(value.getValue(), minimum.getValue());
            EXPECT_LE(value.getValue(), maximum.getValue());
            EXPECT_EQ(slider->value(), value.getValue());
            EXPECT_EQ(slider->pixelsPerUnit(), 200.0 / double(maximum.getValue() - minimum.getValue()));
        }
    }
}

TEST_F(SliderTest, KeysMoveTheValueWithinTheRangeAndTheFocusIsFramed)
{
    slider->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(slider.get()));
    slider->clearFocus(); // a window shown alone gives itself the focus
    const QImage unfocused = slider->grab().toImage();
    slider->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(waitFor([&] { return slider->hasFocus(); }));
    value.setValue(50);
    QTest::keyClick(slider.get(), Qt::Key_Right);
    EXPECT_EQ(value.getValue(), 51);
    QTest::keyClick(slider.get(), Qt::Key_Down);
    EXPECT_EQ(value.getValue(), 50);
    QTest::keyClick(slider.get(), Qt::Key_PageUp);
    EXPECT_EQ(value.getValue(), 60);
    QTest::keyClick(slider.get(), Qt::Key_End);
    EXPECT_EQ(value.getValue(), 100);
    QTest::keyClick(slider.get(), Qt::Key_Up); // stays at the top
    EXPECT_EQ(value.getValue(), 100);
    QTest::keyClick(slider.get(), Qt::Key_Home);
    EXPECT_EQ(value.getValue(), 0);
    QTest::keyClick(slider.get(), Qt::Key_PageDown);
    EXPECT_EQ(value.getValue(), 0);

    // A dotted frame runs along the top edge.
    const QImage focused = slider->grab().toImage();
    int framed = 0;
    for (int x = 30; x < 220; ++x)
        framed += focused.pixel(x, 0) != unfocused.pixel(x, 0) ? 1 : 0;
    EXPECT_GT(framed, 40);

    enabled.setValue(false); // a disabled slider takes no keys
    QTest::keyClick(slider.get(), Qt::Key_End);
    EXPECT_EQ(value.getValue(), 0);
}

TEST_F(SliderTest, ReadersSeeASliderWithItsValueAndRange)
{
    value.setValue(30);
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(slider.get());
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->role(), QAccessible::Slider);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("volume"));
    ASSERT_NE(iface->valueInterface(), nullptr);
    EXPECT_EQ(iface->valueInterface()->currentValue().toInt(), 30);
    EXPECT_EQ(iface->valueInterface()->maximumValue().toInt(), 100);
    maximum.setValue(50);
    EXPECT_EQ(iface->valueInterface()->maximumValue().toInt(), 50);
    EXPECT_EQ(iface->text(QAccessible::Value), QStringLiteral("30"));
}
