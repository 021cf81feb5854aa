// Keymap files: the document shape, entries and what overrides what,
// includes, and the messages of files that fail.
#include "Kel_PopupMenu.h"
#include "KeymapTestSupport.h"
#include "Mnu_QtManager.h"

#include <QDomDocument>
#include <QLoggingCategory>

using namespace keymaptest;

namespace {

typedef KeymapTest KeymapFileTest;

QString doc(const QString& body)
{
    return "<KeyMappings>" + body + "</KeyMappings>";
}

} // namespace

TEST_F(KeymapFileTest, MalformedDocumentsStopAtTheFaultAndKeepWhatWasReadBefore)
{
    const QString w1 = "<Entries Context='W'><Entry id='A' key='F1'><Action>Keymap.A</Action></Entry>";
    const struct
    {
        QString xml;
        QString message;
    } cases[] = {
        {"<Keymaps>" + w1 + "</Entries></Keymaps>", "Kel_KeymapMgr::xmlDocParser, unexpected top-level tag <Keymaps>"},
        {doc(w1 + "<Shortcut/></Entries>"), "Kel_KeymapMgr::xmlParser, unexpected tag <Shortcut>"},
        {doc(w1 + "</Entries><A/><B/>"), "Kel_KeymapMgr::xmlParser, unexpected tag <A>"},
        {doc(w1 + "</Entries><Includes><Path>Common</Path></Includes>"),
         "Kel_KeymapMgr::parseIncludes, unexpected tag <Path>"},
        {doc(w1 + "<Entry id='B'><Action>x</Action></Entry><Entry id='C' key='F3'/></Entries>"),
         "Kel_KeymapMgr::parseEntry, missing tag KeySequence"},
        {doc(w1 + "</Entries><Entries><Entry id='B' key='F2'/><Entry id='C' key='F3' /></Entries>"),
         "Kel_KeymapMgr::parseEntry, missing tag Context"},
        {doc(w1 + "<Entry id='B' key='F2'><Context/></Entry></Entries>"), "Kel_KeymapMgr::parseEntry, missing tag Context"},
    };
    for (const auto& c : cases) {
        mgr->clearMgr();
        DebugMessageCollector messages;
        EXPECT_FALSE(mgr->loadFromXMLString(c.xml, 0)) << c.xml.toStdString();
        EXPECT_EQ(messages.messages(), QStringList(c.message)) << c.xml.toStdString();
        const QStringList kept = c.message.contains("top-level") ? QStringList() : QStringList("W::F1");
        EXPECT_EQ(keys(), kept) << c.xml.toStdString();
    }
}

TEST_F(KeymapFileTest, CommentsAndTextBetweenElementsAreSkippedAnywhere)
{
    DebugMessageCollector messages;
    loadXml("<!-- before --><KeyMappings><!-- in root -->stray text"
            "<Entries Context='W'><!-- in entries --> more text"
            "<Entry id='A' key='F1'><!-- in entry --><Action>Keymap.A</Action><!-- after --></Entry>"
            "</Entries><!-- between --><Includes><!-- in includes --></Includes></KeyMappings><!-- after root -->");
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.messages().join("\n").toStdString();
    EXPECT_EQ(action("F1", "W"), "Keymap.A");
}

TEST_F(KeymapFileTest, ChildrenOverrideAttributesAndTheLastEntryForAKeyWinsWhole)
{
    loadXml(doc("<Entries Context='Player'>"
                "<Entry id='Old' key='Ctrl+K'>"
                "<KeySequence>Ctrl+J</KeySequence><ActionID>Copy</ActionID><Context>Editor</Context>"
                "<Action>Editor|First</Action><Action>Editor|Copy</Action>"
                "<ActionScript>Keymap.Text = \"x\"</ActionScript>"
                "<Description>Copies  the &lt;selection&gt;</Description>"
                "<CustomKeyMapping>no</CustomKeyMapping></Entry>"
                "<Entry key='F1'/>"
                "<Entry id='A' key='Ctrl+Nonsense'/>" // Qt cannot read it: skipped silently
                "<Entry id='B' key='ctrl+shift+f5'/>"
                "<Entry id='First' key='Ctrl+K'><Action>Keymap.First</Action><ActionScript>Keymap.Go()</ActionScript>"
                "<Description>first</Description><CustomKeyMapping/></Entry>"
                "<Entry id='Other' key='Ctrl+K'><Context>Monitor</Context><Action>Keymap.Monitor</Action></Entry>"
                "<Entry id='Second' key='Ctrl+K'><Action>Keymap.Second</Action></Entry>"
                "</Entries>"));
    // Key texts are stored in the one portable spelling; each context has its own Ctrl+K.
    EXPECT_EQ(keys(), QStringList({"Editor::Ctrl+J", "Monitor::Ctrl+K", "Player::Ctrl+K", "Player::Ctrl+Shift+F5",
                                   "Player::F1"}));
    const auto describe = [this](const char* key) {
        const Kel_KeymapMgr::KeyMappingInfo info = mgr->KeyMap().value(key);
        return QStringList({info.action, info.actionId, info.actionScript, info.description,
                            info.isCustom ? "custom" : ""});
    };
    EXPECT_EQ(describe("Editor::Ctrl+J"),
              QStringList({"Editor|Copy", "Editor::Copy", "Keymap.Text = \"x\"", "Copies  the <selection>", "custom"}));
    EXPECT_EQ(describe("Player::Ctrl+K"), QStringList({"Keymap.Second", "Player::Second", "", "", ""}));
    EXPECT_EQ(describe("Player::F1"), QStringList({"", "Player::", "", "", ""}));
    EXPECT_EQ(action("Ctrl+K", "Monitor"), "Keymap.Monitor");
}

