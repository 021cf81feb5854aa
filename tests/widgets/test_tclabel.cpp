// Kel_TCLabel (timecode display and keypad entry) and Kel_Time (durations).
#include "AssertRecorder.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_TCLabel.h"
#include "Kel_Time.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QRandomGenerator>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <vector>

namespace {

const QString kGrey = QStringLiteral("<font color=#808080>");
const QString kBlack = QStringLiteral("</font><font color=black>");
const QString kEnd = QStringLiteral("</font>");

// The entry's markup: untyped part grey, typed part black.
QString entry(const QString& untyped, const QString& typed)
{
    return kGrey + untyped + kBlack + typed + kEnd;
}

// Failed assertions recorded, other messages kept off the log.
struct AssertLog : AssertRecorder
{
    DebugMessageCollector quiet;
};

class TCLabelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&position, &playState, &mode, &gotoTimecode});
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(label = new Kel_TCLabel(&window, "TCTest.Position", "TCTest.PlayState", "TCTest.Mode", true));
        layout->addWidget(other = new QLineEdit(&window));
        Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment());
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        // The label would take the window's first focus, and with it an entry.
        // Without a window manager the server may hand activation back to an
        // earlier window for a moment: ask again until the focus is there.
        ASSERT_TRUE(waitFor([this] {
            if (!window.isActiveWindow())
                QApplication::setActiveWindow(&window);
            other->setFocus();
            return other->hasFocus();
        }));
    }
    void startEntry()
    {
        ASSERT_TRUE(waitFor([this] {
            if (!window.isActiveWindow())
                QApplication::setActiveWindow(&window);
            label->setFocus(Qt::TabFocusReason);
            return label->hasFocus();
        }));
    }
    void keypad(Qt::Key key) { QTest::keyClick(label, key, Qt::KeypadModifier); }
    void typeDigits(const QString& digits)
    {
        for (QChar c : digits)
            keypad(Qt::Key(Qt::Key_0 + c.digitValue()));
    }

    Mve_SimpleValue<Mv_Timecode> position{Mv_Timecode(1, 2, 3, 4), "TCTest.Position"};
    Mve_SimpleValue<QString> playState{QStringLiteral("stopped"), "TCTest.PlayState"};
    Mve_SimpleValue<QString> mode{QStringLiteral("Source"), "TCTest.Mode"};
    std::vector<Mv_Timecode> sent;
    Mve_Action<void(Mv_Timecode)> gotoTimecode{[this](Mv_Timecode tc) { sent.push_back(tc); },
                                               "MainMonitor.gotoTimecode"};
    QWidget window;
    Kel_TCLabel* label = nullptr;
    QLineEdit* other = nullptr;
};

} // namespace

TEST_F(TCLabelTest, ShowsTheModelsTimecodeWithItsSeparators)
{
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:04"));
    EXPECT_EQ(label->objectName(), QStringLiteral("TCLabel"));
    position.setValue(Mv_Timecode(10, 59, 58, 29, 1));
    EXPECT_EQ(label->text(), QStringLiteral("10;59;58;29"));

    label->setShowFrames(false);
    EXPECT_EQ(label->text(), QStringLiteral("10;59;58"));
    // The width fits the widest text of the kind shown.
    EXPECT_EQ(label->width(), QFontMetrics(label->font()).horizontalAdvance(QStringLiteral("00;00;00")));
}

// Digits, the point and Escape on the keypad are played at random below.
TEST_F(TCLabelTest, OnlyKeypadDigitsAndThePointCount)
{
    startEntry();
    QTest::keyClick(label, Qt::Key_7);
    keypad(Qt::Key_Plus);
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:04"));
    keypad(Qt::Key_1);
    EXPECT_EQ(label->text(), entry("01:02:03:0", "1"));
}

TEST_F(TCLabelTest, EnterSendsTheEntryAndShowsTheSavedTimecodeAgain)
{
    position.setValue(Mv_Timecode(1, 2, 3, 4, 1));
    startEntry();
    typeDigits(QStringLiteral("312"));
    EXPECT_EQ(label->text(), entry("01;02;0", "3;12"));
    keypad(Qt::Key_Enter);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], Mv_Timecode(1, 2, 3, 12, 1));
    EXPECT_EQ(label->text(), QStringLiteral("01;02;03;04"));
    EXPECT_TRUE(label->hasFocus());

    // Without the action nothing is sent, and the label keeps working.
    gotoTimecode.UnPublish();
    typeDigits(QStringLiteral("5"));
    keypad(Qt::Key_Enter);
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_EQ(label->text(), QStringLiteral("01;02;03;04"));
}

TEST_F(TCLabelTest, LeavingTheLabelOrANewPositionEndsTheEntry)
{
    startEntry();
    typeDigits(QStringLiteral("99"));
    other->setFocus();
    ASSERT_TRUE(waitFor([this] { return other->hasFocus(); }));
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:04"));

    startEntry();
    typeDigits(QStringLiteral("99"));
    position.setValue(Mv_Timecode(2, 0, 0, 0));
    EXPECT_FALSE(label->hasFocus()) << "a new position moves the focus on";
    // The focus-out puts back the timecode saved when the entry began.
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:04"));
    position.setValue(Mv_Timecode(2, 0, 1, 0));
    EXPECT_EQ(label->text(), QStringLiteral("02:00:01:00"));
}

