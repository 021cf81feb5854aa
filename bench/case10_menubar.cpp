// Case 10 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_MenuBar.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"

#include <QAction>
#include <QDomDocument>
#include <QFile>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

using namespace bench;

namespace {

// --- 9. An application's menu bar --------------------------------------------

// The bar of bench/BenchMenuBar.xml: 198 commands in 13 menus and 21
// submenus (three levels deep), separators, enable models on a quarter of
// the commands and four list segments.
const char* const kBarName = "BenchMenuBar";

// What the hand-written side knows of one item: the same bar written as
// code, taken from the file before the timing so that the Qt side parses
// nothing.
struct HandItem
{
    enum Kind { kCommand, kSeparator, kList, kSubmenu } kind = kCommand;
    QString text;
    QKeySequence shortcut;
    const Mve_SimpleValue<bool>* enabled = nullptr;
    const Mve_RecordArray* list = nullptr;
    int submenu = -1; // index into HandBar::menus
};

struct HandMenu
{
    QString title;
    std::vector<HandItem> items;
};

struct HandBar
{
    std::vector<HandMenu> menus; // the bar's menus first, then the submenus
    int barMenus = 0;
};

struct BarModels
{
    std::map<QString, std::unique_ptr<Mve_SimpleValue<bool>>> enabled;
    std::map<QString, std::unique_ptr<Mve_RecordArray>> lists;
};

QString child(const QDomElement& element, const char* tag)
{
    return element.firstChildElement(QLatin1String(tag)).text();
}

// Reads menu into bar.menus[index] (a new entry when index is -1); its
// submenus go to new entries at the end. Answers the index.
int readHandMenu(const QDomElement& menu, HandBar& bar, const BarModels& models, int index = -1)
{
    if (index < 0) {
        index = int(bar.menus.size());
        bar.menus.emplace_back();
    }
    std::vector<HandItem> items;
    for (QDomElement e = menu.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        HandItem item;
        const QString tag = e.tagName();
        if (tag == QLatin1String("CommandSegment")) {
            item.text = child(e, "Text");
            item.shortcut = QKeySequence(child(e, "Accelerator"), QKeySequence::PortableText);
            const QString enable = child(e, "EnableConnectionName");
            if (!enable.isEmpty())
                item.enabled = models.enabled.at(enable).get();
        } else if (tag == QLatin1String("Separator")) {
            item.kind = HandItem::kSeparator;
        } else if (tag == QLatin1String("ListSegment")) {
            item.kind = HandItem::kList;
            item.list = models.lists.at(child(e, "ItemsConnectionName")).get();
        } else if (tag == QLatin1String("SubMenuSegment")) {
            item.kind = HandItem::kSubmenu;
            item.submenu = readHandMenu(e.firstChildElement(QStringLiteral("Menu")), bar, models);
        } else {
            continue;
        }
        items.push_back(item);
    }
    bar.menus[size_t(index)] = HandMenu{child(menu, "Text"), items};
    return index;
}

// Publishes the models the file names, in the state an application would
// have them: some commands disabled, the lists filled.
void makeModels(const QDomDocument& document, BarModels& models)
{
    const QDomNodeList enables = document.elementsByTagName(QStringLiteral("EnableConnectionName"));
    for (int i = 0; i < enables.size(); ++i) {
        const QString name = enables.at(i).toElement().text();
        if (!models.enabled.count(name)) {
            models.enabled[name].reset(new Mve_SimpleValue<bool>(models.enabled.size() % 3 != 0, name));
            models.enabled[name]->Publish();
        }
    }
    const QDomNodeList lists = document.elementsByTagName(QStringLiteral("ItemsConnectionName"));
    for (int i = 0; i < lists.size(); ++i) {
        const QString name = lists.at(i).toElement().text();
        auto* list = new Mve_RecordArray(name);
        models.lists[name].reset(list);
        list->addField<QString>(QStringLiteral("name"));
        list->addField<QString>(QStringLiteral("id"));
        list->addField<QString>(QStringLiteral("accelerator"));
        list->addField<QString>(QStringLiteral("iconName"));
        list->addField<QPixmap>(QStringLiteral("icon"));
        list->addField<bool>(QStringLiteral("selected"));
        const QString title = name.section(QLatin1Char('.'), -1);
        for (int row = 0; row < 8; ++row) {
            const long r = list->appendRow();
            list->setValue<QString>(r, QStringLiteral("name"), QStringLiteral("%1 %2").arg(title).arg(row));
            list->setValue<QString>(r, QStringLiteral("id"), QStringLiteral("item%1").arg(row));
        }
        list->Publish();
    }
}

// Opens every menu of the bar once, submenus after the menu that holds
// them (they exist only once it is filled); answers the items seen.
int openEveryMenu(QMenuBar* bar)
{
    int items = 0;
    std::vector<QMenu*> pending;
    for (QAction* action : bar->actions()) {
        if (action->menu())
            pending.push_back(action->menu());
    }
    while (!pending.empty()) {
        QMenu* menu = pending.back();
        pending.pop_back();
        emit menu->aboutToShow();
        for (QAction* action : menu->actions()) {
            ++items;
            if (action->menu())
                pending.push_back(action->menu());
        }
    }
    return items;
}

// The hand-written bar: a QMenu per menu, filled on about-to-show.
class HandBuiltBar
{
public:
    HandBuiltBar(const HandBar& spec, const boost::function<void()>& run) : mSpec(spec), mRun(run)
    {
        for (const HandMenu& menu : spec.menus)
            mMenus.push_back(new QMenu(menu.title, &mBar));
        for (size_t i = 0; i < mMenus.size(); ++i)
            QObject::connect(mMenus[i], &QMenu::aboutToShow, [this, i] { fill(i); });
        for (int i = 0; i < spec.barMenus; ++i)
            mBar.addMenu(mMenus[size_t(i)]);
    }

