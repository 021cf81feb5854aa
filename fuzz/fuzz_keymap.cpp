// Fuzzes keymap documents. Each input is read by a manager of its own as the
// default table and again as the German one; then every mapped key is
// looked up, asked about and run as a key event, every action is looked up
// in reverse, the custom mappings are written and read back, entries are
// rebound and removed, and the change notification runs.
//
// Includes resolve in a temporary folder made at start-up, which holds
// Common.xml, Keys.xml (includes Common), Self.xml (includes itself) and
// Keys-German.xml. The manager tries a name it cannot find there as a path
// of its own, so inputs whose include names have a path separator, or name
// something that exists outside the folder, are skipped: nothing outside
// the folder is read.
//
// Models, by name:
//   Play: void()                          counts calls
//   Text (QString), On (bool)             value models
//   KeymapsChanged.Action: void()         the change notification
//   Bar.xml                               a menu bar with Save (Ctrl+S), Mute (Ctrl+M)
//
// The application object is made once, offscreen; debug output is dropped.
#include "Kel_KeymapMgr.h"
#include "Kel_MenuBar.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TaskScheduler.h"

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

QString gDir;

class FuzzKeymapMgr : public Kel_KeymapMgr
{
public:
    FuzzKeymapMgr() = default;
};

struct Fixture
{
    Fixture()
    {
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&play, &text, &on, &changed})
            m->Publish();
        bar.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    }

    int plays = 0;
    int notifications = 0;
    Mve_Action<void()> play{[this] { ++plays; }, QStringLiteral("Play")};
    Mve_SimpleValue<QString> text{QString(), QStringLiteral("Text")};
    Mve_SimpleValue<bool> on{true, QStringLiteral("On")};
    Mve_Action<void()> changed{[this] { ++notifications; }, QStringLiteral("KeymapsChanged.Action")};
    Kel_MenuBar bar{nullptr, "Bar"};
};

Fixture* gFixture = nullptr;

void quietMessages(QtMsgType, const QMessageLogContext&, const QString&)
{
}

void cleanUp()
{
    delete gFixture;
    gFixture = nullptr;
    QDir(gDir).removeRecursively();
}

void writeFile(const QString& name, const char* text)
{
    QFile file(gDir + name);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(text);
}

// Whether every include of the document names a file of the folder, or
// nothing at all.
bool includesStayInside(const QString& xml)
{
    QDomDocument document;
    if (!document.setContent(xml, false))
        return true; // not read any further by the manager either
    const QDomNodeList files = document.elementsByTagName(QStringLiteral("File"));
    for (int i = 0; i < files.size(); ++i) {
        const QString name = files.at(i).toElement().text().trimmed();
        if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
            return false;
        if (!QFileInfo(gDir + name + QStringLiteral(".xml")).isFile() && !name.isEmpty() && QFileInfo::exists(name))
            return false;
    }
    return true;
}

