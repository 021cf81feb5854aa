// The application's Edit menu placed in a menu bar by its menu file.
#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_QtMenuBarManager.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>

using namespace menutest;

namespace {

class EditMenuBarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(resourceDir());
        window.reset(new QMainWindow);
        bar = new Kel_MenuBar(window.get(), "EditBar");
        window->setMenuBar(bar);
        Kel_ConnectionUtils::recursiveConnect(window.get(), Mv_ConnectionEnvironment::blankEnvironment());
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        Ost_Resource::setResourcePath(QString());
    }
    QStringList barTitles() const
    {
        QStringList titles;
        for (QAction* action : bar->actions())
            titles << action->text();
        return titles;
    }

    std::unique_ptr<QMainWindow> window;
    Kel_MenuBar* bar = nullptr;
};

} // namespace

TEST_F(EditMenuBarTest, TheEditMenuStandsWhereTheFileSays)
{
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Edit", "&Clip"}));
    EXPECT_TRUE(bar->getMenuBarManager()->hasEditMenu());
    QAction* item = bar->actions().at(1);
    EXPECT_EQ(item->menu(), Dak_EditMenu::instance().menu());

    // A menu added to the built bar comes after it; moving the Edit menu puts it last.
    Mnu_QtMenuBarManager* manager = bar->getMenuBarManager();
    Mnu_QtManager* added = manager->createManager();
    added->getMenu()->setName("Added");
    added->getMenu()->setMenuText("&Added");
    manager->addManager(added);
    manager->refreshMenuBar();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Edit", "&Clip", "&Added"}));
    manager->addEditMenu();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Clip", "&Added", "&Edit"}));
    manager->instantiateMenus();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Clip", "&Added", "&Edit"}));
}

TEST_F(EditMenuBarTest, ReplacingTheBarOrDestroyingItLeavesTheEditMenuIntact)
{
    // Two bars may show the one Edit menu.
    QMainWindow second;
    auto* other = new Kel_MenuBar(&second, "EditBar");
    second.setMenuBar(other);
    other->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(other->actions().size(), 3);

    bar->setMenuBarFileName("TestBar");
    EXPECT_FALSE(barTitles().contains("&Edit"));
    EXPECT_FALSE(bar->getMenuBarManager()->hasEditMenu());
    EXPECT_TRUE(other->actions().contains(Dak_EditMenu::instance().menu()->menuAction()));
    window.reset();
    EXPECT_EQ(Dak_EditMenu::instance().action(Dak_EditMenuCommander::kCopy)->text(), QStringLiteral("&Copy"));
}