    QMenuBar* bar() { return &mBar; }

private:
    void fill(size_t index)
    {
        QMenu* menu = mMenus[index];
        menu->clear();
        for (const HandItem& item : mSpec.menus[index].items) {
            switch (item.kind) {
            case HandItem::kCommand: {
                QAction* action = menu->addAction(item.text);
                action->setShortcut(item.shortcut);
                action->setEnabled(!item.enabled || item.enabled->getValue());
                QObject::connect(action, &QAction::triggered, [this] { mRun(); });
                break;
            }
            case HandItem::kSeparator:
                menu->addSeparator();
                break;
            case HandItem::kList:
                for (long row = 0; row < item.list->rowCount(); ++row) {
                    QAction* action = menu->addAction(item.list->value<QString>(row, QStringLiteral("name")));
                    action->setData(item.list->value<QString>(row, QStringLiteral("id")));
                }
                break;
            case HandItem::kSubmenu:
                menu->addMenu(mMenus[size_t(item.submenu)]);
                break;
            }
        }
    }

    const HandBar& mSpec;
    boost::function<void()> mRun;
    QMenuBar mBar;
    std::vector<QMenu*> mMenus;
};

bool benchMenuBar(const QString& resourceDir)
{
    const QString source = QStringLiteral(KELCORE_BENCH_SOURCE_DIR "/%1.xml").arg(QLatin1String(kBarName));
    const QString copy = resourceDir + QLatin1String(kBarName) + QStringLiteral(".xml");
    QFile::remove(copy);
    QFile file(source);
    QDomDocument document;
    if (!QFile::copy(source, copy) || !file.open(QFile::ReadOnly) || !document.setContent(&file)) {
        broken("case 10: cannot read the menu file");
        return false;
    }
    Ost_Resource::setResourcePath(resourceDir);

    BarModels models;
    makeModels(document, models);
    long runs = 0;
    const boost::function<void()> run = [&runs] { ++runs; };
    Mve_Action<void()> runAction(run, QStringLiteral("Bench.Bar.Run"));
    runAction.Publish();

    // The bar's menus take the first places, their submenus the rest.
    HandBar ordered;
    std::vector<QDomElement> barMenus;
    for (QDomElement menu = document.documentElement().firstChildElement(QStringLiteral("Menu")); !menu.isNull();
         menu = menu.nextSiblingElement(QStringLiteral("Menu")))
        barMenus.push_back(menu);
    ordered.barMenus = int(barMenus.size());
    ordered.menus.resize(barMenus.size());
    for (size_t i = 0; i < barMenus.size(); ++i)
        readHandMenu(barMenus[i], ordered, models, int(i));

    const auto env = Mv_ConnectionEnvironment::blankEnvironment();
    int kelItems = 0, qtItems = 0;
    const Result r = compare(
        [&] {
            const double start = nowNs();
            auto* bar = new Kel_MenuBar(nullptr, kBarName);
            bar->makeConnections(env);
            kelItems = openEveryMenu(bar);
            const double elapsed = nowNs() - start;
            delete bar;
            return elapsed;
        },
        [&] {
            const double start = nowNs();
            auto* bar = new HandBuiltBar(ordered, run);
            qtItems = openEveryMenu(bar->bar());
            const double elapsed = nowNs() - start;
            delete bar;
            return elapsed;
        });
    Ost_Resource::setResourcePath(QString());
    // 198 commands, 21 submenu items, 38 separators, 4 lists of 8.
    if (kelItems != qtItems || kelItems != 198 + 21 + 38 + 4 * 8) {
        std::fprintf(stderr, "case 10: %d items with KelCore, %d by hand\n", kelItems, qtItems);
        broken("case 10: the bars do not have the same items");
    }
    return printRatio("10 menu bar: 13 menus, 198 commands, opened", r, 1.5);
}

} // namespace

namespace {
const BenchCaseRegistrar registration(10, [](const QString& resourceDir) { return benchMenuBar(resourceDir); });
} // namespace
