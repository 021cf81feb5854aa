// Kel_MenuBar: a bar read from a menu file (or made by a factory), bound to
// models, opened with the mouse, and asked about accelerators.
#include "AssertRecorder.h"
#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_CommandSegment.h"
#include "Mnu_QtMenuBarEventFilter.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QApplication>
#include <QMainWindow>
#include <QPixmap>

using namespace menutest;

namespace {

// The models that tests/data/menu/TestBar.xml binds to, and a shown window
// whose bar reads that file.
class MenuBarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(resourceDir());
        publishAll({&canSave, &save, &stop, &transportTitle, &showTransport, &stopKey, &recent});
        for (const char* field : {"name", "id", "accelerator", "iconName"})
            recent.addField<QString>(field);
        recent.addField<QPixmap>("icon");
        recent.addField<bool>("selected");
        recent.setValue<QString>(recent.appendRow(), "name", "song");

        window.reset(new QMainWindow);
        bar = new Kel_MenuBar(window.get());
        bar->setProperty("menuBarFileName", QByteArray("TestBar"));
        window->setMenuBar(bar);
        window->resize(400, 200);
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
        for (QAction* action : bar->actions()) {
            if (action->isVisible())
                titles << action->text();
        }
        return titles;
    }

    // Lets the bar's event filter refresh the titles, as when the mouse enters it.
    void enterBar()
    {
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(bar, &enter);
        Mnu_QtMenuBarEventFilter* filter = bar->getMenuBarManager()->getEventFilter();
        waitFor([filter] { return !filter->isRefreshPending(); });
    }

    int saves = 0;
    int stops = 0;
    Mve_SimpleValue<bool> canSave{true, "BarTest.CanSave"};
    Mve_Action<void()> save{[this] { ++saves; }, "BarTest.Save"};
    Mve_Action<void()> stop{[this] { ++stops; }, "BarTest.Stop"};
    Mve_SimpleValue<QString> transportTitle{"Deck", "BarTest.TransportTitle"};
    Mve_SimpleValue<bool> showTransport{true, "BarTest.ShowTransport"};
    Mve_SimpleValue<QString> stopKey{"Ctrl+T", "BarTest.StopKey"};
    Mve_RecordArray recent{"BarTest.Recent"};
    std::unique_ptr<QMainWindow> window;
    Kel_MenuBar* bar = nullptr;
};

} // namespace

TEST_F(MenuBarTest, TheBarShowsItsMenusAndRunsTheChosenCommand)
{
    EXPECT_EQ(barTitles(), QStringList({"&File", "Deck"}));

    QAction* file = bar->findAction(QVariant("File"));
    ASSERT_NE(file, nullptr);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(file).center());
    QMenu* fileMenu = file->menu();
    ASSERT_TRUE(waitFor([fileMenu] { return fileMenu->isVisible(); }));
    EXPECT_EQ(items(fileMenu), QStringList({"&Save", "-", "Recent"}));
    QAction* saveItem = itemWithText(fileMenu, "&Save");
    QTest::mouseClick(fileMenu, Qt::LeftButton, Qt::NoModifier, fileMenu->actionGeometry(saveItem).center());
    EXPECT_TRUE(waitFor([this] { return saves == 1; }));
    EXPECT_FALSE(fileMenu->isVisible());
}

TEST_F(MenuBarTest, ItemsAreFoundByPathThroughSubmenus)
{
    QAction* recentItem = bar->getItemByPath("File.Recent");
    ASSERT_NE(recentItem, nullptr);
    ASSERT_NE(recentItem->menu(), nullptr);
    EXPECT_EQ(bar->getItemByPath("File.Recent.song"), recentItem->menu()->actions().at(0));
    EXPECT_EQ(bar->getItemByPath("File"), bar->findAction(QVariant("File")));
    EXPECT_EQ(bar->getItemByPath("File.Nothing"), nullptr);
    EXPECT_EQ(bar->getItemByPath(""), nullptr);

    Mnu_Manager* owner = nullptr;
    Mnu_Segment* segment = nullptr;
    int index = -1;
    ASSERT_TRUE(bar->tstFindItemByPath("File.Recent.song", &owner, &segment, &index));
    EXPECT_EQ(owner->getMenu()->getName(), "Recent");
    EXPECT_EQ(index, 0);
    Mnu_QtMenuBarManager* manager = bar->getMenuBarManager();
    EXPECT_EQ(manager->tstGetItemText("Transport"), "Deck");
    EXPECT_TRUE(manager->tstGetItemEnabled("File.Save"));
    EXPECT_TRUE(manager->tstActivateItem("File.Recent.song"));
    EXPECT_TRUE(recent.field<bool>("selected")->values().at(0));
}

TEST_F(MenuBarTest, TheKeymapFindsCommandsByTheirCurrentAccelerator)
{
    auto* saveCommand = dynamic_cast<Mnu_CommandSegment*>(bar->getSegmentByAccelerator(QKeySequence("Ctrl+S")));
    ASSERT_NE(saveCommand, nullptr);
    EXPECT_EQ(saveCommand->getName(), "Save");
    EXPECT_TRUE(saveCommand->isEnabled(true));
    saveCommand->itemActivatedTimer();
    EXPECT_EQ(saves, 1);
    canSave.setValue(false);
    EXPECT_FALSE(saveCommand->isEnabled(true));

    // Accelerators from models are read again at each question.
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence("Ctrl+T"))->getName(), "Stop");
    stopKey.setValue("Ctrl+U");
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence("Ctrl+T")), nullptr);
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence("Ctrl+U"))->getName(), "Stop");
    // Hidden segments and hidden menus do not answer.
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence("Ctrl+R")), nullptr);
    showTransport.setValue(false);
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence("Ctrl+U")), nullptr);
    EXPECT_EQ(bar->getSegmentByAccelerator(QKeySequence()), nullptr);

    EXPECT_TRUE(bar->isDefinedAccelerator(QKeySequence("Ctrl+S")));
    ASSERT_NE(bar->findAccel(QKeySequence("Ctrl+S")), nullptr);
    bar->deleteAccelerator(QKeySequence("Ctrl+S"));
    EXPECT_FALSE(bar->isDefinedAccelerator(QKeySequence("Ctrl+S")));
    EXPECT_EQ(bar->findAccel(QKeySequence("Ctrl+S")), nullptr);
}

