// "Compiled menus": a menu bar compiled into the demo from
// menus/DemoCompiledMenuBar.xml by kelcore_add_menus, found by its name like
// any menu bar but without a file at run time, and the models it drives. A
// button adds commands to it by path, as a plug-in would.
#include "DemoPanel.h"
#include "DemoValueLabel.h"

#include "Kel_MenuBar.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mv_Variant.h"
#include "Mve_SimpleValue.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct CompiledMenuModels
{
    CompiledMenuModels()
    {
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&clipName, &loop, &zoom})
            m->Publish();
    }
    static CompiledMenuModels& instance()
    {
        static CompiledMenuModels models;
        return models;
    }

    Mve_SimpleValue<QString> clipName{"Take 1", "CompiledDemo.ClipName"};
    Mve_SimpleValue<bool> loop{false, "CompiledDemo.Loop"};
    Mve_SimpleValue<long> zoom{100, "CompiledDemo.Zoom"};
};

QWidget* createCompiledMenuPanel(QWidget* parent)
{
    CompiledMenuModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    const bool compiledIn = Mnu_QtMenuBarManager::getMenuBarFactory("DemoCompiledMenuBar") != nullptr;
    layout->addWidget(new QLabel(compiledIn ? QStringLiteral("This menu bar was compiled into the demo from "
                                                             "menus/DemoCompiledMenuBar.xml; no menu file is read:")
                                            : QStringLiteral("The demo was built without the menu compiler, "
                                                             "so this menu bar is empty."),
                                 page));
    auto* bar = new Kel_MenuBar(page, "DemoCompiledMenuBar");
    bar->setNativeMenuBar(false);
    bar->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    layout->addWidget(bar);
    auto* plugin = new QPushButton(QStringLiteral("Add a plug-in's commands"), page);
    plugin->setObjectName(QStringLiteral("addPluginCommands"));
    QObject::connect(plugin, &QPushButton::clicked, bar, [bar, plugin] {
        Mnu_QtMenuBarManager* menus = bar->getMenuBarManager();
        menus->insertItems(QStringLiteral("Clip.Loop"),
                           QStringLiteral("<Menu><Separator/><CommandSegment><Name>Normalise</Name>"
                                          "<Text>&amp;Normalise (plug-in)</Text>"
                                          "<ActionScript>CompiledDemo.ClipName = \"Normalised\"</ActionScript>"
                                          "</CommandSegment></Menu>"),
                           Mnu_QtMenuBarManager::kInsertAfter);
        menus->insertMenu(QStringLiteral("Help"),
                          QStringLiteral("<Menu><Name>Plugin</Name><Text>&amp;Plug-in</Text><CommandSegment>"
                                         "<Name>Undo</Name><Text>Back to Take 1</Text>"
                                         "<ActionScript>CompiledDemo.ClipName = \"Take 1\"</ActionScript>"
                                         "</CommandSegment></Menu>"));
        plugin->setEnabled(false);
    });
    layout->addWidget(plugin, 0, Qt::AlignLeft);
    auto* form = new QFormLayout;
    for (const char* name : {"CompiledDemo.ClipName", "CompiledDemo.Loop", "CompiledDemo.Zoom"})
        form->addRow(QString::fromLatin1(name), new DemoValueLabel(QString::fromLatin1(name), page));
    layout->addLayout(form);
    layout->addStretch();
    return page;
}

// Chooses items of the compiled bar, as a user would, for the screenshot.
void chooseCompiledItems(QWidget* page)
{
    auto* bar = page->findChild<Kel_MenuBar*>();
    if (!bar || !bar->getMenuBarManager())
        return;
    bar->getMenuBarManager()->tstActivateItem(QStringLiteral("Clip.Rename"));
    bar->getMenuBarManager()->tstActivateItem(QStringLiteral("Clip.&Zoom.&50%"));
    if (auto* plugin = page->findChild<QPushButton*>(QStringLiteral("addPluginCommands")))
        plugin->click();
}

const DemoPanelRegistrar registrar({QStringLiteral("Compiled menus"), 310, &createCompiledMenuPanel,
                                    &chooseCompiledItems});

} // namespace
