// Kel_StandardBistateButton and Kel_StandardRadioButton: images by visual
// state, the state and disabled models, and clicks tracked from press to
// release with real mouse events.
#define QTEST_QPA_MOUSE_HANDLING
#include "Kel_ConnectionUtils.h"
#include "Kel_ResourceImage.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_StandardRadioButton.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestImages.h"
#include "TestSupport.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>

namespace {

typedef Kel_StandardBistateButton Bistate;

const QSize kImageSize(24, 16);

// Writes the five images of base "Btn/x" (and a double-density off image).
void addButtonImages(const TestImageFolder& images)
{
    for (const char* suffix : {"_off", "_on", "_offtracking", "_ontracking", "_disabled"})
        images.add(QStringLiteral("Images/Btn/x%1.png").arg(QLatin1String(suffix)), kImageSize, Qt::gray);
    images.add(QStringLiteral("Images/Btn/x_off@2x.png"), kImageSize * 2, Qt::gray);
}

} // namespace

TEST(BistateButtonImages, FiveImagesFromTheBaseAndTheSharpOneOnDenseScreens)
{
    TestImageFolder images;
    addButtonImages(images);
    Bistate button(nullptr, "mute", QStringLiteral("Btn/x"));
    EXPECT_EQ(button.GetOffImage(), QByteArray("Images/Btn/x_off.png"));
    EXPECT_EQ(button.GetOnImage(), QByteArray("Images/Btn/x_on.png"));
    EXPECT_EQ(button.GetOffTrackingImage(), QByteArray("Images/Btn/x_offtracking.png"));
    EXPECT_EQ(button.GetOnTrackingImage(), QByteArray("Images/Btn/x_ontracking.png"));
    EXPECT_EQ(button.GetDisabledImage(), QByteArray("Images/Btn/x_disabled.png"));
    EXPECT_EQ(button.sizeHint(), kImageSize); // the disabled image, loaded

    // A missing file is remembered by name but keeps the image it had.
    button.SetDisabledImage("Images/Btn/none.png");
    EXPECT_EQ(button.GetDisabledImage(), QByteArray("Images/Btn/none.png"));
    EXPECT_EQ(button.sizeHint(), kImageSize);
    Bistate bare(nullptr, "bare");
    EXPECT_EQ(bare.sizeHint(), QSize(32, 32));

    const QPixmap dense = Kel_ResourceImage::load(QStringLiteral("Images/Btn/x_off.png"), 2.0);
    EXPECT_EQ(dense.devicePixelRatio(), 2.0);
    EXPECT_EQ(Kel_ResourceImage::logicalSize(dense), kImageSize);
    EXPECT_EQ(Kel_ResourceImage::load(QStringLiteral("Images/Btn/x_on.png"), 2.0).devicePixelRatio(), 1.0);
    EXPECT_EQ(Kel_ResourceImage::load(QStringLiteral("Images/Btn/x_off.png"), 1.0).size(), kImageSize);
    EXPECT_TRUE(Kel_ResourceImage::load(QStringLiteral("Images/none.png")).isNull());
    EXPECT_TRUE(Kel_ResourceImage::load(QString()).isNull());
}

namespace {

// A shown window with a bistate button bound to "Mute", whose scripts set
// it; "Mute.disabled" greys it out; "Other" is a model the scripts may set
// instead.
class BistateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&mute, &disabled, &other});
        button = new Bistate(&window, "muteButton", QString(), QStringLiteral("Mute = true"),
                             QStringLiteral("Mute = false"), QStringLiteral("Mute"));
        button->setFixedSize(40, 40);
        (new QVBoxLayout(&window))->addWidget(button);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        // On a display server the pointer is real: bring it over the button,
        // or the server's leave event can arrive between a press and its
        // release and count as dragging out.
        QTest::mouseMove(button, QPoint(20, 20));
        QTest::qWait(20);
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    void press(QPoint at = QPoint(20, 20)) { QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, at); }
    void move(QPoint to) { QTest::mouseMove(button, to); }
    void release(QPoint at = QPoint(20, 20)) { QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, at); }

    Mve_SimpleValue<bool> mute{false, "Mute"};
    Mve_SimpleValue<bool> disabled{false, "Mute.disabled"};
    Mve_SimpleValue<bool> other{false, "Other"};
    QWidget window;
    Bistate* button = nullptr;
};

} // namespace