TEST_F(MenuBarTest, ShortcutsWorkBeforeAnyMenuWasOpened)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return saves == 1; }));
    QTest::keyClick(window.get(), Qt::Key_T, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return stops == 1; }));
}

TEST_F(MenuBarTest, TitlesAndVisibilityOfTheBarFollowTheirModels)
{
    transportTitle.setValue("Player");
    enterBar();
    EXPECT_EQ(barTitles(), QStringList({"&File", "Player"}));
    showTransport.setValue(false);
    enterBar();
    EXPECT_EQ(barTitles(), QStringList({"&File"}));
    transportTitle.setValue(QString());
    showTransport.setValue(true);
    enterBar();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Transport"}));
}

namespace {

Mnu_QtMenuBarManager* generatedBar(Mnu_QtMenuBarManager* bar)
{
    Mnu_QtManager* manager = bar->createManager();
    manager->getMenu()->setName("Generated");
    manager->getMenu()->setMenuText("&Generated");
    bar->addManager(manager);
    return bar;
}

} // namespace

TEST_F(MenuBarTest, AFactoryReplacesTheFileAndMenusCanBeAddedLater)
{
    Mnu_QtMenuBarManager::registerMenuBarFactory("TestBar", &generatedBar);
    bar->setMenuBarFileName("Menus\\TestBar");
    EXPECT_EQ(barTitles(), QStringList({"&Generated"}));
    Mnu_QtMenuBarManager::unregisterMenuBarFactory("TestBar");
    EXPECT_EQ(Mnu_QtMenuBarManager::getMenuBarFactory("TestBar"), nullptr);

    // A menu added to a built bar gets a reserved item, filled shortly after.
    generatedBar(bar->getMenuBarManager());
    EXPECT_TRUE(waitFor([this] { return barTitles().size() == 2; }));
    EXPECT_EQ(barTitles(), QStringList({"&Generated", "&Generated"}));

    bar->setMenuBarFileName("TestBar");
    EXPECT_EQ(barTitles(), QStringList({"&File", "Deck"}));
}

// The items of an open menu are pointed at through guided help's lookup.
TEST_F(MenuBarTest, PointsOfInterestAreTheBarAndItsMenus)
{
    QRect rect;
    EXPECT_TRUE(bar->findPoi(QString(), &rect));
    EXPECT_EQ(rect.size(), bar->size());
    QAction* file = bar->findAction(QVariant("File"));
    EXPECT_TRUE(bar->findPoi("File", &rect));
    EXPECT_EQ(rect, QRect(bar->mapToGlobal(bar->actionGeometry(file).topLeft()), bar->actionGeometry(file).size()));
    EXPECT_FALSE(bar->findPoi("Nothing", &rect));
}

TEST_F(MenuBarTest, ABarWithoutAMenuBarNameReportsItsMissingManager)
{
    AssertRecorder asserts;
    {
        DebugMessageCollector quiet;
        Kel_MenuBar unnamed;
        unnamed.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        EXPECT_EQ(unnamed.getSegmentByAccelerator(QKeySequence("Ctrl+S")), nullptr);
    }
    EXPECT_EQ(asserts.conditions, QStringList({"mMenuBarManagerP", "mMenuBarManagerP"}));
}

TEST_F(MenuBarTest, TheEditMenuStandsWhereTheFileSays)
{
    bar->setMenuBarFileName("EditBar");
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Edit", "&Clip"}));
    EXPECT_TRUE(bar->getMenuBarManager()->hasEditMenu());
    EXPECT_EQ(bar->actions().at(1)->menu(), Dak_EditMenu::instance().menu());

    // A menu added to the built bar comes after it; moving the Edit menu puts it last.
    generatedBar(bar->getMenuBarManager());
    bar->getMenuBarManager()->refreshMenuBar();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Edit", "&Clip", "&Generated"}));
    bar->getMenuBarManager()->addEditMenu();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Clip", "&Generated", "&Edit"}));
    bar->getMenuBarManager()->instantiateMenus();
    EXPECT_EQ(barTitles(), QStringList({"&File", "&Clip", "&Generated", "&Edit"}));
}

TEST_F(MenuBarTest, ReplacingOrDestroyingABarLeavesTheEditMenuIntact)
{
    // Two bars may show the one Edit menu.
    bar->setMenuBarFileName("EditBar");
    QMainWindow second;
    auto* other = new Kel_MenuBar(&second, "EditBar");
    second.setMenuBar(other);
    other->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    QAction* editItem = Dak_EditMenu::instance().menu()->menuAction();
    EXPECT_TRUE(other->actions().contains(editItem));

    bar->setMenuBarFileName("TestBar");
    EXPECT_FALSE(bar->actions().contains(editItem));
    EXPECT_FALSE(bar->getMenuBarManager()->hasEditMenu());
    EXPECT_TRUE(other->actions().contains(editItem));
    window.reset();
    EXPECT_EQ(Dak_EditMenu::instance().action(Dak_EditMenuCommander::kCopy)->text(), QStringLiteral("&Copy"));
}
