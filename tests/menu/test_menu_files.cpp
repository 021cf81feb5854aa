// Menu files: what is read, what is reported, and where files are found.
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_BooleanSegment.h"
#include "Mnu_CommandSegment.h"
#include "Mnu_ListSegment.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mnu_RadioItemsSegment.h"
#include "Mnu_RadioListSegment.h"
#include "Mnu_SeparatorSegment.h"
#include "Mnu_SubmenuSegment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace menutest;

namespace {

class MenuFileTest : public ::testing::Test
{
protected:
    void SetUp() override { Ost_Resource::setResourcePath(resourceDir()); }
    void TearDown() override { Ost_Resource::setResourcePath(QString()); }
};

QByteArray path(const QString& name)
{
    return name.toLocal8Bit();
}

} // namespace

TEST_F(MenuFileTest, EveryMessageOfABadFileIsReportedAndTheRestIsRead)
{
    DebugMessageCollector collector;
    Kel_MenuBar bar(nullptr, "Messages");
    const QString prefix = QStringLiteral("Mnu_RadioItemsSegment::parseDerivedSubElement ");
    EXPECT_EQ(parseMessages(collector),
              QStringList({
                  "Mnu_Manager::xmlParser - unexpected tag <> parsing <MenuBar>, continuing",
                  "Mnu_Manager::xmlParser - unexpected tag <ToolBar> parsing <MenuBar>, continuing",
                  "Mnu_Segment::SegmentFactory - unknown segment tag <SubmenuSegment>",
                  "Mnu_Segment::SegmentFactory - unknown segment tag <>",
                  "Unable to open icon file name " + resourceDir() + "Images/Missing.png\n",
                  prefix + "can't get int from <two> within <RadioItem>",
                  prefix + "incomplete <> within <RadioItem>",
                  prefix + "unknown tag <Value> within <RadioItem>",
                  prefix + "incomplete <> within <RadioItem>",
                  prefix + "incomplete <> within <RadioItem>",
                  prefix + "can't get int from <x> within <RadioItem>",
              }));

    // What could be read was read.
    Mnu_QtMenuBarManager* manager = bar.getMenuBarManager();
    ASSERT_EQ(manager->getManagerCount(), 1);
    Mnu_Menu* file = manager->getManagerAt(0)->getMenu();
    EXPECT_EQ(file->getText(), "&File");
    ASSERT_EQ(file->getSegmentCount(), 2);
    auto* open = dynamic_cast<Mnu_CommandSegment*>(file->getSegmentAt(0));
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->getName(), "Open");
    EXPECT_EQ(open->getIconDataLength(), 0);
    auto* zoom = dynamic_cast<Mnu_RadioItemsSegment*>(file->getSegmentAt(1));
    ASSERT_NE(zoom, nullptr);
    ASSERT_EQ(zoom->getChoiceCount(), 3);
    EXPECT_EQ(zoom->getItemTextAt(0), "One");
    EXPECT_EQ(zoom->getItemIDAt(1), 3);
    // A later <ID> that parses wins, and so does the last <Text>.
    EXPECT_EQ(zoom->getItemTextAt(2), "Five");
    EXPECT_EQ(zoom->getItemIDAt(2), 5);
}

TEST_F(MenuFileTest, MalformedFilesMissingFilesAndWrongRootsFailWithTheirMessages)
{
    DebugMessageCollector collector;
    Mnu_QtManager manager;
    QByteArray name = path("Malformed");
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu(), nullptr);
    EXPECT_EQ(parseMessages(collector),
              QStringList({"Mnu_Manager xmlParser parse error tag mismatch at line 3 column 21"}));

    collector.clear();
    name = path("NoSuchMenu");
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_TRUE(parseMessages(collector).isEmpty());

    name = path("TestBar");
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(parseMessages(collector), QStringList({"Mnu_QtManager::xmlDerivedParser unexpected root tag <MenuBar>"}));

    collector.clear();
    name = path("Edit");
    Mnu_QtMenuBarManager bar(nullptr, name.data());
    EXPECT_EQ(bar.getManagerCount(), 0);
    EXPECT_EQ(parseMessages(collector),
              QStringList({"Mnu_QtMenuBarManager::xmlDerivedParser unexpected root tag <Menu>"}));
}

