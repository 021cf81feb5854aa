// Keyboard languages: the language numbers, the variants loadAll finds, the
// table each keyboard uses, and the debug dump.
#include "KeymapTestSupport.h"

#include <QLocale>

using namespace keymaptest;

namespace {

typedef KeymapTest KeymapLanguageTest;

} // namespace

TEST(KeyboardLanguage, LanguagesAreWindowsPrimaryLanguageNumbers)
{
    const QMap<QString, int> names = Kel_KeyboardLanguage::languageNames();
    EXPECT_EQ(names.value("German"), 7);
    EXPECT_EQ(names.value("Japanese"), 17);
    EXPECT_FALSE(names.contains("English"));
    EXPECT_EQ(Kel_KeyboardLanguage::languageOfLocale(QLocale(QLocale::French, QLocale::Canada)), 12);
    EXPECT_EQ(Kel_KeyboardLanguage::languageOfLocale(QLocale(QLocale::English, QLocale::UnitedKingdom)), 9);
    EXPECT_EQ(Kel_KeyboardLanguage::languageOfLocale(QLocale(QLocale::NorwegianNynorsk)), 0x14);
    EXPECT_EQ(Kel_KeyboardLanguage::languageOfLocale(QLocale::c()), 0);
}

TEST_F(KeymapLanguageTest, LanguageVariantsReplaceTheDefaultTableWholeAndEnglishIsTheDefault)
{
    // A file loaded for language 9 fills the default table.
    ASSERT_TRUE(mgr->load("Keys-German", 9));
    EXPECT_EQ(mgr->getLoadedLangs(), QList<int>({0}));
    EXPECT_EQ(action("Ctrl+Y", "MainWindow", 0), "Keymap.Undo");
    EXPECT_EQ(mgr->setupCurrentLang(9), 0);
    EXPECT_EQ(mgr->setupCurrentLang(12), 12);

    mgr->clearMgr();
    DebugMessageCollector messages;
    mgr->loadAll(dataDir(), "Keys");
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.messages().join("\n").toStdString();
    // In folder order: Keys-French before Keys-German; English and Klingon are no variants.
    EXPECT_EQ(mgr->getLoadedLangs(), QList<int>({0, 12, 7}));
    EXPECT_TRUE(action("Ctrl+Q", "MainWindow", 0).isNull());
    EXPECT_TRUE(action("Ctrl+E", "MainWindow", 0).isNull());

    Kel_KeyboardLanguage::setCurrentLanguageOverride(7);
    EXPECT_EQ(action("Ctrl+Z", "MainWindow"), "Keymap.Redo");
    EXPECT_EQ(action("Ctrl+Y", "MainWindow"), "Keymap.Undo");
    // Present only in the base file: a German keyboard does not see it.
    EXPECT_TRUE(action("F9", "MainWindow").isNull());
    // The lookup made German current: changes now go to the German table, and clearing clears only it.
    EXPECT_EQ(mgr->getCurrentLang(), 7);
    ASSERT_TRUE(mgr->add(QKeySequence("F4"), "Keymap.German", "MainWindow::F4", QString(), "MainWindow", QString(),
                         false));
    EXPECT_EQ(action("F4", "MainWindow", 7), "Keymap.German");
    EXPECT_TRUE(action("F4", "MainWindow", 0).isNull());
    mgr->clearMgr();
    EXPECT_TRUE(mgr->KeyMap(7).isEmpty());

    // The French file includes the base file and then changes one key.
    Kel_KeyboardLanguage::setCurrentLanguageOverride(12);
    EXPECT_EQ(action("F9", "MainWindow"), "Keymap.BaseOnly");
    EXPECT_EQ(action("Space", "MainWindow"), "Keymap.Lecture");

    for (int lang : {9, 25}) { // English, and Russian which has no file
        Kel_KeyboardLanguage::setCurrentLanguageOverride(lang);
        EXPECT_EQ(action("Space", "MainWindow"), "Keymap.Play");
        EXPECT_EQ(action("Ctrl+Z", "MainWindow"), "Keymap.Undo");
    }
}

TEST_F(KeymapLanguageTest, DumpListsTheEntriesOfAContextInKeyOrder)
{
    loadXml("<KeyMappings><Entries Context='MainWindow'>"
            "<Entry id='Undo' key='Ctrl+Z'><Action>Keymap.Undo</Action></Entry>"
            "<Entry id='AVeryLongIdentifierOfMoreThanThirtyCharacters' key='Ctrl+Alt+Shift+PgDown'>"
            "<Action>Keymap.Long</Action></Entry>"
            "</Entries><Entries Context='Monitor'>"
            "<Entry id='Other' key='Space'><Action>Keymap.Other</Action></Entry>"
            "</Entries></KeyMappings>");
    Kel_KeyboardLanguage::setCurrentLanguageOverride(9);
    DebugMessageCollector messages;
    EXPECT_TRUE(mgr->dump("MainWindow", -1));
    EXPECT_EQ(messages.messages(),
              QStringList({"================================================",
                           "Dump Key Mappings: (lang = 0)",
                           " - - - - - - - - - - - - - - - - - - - - - - - -",
                           // Only the key is padded; long texts run together.
                           "MainWindow::Ctrl+Alt+Shift+PgDownMainWindow::AVeryLongIdentifieKeymap.Long",
                           "MainWindow::Ctrl+Z  MainWindow::UndoKeymap.Undo",
                           "Total Key Mappings found: 3",
                           "================================================"}));
}
