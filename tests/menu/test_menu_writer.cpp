// Menus written back as XML and as generated source: the exact source text,
// and XML -> menu -> XML round trips over generated random menus, which pin
// the XML form down.
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_QtMenuBarManager.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <sstream>

using namespace menutest;

namespace {

QStringList lines(const std::string& text)
{
    QStringList result = QString::fromLocal8Bit(text.c_str()).split(QLatin1Char('\n'));
    EXPECT_EQ(result.takeLast(), QString()) << "the last line ends with a newline";
    return result;
}

QStringList popupText(Mnu_QtManager& manager, Mnu_Segment::saveFormat format, const QString& name = "Gen")
{
    std::ostringstream out;
    EXPECT_TRUE(manager.savePopupMenu(out, name, format));
    return lines(out.str());
}

QStringList barText(Mnu_QtMenuBarManager& manager, Mnu_Segment::saveFormat format, const QString& name = "Gen")
{
    std::ostringstream out;
    EXPECT_TRUE(manager.saveMenuBar(out, name, format));
    return lines(out.str());
}

// A menu bar read from the text of a <MenuBar> element, without a bar widget.
std::unique_ptr<Mnu_QtMenuBarManager> barFromXml(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    QDomElement root = document.documentElement();
    std::unique_ptr<Mnu_QtMenuBarManager> bar(new Mnu_QtMenuBarManager(nullptr));
    EXPECT_TRUE(bar->setMenus(&root));
    return bar;
}

// Replaces the creation time, the one line that changes from run to run,
// after checking that it is Qt's text date.
QStringList withoutTime(QStringList text)
{
    EXPECT_GT(text.size(), 4);
    if (text.size() > 4) {
        static const QRegularExpression created(
            QStringLiteral("^\tCreated: \\w{3} \\w{3} +\\d{1,2} \\d\\d:\\d\\d:\\d\\d \\d{4}$"));
        EXPECT_TRUE(created.match(text.at(3)).hasMatch()) << text.at(3).toStdString();
        text[3] = QStringLiteral("\tCreated: TIME");
    }
    return text;
}

// Every segment kind, every common field, a menu and a segment without a
// name, an empty segment, quotes in a script, "&" in titles and texts, and
// submenus two deep. The input's children are in another order than the
// writer's on purpose.
const QString kEveryKind = QStringLiteral(
    "<Menu><Text>&amp;Edit</Text><Name>Edit</Name><TextConnectionName>W.Title</TextConnectionName>"
    "<VisibleConnectionName>W.Show</VisibleConnectionName>"
    "<CommandSegment><ActionScript>W.Query = \"a b\"</ActionScript>"
    "<WhyDisabledConnectionName>W.FindWhy</WhyDisabledConnectionName>"
    "<WhatsThisConnectionName>W.FindHelp</WhatsThisConnectionName><WhatsThisText>Finds text.</WhatsThisText>"
    "<EnableConnectionName>W.FindOn</EnableConnectionName><VisibleConnectionName>W.FindShown</VisibleConnectionName>"
    "<Icon>Images/NoSuchIcon.png</Icon><AcceleratorConnectionName>W.FindKey</AcceleratorConnectionName>"
    "<Accelerator>Ctrl+F</Accelerator><TextConnectionName>W.FindText</TextConnectionName>"
    "<Text>&amp;Find</Text><Name>Find</Name></CommandSegment>"
    "<CommandSegment/>"
    "<Separator/>"
    "<BooleanSegment><Name>Wrap</Name><BooleanConnectionName>W.Wrap</BooleanConnectionName></BooleanSegment>"
    "<ListSegment><ItemsConnectionName>W.Recent</ItemsConnectionName></ListSegment>"
    "<RadioListSegment><Text>Mode</Text><CurrentItemConnectionName>W.Mode</CurrentItemConnectionName>"
    "<ItemsConnectionName>W.Modes</ItemsConnectionName></RadioListSegment>"
    "<RadioItemsSegment><Name>Zoom</Name><Text>Zoom</Text><CurrentItemConnectionName>W.Zoom</CurrentItemConnectionName>"
    "<RadioItem><Text>&amp;Fit</Text><ID>0</ID></RadioItem><RadioItem><ID>-50</ID><Text>Half</Text></RadioItem>"
    "</RadioItemsSegment>"
    "<SubMenuSegment><Name>More</Name><Text>More</Text>"
    "<Menu><Text>Deeper &amp; deeper</Text>"
    "<CommandSegment><Text>Go \"now\"</Text><ActionScript>W.Go()</ActionScript></CommandSegment>"
    "<SubMenuSegment><Menu><Name>Last</Name></Menu></SubMenuSegment>"
    "</Menu></SubMenuSegment>"
    "</Menu>");

} // namespace