TEST_F(TCLabelTest, WhilePlayingFramesShowAsDashesAndOnlySecondsRedraw)
{
    startEntry();
    playState.setValue(QStringLiteral("playing"));
    EXPECT_FALSE(label->hasFocus()) << "playing ends an entry";
    EXPECT_TRUE(label->isPlaying());
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:--"));
    position.setValue(Mv_Timecode(1, 2, 4, 10));
    EXPECT_EQ(label->text(), QStringLiteral("01:02:04:--"));
    playState.setValue(QStringLiteral("stopped"));
    EXPECT_EQ(label->text(), QStringLiteral("01:02:04:10"));

    mode.setValue(QStringLiteral("ShotList"));
    EXPECT_TRUE(label->isStoryMode());
    mode.setValue(QStringLiteral("Source"));
    EXPECT_FALSE(label->isStoryMode());
}

TEST_F(TCLabelTest, ASixDigitLabelReportsItsLengthOnEveryDigit)
{
    AssertLog asserts;
    label->setShowFrames(false);
    startEntry();
    typeDigits(QStringLiteral("45"));
    EXPECT_EQ(label->text(), entry("01:02:", "45"));
    EXPECT_EQ(label->timecode(), Mv_Timecode(1, 2, 45, 4));
    EXPECT_EQ(asserts.conditions, QStringList({"origLength == 8", "origLength == 8"}));

    asserts.conditions.clear();
    Mv_Timecode tc(1, 1, 1, 1);
    Kel_TCLabel::strToTimecode(QStringLiteral("12345"), tc);
    EXPECT_EQ(tc, Mv_Timecode(1, 1, 1, 1));
    EXPECT_EQ(asserts.conditions, QStringList({"6 == length || 8 == length"}));
}

TEST_F(TCLabelTest, AnUnboundLabelShowsZeroAndIgnoresMissingModels)
{
    Kel_TCLabel unbound(&window, "FactoryMade");
    Kel_ConnectionUtils::recursiveConnect(&unbound, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(unbound.objectName(), QStringLiteral("FactoryMade"));
    EXPECT_EQ(unbound.text(), QStringLiteral("00:00:00:00"));
    // Forms bind it through its properties.
    unbound.setProperty("tcConnection", QStringLiteral("TCTest.Position"));
    unbound.setProperty("showFrames", false);
    Kel_ConnectionUtils::recursiveConnect(&unbound, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(unbound.text(), QStringLiteral("01:02:03"));
    position.UnPublish();
    EXPECT_EQ(label->text(), QStringLiteral("01:02:03:04"));
}

TEST_F(TCLabelTest, AnyMixOfDigitsAndPointsMatchesAShadowEntry)
{
    AssertLog asserts;
    QRandomGenerator random(18);
    const QString saved = QStringLiteral("01020304");
    startEntry();
    QString typed; // the shadow: digits entered so far, newest last
    for (int step = 0; step < 400; ++step) {
        const int choice = int(random.bounded(14));
        if (choice < 10) {
            keypad(Qt::Key(Qt::Key_0 + choice));
            if (typed.size() < 8)
                typed += QChar('0' + choice);
        } else if (choice < 13) {
            keypad(Qt::Key_Period);
            typed.chop(1);
        } else {
            QTest::keyClick(label, Qt::Key_Escape);
            typed.clear();
        }
        const QString digits = saved.left(saved.size() - typed.size()) + typed;
        const Mv_Timecode expected(digits.mid(0, 2).toUShort(), digits.mid(2, 2).toUShort(),
                                   digits.mid(4, 2).toUShort(), digits.mid(6, 2).toUShort());
        ASSERT_EQ(label->timecode(), expected) << "step " << step << " typed " << typed.toStdString();
        QString shown = digits;
        for (int at : {6, 4, 2})
            shown.insert(at, QLatin1Char(':'));
        const int black = typed.size() + (typed.size() >= 3) + (typed.size() >= 5) + (typed.size() >= 7);
        ASSERT_EQ(label->text(), typed.isEmpty() ? shown : entry(shown.left(11 - black), shown.right(black)))
            << "step " << step;
    }
    EXPECT_TRUE(asserts.conditions.isEmpty());
    EXPECT_TRUE(sent.empty());
}

TEST(Time, DurationTexts)
{
    Mve_SimpleValue<double> seconds(-75.0, "TimeTest.Seconds");
    publishAll({&seconds});
    Kel_Time time(nullptr, "TimeTest.Seconds", "ignored", false);
    EXPECT_EQ(time.text(), QString()) << "unconnected";
    time.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(time.text(), QStringLiteral("-1:15"));
    seconds.setValue(3600.0);
    EXPECT_EQ(time.text(), QStringLiteral("1:00:00"));
    seconds.setValue(3725.4);
    EXPECT_EQ(time.text(), QStringLiteral("1:02:05"));
    seconds.setValue(59.6);
    EXPECT_EQ(time.text(), QStringLiteral("0:60")) << "rounded after the minutes are taken";
    seconds.setValue(0.2);
    EXPECT_EQ(time.text(), QStringLiteral("0:00"));
    time.hideWhenZero(true);
    EXPECT_EQ(time.Time2String(0.2), QString());
    EXPECT_EQ(time.Time2String(0.5), QStringLiteral("0:01"));
    seconds.UnPublish();
    EXPECT_EQ(time.text(), QString());
}
