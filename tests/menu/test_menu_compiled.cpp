// Menus compiled into this program by kelcore_add_menus (CompiledPopup.xml,
// CompiledBar.xml) against the same files read at run time, and the menu
// compiler run as a program.
#include "Kel_MenuBar.h"
#include "MenuTestSupport.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mnu_SubmenuSegment.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QActionGroup>
#include <QProcess>
#include <QTemporaryDir>
#include <sstream>

using namespace menutest;

namespace {

// The models both menu files are bound to.
class CompiledMenuTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(resourceDir());
        for (Mv_ModelBase* model : std::initializer_list<Mv_ModelBase*>{&title, &loop, &current, &zoom, &play, &canSave,
                                                                        &viewTitle, &showView})
            model->Publish();
        files.add("a.wav", "A");
        files.add("b.wav", "B", true);
    }
    void TearDown() override { Ost_Resource::setResourcePath(QString()); }

    Mve_SimpleValue<QString> title{QString(), "Compiled.Title"};
    Mve_SimpleValue<bool> loop{true, "Compiled.Loop"};
    Mve_SimpleValue<QString> current{"B", "Compiled.Current"};
    Mve_SimpleValue<long> zoom{100, "Compiled.Zoom"};
    Mve_Action<void()> play{[] {}, "Compiled.Play"};
    Mve_SimpleValue<bool> canSave{true, "Compiled.CanSave"};
    Mve_SimpleValue<QString> viewTitle{"&Look", "Compiled.ViewTitle"};
    Mve_SimpleValue<bool> showView{true, "Compiled.ShowView"};
    ListModel files{"Compiled.Files"};
};

// The items of menu and, indented, of its submenus, as the user sees them.
QStringList tree(QMenu* menu, const QString& indent = QString())
{
    QStringList result;
    open(menu);
    const QStringList seen = items(menu);
    const QList<QAction*> actions = menu->actions();
    close(menu);
    int row = 0;
    for (QAction* action : actions) {
        if (!action->isVisible())
            continue;
        result << indent + seen.at(row++);
        if (action->menu())
            result << tree(action->menu(), indent + QLatin1String("  "));
    }
    return result;
}

QStringList xmlOf(Mnu_QtManager& manager)
{
    std::ostringstream out;
    manager.savePopupMenu(out, QStringLiteral("Any"), Mnu_Segment::kSaveXml);
    return QString::fromStdString(out.str()).split(QLatin1Char('\n'));
}

} // namespace

TEST_F(CompiledMenuTest, ACompiledPopupRegistersItselfAndBuildsWhatItsFileBuilds)
{
#ifndef KEL_MENU_COMPILER
    GTEST_SKIP() << "built without the menu compiler";
#endif
    ASSERT_NE(Mnu_QtManager::getMenuFactory("CompiledPopup"), nullptr);
    QByteArray name("CompiledPopup");
    Mnu_QtManager compiled(nullptr, name.data());
    QByteArray path = QFile::encodeName(resourceDir() + "CompiledPopup.xml");
    Mnu_QtManager read(nullptr, path.data());
    ASSERT_NE(read.getMenu(), nullptr);
    for (Mnu_QtManager* manager : {&compiled, &read}) {
        manager->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        manager->instantiateMenus();
    }

    const QStringList expected{"&Rename",    "-",      "[x]&Loop", "a.wav",   "[x]b.wav", "-",  "a.wav",
                               "[x]b.wav",   "&Fit",   "[x]100 %", "&More",   "  Play",   "  Deeper",
                               "    Stop && rewind"};
    EXPECT_EQ(tree(read.getPopupMenu()), expected);
    EXPECT_EQ(tree(compiled.getPopupMenu()), expected);
    EXPECT_EQ(xmlOf(compiled), xmlOf(read));

    // The script's quotes came through the generated source: it assigns a text.
    choose(compiled.getPopupMenu(), "&Rename");
    EXPECT_TRUE(waitFor([this] { return title.getValue() == "Renamed"; })) << title.getValue().toStdString();
}