// Presses every mapped key of the table in its context.
void exerciseTable(Kel_KeymapMgr& mgr, int lang)
{
    const auto env = Mv_ConnectionEnvironment::blankEnvironment();
    const QMap<QString, Kel_KeymapMgr::KeyMappingInfo> table = mgr.KeyMap(lang);
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        const QString context = it.key().section(QStringLiteral("::"), 0, 0);
        const QKeySequence sequence =
            QKeySequence::fromString(it.key().section(QStringLiteral("::"), 1), QKeySequence::PortableText);
        if (sequence.isEmpty())
            continue;
        const int combined = sequence[0];
        QKeyEvent event(QEvent::KeyPress, combined & ~int(Qt::KeyboardModifierMask),
                        Qt::KeyboardModifiers(combined & int(Qt::KeyboardModifierMask)));
        mgr.lookup(&event, context, lang);
        mgr.hasAction(&event, context, lang);
        mgr.handleAction(&event, context, env, lang);
        mgr.getMenuActionLabel(sequence, it.value());
        const QString action = it->action;
        mgr.lookup(action.section(QLatin1Char('|'), 1), context, lang);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_keymap";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv); // lives as long as the process
    qInstallMessageHandler(&quietMessages);

    gDir = QDir::tempPath() + QStringLiteral("/fuzz_keymap_%1/").arg(QCoreApplication::applicationPid());
    QDir().mkpath(gDir);
    std::atexit(&cleanUp);
    writeFile(QStringLiteral("Common.xml"),
              "<KeyMappings><Entries Context='MainWindow'>"
              "<Entry id='Redo' key='Ctrl+Y'><Action>Play</Action></Entry></Entries></KeyMappings>");
    writeFile(QStringLiteral("Keys.xml"),
              "<KeyMappings><Includes><File>Common</File></Includes><Entries Context='MainWindow'>"
              "<Entry id='Play' key='Space'><Action>Play</Action></Entry>"
              "<Entry id='Save' key='F2'><ActionID>MenuAction::Ctrl+S</ActionID></Entry></Entries></KeyMappings>");
    writeFile(QStringLiteral("Self.xml"), "<KeyMappings><Includes><File>Self</File></Includes></KeyMappings>");
    writeFile(QStringLiteral("Keys-German.xml"),
              "<KeyMappings><Entries Context='MainWindow'>"
              "<Entry id='Undo' key='Ctrl+Y'><ActionScript>Text = \"z\"</ActionScript></Entry></Entries></KeyMappings>");
    writeFile(QStringLiteral("Bar.xml"),
              "<MenuBar><Menu><Name>File</Name><Text>File</Text>"
              "<CommandSegment><Name>Save</Name><Text>&amp;Save</Text><Accelerator>Ctrl+S</Accelerator>"
              "<EnableConnectionName>On</EnableConnectionName><ActionScript>Play()</ActionScript></CommandSegment>"
              "<BooleanSegment><Name>Mute</Name><Text>Mute</Text><Accelerator>Ctrl+M</Accelerator>"
              "<BooleanConnectionName>On</BooleanConnectionName></BooleanSegment>"
              "</Menu></MenuBar>");
    Ost_Resource::setResourcePath(gDir);
    TaskScheduler::instance()->setManualClock(true);
    gFixture = new Fixture();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString xml = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    if (!includesStayInside(xml))
        return 0;

    FuzzKeymapMgr mgr;
    mgr.setKeyMapsDirPath(gDir);
    mgr.setMenuBar(&gFixture->bar);
    mgr.loadFromXMLString(xml, 0);
    mgr.loadFromXMLString(xml, 7);
    for (int lang : {0, 7, -1}) {
        exerciseTable(mgr, lang);
        mgr.dump(QString(), lang);
    }

    const QString custom = mgr.customKeyMappingsToXml();
    {
        FuzzKeymapMgr reread;
        reread.loadFromXMLString(custom, 0);
        reread.customKeyMappingsToXml();
    }

    const QMap<QString, Kel_KeymapMgr::KeyMappingInfo> table = mgr.KeyMap(0);
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        mgr.actionSetup(it->actionId, QStringLiteral("Text = \"set\""), it->description, true);
        mgr.addOrReplace(QKeySequence::fromString(it.key().section(QStringLiteral("::"), 1), QKeySequence::PortableText),
                         it->action, it->actionId, QString(), it.key().section(QStringLiteral("::"), 0, 0),
                         QString(), !it->isCustom);
    }
    exerciseTable(mgr, 0);
    for (auto it = table.constBegin(); it != table.constEnd(); ++it)
        mgr.removeKeysOfContext(it.key().section(QStringLiteral("::"), 0, 0));
    mgr.clearMgr();
    TaskScheduler::instance()->advanceClock(1);
    // The menu bar rebuilds its items while it is asked; the old ones go
    // with the deferred deletions.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