TEST_F(KeymapFileTest, IncludesAreExpandedWhereTheyStandAndFailuresStopTheFile)
{
    DebugMessageCollector messages;
    EXPECT_TRUE(mgr->load("Keys", 0));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.messages().join("\n").toStdString();
    // Common.xml is included before the base file's own entries.
    EXPECT_EQ(action("Ctrl+Z", "MainWindow"), "Keymap.Undo");
    EXPECT_EQ(action("Ctrl+Y", "MainWindow"), "Keymap.Redo");

    mgr->clearMgr();
    EXPECT_FALSE(mgr->load("MissingInclude", 0));
    EXPECT_EQ(messages.messages(), QStringList("Kel_KeymapMgr::load cannot open resource " + dataDir() + "NoSuchFile.xml"));
    EXPECT_EQ(action("F1", "MainWindow"), "Keymap.Before");
    EXPECT_EQ(action("Ctrl+Z", "MainWindow"), "Keymap.CommonUndo"); // Keys-German was not reached
    EXPECT_TRUE(action("F2", "MainWindow").isNull());

    messages.clear();
    EXPECT_FALSE(mgr->load("Cycle", 0));
    EXPECT_EQ(messages.messages(), QStringList("Kel_KeymapMgr::load, recursive include of " + dataDir() + "Cycle.xml"));
}

TEST_F(KeymapFileTest, FilesThatCannotBeOpenedOrParsedAreReported)
{
    DebugMessageCollector messages;
    EXPECT_FALSE(mgr->load("Absent", 7));
    EXPECT_FALSE(mgr->loaded(7));
    EXPECT_FALSE(mgr->load("Broken", 0));
    EXPECT_FALSE(mgr->loadFromXMLString("", 0));
    EXPECT_FALSE(mgr->load("/dev/zero", 0));
    EXPECT_EQ(messages.messages().mid(0, 3),
              QStringList({"Kel_KeymapMgr::load cannot open resource " + dataDir() + "Absent.xml",
                           QStringLiteral("Kel_KeymapMgr load parse error %1 at line 4 column 12")
                               .arg(QLatin1String(kXmlTagMismatch)),
                           "Kel_KeymapMgr load parse error " + QLatin1String(kXmlEmptyDocumentAt)}));
    EXPECT_EQ(messages.messages().size(), 4);
    EXPECT_FALSE(mgr->loaded(0));
}

TEST_F(KeymapFileTest, FilesAreFoundInTheKeymapFolderThenAsPaths)
{
    Ost_Resource::setResourcePath(testDataDir());
    mgr->setKeyMapsDirPath(dataDir().chopped(1));
    EXPECT_EQ(mgr->getKeyMapsDirPath(), dataDir());
    EXPECT_TRUE(mgr->load("Common", 0));
    EXPECT_EQ(action("Ctrl+Y", "MainWindow"), "Keymap.Redo");
    EXPECT_TRUE(mgr->load(dataDir() + "Keys-German.xml", 0));
    EXPECT_EQ(action("Ctrl+Y", "MainWindow"), "Keymap.Undo");
}

// Each subsystem writes through its own logging category: a rule for the
// menus silences their parse messages and leaves the keymaps' alone.
TEST_F(KeymapFileTest, AFilterRuleSilencesOneSubsystemOnly)
{
    const QString badEntry = doc("<Entries><Entry id='B' key='F2'/></Entries>");
    const QString missingContext = "Kel_KeymapMgr::parseEntry, missing tag Context";
    const QString unknownSegment = "Mnu_Segment::SegmentFactory - unknown segment tag <Bogus>";
    QDomDocument menuDocument;
    ASSERT_TRUE(menuDocument.setContent(QStringLiteral("<Menu><Name>M</Name><Bogus/></Menu>")));
    QDomElement menuRoot = menuDocument.documentElement();
    const auto parseBoth = [&] {
        Mnu_QtManager menu;
        menu.setMenus(&menuRoot);
        mgr->clearMgr();
        EXPECT_FALSE(mgr->loadFromXMLString(badEntry, 0));
    };

    struct RestoreRules
    {
        ~RestoreRules() { QLoggingCategory::setFilterRules(QString()); }
    } restore;
    QLoggingCategory::setFilterRules(QStringLiteral("kel.menu.debug=false"));
    {
        DebugMessageCollector collector;
        parseBoth();
        ASSERT_EQ(collector.records().size(), 1) << collector.messages().join("\n").toStdString();
        EXPECT_EQ(collector.records()[0].text, missingContext);
        EXPECT_EQ(collector.records()[0].category, "kel.keymap");
        EXPECT_EQ(collector.records()[0].type, QtDebugMsg);
    }

    QLoggingCategory::setFilterRules(QString());
    DebugMessageCollector collector;
    parseBoth();
    EXPECT_TRUE(collector.contains(unknownSegment)) << collector.messages().join("\n").toStdString();
    EXPECT_TRUE(collector.contains(missingContext));
}