TEST_F(CompiledMenuTest, ACompiledMenuBarBuildsWhatItsFileBuilds)
{
#ifndef KEL_MENU_COMPILER
    GTEST_SKIP() << "built without the menu compiler";
#endif
    ASSERT_NE(Mnu_QtMenuBarManager::getMenuBarFactory("CompiledBar"), nullptr);
    Kel_MenuBar compiled(nullptr, "CompiledBar");
    Kel_MenuBar read;
    read.setMenuBarFileName(QFile::encodeName(resourceDir() + "CompiledBar.xml"));
    for (Kel_MenuBar* bar : {&compiled, &read}) {
        bar->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_EQ(bar->getMenuBarManager()->getManagerCount(), 2);
    }
    for (int i = 0; i < 2; ++i) {
        SCOPED_TRACE(i);
        QAction* compiledItem = compiled.actions().value(i);
        QAction* readItem = read.actions().value(i);
        ASSERT_TRUE(compiledItem && readItem);
        EXPECT_EQ(compiledItem->text(), readItem->text());
        EXPECT_EQ(tree(compiledItem->menu()), tree(readItem->menu()));
    }
    EXPECT_EQ(compiled.actions().at(1)->text(), "&Look");
    EXPECT_EQ(tree(compiled.actions().at(0)->menu()), QStringList({"&Save", "Open &Recent", "  a.wav", "  [x]b.wav"}));
    std::ostringstream compiledText, readText;
    compiled.getMenuBarManager()->saveMenuBar(compiledText, "Any", Mnu_Segment::kSaveXml);
    read.getMenuBarManager()->saveMenuBar(readText, "Any", Mnu_Segment::kSaveXml);
    EXPECT_EQ(compiledText.str(), readText.str());
}

TEST_F(CompiledMenuTest, ASubmenuSegmentMadeInCodeHasAnEmptyMenuToFill)
{
    Mnu_QtManager owner;
    auto* segment = new Mnu_SubmenuSegment(owner.getMenu());
    owner.getMenu()->addSegment(segment);
    auto* manager = dynamic_cast<Mnu_QtManager*>(segment->getSubmenuManager());
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(manager->getParentSegment(), segment);
    ASSERT_NE(manager->getMenu(), nullptr);
    EXPECT_EQ(manager->getMenu()->getSegmentCount(), 0);
    // Without an owning manager there is nothing to make one with.
    Mnu_SubmenuSegment orphan(nullptr);
    EXPECT_EQ(orphan.getSubmenuManager(), nullptr);
}

#ifdef KEL_MENU_COMPILER

namespace {

struct CompilerRun
{
    int status;
    QString output;
    QString errors;
};

CompilerRun compile(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(KEL_MENU_COMPILER), arguments);
    EXPECT_TRUE(process.waitForFinished(30000));
    return CompilerRun{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
               QString::fromLocal8Bit(process.readAllStandardOutput()),
               QString::fromLocal8Bit(process.readAllStandardError())};
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& text)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return path;
}

} // namespace

TEST(MenuCompilerTest, AMalformedFileFailsWithItsLineAndColumn)
{
    const QString malformed = resourceDir() + "Malformed.xml";
    CompilerRun run = compile({malformed});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, malformed + ":3:21: error: " + kXmlTagMismatch + "\n");
    EXPECT_TRUE(run.output.isEmpty());

    QTemporaryDir dir;
    const QString keys = writeFile(dir, "Keys.xml", "<?xml version=\"1.0\"?>\n\n  <KeyMappings/>\n");
    run = compile({"--xml", keys});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              keys + ":3:3: error: the root element is <KeyMappings>; a menu file has <Menu> or <MenuBar>\n");
}

TEST(MenuCompilerTest, UsageAndFileErrorsExitWithTwo)
{
    QTemporaryDir dir;
    EXPECT_EQ(compile({}).status, 2);
    EXPECT_EQ(compile({"--frobnicate", resourceDir() + "Edit.xml"}).status, 2);
    const CompilerRun missing = compile({dir.filePath("NoSuchMenu.xml")});
    EXPECT_EQ(missing.status, 2);
    EXPECT_TRUE(missing.errors.contains("cannot read")) << missing.errors.toStdString();
    // The name becomes a class name.
    const CompilerRun badName = compile({"--name", "2nd-menu", resourceDir() + "Edit.xml"});
    EXPECT_EQ(badName.status, 2);
    EXPECT_TRUE(badName.errors.contains("\"2nd-menu\" is not a C++ identifier")) << badName.errors.toStdString();
    EXPECT_EQ(compile({"-o", dir.filePath("no/such/folder/Edit.cpp"), resourceDir() + "Edit.xml"}).status, 2);
}