TEST(MenuWriterTest, APopupMenuIsWrittenAsSourceLineForLine)
{
    auto menu = menuFromXml(kEveryKind);
    EXPECT_EQ(withoutTime(popupText(*menu, Mnu_Segment::kSaveSource, "EditMenu")),
              QStringList({
                  "/*",
                  "\tGenerated code - DO NOT EDIT - all changes will be lost!",
                  "\tFile: EditMenu.cpp",
                  "\tCreated: TIME",
                  "*/",
                  "#include \"Mnu_BooleanSegment.h\"",
                  "#include \"Mnu_CommandSegment.h\"",
                  "#include \"Mnu_SeparatorSegment.h\"",
                  "#include \"Mnu_RadioListSegment.h\"",
                  "#include \"Mnu_ListSegment.h\"",
                  "#include \"Mnu_SubmenuSegment.h\"",
                  "#include \"Mnu_QtManager.h\"",
                  "",
                  "/* Class definition for EditMenu */",
                  "class EditMenu",
                  "{",
                  "public:",
                  "\tEditMenu(void);",
                  "\tvirtual ~EditMenu(void);",
                  "\tstatic Mnu_QtManager* createMenuManager( Mnu_QtManager* menuMgr);",
                  "};",
                  "",
                  "/* Constructor for EditMenu */",
                  "EditMenu::EditMenu(void)",
                  "{",
                  "\tMnu_QtManager::registerMenuFactory( \"EditMenu\", (void *)this, createMenuManager );",
                  "}",
                  "",
                  "/* Destructor for EditMenu */",
                  "EditMenu::~EditMenu(void)",
                  "{",
                  "\tMnu_QtManager::unregisterMenuFactory( \"EditMenu\", (void *)this );",
                  "}",
                  "",
                  "/* Menu creation method for EditMenu */",
                  "Mnu_QtManager* EditMenu::createMenuManager( Mnu_QtManager* menuMgr )",
                  "{",
                  "\t/* Generate a new Menu */",
                  "\t{",
                  "\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\tMnu_Menu* menu = menuMgr->getMenu();",
                  "\t\tmenu->setName( \"Edit\" );",
                  "\t\tmenu->setVisibleConnectionName( \"W.Show\" );",
                  "\t\tmenu->setMenuText( Mnu_QtManager::tr( \"&Edit\", \"this is a menu\" ) );",
                  "\t\tmenu->setItemTextConnectionName( \"W.Title\" );",
                  "\t\t/* Generate a new CommandSegment */",
                  "\t\t{",
                  "\t\t\tMnu_CommandSegment* segment = new Mnu_CommandSegment(menu, NULL);",
                  "\t\t\tsegment->setName( \"Find\" );",
                  "\t\t\tsegment->setItemText( Mnu_QtManager::tr(\"&Find\",\"This is an item in the Edit menu.\") );",
                  "\t\t\tsegment->setTextConnectionName( \"W.FindText\" );",
                  "\t\t\tsegment->setAccelerator( \"Ctrl+F\" );",
                  "\t\t\tsegment->setAcceleratorConnectionName( \"W.FindKey\" );",
                  "\t\t\tsegment->setIconName( \"Images/NoSuchIcon.png\" );",
                  "\t\t\tsegment->setVisibleConnectionName( \"W.FindShown\" );",
                  "\t\t\tsegment->setEnableConnectionName( \"W.FindOn\" );",
                  "\t\t\tsegment->setWhatsThisText( \"Finds text.\" );",
                  "\t\t\tsegment->setWhatsThisConnectionName( \"W.FindHelp\" );",
                  "\t\t\tsegment->setWhyDisabledConnectionName( \"W.FindWhy\" );",
                  "\t\t\tsegment->setActionScript( \"W.Query = \\\"a b\\\"\" );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new CommandSegment */",
                  "\t\t{",
                  "\t\t\tMnu_CommandSegment* segment = new Mnu_CommandSegment(menu, NULL);",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new SeparatorSegment */",
                  "\t\t{",
                  "\t\t\tMnu_SeparatorSegment* segment = new Mnu_SeparatorSegment(menu, NULL);",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new BooleanSegment */",
                  "\t\t{",
                  "\t\t\tMnu_BooleanSegment* segment = new Mnu_BooleanSegment(menu, NULL);",
                  "\t\t\tsegment->setName( \"Wrap\" );",
                  "\t\t\tsegment->setBooleanConnectionName( \"W.Wrap\" );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new ListSegment */",
                  "\t\t{",
                  "\t\t\tMnu_ListSegment* segment = new Mnu_ListSegment(menu, NULL);",
                  "\t\t\tsegment->setItemsConnectionName( \"W.Recent\" );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new RadioListSegment */",
                  "\t\t{",
                  "\t\t\tMnu_RadioListSegment* segment = new Mnu_RadioListSegment(menu, NULL);",
                  "\t\t\tsegment->setItemText( Mnu_QtManager::tr(\"Mode\",\"This is an item in the Edit menu.\") );",
                  "\t\t\tsegment->setItemsConnectionName( \"W.Modes\" );",
                  "\t\t\tsegment->setSelectedItemConnectionName( \"W.Mode\" );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new RadioItemsSegment */",
                  "\t\t{",
                  "\t\t\tMnu_RadioItemsSegment* segment = new Mnu_RadioItemsSegment(menu, NULL);",
                  "\t\t\tsegment->setSelectedItemConnectionName( \"W.Zoom\" );",
                  "\t\t\tsegment->addItemToMap( \"&Fit\", 0 );",
                  "\t\t\tsegment->addItemToMap( \"Half\", -50 );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\t/* Generate a new SubmenuSegment */",
                  "\t\t{",
                  "\t\t\tMnu_SubmenuSegment* segment = new Mnu_SubmenuSegment(menu);",
                  "\t\t\t ",
                  "\t\t\tsegment->setName( \"More\" );",
                  "\t\t\tsegment->setItemText( Mnu_QtManager::tr(\"More\",\"This is an item in the Edit menu.\") );",
                  "\t\t\t/* Generate a new Menu */",
                  "\t\t\t{",
                  "\t\t\t\t/* Use existing Segment's Manager */",
                  "\t\t\t\tMnu_QtManager* manager = dynamic_cast<Mnu_QtManager*>( segment->getSubmenuManager() );",
                  "\t\t\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\t\t\tMnu_Menu* menu = manager->getMenu();",
                  "\t\t\t\tmenu->setMenuText( Mnu_QtManager::tr( \"Deeper & deeper\", \"this is a menu\" ) );",
                  "\t\t\t\t/* Generate a new CommandSegment */",
                  "\t\t\t\t{",
                  "\t\t\t\t\tMnu_CommandSegment* segment = new Mnu_CommandSegment(menu, NULL);",
                  // Only scripts are escaped; the menu has no name, so the
                  // comment names the item.
                  "\t\t\t\t\tsegment->setItemText( Mnu_QtManager::tr(\"Go \"now\"\",\"This is an item in the Go \"now\" "
                  "menu.\") );",
                  "\t\t\t\t\tsegment->setActionScript( \"W.Go()\" );",
                  "\t\t\t\t\tmenu->addSegment(segment);",
                  "\t\t\t\t}",
                  "\t\t\t\t/* Generate a new SubmenuSegment */",
                  "\t\t\t\t{",
                  "\t\t\t\t\tMnu_SubmenuSegment* segment = new Mnu_SubmenuSegment(menu);",
                  "\t\t\t\t\t ",
                  "\t\t\t\t\t/* Generate a new Menu */",
                  "\t\t\t\t\t{",
                  "\t\t\t\t\t\t/* Use existing Segment's Manager */",
                  "\t\t\t\t\t\tMnu_QtManager* manager = dynamic_cast<Mnu_QtManager*>( segment->getSubmenuManager() );",
                  "\t\t\t\t\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\t\t\t\t\tMnu_Menu* menu = manager->getMenu();",
                  "\t\t\t\t\t\tmenu->setName( \"Last\" );",
                  "\t\t\t\t\t}",
                  "\t\t\t\t\t ",
                  "\t\t\t\t\tmenu->addSegment(segment);",
                  "\t\t\t\t}",
                  "\t\t\t}",
                  "\t\t\t ",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t}",
                  "    return menuMgr;",
                  "}",
                  "",
                  "/* Create an instance in order to call constructor/registration code */",
                  "static EditMenu menubar;",
                  "",
              }));
}

