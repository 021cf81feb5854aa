// The sample window for the Edit menu: a form under a bar that holds the Edit menu.
#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"
#include "Kel_EditMenuTestWindow.h"
#include "Kel_LineEdit.h"
#include "Kel_MenuBar.h"
#include "Kel_TextEdit.h"
#include "Mvt_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

TEST(EditMenuTestWindow, TheEditMenuActsOnTheFocusedField)
{
    const QString previous = Ost_Resource::getResourcePath();
    Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("factory/"));
    QPointer<QWidget> window = Kel_EditMenuTestWindow::open();
    ASSERT_NE(window.data(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    auto* bar = window->findChild<Kel_MenuBar*>(QStringLiteral("EditMenuTestMenubar"));
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->actions().contains(Dak_EditMenu::instance().menu()->menuAction()));

    // The form is connected: its fields publish their models.
    auto* title = window->findChild<Kel_LineEdit*>(QStringLiteral("title"));
    ASSERT_NE(title, nullptr);
    Mvt_SimpleValue<QString>::Listener titleModel;
    titleModel.SetConnectionName(QStringLiteral("EditMenuTest.Title"));
    titleModel.connect(Mv_ConnectionEnvironment::blankEnvironment());
    titleModel.set(QStringLiteral("Rushes"));
    EXPECT_EQ(title->text(), QStringLiteral("Rushes"));

    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    title->setFocus();
    ASSERT_TRUE(waitFor([title] { return title->hasFocus(); }));
    title->selectAll();
    Dak_EditMenu::instance().updateActions();
    Dak_EditMenu::instance().action(Dak_EditMenuCommander::kCut)->trigger();
    EXPECT_EQ(titleModel.value(), QString());

    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull()) << "deletes itself on close";

    // Without the form there is no window.
    Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("menu/"));
    EXPECT_EQ(Kel_EditMenuTestWindow::open(), nullptr);
    Ost_Resource::setResourcePath(previous);
}
