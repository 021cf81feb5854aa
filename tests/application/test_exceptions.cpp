// Exceptions escaping event handlers: reported in an error box, the event
// counts as not handled, and the program goes on.
#include "Kel_Application.h"
#include "Ost_UIDialog.h"
#include "TestSupport.h"

#include <QFileInfo>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTranslator>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

// A widget whose mouse and key handlers run a test-chosen function.
class FaultyWidget : public QWidget
{
public:
    std::function<void()> fault;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        event->accept();
        if (fault)
            fault();
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        event->accept();
        if (fault)
            fault();
    }
};

// Collects the error boxes instead of showing them.
class ReportedBoxes
{
public:
    ReportedBoxes()
    {
        mPrevious = Ost_UIDialog::setInterceptor([this](const Ost_UIDialog::Request& r) {
            requests.append(r);
            return 0;
        });
    }
    ~ReportedBoxes() { Ost_UIDialog::setInterceptor(mPrevious); }
    QStringList messages() const
    {
        QStringList list;
        for (const Ost_UIDialog::Request& r : requests)
            list.append(r.message);
        return list;
    }

    QVector<Ost_UIDialog::Request> requests;

private:
    Ost_UIDialog::Interceptor mPrevious;
};

class ApplicationExceptions : public ::testing::Test
{
protected:
    void SetUp() override
    {
        widget.resize(100, 40);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }

    // Clicks the widget while its handler runs fault; the reported messages.
    QStringList clickWith(std::function<void()> fault)
    {
        widget.fault = std::move(fault);
        QTest::mouseClick(&widget, Qt::LeftButton);
        widget.fault = nullptr;
        return boxes.messages();
    }

    ReportedBoxes boxes;
    FaultyWidget widget;
};

std::runtime_error sStaticError("stack overflow in parser");

} // namespace

TEST_F(ApplicationExceptions, TextsOfTheThrownKinds)
{
    EXPECT_EQ(clickWith([] { throw QStringLiteral("disk full"); }), QStringList{"Exception: disk full"});
    boxes.requests.clear();

    static char buffer[] = "buffer overrun";
    EXPECT_EQ(clickWith([] { throw static_cast<char*>(buffer); }), QStringList{"Exception: buffer overrun"});
    boxes.requests.clear();

    EXPECT_EQ(clickWith([] { throw "literal text"; }), QStringList{"Exception: literal text"});
    boxes.requests.clear();

    EXPECT_EQ(clickWith([] { throw &sStaticError; }), QStringList{"Exception: stack overflow in parser"});
    boxes.requests.clear();

    // Only a pointer to a standard exception is read; thrown by value it is
    // an unknown exception like any other type.
    EXPECT_EQ(clickWith([] { throw std::runtime_error("by value"); }),
              QStringList{"Exception: Unknown exception in Kel_Application"});
    boxes.requests.clear();
    EXPECT_EQ(clickWith([] { throw 42; }), QStringList{"Exception: Unknown exception in Kel_Application"});
    boxes.requests.clear();

    // Null pointers say nothing useful either.
    EXPECT_EQ(clickWith([] { throw static_cast<char*>(nullptr); }),
              QStringList{"Exception: Unknown exception in Kel_Application"});
    boxes.requests.clear();
    EXPECT_EQ(clickWith([] { throw static_cast<std::exception*>(nullptr); }),
              QStringList{"Exception: Unknown exception in Kel_Application"});
}

TEST_F(ApplicationExceptions, ReportIsOneModalErrorBoxFromTheApplication)
{
    widget.fault = [] { throw QStringLiteral("disk full"); };
    QTest::keyClick(&widget, Qt::Key_A);
    ASSERT_EQ(boxes.requests.size(), 1);
    const Ost_UIDialog::Request& r = boxes.requests.first();
    EXPECT_EQ(r.message, QStringLiteral("Exception: disk full"));
    EXPECT_EQ(r.buttonTexts, QStringLiteral("OK"));
    EXPECT_EQ(r.buttonCount, 1);
    EXPECT_EQ(r.icon, Ost_UIDialog::kErrorIcon);
    EXPECT_TRUE(r.detailText.isEmpty());
    EXPECT_FALSE(r.richText);
    EXPECT_EQ(QFileInfo(r.sourceFile).completeBaseName(), QStringLiteral("Kel_Application"));
}

TEST_F(ApplicationExceptions, EventIsNotHandledAndTheApplicationGoesOn)
{
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    EXPECT_TRUE(QCoreApplication::sendEvent(&widget, &press));

    widget.fault = [] { throw QStringLiteral("disk full"); };
    QMouseEvent again(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    EXPECT_FALSE(QCoreApplication::sendEvent(&widget, &again));
    widget.fault = nullptr;
    EXPECT_EQ(boxes.requests.size(), 1);

    // Other widgets keep working.
    QPushButton button(QStringLiteral("Go"));
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(boxes.requests.size(), 1);
}

TEST_F(ApplicationExceptions, TextsAreTranslatedInTheApplicationContext)
{
    QTranslator german;
    ASSERT_TRUE(german.load(QStringLiteral(KEL_TEST_QM_DIR "/messages/kel_messages_de.qm")));
    QCoreApplication::installTranslator(&german);
    clickWith([] { throw 7; });
    QCoreApplication::removeTranslator(&german);
    ASSERT_EQ(boxes.requests.size(), 1);
    EXPECT_EQ(boxes.requests.first().message, QStringLiteral("Ausnahme: Unbekannte Ausnahme in Kel_Application"));
    EXPECT_EQ(boxes.requests.first().buttonTexts, QStringLiteral("Gut"));
}