TEST(MenuWriterTest, AMenuBarIsWrittenInBothFormsLineForLine)
{
    auto bar = barFromXml(QStringLiteral(
        "<MenuBar><Menu><Name>File</Name><Text>&amp;File</Text>"
        "<CommandSegment><Name>Open</Name><Text>&amp;Open \"file\"</Text>"
        "<ActionScript>F.Path = \"&amp;\"</ActionScript></CommandSegment></Menu>"
        "<Menu><RadioItemsSegment><Text>lost</Text>"
        "<RadioItem><Text>A&amp;B</Text><ID>7</ID></RadioItem></RadioItemsSegment>"
        "</Menu><Menu/></MenuBar>"));
    ASSERT_EQ(bar->getManagerCount(), 3);

    // Scripts are written as they stand: this one no longer parses as XML.
    EXPECT_TRUE(barText(*bar, Mnu_Segment::kSaveXml).contains("\t\t\t<ActionScript>F.Path = \"&\"</ActionScript>"));

    EXPECT_EQ(withoutTime(barText(*bar, Mnu_Segment::kSaveSource, "MainBar")),
              QStringList({
                  "/*",
                  "\tGenerated code - DO NOT EDIT - all changes will be lost!",
                  "\tFile: MainBar.cpp",
                  "\tCreated: TIME",
                  "*/",
                  "#include \"Mnu_BooleanSegment.h\"",
                  "#include \"Mnu_CommandSegment.h\"",
                  "#include \"Mnu_SeparatorSegment.h\"",
                  "#include \"Mnu_RadioItemsSegment.h\"",
                  "#include \"Mnu_RadioListSegment.h\"",
                  "#include \"Mnu_ListSegment.h\"",
                  "#include \"Mnu_SubmenuSegment.h\"",
                  "#include \"Mnu_QtManager.h\"",
                  "#include \"Mnu_QtMenuBarManager.h\"",
                  "",
                  "/* Class definition for MainBar */",
                  "class MainBar",
                  "{",
                  "public:",
                  "\tMainBar(void);",
                  "\tvirtual ~MainBar(void);",
                  "\tstatic Mnu_QtMenuBarManager* createMenuBarManager( Mnu_QtMenuBarManager* menubarMgr );",
                  "};",
                  "",
                  "/* Constructor for MainBar */",
                  "MainBar::MainBar(void)",
                  "{",
                  "\tMnu_QtMenuBarManager::registerMenuBarFactory( \"MainBar\", createMenuBarManager );",
                  "}",
                  "",
                  "/* Destructor for MainBar */",
                  "MainBar::~MainBar(void)",
                  "{",
                  "\tMnu_QtMenuBarManager::unregisterMenuBarFactory( \"MainBar\" );",
                  "}",
                  "",
                  "/* Menu creation method for MainBar */",
                  "Mnu_QtMenuBarManager* MainBar::createMenuBarManager( Mnu_QtMenuBarManager* menubarMgr )",
                  "{",
                  "\t/* Generate a new Menu */",
                  "\t{",
                  "\t\t/* Create a new Manager for each Menu */",
                  "\t\tMnu_QtManager* manager = menubarMgr->createManager();",
                  "\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\tMnu_Menu* menu = manager->getMenu();",
                  "\t\tmenu->setName( \"File\" );",
                  "\t\tmenu->setMenuText( Mnu_QtManager::tr( \"&File\", \"this is a menu\" ) );",
                  "\t\t/* Generate a new CommandSegment */",
                  "\t\t{",
                  "\t\t\tMnu_CommandSegment* segment = new Mnu_CommandSegment(menu, NULL);",
                  "\t\t\tsegment->setName( \"Open\" );",
                  "\t\t\tsegment->setItemText( Mnu_QtManager::tr(\"&Open \"file\"\",\"This is an item in the File "
                  "menu.\") );",
                  "\t\t\tsegment->setActionScript( \"F.Path = \\\"&\\\"\" );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\tmenubarMgr->addManager( manager );",
                  "\t}",
                  "\t/* Generate a new Menu */",
                  "\t{",
                  "\t\t/* Create a new Manager for each Menu */",
                  "\t\tMnu_QtManager* manager = menubarMgr->createManager();",
                  "\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\tMnu_Menu* menu = manager->getMenu();",
                  "\t\t/* Generate a new RadioItemsSegment */",
                  "\t\t{",
                  "\t\t\tMnu_RadioItemsSegment* segment = new Mnu_RadioItemsSegment(menu, NULL);",
                  "\t\t\tsegment->addItemToMap( \"A&B\", 7 );",
                  "\t\t\tmenu->addSegment(segment);",
                  "\t\t}",
                  "\t\tmenubarMgr->addManager( manager );",
                  "\t}",
                  "\t/* Generate a new Menu */",
                  "\t{",
                  "\t\t/* Create a new Manager for each Menu */",
                  "\t\tMnu_QtManager* manager = menubarMgr->createManager();",
                  "\t\t/* Manager creates a Menu for us, use it here */",
                  "\t\tMnu_Menu* menu = manager->getMenu();",
                  "\t\tmenubarMgr->addManager( manager );",
                  "\t}",
                  "    return menubarMgr;",
                  "}",
                  "",
                  "/* Create an instance in order to call constructor/registration code */",
                  "static MainBar menubar;",
                  "",
              }));
}

