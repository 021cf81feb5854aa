// Items and menus added to a menu bar that is already read, connected and
// built, by path, the way a plug-in adds its commands; and the radio
// indicators of the two radio kinds.
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QActionGroup>
#include <QRandomGenerator>
#include <QRegularExpression>

using namespace menutest;

namespace {

QString command(const QString& name)
{
    return QStringLiteral("<CommandSegment><Name>%1</Name><Text>%1</Text><ActionScript>Plugin.Run()</ActionScript>"
                          "</CommandSegment>")
        .arg(name);
}

QString menuOf(const QString& segments)
{
    return QStringLiteral("<Menu>") + segments + QStringLiteral("</Menu>");
}

class InsertTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        run.Publish();
        bar.setMenuBarFileName(QFile::encodeName(resourceDir() + "CompiledBar.xml"));
        bar.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        menus = bar.getMenuBarManager();
    }

    QMenu* dropDown(int index) { return bar.actions().value(index) ? bar.actions().value(index)->menu() : nullptr; }
    QStringList barMenus()
    {
        QStringList names;
        for (QAction* action : bar.actions())
            names << action->data().toString();
        return names;
    }

    int runs = 0;
    Mve_Action<void()> run{[this] { ++runs; }, "Plugin.Run"};
    Kel_MenuBar bar;
    Mnu_QtMenuBarManager* menus = nullptr;
};

} // namespace

TEST_F(InsertTest, ItemsGoBeforeOrAfterTheNamedItemOrAtTheEndOfTheNamedMenu)
{
    QMenu* file = dropDown(0);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(opened(file), QStringList({"&Save(off)", "Open &Recent"}));

    EXPECT_TRUE(menus->insertItems("File.Save", menuOf(command("Export") + "<Separator/>"),
                                   Mnu_QtMenuBarManager::kInsertBefore));
    EXPECT_TRUE(menus->insertItems("File.Save", menuOf(command("Print") + command("Mail")),
                                   Mnu_QtMenuBarManager::kInsertAfter));
    EXPECT_EQ(opened(file), QStringList({"Export", "-", "&Save(off)", "Print", "Mail", "Open &Recent"}));

    // Into a submenu, found by its segment's name.
    EXPECT_TRUE(menus->insertItems("File.Recent", menuOf(command("Forget")), Mnu_QtMenuBarManager::kAppend));
    QMenu* recent = itemWithText(file, "Open &Recent")->menu();
    ASSERT_NE(recent, nullptr);
    EXPECT_EQ(opened(recent), QStringList({"Forget"}));

    // The new commands are connected like the rest of the bar: they run.
    choose(file, "Mail");
    EXPECT_TRUE(waitFor([this] { return runs == 1; }));
}

TEST_F(InsertTest, APathThatLeadsNowhereAddsNothing)
{
    QMenu* file = dropDown(0);
    const QStringList before = opened(file);
    const QString items = menuOf(command("Lost"));
    using M = Mnu_QtMenuBarManager;
    EXPECT_FALSE(menus->insertItems("File.NoSuchItem", items, M::kInsertBefore));
    EXPECT_FALSE(menus->insertItems("File", items, M::kInsertAfter)); // names a menu, not an item
    EXPECT_FALSE(menus->insertItems("Edit", items, M::kAppend));
    EXPECT_FALSE(menus->insertItems("File.Save.Deeper", items, M::kInsertBefore));
    EXPECT_FALSE(menus->insertItems(QString(), items, M::kAppend));
    EXPECT_FALSE(menus->insertItems("File", QStringLiteral("<Keys>") + command("Lost") + "</Keys>", M::kAppend));
    DebugMessageCollector quiet;
    EXPECT_FALSE(menus->insertItems("File", QStringLiteral("<Menu><CommandSegment></Menu>"), M::kAppend));
    EXPECT_EQ(menus->insertMenu("NoSuchMenu", menuOf(command("Lost"))), nullptr);
    EXPECT_EQ(menus->insertMenu(QString(), QStringLiteral("<Menu>")), nullptr);
    EXPECT_EQ(opened(file), before);
    EXPECT_EQ(menus->getManagerCount(), 2);
}

TEST_F(InsertTest, MenusGoBeforeTheNamedMenuOrAtTheEnd)
{
    EXPECT_EQ(barMenus(), QStringList({"File", "View"}));
    Mnu_QtManager* tools =
        menus->insertMenu("View", "<Menu><Name>Tools</Name><Text>&amp;Tools</Text>" + command("Check") + "</Menu>");
    ASSERT_NE(tools, nullptr);
    ASSERT_NE(menus->insertMenu(QString(), "<Menu><Name>Help</Name>" + command("About") + "</Menu>"), nullptr);
    EXPECT_EQ(barMenus(), QStringList({"File", "Tools", "View", "Help"}));
    EXPECT_EQ(bar.actions().at(1)->text(), "&Tools");
    EXPECT_EQ(menus->getManagerAt(1), tools);

    // A new menu is a menu of the bar like the others: reachable by path,
    // open to further items, its commands connected.
    EXPECT_TRUE(menus->insertItems("Tools.Check", menuOf(command("Repair")), Mnu_QtMenuBarManager::kInsertAfter));
    EXPECT_EQ(opened(dropDown(1)), QStringList({"Check", "Repair"}));
    choose(dropDown(3), "About");
    EXPECT_TRUE(waitFor([this] { return runs == 1; }));
}

