// Menus shown as real Qt pop-ups: rebuilt on every opening from the models,
// and writing the user's choices back to them.
#include "MenuTestSupport.h"
#include "Mnu_CommandSegment.h"
#include "Mnu_ListSegment.h"
#include "Mnu_RadioListSegment.h"
#include "Mv_ConnectionDict.h"
#include "Mv_Utils.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Uip_RunScript.h"

#include <QPixmap>

using namespace menutest;

namespace {

QString command(const QString& name, const QString& script, const QString& extra = QString())
{
    return QStringLiteral("<CommandSegment><Name>%1</Name><Text>%1</Text><ActionScript>%2</ActionScript>%3"
                          "</CommandSegment>")
        .arg(name, script, extra);
}

QString list(const QString& items)
{
    return QStringLiteral("<ListSegment><ItemsConnectionName>%1</ItemsConnectionName></ListSegment>").arg(items);
}

const QString kSeparator = QStringLiteral("<Separator/>");

class PopupTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(resourceDir());
        play.Publish();
    }
    void TearDown() override
    {
        Mv_Utils::Mv_SetDelayedActionRunner(Mv_Utils::DelayedActionRunner());
        Ost_Resource::setResourcePath(QString());
    }

    int plays = 0;
    Mve_Action<void()> play{[this] { ++plays; }, "Popup.Play"};
};

} // namespace

TEST_F(PopupTest, OpeningAgainRebuildsFromTheModelsWithoutDuplicates)
{
    Mve_SimpleValue<QString> cutText("Cut", "Popup.CutText");
    cutText.Publish();
    auto menu = menuFromXml("<Menu><Name>Edit</Name>"
                            + command("Cut", "Popup.Play()", "<TextConnectionName>Popup.CutText</TextConnectionName>")
                            + kSeparator + command("Copy", "Popup.Play()") + "</Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    EXPECT_EQ(popup->objectName(), "Edit");
    // The about-to-show callback comes after the rebuild, with its user pointer.
    QStringList seen;
    menu->setAboutToShowFunc(
        [](Mnu_QtManager* manager, void* data) {
            *static_cast<QStringList*>(data) = items(manager->getPopupMenu());
        },
        &seen);

    EXPECT_EQ(opened(popup), QStringList({"Cut", "-", "Copy"}));
    EXPECT_EQ(seen, items(popup));
    cutText.setValue("Cut clip");
    EXPECT_EQ(opened(popup), QStringList({"Cut clip", "-", "Copy"}));
    EXPECT_EQ(popup->actions().size(), 3);
    // An empty model text falls back to the static text.
    cutText.setValue(QString());
    EXPECT_EQ(opened(popup), QStringList({"Cut", "-", "Copy"}));
}

TEST_F(PopupTest, SeparatorsNeverLeadDoubleOrTrail)
{
    ListModel empty("Popup.Empty");
    ListModel full("Popup.Full");
    full.add("one", "1");
    const QString a = command("A", "Popup.Play()");
    const QString b = command("B", "Popup.Play()");
    const QString hidden = command("H", "Popup.Play()", "<VisibleConnectionName>Popup.Absent</VisibleConnectionName>");
    const struct
    {
        QString segments;
        QStringList expected;
    } cases[] = {
        {kSeparator + kSeparator + kSeparator, {}},
        {kSeparator + a + kSeparator + kSeparator + b + kSeparator, {"A", "-", "B"}},
        {a + kSeparator + list("Popup.Empty") + kSeparator + list("Popup.Empty"), {"A"}},
        {a + kSeparator + list("Popup.Empty") + kSeparator + b, {"A", "-", "B"}},
        {list("Popup.Empty") + kSeparator + list("Popup.Empty"), {}},
        {a + kSeparator + hidden + kSeparator + b, {"A", "-", "B"}},
        {a + kSeparator + hidden, {"A"}},
        {list("Popup.Full") + kSeparator + list("Popup.Empty") + kSeparator + a, {"one", "-", "A"}},
    };
    for (const auto& c : cases) {
        auto menu = menuFromXml("<Menu>" + c.segments + "</Menu>");
        for (int opening = 0; opening < 2; ++opening)
            EXPECT_EQ(opened(menu->getPopupMenu()), c.expected) << c.segments.toStdString();
    }
}

TEST_F(PopupTest, ItemsAndMenusWhoseModelsCannotBeReachedAreHiddenOrDisabled)
{
    auto menu = menuFromXml(
        "<Menu>"
        + command("Shown", "Popup.Play()")
        + command("Hidden", "Popup.Play()", "<VisibleConnectionName>Popup.Absent</VisibleConnectionName>")
        + command("Disabled", "Popup.Play()", "<EnableConnectionName>Popup.Absent</EnableConnectionName>")
        + command("NoScript", "") + command("MissingModel", "Popup.Absent()") + command("BadScript", "Popup.Play(")
        + "<BooleanSegment><Name>Loose</Name><Text>Loose</Text>"
          "<BooleanConnectionName>Popup.Absent</BooleanConnectionName></BooleanSegment>"
          "<RadioItemsSegment><CurrentItemConnectionName>Popup.Absent</CurrentItemConnectionName>"
          "<RadioItem><Text>Only</Text><ID>1</ID></RadioItem></RadioItemsSegment>"
          "</Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    EXPECT_EQ(opened(popup), QStringList({"Shown", "Disabled(off)", "NoScript(off)", "MissingModel(off)",
                                          "BadScript(off)", "Loose(off)", "Only(off)"}));

    // A menu whose visibility model is missing shows nothing; once the model
    // is there, its value decides.
    auto hiddenMenu = menuFromXml("<Menu><VisibleConnectionName>Popup.MenuShown</VisibleConnectionName>"
                                  + command("Item", "Popup.Play()") + "</Menu>");
    Kel_PopupMenu* hidden = hiddenMenu->getPopupMenu();
    EXPECT_FALSE(hiddenMenu->isInstantiated());
    EXPECT_TRUE(opened(hidden).isEmpty());
    Mve_SimpleValue<bool> shown(true, "Popup.MenuShown");
    shown.Publish();
    EXPECT_EQ(opened(hidden), QStringList({"Item"}));
    shown.setValue(false);
    EXPECT_TRUE(opened(hidden).isEmpty());
}