TEST_F(MenuFileTest, FilesTooDeepOrEndlessAreRefusedInsteadOfCrashingOrHanging)
{
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    auto nested = [&work](const QString& name, int submenus) {
        QFile file(work.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("<Menu><SubMenuSegment>").repeated(submenus) + "<Menu/>"
                   + QByteArray("</SubMenuSegment></Menu>").repeated(submenus));
    };
    nested("Deep.xml", 300);
    nested("TooDeep.xml", 5000);
    Ost_Resource::setResourcePath(work.path() + "/");

    DebugMessageCollector collector;
    Mnu_QtManager manager;
    QByteArray name = path("Deep");
    EXPECT_TRUE(manager.setMenus(name.data()));
    name = path("TooDeep");
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu(), nullptr);
    // The 1001st element level is the 501st <Menu>.
    EXPECT_EQ(parseMessages(collector),
              QStringList({"Mnu_Manager xmlParser parse error elements nested too deeply at line 1 column 11006"}));

    if (QFile::exists("/dev/zero")) {
        collector.clear();
        name = path("/dev/zero");
        EXPECT_FALSE(manager.setMenus(name.data()));
        EXPECT_TRUE(parseMessages(collector).isEmpty());
    }
}

TEST_F(MenuFileTest, NamesAreLookedUpUnderTheResourcePathThenAsGiven)
{
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    QFile literal(work.filePath("Edit"));
    ASSERT_TRUE(literal.open(QIODevice::WriteOnly));
    literal.write("<Menu><Text>Edit from working folder</Text></Menu>");
    literal.close();
    const QString previous = QDir::currentPath();
    QDir::setCurrent(work.path());

    Mnu_QtManager manager;
    QByteArray name = path("Edit");
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from resources");

    Ost_Resource::setResourcePath(work.filePath("elsewhere"));
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from working folder");

    // A full path works from anywhere.
    name = path(resourceDir() + "Edit.xml");
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from resources");
    QDir::setCurrent(previous);
}

TEST_F(MenuFileTest, AMenuFileBecomesMenuAndSegments)
{
    DebugMessageCollector collector;
    Mnu_QtManager manager;
    QByteArray name = path("Edit");
    ASSERT_TRUE(manager.setMenus(name.data()));
    // Unknown tags inside a segment are ignored silently.
    EXPECT_TRUE(parseMessages(collector).isEmpty()) << parseMessages(collector).join("\n").toStdString();

    Mnu_Menu* menu = manager.getMenu();
    EXPECT_EQ(menu->getName(), "Edit");
    ASSERT_EQ(menu->getSegmentCount(), 6);
    auto* undo = dynamic_cast<Mnu_CommandSegment*>(menu->getSegmentAt(0));
    ASSERT_NE(undo, nullptr);
    EXPECT_EQ(undo->getItemText(), "&Undo");
    EXPECT_EQ(undo->getAccelerator(), "Ctrl+Z");
    EXPECT_EQ(undo->getActionScript(), "MenuTest.Undo()");
    EXPECT_EQ(undo->getIconName(), "Images/Play.png");
    EXPECT_EQ(undo->getIconDataLength(), int(QFile(resourceDir() + "Images/Play.png").size()));
    EXPECT_NE(dynamic_cast<Mnu_SeparatorSegment*>(menu->getSegmentAt(1)), nullptr);
    auto* snap = dynamic_cast<Mnu_BooleanSegment*>(menu->getSegmentAt(2));
    ASSERT_NE(snap, nullptr);
    EXPECT_EQ(snap->getItemText(), "S&nap to grid");
    EXPECT_EQ(snap->getBooleanConnectionName(), "MenuTest.Snap");
    auto* recent = dynamic_cast<Mnu_ListSegment*>(menu->getSegmentAt(3));
    ASSERT_NE(recent, nullptr);
    EXPECT_EQ(recent->getItemsConnectionName(), "MenuTest.Recent");
    auto* speeds = dynamic_cast<Mnu_RadioListSegment*>(menu->getSegmentAt(4));
    ASSERT_NE(speeds, nullptr);
    EXPECT_EQ(speeds->getSelectedItemConnectionName(), "MenuTest.Speed");

    auto* more = dynamic_cast<Mnu_SubmenuSegment*>(menu->getSegmentAt(5));
    ASSERT_NE(more, nullptr);
    Mnu_Manager* child = more->getSubmenuManager();
    ASSERT_NE(dynamic_cast<Mnu_QtManager*>(child), nullptr);
    EXPECT_EQ(child->getParentSegment(), more);
    // "&&" stays as written: it is Qt's literal ampersand.
    EXPECT_EQ(child->getMenu()->getText(), "More && more");
}