TEST(MenuWriterTest, AnEmptyManagerWritesItsFrameOnly)
{
    Mnu_QtManager manager;
    manager.clearMenus();
    EXPECT_TRUE(popupText(manager, Mnu_Segment::kSaveXml).isEmpty());
    const QStringList source = popupText(manager, Mnu_Segment::kSaveSource);
    const int body = source.indexOf("Mnu_QtManager* Gen::createMenuManager( Mnu_QtManager* menuMgr )");
    ASSERT_GT(body, 0);
    EXPECT_EQ(source.mid(body + 1, 3), QStringList({"{", "    return menuMgr;", "}"}));

    Mnu_QtMenuBarManager bar(nullptr);
    EXPECT_EQ(barText(bar, Mnu_Segment::kSaveXml), QStringList({"<MenuBar>", "</MenuBar>"}));
}

// The application's Edit menu keeps its place in the bar, in both forms.
TEST(MenuWriterTest, TheEditMenuPlaceIsWrittenBack)
{
    const auto bar = barFromXml("<MenuBar><Menu><Name>File</Name></Menu><EditMenu/>"
                                "<Menu><Name>View</Name></Menu></MenuBar>");
    ASSERT_TRUE(bar);
    const QStringList xml = barText(*bar, Mnu_Segment::kSaveXml);
    const int edit = xml.indexOf("\t<EditMenu/>");
    ASSERT_GT(edit, 0) << xml.join('\n').toStdString();
    EXPECT_LT(xml.indexOf("\t\t<Name>File</Name>"), edit);
    EXPECT_GT(xml.indexOf("\t\t<Name>View</Name>"), edit);
    EXPECT_EQ(barText(*barFromXml(xml.join('\n')), Mnu_Segment::kSaveXml), xml);

    const QStringList source = barText(*bar, Mnu_Segment::kSaveSource);
    const int call = source.indexOf("\tmenubarMgr->addEditMenu();");
    ASSERT_GT(call, 0);
    EXPECT_EQ(source.mid(0, call).filter("menubarMgr->addManager( manager );").size(), 1);

    const auto last = barFromXml("<MenuBar><Menu><Name>File</Name></Menu><EditMenu/></MenuBar>");
    const QStringList lastXml = barText(*last, Mnu_Segment::kSaveXml);
    EXPECT_EQ(lastXml.mid(lastXml.size() - 2), QStringList({"\t<EditMenu/>", "</MenuBar>"}));
}

