// Case 3 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_PopupMenu.h"
#include "Mnu_QtManager.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"

#include <QAction>
#include <QDomDocument>
#include <QMenu>
#include <QPixmap>

using namespace bench;

namespace {

// --- 3. Menu rebuild ---------------------------------------------------------

bool benchMenu()
{
    const int kListItems = 1000, kCommands = 50;

    Mve_RecordArray list(QStringLiteral("Bench.Menu.Items"));
    list.addField<QString>(QStringLiteral("name"));
    list.addField<QString>(QStringLiteral("id"));
    list.addField<QString>(QStringLiteral("accelerator"));
    list.addField<QString>(QStringLiteral("iconName"));
    list.addField<QPixmap>(QStringLiteral("icon"));
    list.addField<bool>(QStringLiteral("selected"));
    list.Publish();
    for (int i = 0; i < kListItems; ++i) {
        const long row = list.appendRow();
        list.setValue<QString>(row, QStringLiteral("name"), QStringLiteral("Clip %1").arg(i));
        list.setValue<QString>(row, QStringLiteral("id"), QStringLiteral("clip%1").arg(i));
    }
    Mve_Action<void()> play([] {}, QStringLiteral("Bench.Menu.Play"));
    play.Publish();

    QString xml = QStringLiteral("<Menu><Name>Bench</Name><Text>Bench</Text>"
                                 "<ListSegment><ItemsConnectionName>Bench.Menu.Items</ItemsConnectionName></ListSegment>");
    for (int i = 0; i < kCommands; ++i) {
        xml += QStringLiteral("<CommandSegment><Name>Command%1</Name><Text>Command %1</Text>"
                              "<ActionScript>Bench.Menu.Play()</ActionScript></CommandSegment>")
                   .arg(i);
    }
    xml += QStringLiteral("</Menu>");
    QDomDocument document;
    document.setContent(xml);
    QDomElement root = document.documentElement();
    Mnu_QtManager manager;
    manager.setMenus(&root);
    manager.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    manager.instantiateMenus();
    Kel_PopupMenu* kelMenu = manager.getPopupMenu();

    // By hand: the same items, rebuilt the same way on every opening.
    QMenu qtMenu;
    QObject::connect(&qtMenu, &QMenu::aboutToShow, &qtMenu, [&qtMenu, &list, kListItems, kCommands] {
        qtMenu.clear();
        for (int i = 0; i < kListItems; ++i) {
            // The name is read once, as the library does: it is the item's
            // text and its data.
            const QString name = list.value<QString>(i, QStringLiteral("name"));
            QAction* action = qtMenu.addAction(name);
            action->setData(name);
        }
        for (int i = 0; i < kCommands; ++i) {
            QAction* action = qtMenu.addAction(QStringLiteral("Command %1").arg(i));
            action->setData(QStringLiteral("Command%1").arg(i));
        }
    });

    const Result r = compare(
        [&] {
            const double start = nowNs();
            emit kelMenu->aboutToShow();
            return nowNs() - start;
        },
        [&] {
            const double start = nowNs();
            emit qtMenu.aboutToShow();
            return nowNs() - start;
        });
    const bool complete = kelMenu->actions().size() == kListItems + kCommands
                       && qtMenu.actions().size() == kListItems + kCommands;
    if (!complete)
        broken("case 3: the menus do not have all their items");
    return printRatio("3 menu rebuild: 1,000 list items + 50 commands", r, 1.2);
}

} // namespace

namespace {
const BenchCaseRegistrar registration(3, [](const QString&) { return benchMenu(); });
} // namespace
