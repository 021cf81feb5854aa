// The application object: library initialisation, main widget, and the
// guard that reports exceptions escaping event handlers.
#include "Kel_Application.h"
#include "Kel_Initialize.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"
#include "Ost_UIDialog.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
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
    void mousePressEvent(QMouseEvent*) override { fault ? fault() : void(); }
    void keyPressEvent(QKeyEvent*) override { fault ? fault() : void(); }
};

std::runtime_error sError("stack overflow in parser");
char sBuffer[] = "buffer overrun";

} // namespace

TEST(Application, InitialisesTheLibraryAndKeepsTheMainWidget)
{
    auto* app = dynamic_cast<Kel_Application*>(QCoreApplication::instance());
    ASSERT_NE(app, nullptr);
    EXPECT_TRUE(Kel_IsInitialized());
    EXPECT_EQ(QDir(Ost_Resource::getResourcePath()).canonicalPath(), QDir(testDataDir()).canonicalPath());

    QWidget window;
    app->setMainWidget(&window);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), &window);
    app->setMainWidget(nullptr);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), nullptr);
}

TEST(Application, ProductNameKeepsItsAccentInFoldersAndTitles)
{
    // main.cpp names the product "Montage é" before the application exists.
    const QString product = QStringLiteral("Montage \u00e9");
    EXPECT_EQ(Ost_DirPaths::GetProductName(), product);
    EXPECT_EQ(Ost_DirPaths::GetPath(Ost_DirPaths::kTempDir, false), QDir::tempPath() + QLatin1Char('/') + product + QLatin1Char('/'));
    EXPECT_TRUE(Ost_DirPaths::GetPath(Ost_DirPaths::kUserDataDir, false).endsWith(QLatin1Char('/') + product + QLatin1Char('/')));

    // The real error box is titled with the product name.
    QString title;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&]() {
        QWidget* box = QApplication::activeModalWidget();
        if (!box || !box->isVisible())
            return;
        poll.stop();
        title = box->windowTitle();
        QTest::keyClick(box, Qt::Key_Escape);
    });
    poll.start(10);
    auto* app = static_cast<Kel_Application*>(QCoreApplication::instance());
    app->reportException(QStringLiteral("disk full"));
    EXPECT_EQ(title, product);
}

// A shown faulty widget, with the error boxes it causes caught instead of shown.
class ApplicationExceptions : public ::testing::Test
{
protected:
    void SetUp() override
    {
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }
    void TearDown() override { Ost_UIDialog::setInterceptor(previous); }
    // Clicks the widget with fault as its handler; answers the one message
    // reported, or how many reports there were.
    QString clickReports(std::function<void()> fault)
    {
        boxes.clear();
        widget.fault = std::move(fault);
        QTest::mouseClick(&widget, Qt::LeftButton);
        return boxes.size() == 1 ? boxes.first().message : QStringLiteral("%1 reports").arg(boxes.size());
    }

    QVector<Ost_UIDialog::Request> boxes;
    FaultyWidget widget;
    const Ost_UIDialog::Interceptor previous = Ost_UIDialog::setInterceptor([this](const Ost_UIDialog::Request& r) {
        boxes.append(r);
        return 0;
    });
};

TEST_F(ApplicationExceptions, MessageSaysWhatWasThrown)
{
    const QString unknown = QStringLiteral("Exception: Unknown exception in Kel_Application");
    EXPECT_EQ(clickReports([] { throw QStringLiteral("disk full"); }), QStringLiteral("Exception: disk full"));
    EXPECT_EQ(clickReports([] { throw static_cast<char*>(sBuffer); }), QStringLiteral("Exception: buffer overrun"));
    EXPECT_EQ(clickReports([] { throw "literal text"; }), QStringLiteral("Exception: literal text"));
    EXPECT_EQ(clickReports([] { throw &sError; }), QStringLiteral("Exception: stack overflow in parser"));
    // Only a pointer to a standard exception is read; by value it is unknown.
    EXPECT_EQ(clickReports([] { throw std::runtime_error("by value"); }), unknown);
    EXPECT_EQ(clickReports([] { throw 42; }), unknown);
    EXPECT_EQ(clickReports([] { throw static_cast<std::exception*>(nullptr); }), unknown);
}

TEST_F(ApplicationExceptions, ReportIsOneModalErrorBoxWithOneOkButton)
{
    ASSERT_EQ(clickReports([] { throw 42; }), QStringLiteral("Exception: Unknown exception in Kel_Application"));
    const Ost_UIDialog::Request& r = boxes.first();
    EXPECT_EQ(r.buttonTexts, QStringLiteral("OK"));
    EXPECT_EQ(r.buttonCount, 1);
    EXPECT_EQ(r.icon, Ost_UIDialog::kErrorIcon);
    EXPECT_TRUE(r.detailText.isEmpty());
    EXPECT_FALSE(r.richText);
    EXPECT_EQ(QFileInfo(r.sourceFile).completeBaseName(), QStringLiteral("Kel_Application"));
}

TEST_F(ApplicationExceptions, ThrowingEventCountsAsNotHandledAndKeysAreGuardedToo)
{
    widget.fault = [] { throw QStringLiteral("disk full"); };
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(widget.mapToGlobal(QPoint(5, 5))), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    EXPECT_FALSE(QCoreApplication::sendEvent(&widget, &press));
    QTest::keyClick(&widget, Qt::Key_A);
    EXPECT_EQ(boxes.size(), 2);
    widget.fault = nullptr;
    EXPECT_TRUE(QCoreApplication::sendEvent(&widget, &press));
}

TEST_F(ApplicationExceptions, OtherWidgetsKeepWorking)
{
    clickReports([] { throw 42; });
    QPushButton button(QStringLiteral("Go"));
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}
