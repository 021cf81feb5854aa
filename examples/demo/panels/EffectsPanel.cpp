// "Effects": a chain of effects shown as a Kel_WidgetList, one real row form
// (Forms/EffectRow.ui) per element of the record array "Effects", and an
// inspector shown as a Kel_WidgetStack, one card per tab of
// "Inspector.TabData". Every button is an action button whose script names
// the models; a row's buttons reach their own element through $Row.
#include "DemoPanel.h"

#include "Kel_ActionButton.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_WidgetList.h"
#include "Kel_WidgetStack.h"
#include "Mve_Action.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// The effect chain and the inspector's tabs, published once.
class EffectsPanelModels
{
public:
    enum TabId { kOverviewTab = 1, kEffectTab = 2, kAboutTab = 3 };

    EffectsPanelModels()
    {
        effects.addField<QString>("name");
        effects.addField<bool>("enabled", true);
        effects.addField<long>("amount", 50);
        for (const char* name : {"Reverb", "Echo", "Chorus"})
            add(QString::fromLatin1(name));

        tabs.addField<long>("id");
        tabs.addField<QString>("env");
        tabs.addField<QString>("viewtype");
        tabs.addField<QString>("tabShortName");
        reopenTabs();

        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{
                 &effects, &count, &current, &addAction, &removeAction, &lessAction, &moreAction, &upAction,
                 &downAction, &tabs, &currentTab, &rowChanged, &overviewTab, &effectTab, &aboutTab, &closeTab,
                 &reopenTabsAction})
            m->Publish();
    }
    static EffectsPanelModels& instance()
    {
        static EffectsPanelModels models;
        return models;
    }

    void add(const QString& name)
    {
        const long row = effects.rowCount();
        effects.beginUpdate(); // listeners hear of the row once its name is there
        effects.appendRow();
        effects.setValue(row, "name", name);
        effects.endUpdate();
        changed();
    }
    void remove(long row)
    {
        if (row < 0 || row >= effects.rowCount())
            return;
        if (current.getValue() > row)
            current.setValue(current.getValue() - 1); // the selection stays on its effect
        effects.removeRows(row);
        changed();
    }
    void move(long from, long to)
    {
        if (to < 0 || to >= effects.rowCount())
            return;
        effects.moveRow(from, to);
        // The selection follows its effect.
        if (current.getValue() == from)
            current.setValue(to);
        else if (current.getValue() == to)
            current.setValue(from);
    }
    void nudge(long row, long step)
    {
        const long amount = effects.value<long>(row, "amount");
        effects.setValue(row, "amount", qBound(0L, amount + step, 100L));
    }
    void changed()
    {
        count.setValue(effects.rowCount());
        if (current.getValue() >= effects.rowCount())
            current.setValue(effects.rowCount() - 1);
    }
    void reopenTabs()
    {
        tabs.beginUpdate();
        tabs.clearRows();
        const struct
        {
            long id;
            const char* env;
            const char* viewType;
            const char* shortName;
        } all[] = {{kOverviewTab, "", "Overview", "Overview"},
                   {kEffectTab, "Fx=Effects.Current", "Effect", "Effect.Selected"},
                   {kAboutTab, "", "About", "About"}};
        for (const auto& tab : all) {
            const long row = tabs.appendRow();
            tabs.setValue(row, "id", tab.id);
            tabs.setValue(row, "env", QString::fromLatin1(tab.env));
            tabs.setValue(row, "viewtype", QString::fromLatin1(tab.viewType));
            tabs.setValue(row, "tabShortName", QString::fromLatin1(tab.shortName));
        }
        tabs.endUpdate();
        currentTab.setValue(kOverviewTab);
    }
    void closeCurrentTab()
    {
        const Mve_Array<long>* ids = tabs.field<long>("id");
        const auto& values = ids->values();
        const auto found = std::find(values.begin(), values.end(), currentTab.getValue());
        if (found == values.end())
            return;
        tabs.removeRows(long(found - values.begin()));
        currentTab.setValue(tabs.rowCount() > 0 ? ids->at(0) : -1);
    }

    Mve_RecordArray effects{"Effects"};
    Mve_SimpleValue<long> count{0, "Effects.Count"};
    Mve_Index<long> current{0, "Effects.Current"};
    Mve_Action<void()> addAction{[this] {
                                     static const char* const names[] = {"Flanger", "Phaser", "Delay", "Distortion",
                                                                         "Compressor"};
                                     static int next = 0;
                                     add(QString::fromLatin1(names[next++ % 5]));
                                 },
                                 "Effects.Add"};
    Mve_Action<void(long)> removeAction{[this](long row) { remove(row); }, "Effects.Remove"};
    Mve_Action<void(long)> lessAction{[this](long row) { nudge(row, -10); }, "Effects.Less"};
    Mve_Action<void(long)> moreAction{[this](long row) { nudge(row, 10); }, "Effects.More"};
    Mve_Action<void(long)> upAction{[this](long row) { move(row, row - 1); }, "Effects.MoveUp"};
    Mve_Action<void(long)> downAction{[this](long row) { move(row, row + 1); }, "Effects.MoveDown"};

    Mve_RecordArray tabs{"Inspector.TabData"};
    Mve_SimpleValue<long> currentTab{kOverviewTab, "Inspector.TabData.currentUniqueID"};
    Mve_SimpleValue<long> rowChanged{-1, "Inspector.TabData.rowChanged"};
    // The ids the tab buttons' scripts assign (scripts have no number literals).
    Mve_SimpleValue<long> overviewTab{kOverviewTab, "Inspector.OverviewTab"};
    Mve_SimpleValue<long> effectTab{kEffectTab, "Inspector.EffectTab"};
    Mve_SimpleValue<long> aboutTab{kAboutTab, "Inspector.AboutTab"};
    Mve_Action<void()> closeTab{[this] { closeCurrentTab(); }, "Inspector.CloseTab"};
    Mve_Action<void()> reopenTabsAction{[this] { reopenTabs(); }, "Inspector.ReopenTabs"};
};

