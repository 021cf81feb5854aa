// "Menus": the models behind the demo's menu bar (resources/DemoMenuBar.xml)
// and what the menus last chose. The bar itself belongs to the window.
#include "DemoModels.h"
#include "DemoPanel.h"
#include "DemoValueLabel.h"

#include "Kel_MenuBar.h"
#include "Mnu_CommandSegment.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mv_Variant.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QFormLayout>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

namespace {

// Published when the panel is first built, which is before the window
// connects its menu bar.
struct MenuModels
{
    MenuModels()
    {
        for (const char* field : {"name", "id", "accelerator", "iconName"})
            recent.addField<QString>(field);
        recent.addField<QPixmap>("icon");
        recent.addField<bool>("selected", false);
        const char* files[] = {"Interview A.mov", "B-roll harbour.mov", "Closing credits.mov"};
        for (int i = 0; i < 3; ++i) {
            const long row = recent.appendRow();
            recent.setValue<QString>(row, "name", QString::fromLatin1(files[i]));
            recent.setValue<QString>(row, "id", QString::number(row));
            recent.setValue<QString>(row, "accelerator", QStringLiteral("Ctrl+%1").arg(row + 1));
        }
        recent.setValue<QString>(0, "iconName", QStringLiteral("Images/FormPlay.png"));
        recent.field<bool>("selected")->setAt(1, true);

        speeds.addField<QString>("name");
        speeds.addField<QString>("id");
        speeds.addField<QString>("accel");
        const char* names[] = {"&Half speed", "&Normal speed", "&Double speed"};
        const char* ids[] = {"0.5", "1", "2"};
        for (int i = 0; i < 3; ++i) {
            const long row = speeds.appendRow();
            speeds.setValue<QString>(row, "name", QString::fromLatin1(names[i]));
            speeds.setValue<QString>(row, "id", QString::fromLatin1(ids[i]));
            speeds.setValue<QString>(row, "accel", QStringLiteral("Alt+%1").arg(row + 1));
        }

        clearRecentMarks.setFunction([this] {
            for (long row = 0; row < recent.rowCount(); ++row)
                recent.setValue<bool>(row, "selected", false);
        });
        // Play is offered while stopped; the transport only says whether it plays.
        playing.setReceiveMessageCB([this](const Mv_MessageInterface&) { stopped.setValue(!playing.value(false)); });
        selected.setReceiveMessageCB([this](const Mv_MessageInterface&) {
            const std::vector<bool>& marks = recent.field<bool>("selected")->values();
            hasMarkedRecent.setValue(std::find(marks.begin(), marks.end(), true) != marks.end());
        });

        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&recent, &speeds, &speed, &zoom, &stopped,
                                                                     &hasMarkedRecent, &viewTitle, &clearRecentMarks})
            m->Publish();
        playing.connect(Mv_ConnectionEnvironment::blankEnvironment());
        selected.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }

    static MenuModels& instance()
    {
        static MenuModels models;
        return models;
    }

    Mve_RecordArray recent{"Menus.Recent"};
    Mve_RecordArray speeds{"Menus.Speeds"};
    Mve_SimpleValue<QString> speed{"1", "Menus.Speed"};
    Mve_SimpleValue<long> zoom{100, "Menus.Zoom"};
    Mve_SimpleValue<bool> stopped{true, "Menus.Stopped"};
    Mve_SimpleValue<bool> hasMarkedRecent{true, "Menus.HasMarkedRecent"};
    Mve_SimpleValue<QString> viewTitle{"&View", "Menus.ViewTitle"};
    Mve_Action<void()> clearRecentMarks{Mve_Action<void()>::Function(), "Menus.ClearRecentMarks"};
    Mvt_SimpleValue<bool>::Listener playing{"Transport.Playing"};
    Mvt_ArrayContainer::Listener selected{"Menus.Recent.selected"};
};

// The recent files with their marks, rebuilt on any change of the list.
class RecentLabel : public QLabel
{
public:
    explicit RecentLabel(QWidget* parent) : QLabel(parent), mSelected("Menus.Recent.selected")
    {
        mSelected.setReceiveMessageCB([this](const Mv_MessageInterface&) { refresh(); });
        mSelected.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }

private:
    void refresh()
    {
        const Mve_RecordArray& recent = MenuModels::instance().recent;
        const std::vector<bool>& marks = recent.field<bool>("selected")->values();
        QStringList lines;
        for (long row = 0; row < recent.rowCount(); ++row)
            lines << QStringLiteral("%1 %2").arg(marks.at(size_t(row)) ? "[x]" : "[ ]",
                                                 recent.value<QString>(row, "name"));
        setText(lines.join('\n'));
    }
    Mvt_ArrayContainer::Listener mSelected;
};

QWidget* createMenusPanel(QWidget* parent)
{
    MenuModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(QStringLiteral("The menu bar above is read from resources/DemoMenuBar.xml. "
                                                 "Its choices land in these models:"),
                                 page));
    auto* form = new QFormLayout;
    const char* models[] = {"Mixer.Muted", "Mixer.Volume", "Transport.State", "Menus.Speed", "Menus.Zoom"};
    for (const char* name : models)
        form->addRow(QString::fromLatin1(name), new DemoValueLabel(QString::fromLatin1(name), page));
    form->addRow(QStringLiteral("Menus.Recent"), new RecentLabel(page));
    layout->addLayout(form);
    layout->addStretch();
    return page;
}

// Chooses a few items of the window's menu bar, as a user would, so that
// the screenshot shows their effect.
void chooseFromMenus(QWidget* page)
{
    auto* bar = page->window()->findChild<Kel_MenuBar*>();
    if (!bar || !bar->getMenuBarManager())
        return;
    Mnu_QtMenuBarManager* menus = bar->getMenuBarManager();
    menus->tstActivateItem(QStringLiteral("Mixer.Mute"));
    menus->tstActivateItem(QStringLiteral("Transport.&Double speed"));
    menus->tstActivateItem(QStringLiteral("View.&Zoom.&200%"));
    // The way the keymap runs a menu command: by its accelerator.
    if (auto* play = dynamic_cast<Mnu_CommandSegment*>(bar->getSegmentByAccelerator(QKeySequence("Ctrl+P")))) {
        if (play->isEnabled(true))
            play->itemActivatedTimer();
    }
}

const DemoPanelRegistrar registrar({QStringLiteral("Menus"), 300, &createMenusPanel, &chooseFromMenus});

} // namespace