// ---------------------------------------------------------------------------
// Round trips over random menus. The shadow below describes a menu; the test
// renders it as a file (children shuffled, empty elements sprinkled in) and
// as the text the writer must give back: the canonical order, empty fields
// left out, and radio items without their common fields.

namespace {

const char* const kCommonTags[] = {"Name",
                                   "Text",
                                   "TextConnectionName",
                                   "Accelerator",
                                   "AcceleratorConnectionName",
                                   "Icon",
                                   "VisibleConnectionName",
                                   "EnableConnectionName",
                                   "WhatsThisText",
                                   "WhatsThisConnectionName",
                                   "WhyDisabledConnectionName"};

struct ShadowMenu;

struct ShadowSegment
{
    QString tag;
    QList<QPair<QString, QString>> common; // canonical order
    QList<QPair<QString, QString>> own;    // canonical order
    QList<QPair<QString, int>> choices;    // radio items
    std::shared_ptr<ShadowMenu> submenu;
};

struct ShadowMenu
{
    QList<QPair<QString, QString>> fields; // Name, VisibleConnectionName, Text, TextConnectionName
    QList<ShadowSegment> segments;
};

class RandomMenus
{
public:
    explicit RandomMenus(quint32 seed) : mRandom(seed) {}

    int below(int n) { return int(mRandom.bounded(quint32(n))); }
    bool chance(int percent) { return below(100) < percent; }