TEST_F(MenuFileTest, SegmentListChangesFollowIntoAnInstantiatedMenu)
{
    auto manager = menuFromXml("<Menu><CommandSegment><Name>B</Name><Text>B</Text></CommandSegment></Menu>");
    Mnu_Menu* menu = manager->getMenu();
    Kel_PopupMenu* popup = manager->getPopupMenu();
    auto make = [menu](const QString& text) {
        auto* segment = new Mnu_CommandSegment(menu, nullptr);
        segment->setName(text);
        segment->setItemText(text);
        return segment;
    };
    Mnu_Segment* b = menu->getSegmentAt(0);
    menu->insertSegment(make("A"), nullptr, false);
    menu->insertSegment(make("C"), b, true);
    Mnu_CommandSegment stranger(menu, nullptr);
    menu->insertSegment(make("Z"), &stranger, false); // an anchor that is not there appends
    EXPECT_EQ(items(popup), QStringList({"A(off)", "B(off)", "C(off)", "Z(off)"}));

    Mnu_Segment* c = menu->getSegmentAt(2);
    EXPECT_TRUE(menu->removeSegment(c));
    EXPECT_TRUE(menu->removeSegment(c)); // not there any more: still true
    EXPECT_EQ(items(popup), QStringList({"A(off)", "B(off)", "Z(off)"}));
    delete c;

    menu->clearSegments();
    EXPECT_EQ(menu->getSegmentCount(), 0);
    EXPECT_EQ(menu->getSegmentAt(0), nullptr);
}

TEST_F(MenuFileTest, DumpsWriteTheDocumentedLines)
{
    auto manager = menuFromXml("<Menu><Name>D</Name><CommandSegment><Name>Go</Name><Text>Go</Text>"
                               "<ActionScript>Go()</ActionScript></CommandSegment><Separator/>"
                               "<ListSegment><ItemsConnectionName>Nothing</ItemsConnectionName></ListSegment>"
                               "</Menu>");
    DebugMessageCollector collector;
    Mnu_MenuID(reinterpret_cast<void*>(0x10)).dump("> ");
    manager->getMenu()->getSegmentAt(1)->dump("> ");
    manager->getMenu()->getSegmentAt(2)->dump("> ");
    manager->dump(QString());
    const QStringList lines = collector.messages();
    ASSERT_GE(lines.size(), 8);
    EXPECT_TRUE(QRegExp("> Mnu_MenuID: \\[0x[0-9a-f]+\\], value \\[0x10\\] \\(void \\*\\)").exactMatch(lines.at(0)))
        << lines.at(0).toStdString();
    EXPECT_TRUE(QRegExp("> Mnu_SeparatorSegment: this\\[[0-9a-f]+\\], name\\[\\], use\\[\\], enabled\\[0\\], visible\\[0\\]")
                    .exactMatch(lines.at(1)))
        << lines.at(1).toStdString();
    EXPECT_TRUE(lines.at(2).startsWith("> Mnu_ListSegment: this["));
    EXPECT_EQ(lines.at(3), ">    itemConnectionName: [Nothing]");
    EXPECT_EQ(lines.at(4), ">    itemIDs total #(0)");
    EXPECT_EQ(lines.at(5), ">    MenuID to ItemID map");
    EXPECT_TRUE(lines.at(6).startsWith("Mnu_QtManager: this   [0x"));
    QStringList trimmed;
    for (const QString& line : lines)
        trimmed << line.trimmed();
    EXPECT_TRUE(trimmed.contains("action script: [Go()]")) << lines.join("\n").toStdString();
    EXPECT_TRUE(trimmed.contains("segments:  (3) (Mnu_Segment *)")) << lines.join("\n").toStdString();
}