TEST_F(BistateTest, StateFollowsTheModelsAndDisabledWins)
{
    EXPECT_EQ(button->getState(), Bistate::kDisabledState); // until connected
    connect();
    EXPECT_EQ(button->getState(), Bistate::kOffState);
    mute.setValue(true);
    EXPECT_EQ(button->getState(), Bistate::kOnState);
    disabled.setValue(true);
    EXPECT_EQ(button->getState(), Bistate::kDisabledState);
    disabled.setValue(false);
    EXPECT_EQ(button->getState(), Bistate::kOnState);
    disabled.UnPublish(); // no disabled model: the state decides
    EXPECT_EQ(button->getState(), Bistate::kOnState);
    mute.UnPublish(); // nothing to show
    EXPECT_EQ(button->getState(), Bistate::kDisabledState);

    Bistate unbound(&window, "unbound");
    unbound.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(unbound.getState(), Bistate::kDisabledState);
}

TEST_F(BistateTest, ClicksRunTheOnThenTheOffScriptAndTheModelSetsTheState)
{
    connect();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(mute.getValue());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(mute.getValue());

    // A script that leaves the state model alone leaves the button as it was.
    button->SetActionScriptOn("Other = true");
    connect();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(other.getValue());
    EXPECT_EQ(button->getState(), Bistate::kOffState);

    // The right button is not a click.
    QTest::mouseClick(button, Qt::RightButton);
    EXPECT_FALSE(mute.getValue());
}

TEST_F(BistateTest, AScriptWhoseModelIsMissingTracksButRunsNothing)
{
    button->SetActionScriptOn("Missing = true; Mute = true");
    connect();
    press();
    EXPECT_EQ(button->getState(), Bistate::kOffTrackingState);
    release();
    EXPECT_FALSE(mute.getValue());
    EXPECT_EQ(button->getState(), Bistate::kOffState);

    // A script that does not parse is as inert.
    button->SetActionScriptOn("Mute = (");
    connect();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(mute.getValue());
}

namespace {

// Three radio buttons for "Speed" ("0.5", "1", "2"); each one's on script
// counts its runs and sets the model to its state name.
class RadioTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&speed, &speedDisabled, &count, &half, &one, &two});
        auto* layout = new QVBoxLayout(&window);
        const char* names[] = {"0.5", "1", "2"};
        const char* scripts[] = {"Radio.Count(); Speed = Speed.Half", "Radio.Count(); Speed = Speed.One",
                                 "Radio.Count(); Speed = Speed.Two"};
        for (int i = 0; i < 3; ++i) {
            auto* radio = new Kel_StandardRadioButton(&window, names[i]);
            radio->SetStateName(QString::fromLatin1(names[i]));
            radio->SetStateConnectionSpec("Speed");
            radio->SetActionScriptOn(scripts[i]);
            radio->setFixedSize(40, 40);
            layout->addWidget(radio);
            radios.push_back(radio);
        }
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment());
    }
    std::vector<int> states() const
    {
        std::vector<int> result;
        for (auto* radio : radios)
            result.push_back(radio->getState());
        return result;
    }

    Mve_SimpleValue<QString> speed{"1", "Speed"};
    Mve_SimpleValue<QString> speedDisabled{"", "Speed.disabled"};
    int runs = 0;
    Mve_Action<void()> count{[this] { ++runs; }, "Radio.Count"};
    Mve_SimpleValue<QString> half{"0.5", "Speed.Half"};
    Mve_SimpleValue<QString> one{"1", "Speed.One"};
    Mve_SimpleValue<QString> two{"2", "Speed.Two"};
    QWidget window;
    std::vector<Kel_StandardRadioButton*> radios;
};

} // namespace

TEST_F(RadioTest, OnlyTheButtonNamedByTheModelIsOnAndClickingItRunsNothing)
{
    EXPECT_EQ(states(), (std::vector<int>{0, 1, 0}));
    QTest::mousePress(radios[1], Qt::LeftButton);
    EXPECT_EQ(radios[1]->getState(), Bistate::kOnTrackingState);
    QTest::mouseRelease(radios[1], Qt::LeftButton);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(states(), (std::vector<int>{0, 1, 0}));

    QTest::mouseClick(radios[2], Qt::LeftButton);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(speed.getValue(), QStringLiteral("2"));
    EXPECT_EQ(states(), (std::vector<int>{0, 0, 1}));

    speed.setValue(QStringLiteral("0.5"));
    EXPECT_EQ(states(), (std::vector<int>{1, 0, 0}));
    speed.setValue(QStringLiteral("3")); // no button for it
    EXPECT_EQ(states(), (std::vector<int>{0, 0, 0}));
}