TEST(MenuCompilerTest, WhatTheLibraryWouldSkipIsAWarningWithItsPlace)
{
    QTemporaryDir dir;
    const QString file = writeFile(dir, "Sloppy.xml",
                                   "<Menu>\n"
                                   "  <Name>Sloppy</Name>\n"
                                   "  <SubmenuSegment/>\n"
                                   "  <CommandSegment><Colour>red</Colour><Text>Go</Text></CommandSegment>\n"
                                   "  <RadioItemsSegment><RadioItem><ID>x</ID></RadioItem></RadioItemsSegment>\n"
                                   "</Menu>\n");
    const CompilerRun run = compile({"--xml", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors.split('\n'),
              QStringList({file + ":3:3: warning: unknown segment tag <SubmenuSegment> is left out",
                           file + ":4:19: warning: <Colour> is not read within <CommandSegment>",
                           file + ":5:33: warning: <ID> \"x\" is not a decimal integer",
                           file + ":5:22: warning: <RadioItem> without a <Text> and a valid <ID> is left out", ""}));
    EXPECT_TRUE(run.output.startsWith("<Menu>\n\t<Name>Sloppy</Name>\n\t<CommandSegment>\n\t\t<Text>Go</Text>\n"))
        << run.output.toStdString();
}

TEST(MenuCompilerTest, ABarsEditMenuPlaceIsReadAndOtherTagsAreNot)
{
    QTemporaryDir dir;
    const QString file = writeFile(dir, "Bar.xml",
                                   "<MenuBar>\n"
                                   "  <Menu><Name>File</Name><Text>File</Text></Menu>\n"
                                   "  <EditMenu/>\n"
                                   "  <Toolbar/>\n"
                                   "</MenuBar>\n");
    const CompilerRun run = compile({"--xml", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors.split('\n'),
              QStringList({file + ":4:3: warning: <Toolbar> in <MenuBar> is left out; only <Menu> and <EditMenu> are read",
                           ""}));
    EXPECT_TRUE(run.output.contains("<EditMenu/>")) << run.output.toStdString();
}

TEST(MenuCompilerTest, ItWritesWhatTheLibraryWrites)
{
    QTemporaryDir dir;
    const QString input = resourceDir() + "CompiledPopup.xml";
    const QString output = dir.filePath("Out.cpp");
    const CompilerRun run = compile({input, "-o", output, "--name", "PopupSource"});
    ASSERT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.errors.isEmpty()) << run.errors.toStdString();
    QFile written(output);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    QStringList generated = QString::fromLocal8Bit(written.readAll()).split('\n');

    QByteArray path = QFile::encodeName(input);
    Mnu_QtManager read(nullptr, path.data());
    std::ostringstream out;
    read.savePopupMenu(out, "PopupSource", Mnu_Segment::kSaveSource);
    QStringList expected = QString::fromStdString(out.str()).split('\n');
    ASSERT_GT(generated.size(), 4);
    ASSERT_EQ(generated.size(), expected.size());
    generated.removeAt(3); // the creation time
    expected.removeAt(3);
    EXPECT_EQ(generated, expected);

    // XML to standard output; a menu bar by its root.
    const CompilerRun bar = compile({"--xml", resourceDir() + "CompiledBar.xml"});
    EXPECT_EQ(bar.status, 0);
    EXPECT_TRUE(bar.output.startsWith("<MenuBar>\n\t<Menu>\n\t\t<Name>File</Name>\n")) << bar.output.toStdString();
    EXPECT_TRUE(bar.output.endsWith("\t</Menu>\n</MenuBar>\n"));
}

#endif