    // Values without "<" (the writer does not escape it) and, but in texts,
    // without "&"; never blank at either end, which a reader may trim.
    QString value(bool isText)
    {
        static const QString plain = QStringLiteral("abcXYZ019._\"'()=>+");
        const QString chars = isText ? plain + QStringLiteral("& ") : plain + QStringLiteral(" ");
        QString result;
        const int length = 1 + below(8);
        for (int i = 0; i < length; ++i) {
            const bool end = i == 0 || i == length - 1;
            QChar c = chars.at(below(chars.size()));
            if (end && c == QLatin1Char(' '))
                c = QLatin1Char('x');
            result += c;
        }
        return result;
    }

    std::shared_ptr<ShadowMenu> menu(int depth)
    {
        auto menu = std::make_shared<ShadowMenu>();
        for (const char* tag : {"Name", "VisibleConnectionName", "Text", "TextConnectionName"}) {
            if (chance(50))
                menu->fields.append({QLatin1String(tag), value(QLatin1String(tag) == QLatin1String("Text"))});
        }
        const int count = below(depth == 0 ? 7 : 4);
        for (int i = 0; i < count; ++i)
            menu->segments.append(segment(depth));
        return menu;
    }

    ShadowSegment segment(int depth)
    {
        static const char* const kinds[] = {"CommandSegment",    "BooleanSegment", "ListSegment",   "RadioListSegment",
                                            "RadioItemsSegment", "Separator",      "SubMenuSegment"};
        ShadowSegment segment;
        segment.tag = QLatin1String(kinds[below(depth < 2 ? 7 : 6)]);
        for (const char* tag : kCommonTags) {
            if (chance(25))
                segment.common.append({QLatin1String(tag), value(QLatin1String(tag) == QLatin1String("Text"))});
        }
        QStringList own;
        if (segment.tag == QLatin1String("CommandSegment"))
            own = QStringList{"ActionScript"};
        else if (segment.tag == QLatin1String("BooleanSegment"))
            own = QStringList{"BooleanConnectionName"};
        else if (segment.tag == QLatin1String("ListSegment"))
            own = QStringList{"ItemsConnectionName"};
        else if (segment.tag == QLatin1String("RadioListSegment"))
            own = QStringList{"ItemsConnectionName", "CurrentItemConnectionName"};
        else if (segment.tag == QLatin1String("RadioItemsSegment"))
            own = QStringList{"CurrentItemConnectionName"};
        for (const QString& tag : own) {
            if (chance(60))
                segment.own.append({tag, value(false)});
        }
        if (segment.tag == QLatin1String("RadioItemsSegment")) {
            const int choices = below(4);
            for (int i = 0; i < choices; ++i)
                segment.choices.append({value(true), int(mRandom.generate()) >> below(31)});
        }
        if (segment.tag == QLatin1String("SubMenuSegment") && chance(80))
            segment.submenu = menu(depth + 1);
        return segment;
    }