TEST_F(PopupTest, ChoosingABooleanItemTogglesItsModel)
{
    Mve_SimpleValue<bool> muted(false, "Popup.Muted");
    muted.Publish();
    auto menu = menuFromXml("<Menu><BooleanSegment><Name>Mute</Name><Text>Mute</Text><Accelerator>Ctrl+M</Accelerator>"
                            "<BooleanConnectionName>Popup.Muted</BooleanConnectionName></BooleanSegment></Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    choose(popup, "Mute");
    EXPECT_TRUE(muted.getValue());
    EXPECT_EQ(opened(popup), QStringList({"[x]Mute"}));
    EXPECT_EQ(popup->actions().at(0)->shortcut(), QKeySequence("Ctrl+M"));
    choose(popup, "Mute");
    EXPECT_FALSE(muted.getValue());

    // A refused change shows the model's value again at the next opening.
    muted.setReadOnly(true);
    choose(popup, "Mute");
    EXPECT_FALSE(muted.getValue());
    EXPECT_EQ(opened(popup), QStringList({"Mute"}));
}

TEST_F(PopupTest, ListItemsComeFromTheArrayAndChoosingOneTogglesItsSelection)
{
    ListModel recent("Popup.Recent");
    recent.add("intro.wav", "17");
    const long outro = recent.add("outro.wav", "18", true);
    recent.array.setValue<QString>(0, "accelerator", "Ctrl+1");
    recent.array.setValue<QString>(outro, "iconName", "Images/Play.png");
    auto menu = menuFromXml("<Menu>" + list("Popup.Recent") + "</Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();

    EXPECT_EQ(opened(popup), QStringList({"intro.wav", "[x]outro.wav"}));
    EXPECT_EQ(popup->actions().at(0)->shortcut(), QKeySequence("Ctrl+1"));
    EXPECT_FALSE(popup->actions().at(1)->icon().isNull());
    auto* segment = dynamic_cast<Mnu_ListSegment*>(menu->getMenu()->getSegmentAt(0));
    EXPECT_EQ(segment->getItemIdentifier(Mnu_MenuID(popup->actions().at(0))), "17");
    // Setting the same name again keeps the list connected.
    segment->setItemsConnectionName("Popup.Recent");

    choose(popup, "intro.wav");
    EXPECT_TRUE(recent.selected(0));
    choose(popup, "outro.wav");
    EXPECT_FALSE(recent.selected(outro));
    EXPECT_EQ(opened(popup), QStringList({"[x]intro.wav", "outro.wav"}));

    // Elements appear and disappear with the array.
    recent.array.setValue<QPixmap>(recent.add("new.wav", "19"), "icon", QPixmap(4, 4));
    EXPECT_EQ(opened(popup), QStringList({"[x]intro.wav", "outro.wav", "new.wav"}));
    EXPECT_FALSE(popup->actions().at(2)->icon().isNull());
    recent.array.clearRows();
    EXPECT_TRUE(opened(popup).isEmpty());
}

TEST_F(PopupTest, ChoosingARadioListItemWritesItsIdentifier)
{
    ListModel speeds("Popup.Speeds");
    speeds.add("Slow", "0.5");
    speeds.add("Normal", "1");
    speeds.array.setValue<QString>(speeds.add("Fast", "2"), "accel", "Ctrl+F");
    Mve_SimpleValue<QString> speed("1", "Popup.Speed");
    speed.Publish();
    auto menu = menuFromXml("<Menu><RadioListSegment><ItemsConnectionName>Popup.Speeds</ItemsConnectionName>"
                            "<CurrentItemConnectionName>Popup.Speed</CurrentItemConnectionName></RadioListSegment></Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    auto* segment = dynamic_cast<Mnu_RadioListSegment*>(menu->getMenu()->getSegmentAt(0));
    // Setting the same names again keeps the segment connected.
    segment->setItemsConnectionName("Popup.Speeds");
    segment->setSelectedItemConnectionName("Popup.Speed");

    EXPECT_EQ(opened(popup), QStringList({"Slow", "[x]Normal", "Fast"}));
    EXPECT_EQ(itemWithText(popup, "Fast")->shortcut(), QKeySequence("Ctrl+F"));

    choose(popup, "Fast");
    EXPECT_EQ(speed.getValue(), "2");
    EXPECT_EQ(items(popup), QStringList({"Slow", "Normal", "[x]Fast"}));
    // The checked item stays checked and writes nothing.
    speed.setReadOnly(true);
    choose(popup, "Fast");
    EXPECT_TRUE(itemWithText(popup, "Fast")->isChecked());
    speed.setReadOnly(false);

    // A value that matches no element checks nothing; choosing then works.
    speed.setValue("9");
    EXPECT_FALSE(segment->getCurrentItemID().IsValid());
    EXPECT_EQ(opened(popup), QStringList({"Slow", "Normal", "Fast"}));
    choose(popup, "Slow");
    EXPECT_EQ(speed.getValue(), "0.5");
    // A change of the model is followed even while the items stay.
    speed.setValue("1");
    EXPECT_EQ(segment->getCurrentItemID(), Mnu_MenuID(itemWithText(popup, "Normal")));
}

TEST_F(PopupTest, ChoosingARadioItemWritesItsNumber)
{
    Mve_SimpleValue<long> zoom(100, "Popup.Zoom");
    zoom.Publish();
    auto menu = menuFromXml("<Menu><RadioItemsSegment><CurrentItemConnectionName>Popup.Zoom</CurrentItemConnectionName>"
                            "<RadioItem><Text>50%</Text><ID>50</ID></RadioItem>"
                            "<RadioItem><Text>100%</Text><ID>100</ID></RadioItem>"
                            "<RadioItem><Text>200%</Text><ID>200</ID></RadioItem>"
                            "</RadioItemsSegment></Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    open(popup);
    EXPECT_EQ(items(popup), QStringList({"50%", "[x]100%", "200%"}));
    // By keyboard this time: down to the last item and return.
    QTest::keyClick(popup, Qt::Key_Up);
    QTest::keyClick(popup, Qt::Key_Return);
    EXPECT_EQ(zoom.getValue(), 200L);
    EXPECT_EQ(items(popup), QStringList({"50%", "100%", "[x]200%"}));
    if (popup->isVisible())
        close(popup);

    zoom.setReadOnly(true);
    choose(popup, "200%");
    EXPECT_TRUE(itemWithText(popup, "200%")->isChecked());
    EXPECT_EQ(zoom.getValue(), 200L);
}

TEST_F(PopupTest, ACommandRunsItsScriptOnceTheMenuHasClosed)
{
    Kel_PopupMenu* popup = nullptr;
    bool openWhileRunning = true;
    play.setFunction([&] {
        ++plays;
        openWhileRunning = popup->isVisible();
    });
    auto menu = menuFromXml("<Menu>" + command("Play", "Popup.Play()", "<Accelerator>Ctrl+P</Accelerator>") + "</Menu>");
    popup = menu->getPopupMenu();

    // Through the model library's delayed-action queue.
    Uip_InstallDelayedActionRunner();
    choose(popup, "Play");
    EXPECT_EQ(plays, 0);
    EXPECT_EQ(Mv_Utils::Mv_PendingDelayedActions(), 1);
    EXPECT_TRUE(waitFor([&] { return plays == 1; }));
    EXPECT_FALSE(openWhileRunning);

    // Without a runner, on the next turn of the event loop.
    Mv_Utils::Mv_SetDelayedActionRunner(Mv_Utils::DelayedActionRunner());
    open(popup);
    EXPECT_EQ(popup->actions().at(0)->shortcut(), QKeySequence("Ctrl+P"));
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    EXPECT_EQ(plays, 1);
    EXPECT_EQ(Mv_Utils::Mv_PendingDelayedActions(), 0);
    EXPECT_TRUE(waitFor([&] { return plays == 2; }));
    EXPECT_FALSE(openWhileRunning);

    // A disabled action model disables the item at the next opening.
    play.setEnabled(false);
    EXPECT_EQ(opened(popup), QStringList({"Play(off)"}));
}

TEST_F(PopupTest, SubmenusAreBuiltFromTheirOwnMenusAndFoundByPath)
{
    Mve_SimpleValue<bool> snap(false, "Popup.Snap");
    snap.Publish();
    auto menu = menuFromXml(
        "<Menu><Name>Tools</Name>"
        "<SubMenuSegment><Name>Grid</Name><Menu><Name>Grid</Name><Text>Grid</Text>"
        "<BooleanSegment><Name>Snap</Name><Text>Snap</Text><BooleanConnectionName>Popup.Snap</BooleanConnectionName>"
        "</BooleanSegment></Menu></SubMenuSegment>"
        "<SubMenuSegment><Menu><Text>Hidden inside</Text><VisibleConnectionName>Popup.Absent</VisibleConnectionName>"
        + command("Never", "Popup.Play()") + "</Menu></SubMenuSegment>"
        "<SubMenuSegment><VisibleConnectionName>Popup.Absent</VisibleConnectionName><Menu><Text>Gone</Text></Menu>"
        "</SubMenuSegment></Menu>");
    Kel_PopupMenu* popup = menu->getPopupMenu();
    open(popup);
    // A hidden nested menu still gets its item; a hidden segment does not.
    EXPECT_EQ(items(popup), QStringList({"Grid", "Hidden inside"}));

    QAction* gridItem = popup->getItemByPath("Grid");
    ASSERT_NE(gridItem, nullptr);
    ASSERT_NE(gridItem->menu(), nullptr);
    EXPECT_EQ(popup->getItemByPath("Grid.Snap"), gridItem->menu()->actions().at(0));
    EXPECT_EQ(popup->getItemByPath(".Grid..Snap."), gridItem->menu()->actions().at(0));
    EXPECT_EQ(popup->getItemByPath("Grid/Snap"), nullptr);
    // An item without a submenu ends the path; a missing one finds nothing.
    EXPECT_EQ(popup->getItemByPath("Grid.Snap.Further"), gridItem->menu()->actions().at(0));
    EXPECT_EQ(popup->getItemByPath("Grid.Missing.Snap"), nullptr);
    EXPECT_EQ(popup->getItemByPath(""), nullptr);
    EXPECT_EQ(popup->findAction(QVariant("Snap"), true), gridItem->menu()->actions().at(0));
    EXPECT_EQ(popup->findAction(QVariant("Snap"), false), nullptr);
    EXPECT_TRUE(items(popup->getItemByPath("Hidden inside")->menu()).isEmpty());

    // Choosing in the open submenu reaches the submenu's segment only.
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, popup->actionGeometry(gridItem).center());
    QMenu* grid = gridItem->menu();
    ASSERT_TRUE(waitFor([grid] { return grid->isVisible(); }));
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->actionGeometry(grid->actions().at(0)).center());
    EXPECT_TRUE(snap.getValue());
    close(popup);
}

namespace {

Mnu_QtManager* firstFactory(Mnu_QtManager* manager)
{
    auto* segment = new Mnu_CommandSegment(manager->getMenu(), nullptr);
    segment->setName("first");
    segment->setItemText("first");
    manager->getMenu()->addSegment(segment);
    return manager;
}

Mnu_QtManager* secondFactory(Mnu_QtManager* manager)
{
    manager->getMenu()->setName("second");
    return manager;
}

} // namespace

TEST_F(PopupTest, TwoFactoriesUnderOneNameAreUsedInTurn)
{
    int firstOwner = 0;
    int secondOwner = 0;
    Mnu_QtManager::registerMenuFactory("Generated", &firstOwner, &firstFactory);
    Mnu_QtManager::registerMenuFactory("Generated", &secondOwner, &secondFactory);
    EXPECT_EQ(Mnu_QtManager::getMenuFactory("Generated"), &firstFactory);

    QByteArray name("Menus\\Generated");
    {
        Mnu_QtManager manager(nullptr, name.data());
        ASSERT_NE(manager.getMenu(), nullptr);
        EXPECT_EQ(manager.getMenu()->getSegmentCount(), 1);
    }
    Mnu_QtManager::unregisterMenuFactory("Generated", &firstOwner);
    {
        name = "Menus/Generated";
        Mnu_QtManager manager(nullptr, name.data());
        EXPECT_EQ(manager.getMenu()->getName(), "second");
    }
    Mnu_QtManager::unregisterMenuFactory("Generated", &secondOwner);
    EXPECT_EQ(Mnu_QtManager::getMenuFactory("Generated"), nullptr);
    EXPECT_EQ(Mnu_QtManager::getMenuFactory("NeverRegistered"), nullptr);
    // No factory and no file: an empty manager.
    Mnu_QtManager manager(nullptr, name.data());
    EXPECT_EQ(manager.getMenu(), nullptr);
    EXPECT_FALSE(manager.instantiateMenus());
}

TEST_F(PopupTest, CommandsWithTheSameScriptRunInTheirOwnEnvironments)
{
    // Three menus, one script text: each command connects in its own
    // environment, one of which lacks the action.
    Mv_ConnectionDict firstDict, secondDict, emptyDict;
    int firstRuns = 0, secondRuns = 0;
    Mve_Action<void()> first([&] { ++firstRuns; }, "Shared.Run");
    Mve_Action<void()> second([&] { ++secondRuns; }, "Shared.Run");
    first.Publish(&firstDict);
    second.Publish(&secondDict);
    const QString xml = "<Menu><Name>Shared</Name>" + command("Run", "Shared.Run()") + command("Again", "Shared.Run()")
                        + "</Menu>";
    std::vector<std::unique_ptr<Mnu_QtManager>> menus;
    for (Mv_ConnectionDict* dict : {&firstDict, &secondDict, &emptyDict}) {
        QDomDocument document;
        ASSERT_TRUE(document.setContent(xml));
        QDomElement root = document.documentElement();
        menus.emplace_back(new Mnu_QtManager());
        ASSERT_TRUE(menus.back()->setMenus(&root));
        menus.back()->makeConnections(
            Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), dict));
        menus.back()->instantiateMenus();
    }

    choose(menus[1]->getPopupMenu(), "Again");
    waitFor([&] { return secondRuns == 1; });
    choose(menus[0]->getPopupMenu(), "Run");
    waitFor([&] { return firstRuns == 1; });
    EXPECT_EQ(secondRuns, 1);
    EXPECT_EQ(opened(menus[2]->getPopupMenu()), QStringList({"Run(off)", "Again(off)"}));
    EXPECT_EQ(opened(menus[0]->getPopupMenu()), QStringList({"Run", "Again"}));
}