TEST_F(RadioTest, AnyDisabledTextGreysTheGroupOut)
{
    speedDisabled.setValue(QStringLiteral("locked while recording"));
    EXPECT_EQ(states(), (std::vector<int>{4, 4, 4}));
    QTest::mouseClick(radios[0], Qt::LeftButton);
    EXPECT_EQ(runs, 0);
    speedDisabled.setValue(QString());
    EXPECT_EQ(states(), (std::vector<int>{0, 1, 0}));

    // A new state name applies at once.
    radios[0]->SetStateName(QStringLiteral("1"));
    EXPECT_EQ(states(), (std::vector<int>{1, 1, 0}));
}

// Any sequence of presses, moves in and out, releases and model changes:
// the button tracks from a press or a move back over it until it is left,
// released or the models report; a release while tracking toggles the model.
TEST_F(BistateTest, RandomPressesMovesAndModelChangesFollowTheTrackingRules)
{
    connect();
    QRandomGenerator random(1903);
    bool held = false;
    bool tracking = false; // the shadow of the button's tracking state
    QPoint at;
    for (int step = 0; step < 400; ++step) {
        switch (random.bounded(5)) {
        case 0:
            if (!held) {
                at = QPoint(20, 20);
                press(at);
                held = true;
                tracking = !disabled.getValue();
            }
            break;
        case 1:
            if (held) {
                // Qt drops a move to where the pointer is: go somewhere new.
                const bool inside = random.bounded(2) == 0;
                at = QPoint(inside ? 10 + step % 20 : 90 + step % 20, 20);
                move(at);
                tracking = inside && !disabled.getValue();
            }
            break;
        case 2:
            if (held) {
                const bool before = mute.getValue();
                release(at);
                EXPECT_EQ(mute.getValue(), tracking ? !before : before) << step;
                held = tracking = false;
            }
            break;
        case 3:
            mute.setValue(!mute.getValue());
            tracking = false; // the report shows the model's state
            break;
        default:
            if (disabled.setValue(random.bounded(4) == 0))
                tracking = false;
            break;
        }
        const bool on = mute.getValue();
        Bistate::visualState expected = on ? Bistate::kOnState : Bistate::kOffState;
        if (disabled.getValue())
            expected = Bistate::kDisabledState;
        else if (tracking)
            expected = on ? Bistate::kOnTrackingState : Bistate::kOffTrackingState;
        ASSERT_EQ(button->getState(), expected) << step;
    }
    if (held)
        release();
}

TEST_F(BistateTest, TabReachesTheButtonSpaceOrReturnClickItAndAClickLeavesTheFocus)
{
    connect();
    auto* edit = new QLineEdit(&window);
    window.layout()->addWidget(edit);
    edit->show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    edit->setFocus();
    ASSERT_TRUE(waitFor([&] { return edit->hasFocus(); }));
    QTest::keyClick(edit, Qt::Key_Backtab);
    ASSERT_TRUE(button->hasFocus());
    auto* frame = button->findChild<QWidget*>();
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(frame->isVisible()); // the focus shows

    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_TRUE(mute.getValue());
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_FALSE(mute.getValue());
    QTest::keyClick(button, Qt::Key_A); // other keys go on
    EXPECT_FALSE(mute.getValue());

    edit->setFocus();
    ASSERT_TRUE(waitFor([&] { return edit->hasFocus(); }));
    EXPECT_FALSE(frame->isVisible());
    press();
    release();
    EXPECT_TRUE(mute.getValue());
    EXPECT_TRUE(edit->hasFocus());
}

TEST_F(BistateTest, ReadersSeeAToggleButtonNamedByItsToolTipWhosePressClicksIt)
{
    connect();
    button->SetTooltipText(QStringLiteral("Mute the mix"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(button);
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->role(), QAccessible::Button);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("Mute the mix"));
    EXPECT_TRUE(iface->state().checkable);
    EXPECT_FALSE(iface->state().checked);
    ASSERT_NE(iface->actionInterface(), nullptr);
    iface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(mute.getValue());
    EXPECT_TRUE(iface->state().checked);
    iface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(mute.getValue());

    disabled.setValue(true); // nothing to press on a disabled button
    EXPECT_TRUE(iface->state().disabled);
    EXPECT_FALSE(iface->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    iface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(mute.getValue());
}