    // The menu as a file: every element's children in random order, and now
    // and then an empty field, which is the same as none.
    QString fileText(const ShadowMenu& menu)
    {
        QStringList children;
        for (const auto& field : menu.fields)
            children << element(field.first, field.second);
        // A repeated element overwrites the earlier one: only where there is none.
        if (!children.join(QString()).contains(QLatin1String("<Name>")) && chance(10))
            children << QStringLiteral("<Name></Name>");
        shuffle(children);
        for (const ShadowSegment& segment : menu.segments)
            children << fileText(segment); // segments keep their order
        return QStringLiteral("<Menu>") + children.join(spacing()) + QStringLiteral("</Menu>");
    }

    QString fileText(const ShadowSegment& segment)
    {
        QStringList children;
        for (const auto& field : segment.common + segment.own)
            children << element(field.first, field.second);
        if (!children.join(QString()).contains(QLatin1String("<WhatsThisText>")) && chance(10))
            children << QStringLiteral("<WhatsThisText/>");
        if (segment.submenu)
            children << fileText(*segment.submenu);
        shuffle(children);
        for (const auto& choice : segment.choices) {
            QStringList parts{element("Text", choice.first), element("ID", QString::number(choice.second))};
            shuffle(parts);
            children << QStringLiteral("<RadioItem>") + parts.join(QString()) + QStringLiteral("</RadioItem>");
        }
        return QLatin1Char('<') + segment.tag + QLatin1Char('>') + children.join(spacing()) + QLatin1String("</")
               + segment.tag + QLatin1Char('>');
    }

private:
    QString element(const QString& tag, QString value)
    {
        value.replace(QLatin1Char('&'), QLatin1String("&amp;"));
        return QLatin1Char('<') + tag + QLatin1Char('>') + value + QLatin1String("</") + tag + QLatin1Char('>');
    }
    QString spacing() { return chance(50) ? QStringLiteral("\n  ") : QString(); }
    void shuffle(QStringList& list)
    {
        for (int i = list.size() - 1; i > 0; --i)
            list.swapItemsAt(i, below(i + 1));
    }

