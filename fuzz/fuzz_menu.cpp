// Fuzzes menu files end to end. Each input is written to a file and read
// twice: by a single menu's manager (root <Menu>) and by a menu bar (root
// <MenuBar>). Both are connected to a few published models, instantiated
// through the about-to-show path, searched by accelerator and path, and
// every item they made is chosen; queued scripts then run before the
// models go away. Models, by name:
//
//   B (bool), S (QString), L (long), K (QString, "Ctrl+K")  value models
//   Play: void()                                            counts calls
//   Arr  a record array with name, id, accelerator, iconName, icon,
//        selected and accel fields (two rows)
//   Images/Play.png                                         a readable icon
//
// The application object is made once, offscreen; debug output is dropped.
#include "Kel_MenuBar.h"
#include "Kel_PopupMenu.h"
#include "Mnu_Menu.h"
#include "Mnu_QtManager.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mnu_Segment.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "Uip_RunScript.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

QString gResourceDir;

void quietMessages(QtMsgType, const QMessageLogContext&, const QString&)
{
}

void removeResourceDir()
{
    QDir(gResourceDir).removeRecursively();
}

struct Models
{
    Models()
    {
        for (const char* field : {"name", "id", "accelerator", "iconName", "accel"})
            arr.addField<QString>(field);
        arr.addField<QPixmap>("icon");
        arr.addField<bool>("selected");
        for (int row = 0; row < 2; ++row) {
            arr.appendRow();
            arr.setValue<QString>(row, "name", row ? QStringLiteral("b") : QStringLiteral("a"));
            arr.setValue<QString>(row, "id", QString::number(row));
            arr.setValue<QString>(row, "accelerator", row ? QStringLiteral("Ctrl+B") : QString());
            arr.setValue<QString>(row, "iconName", row ? QStringLiteral("Images/Play.png") : QString());
            arr.setValue<bool>(row, "selected", row == 1);
        }
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&b, &s, &l, &k, &play, &arr})
            m->Publish();
    }

    int plays = 0;
    Mve_SimpleValue<bool> b{true, QStringLiteral("B")};
    Mve_SimpleValue<QString> s{QStringLiteral("0"), QStringLiteral("S")};
    Mve_SimpleValue<long> l{1, QStringLiteral("L")};
    Mve_SimpleValue<QString> k{QStringLiteral("Ctrl+K"), QStringLiteral("K")};
    Mve_Action<void()> play{[this] { ++plays; }, QStringLiteral("Play")};
    Mve_RecordArray arr{QStringLiteral("Arr")};
};

// Chooses every item of menu and of its submenus, opening each first.
void chooseAll(QMenu* menu, int depth)
{
    if (!menu || depth > 8)
        return;
    emit menu->aboutToShow();
    const QList<QAction*> actions = menu->actions();
    for (int i = 0; i < actions.size(); ++i) {
        // An earlier choice may have rebuilt the menu.
        if (!menu->actions().contains(actions.at(i)))
            continue;
        QAction* action = actions.at(i);
        if (action->menu())
            chooseAll(action->menu(), depth + 1);
        else if (!action->isSeparator())
            action->trigger();
    }
}

void exerciseManager(Mnu_Manager* manager)
{
    manager->tstGetItemEnabled(QStringLiteral("a"));
    manager->tstGetItemText(QStringLiteral("a.b"));
    Mnu_Manager* owner = nullptr;
    Mnu_Segment* segment = nullptr;
    int index = 0;
    manager->tstFindItemByPath(QStringLiteral("b"), &owner, &segment, &index);
    manager->dump(QString());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_menu";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv); // lives as long as the process
    qInstallMessageHandler(&quietMessages);

    gResourceDir = QDir::tempPath() + QStringLiteral("/fuzz_menu_%1/").arg(QCoreApplication::applicationPid());
    QDir().mkpath(gResourceDir + QStringLiteral("Images"));
    std::atexit(&removeResourceDir);
    QImage icon(4, 4, QImage::Format_RGB32);
    icon.fill(Qt::red);
    icon.save(gResourceDir + QStringLiteral("Images/Play.png"), "PNG");
    Ost_Resource::setResourcePath(gResourceDir);
    Uip_InstallDelayedActionRunner();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    {
        QFile file(gResourceDir + QStringLiteral("input.xml"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    std::unique_ptr<Models> models(new Models());
    const auto env = Mv_ConnectionEnvironment::blankEnvironment();
    QByteArray name("input");

    {
        Mnu_QtManager menu(static_cast<Kel_PopupMenu*>(nullptr), name.data());
        menu.makeConnections(env);
        menu.instantiateMenus();
        chooseAll(menu.getPopupMenu(), 0);
        chooseAll(menu.getPopupMenu(), 0);
        exerciseManager(&menu);
        if (Mnu_Menu* m = menu.getMenu()) {
            for (int i = 0; i < m->getSegmentCount(); ++i) {
                Mnu_Segment* segment = m->getSegmentAt(i);
                segment->isEnabled(true);
                segment->activate(segment->getIndexedID(0));
                segment->getVisibleItemCount();
            }
        }
        QCoreApplication::processEvents();
    }
    {
        Kel_MenuBar bar(nullptr, "input");
        bar.makeConnections(env);
        for (QAction* action : bar.actions())
            chooseAll(action->menu(), 0);
        bar.getSegmentByAccelerator(QKeySequence(QStringLiteral("Ctrl+K")));
        bar.getSegmentByAccelerator(QKeySequence(QStringLiteral("Ctrl+B")));
        bar.getItemByPath(QStringLiteral("a.b"));
        bar.findPoi(QStringLiteral("a.b"), nullptr);
        bar.deleteAccelerator(QKeySequence(QStringLiteral("Ctrl+K")));
        bar.getMenuBarManager()->refreshMenuBar();
        exerciseManager(bar.getMenuBarManager());
        QCoreApplication::processEvents();
    }
    // Scripts queued by the choices run while their models still exist;
    // the models then go before the next input.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    models.reset();
    return 0;
}