Kel_ActionButton* addButton(QBoxLayout* layout, QWidget* parent, const char* name, const QString& text,
                            const char* script)
{
    auto* button = new Kel_ActionButton(parent, name, text);
    button->SetActionScript(script);
    layout->addWidget(button);
    return button;
}

QWidget* createEffectsPanel(QWidget* parent)
{
    EffectsPanelModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QHBoxLayout(page);

    // The chain: one EffectRow form per effect, in a scroll area.
    auto* chain = new QGroupBox(QStringLiteral("Effect chain (Kel_WidgetList over Effects)"), page);
    auto* chainLayout = new QVBoxLayout(chain);
    auto* scroll = new QScrollArea(chain);
    scroll->setWidgetResizable(true);
    auto* list = new Kel_WidgetList(nullptr, "effectsList", [] {
        return Kel_CreateWidgetFromUILayout(QStringLiteral("EffectRow"), nullptr, nullptr, false);
    });
    list->setConnectionSpec("Effects");
    scroll->setWidget(list);
    chainLayout->addWidget(scroll);
    auto* chainButtons = new QHBoxLayout;
    addButton(chainButtons, chain, "addEffect", QStringLiteral("Add effect"), "Effects.Add()");
    chainButtons->addStretch();
    chainLayout->addLayout(chainButtons);
    layout->addWidget(chain, 3);

    // The inspector: a card per tab, the placard when no tab is current.
    auto* inspector = new QGroupBox(QStringLiteral("Inspector (Kel_WidgetStack over Inspector.TabData)"), page);
    auto* inspectorLayout = new QVBoxLayout(inspector);
    auto* tabButtons = new QHBoxLayout;
    addButton(tabButtons, inspector, "overviewTab", QStringLiteral("Overview"),
              "Inspector.TabData.currentUniqueID = Inspector.OverviewTab");
    addButton(tabButtons, inspector, "effectTab", QStringLiteral("Effect"),
              "Inspector.TabData.currentUniqueID = Inspector.EffectTab");
    addButton(tabButtons, inspector, "aboutTab", QStringLiteral("About"),
              "Inspector.TabData.currentUniqueID = Inspector.AboutTab");
    tabButtons->addStretch();
    inspectorLayout->addLayout(tabButtons);
    auto* stack = new Kel_WidgetStack(inspector, "inspectorStack", QStringLiteral("InspectorPlacard"));
    stack->addViewType(QStringLiteral("Overview"), QStringLiteral("InspectorOverview"), true);
    stack->addViewType(QStringLiteral("Effect"), QStringLiteral("InspectorEffect"), true, QString(),
                       QStringLiteral("notes"));
    stack->addViewType(QStringLiteral("About"), QStringLiteral("InspectorAbout"), true);
    inspectorLayout->addWidget(stack, 1);
    auto* tabActions = new QHBoxLayout;
    addButton(tabActions, inspector, "closeTab", QStringLiteral("Close tab"), "Inspector.CloseTab()");
    addButton(tabActions, inspector, "reopenTabs", QStringLiteral("Reopen tabs"), "Inspector.ReopenTabs()");
    tabActions->addStretch();
    inspectorLayout->addLayout(tabActions);
    layout->addWidget(inspector, 2);

    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("TabGroupBaseName"), QStringLiteral("Inspector"));
    Kel_ConnectionUtils::recursiveConnect(page, env);
    return page;
}

// Clicks a button of one row, as the user would.
void clickRowButton(Kel_WidgetList* list, long row, const char* button)
{
    QWidget* rowWidget = row < list->rowSize() ? list->indexToRow(row) : nullptr;
    if (auto* b = rowWidget ? rowWidget->findChild<Kel_ActionButton*>(QString::fromLatin1(button)) : nullptr)
        b->click();
}

// Moves the last effect up one (its row widget moves, the rows renumber),
// then inspects the effect now second: the Effect card shows it.
void moveAndInspect(QWidget* page)
{
    auto* list = page->findChild<Kel_WidgetList*>(QStringLiteral("effectsList"));
    if (!list)
        return;
    clickRowButton(list, list->rowSize() - 1, "up");
    clickRowButton(list, 1, "inspect");
}

const DemoPanelRegistrar registrar({QStringLiteral("Effects"), 450, &createEffectsPanel, &moveAndInspect});

} // namespace