    QRandomGenerator mRandom;
};

// What the writer must give back for the shadow.
void expectedXml(const ShadowMenu& menu, const QString& indent, QStringList& out)
{
    const QString inner = indent + QLatin1Char('\t');
    auto line = [](const QString& tag, QString value) {
        if (tag == QLatin1String("Text"))
            value.replace(QLatin1Char('&'), QLatin1String("&amp;"));
        return QLatin1Char('<') + tag + QLatin1Char('>') + value + QLatin1String("</") + tag + QLatin1Char('>');
    };
    out << indent + QLatin1String("<Menu>");
    for (const auto& field : menu.fields)
        out << inner + line(field.first, field.second);
    for (const ShadowSegment& segment : menu.segments) {
        out << inner + QLatin1Char('<') + segment.tag + QLatin1Char('>');
        const QString deeper = inner + QLatin1Char('\t');
        if (segment.tag != QLatin1String("RadioItemsSegment")) {
            for (const auto& field : segment.common)
                out << deeper + line(field.first, field.second);
        }
        for (const auto& field : segment.own)
            out << deeper + line(field.first, field.second);
        for (const auto& choice : segment.choices)
            out << deeper + QLatin1String("<RadioItem>") << deeper + QLatin1Char('\t') + line("Text", choice.first)
                << deeper + QLatin1Char('\t') + line("ID", QString::number(choice.second))
                << deeper + QLatin1String("</RadioItem>");
        if (segment.submenu)
            expectedXml(*segment.submenu, deeper, out);
        out << inner + QLatin1String("</") + segment.tag + QLatin1Char('>');
    }
    out << indent + QLatin1String("</Menu>");
}

std::unique_ptr<Mnu_QtManager> readMenu(const QString& xml)
{
    QDomDocument document;
    QString message;
    EXPECT_TRUE(document.setContent(xml, &message)) << message.toStdString() << "\n" << xml.toStdString();
    QDomElement root = document.documentElement();
    std::unique_ptr<Mnu_QtManager> manager(new Mnu_QtManager());
    manager->setMenus(&root);
    return manager;
}

} // namespace

TEST(MenuWriterTest, RandomMenusComeBackAsTheyWereReadAndAgainUnchanged)
{
    DebugMessageCollector quiet; // missing icons are reported; they do not matter here
    for (quint32 seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomMenus random(seed);
        const std::shared_ptr<ShadowMenu> shadow = random.menu(0);
        const QString file = random.fileText(*shadow);
        QStringList expected;
        expectedXml(*shadow, QString(), expected);

        auto menu = readMenu(file);
        const QStringList written = popupText(*menu, Mnu_Segment::kSaveXml);
        ASSERT_EQ(written, expected) << "file: " << file.toStdString();
        // What was written reads back into the same menu.
        auto again = readMenu(written.join(QLatin1Char('\n')));
        ASSERT_EQ(popupText(*again, Mnu_Segment::kSaveXml), expected);
    }
}

TEST(MenuWriterTest, RandomMenuBarsComeBackAsTheyWereRead)
{
    DebugMessageCollector quiet;
    for (quint32 seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomMenus random(seed * 7919);
        QString file = QStringLiteral("<MenuBar>");
        QStringList expected{"<MenuBar>"};
        const int menus = random.below(4);
        for (int i = 0; i < menus; ++i) {
            const std::shared_ptr<ShadowMenu> shadow = random.menu(0);
            file += random.fileText(*shadow);
            expectedXml(*shadow, QStringLiteral("\t"), expected);
        }
        file += QStringLiteral("</MenuBar>");
        expected << "</MenuBar>";

        auto bar = barFromXml(file);
        ASSERT_EQ(barText(*bar, Mnu_Segment::kSaveXml), expected) << "file: " << file.toStdString();
    }
}