TEST_F(InsertTest, RandomInsertionsKeepTheOrderAShadowListKeeps)
{
    QRandomGenerator random(2024);
    QStringList shadow{"Save", "Recent"};
    auto names = [this] {
        QStringList result;
        Mnu_Menu* file = menus->getMenuByPath("File");
        for (int i = 0; file && i < file->getSegmentCount(); ++i)
            result << file->getSegmentAt(i)->getName();
        return result;
    };
    int made = 0;
    for (int step = 0; step < 150; ++step) {
        SCOPED_TRACE(step);
        const auto position = Mnu_QtMenuBarManager::InsertPosition(random.bounded(3));
        const bool bogus = random.bounded(10) == 0;
        const QString anchor = bogus ? QStringLiteral("Nothing") : shadow.at(int(random.bounded(shadow.size())));
        QStringList added;
        for (int n = 1 + int(random.bounded(2)); n > 0; --n)
            added << QStringLiteral("C%1").arg(made++);
        QString segments;
        for (const QString& name : added)
            segments += command(name);

        const QString path = position == Mnu_QtMenuBarManager::kAppend ? QStringLiteral("File") : "File." + anchor;
        const bool lands = position == Mnu_QtMenuBarManager::kAppend || !bogus;
        ASSERT_EQ(menus->insertItems(path, menuOf(segments), position), lands);
        if (lands) {
            int at = shadow.size();
            if (position == Mnu_QtMenuBarManager::kInsertBefore)
                at = shadow.indexOf(anchor);
            else if (position == Mnu_QtMenuBarManager::kInsertAfter)
                at = shadow.indexOf(anchor) + 1;
            for (int i = 0; i < added.size(); ++i)
                shadow.insert(at + i, added.at(i));
        }
        ASSERT_EQ(names(), shadow);
    }
    // And the built menu shows them in that order.
    QStringList expected = shadow;
    expected.replaceInStrings(QRegularExpression("^Save$"), "&Save(off)");
    expected.replaceInStrings(QRegularExpression("^Recent$"), "Open &Recent");
    EXPECT_EQ(opened(dropDown(0)), expected);
}

// ---------------------------------------------------------------------------

namespace {

class RadioTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        speed.Publish();
        zoom.Publish();
        loop.Publish();
        speeds.add("Half", "0.5");
        speeds.add("Normal", "1");
        menu = menuFromXml(QStringLiteral(
            "<Menu><Name>View</Name>"
            "<RadioListSegment><ItemsConnectionName>Radio.Speeds</ItemsConnectionName>"
            "<CurrentItemConnectionName>Radio.Speed</CurrentItemConnectionName></RadioListSegment>"
            "<BooleanSegment><Name>Loop</Name><Text>Loop</Text><BooleanConnectionName>Radio.Loop</"
            "BooleanConnectionName>"
            "</BooleanSegment>"
            "<RadioItemsSegment><CurrentItemConnectionName>Radio.Zoom</CurrentItemConnectionName>"
            "<RadioItem><Text>Fit</Text><ID>0</ID></RadioItem><RadioItem><Text>Full</Text><ID>100</ID></RadioItem>"
            "</RadioItemsSegment></Menu>"));
    }

    QActionGroup* groupOf(const QString& text)
    {
        QAction* action = itemWithText(menu->getPopupMenu(), text);
        return action ? action->actionGroup() : nullptr;
    }

    Mve_SimpleValue<QString> speed{"1", "Radio.Speed"};
    Mve_SimpleValue<long> zoom{100, "Radio.Zoom"};
    Mve_SimpleValue<bool> loop{false, "Radio.Loop"};
    ListModel speeds{"Radio.Speeds"};
    std::unique_ptr<Mnu_QtManager> menu;
};

} // namespace

TEST_F(RadioTest, EachRadioSegmentIsOneExclusiveGroupWithRadioIndicators)
{
    QMenu* popup = menu->getPopupMenu();
    open(popup);
    // QMenu draws radio indicators for the actions of an exclusive group.
    for (const char* text : {"Half", "Normal", "Fit", "Full"}) {
        ASSERT_NE(groupOf(text), nullptr) << text;
        EXPECT_TRUE(groupOf(text)->isExclusive()) << text;
    }
    EXPECT_EQ(groupOf("Half"), groupOf("Normal"));
    EXPECT_EQ(groupOf("Fit"), groupOf("Full"));
    EXPECT_NE(groupOf("Half"), groupOf("Fit"));
    EXPECT_EQ(groupOf("Loop"), nullptr);
    EXPECT_EQ(items(popup), QStringList({"Half", "[x]Normal", "Loop", "Fit", "[x]Full"}));
    close(popup);
}

TEST_F(RadioTest, ChoosingMovesTheOneCheckMarkAndChoosingItAgainKeepsIt)
{
    QMenu* popup = menu->getPopupMenu();
    choose(popup, "Fit");
    EXPECT_EQ(zoom.getValue(), 0);
    choose(popup, "Half");
    EXPECT_EQ(speed.getValue(), "0.5");
    EXPECT_EQ(opened(popup), QStringList({"[x]Half", "Normal", "Loop", "[x]Fit", "Full"}));
    choose(popup, "Fit");
    EXPECT_EQ(zoom.getValue(), 0);
    EXPECT_EQ(opened(popup), QStringList({"[x]Half", "Normal", "Loop", "[x]Fit", "Full"}));
    // The menu is rebuilt on each opening: the groups of earlier builds are gone.
    EXPECT_EQ(popup->findChildren<QActionGroup*>().size(), 2);
}
