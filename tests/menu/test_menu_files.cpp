// Menu files: what is read, what is reported, and where files are found.
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mnu_RadioItemsSegment.h"

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
    ASSERT_EQ(file->getSegmentCount(), 2);
    EXPECT_EQ(file->getSegmentAt(0)->getName(), "Open");
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
    QByteArray name("Malformed");
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu(), nullptr);
    EXPECT_EQ(parseMessages(collector),
              QStringList(QStringLiteral("Mnu_Manager xmlParser parse error %1 at line 3 column 21")
                              .arg(QLatin1String(kXmlTagMismatch))));

    collector.clear();
    name = "NoSuchMenu";
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_TRUE(parseMessages(collector).isEmpty());

    name = "TestBar";
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(parseMessages(collector), QStringList({"Mnu_QtManager::xmlDerivedParser unexpected root tag <MenuBar>"}));

    collector.clear();
    name = "Edit";
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
    QByteArray name("Deep");
    EXPECT_TRUE(manager.setMenus(name.data()));
    name = "TooDeep";
    EXPECT_FALSE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu(), nullptr);
    // The 1001st element level is the 501st <Menu>.
    EXPECT_EQ(parseMessages(collector),
              QStringList({"Mnu_Manager xmlParser parse error elements nested too deeply at line 1 column 11006"}));

    if (QFile::exists("/dev/zero")) {
        collector.clear();
        name = "/dev/zero";
        EXPECT_FALSE(manager.setMenus(name.data()));
        EXPECT_TRUE(parseMessages(collector).isEmpty());
    }
}

// Markup that looks like tags inside comments, character data, attribute
// values and processing instructions must neither hide nor invent levels,
// and a self-closing element counts as one level deeper than its parent.
TEST_F(MenuFileTest, DepthLimitSeesThroughCommentsDataAndSelfClosingElements)
{
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    const QByteArray decoys = "<!-- </Menu></Menu> --><![CDATA[</a></b>]]><?pi </c>?>";
    // levels nested elements with decoys at every level, innermost being
    // a self-closing element whose attribute holds "/>" and ">".
    auto write = [&](const QString& name, int levels, const QByteArray& prolog) {
        QFile file(work.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(prolog + QByteArray("<Menu a='/>'>" + decoys).repeated(levels - 1) + "<Leaf b=\"x/>\"/>"
                   + QByteArray("</Menu>").repeated(levels - 1));
    };
    write("AtLimit.xml", 1000, QByteArray());
    write("OverLimit.xml", 1001, QByteArray());
    write("Typed.xml", 1001, "<!DOCTYPE Menu [ <!ENTITY e \"<Menu/>\"> ]>");
    Ost_Resource::setResourcePath(work.path() + "/");

    DebugMessageCollector collector;
    Mnu_QtManager manager;
    QByteArray name("AtLimit");
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_FALSE(parseMessages(collector).join('\n').contains("nested too deeply"));
    for (const char* refused : {"OverLimit", "Typed"}) {
        collector.clear();
        name = refused;
        EXPECT_FALSE(manager.setMenus(name.data())) << refused;
        const QStringList messages = parseMessages(collector);
        ASSERT_EQ(messages.size(), 1) << refused;
        EXPECT_TRUE(messages.first().contains("elements nested too deeply at line 1")) << refused;
    }
}

// Loading the same file again must give what it holds now: an edit of the
// same length (same size, likely the same modification second) is seen, and
// so is a file that went bad after a good load, and one that came back.
TEST_F(MenuFileTest, ReloadingAFileReadsItsCurrentContent)
{
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    auto write = [&work](const QByteArray& content) {
        QFile file(work.filePath("Edited.xml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    };
    auto firstName = [](Mnu_QtManager& manager) {
        Mnu_Menu* menu = manager.getMenu();
        return menu && menu->getSegmentCount() > 0 ? menu->getSegmentAt(0)->getName() : QString();
    };
    Ost_Resource::setResourcePath(work.path() + "/");
    const QByteArray good = "<Menu><CommandSegment><Name>Alpha</Name></CommandSegment></Menu>";
    QByteArray name("Edited");

    write(good);
    Mnu_QtManager first;
    ASSERT_TRUE(first.setMenus(name.data()));
    EXPECT_EQ(firstName(first), "Alpha");
    Mnu_QtManager again;
    ASSERT_TRUE(again.setMenus(name.data()));
    EXPECT_EQ(firstName(again), "Alpha");

    write(QByteArray(good).replace("Alpha", "Omega"));
    Mnu_QtManager edited;
    ASSERT_TRUE(edited.setMenus(name.data()));
    EXPECT_EQ(firstName(edited), "Omega");

    write(QByteArray(good).replace("</Menu>", "</Mune>"));
    Mnu_QtManager broken;
    EXPECT_FALSE(broken.setMenus(name.data()));
    EXPECT_EQ(broken.getMenu(), nullptr);

    write(good);
    Mnu_QtManager restored;
    ASSERT_TRUE(restored.setMenus(name.data()));
    EXPECT_EQ(firstName(restored), "Alpha");
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
    QByteArray name("Edit");
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from resources");

    Ost_Resource::setResourcePath(work.filePath("elsewhere"));
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from working folder");

    // A full path works from anywhere.
    name = (resourceDir() + "Edit.xml").toLocal8Bit();
    EXPECT_TRUE(manager.setMenus(name.data()));
    EXPECT_EQ(manager.getMenu()->getText(), "Edit from resources");
    QDir::setCurrent(previous);
}
