// "Bound widgets": check boxes and labels bound to the demo models by name,
// connected in one go with Kel_ConnectionUtils::recursiveConnect.
#include "DemoModels.h"
#include "DemoPanel.h"

#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_FontManager.h"
#include "Kel_Label.h"
#include "Kel_LongLabel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Models of this panel itself, published beside the demo models.
struct BindingPanelModels
{
    BindingPanelModels()
    {
        showHiddenBox.Publish();
        stateToolTip.Publish();
    }
    static BindingPanelModels& instance()
    {
        static BindingPanelModels models;
        return models;
    }

    // Drives the visible state of one check box: false, so the box is hidden.
    Mve_SimpleValue<bool> showHiddenBox{false, "Demo.ShowHiddenBox"};
    Mve_SimpleValue<QString> stateToolTip{"What the transport is doing", "Demo.StateToolTip"};
};

const char* const kTitleFontKey = "FontSettings.DemoBindingPanel.Title.Font";

Kel_CheckBox* addCheckBox(QVBoxLayout* layout, QWidget* parent, const char* name, const QString& text,
                          const QByteArray& checkedSpec)
{
    auto* box = new Kel_CheckBox(parent, name);
    box->setText(text);
    box->setCheckedStateConnectionSpec(checkedSpec);
    layout->addWidget(box);
    return box;
}

QWidget* createBindingPanel(QWidget* parent)
{
    DemoModels::instance();
    BindingPanelModels::instance();
    QFont title;
    title.setPointSize(title.pointSize() + 4);
    title.setBold(true);
    Kel_FontManager::setFont(QString::fromLatin1(kTitleFontKey), title);

    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);

    // Plain Qt containers hold the bound widgets; connecting the page reaches them all.
    auto* boxes = new QGroupBox(QStringLiteral("Check boxes"), page);
    auto* boxLayout = new QVBoxLayout(boxes);
    addCheckBox(boxLayout, boxes, "mutedBox", QStringLiteral("Muted (Mixer.Muted)"), "$Bus.Muted");
    addCheckBox(boxLayout, boxes, "playingBox", QStringLiteral("Playing (Transport.Playing)"), "Transport.Playing");
    auto* mutedWhilePlaying = addCheckBox(boxLayout, boxes, "mutedWhilePlayingBox",
                                          QStringLiteral("Muted, enabled only while playing"), "$Bus.Muted");
    mutedWhilePlaying->setEnabledStateConnectionSpec("Transport.Playing");
    addCheckBox(boxLayout, boxes, "lockedBox", QStringLiteral("Locked (read-only Mixer.Locked: a click snaps back)"),
                "$Bus.Locked");
    auto* hidden = addCheckBox(boxLayout, boxes, "hiddenBox", QStringLiteral("Hidden by Demo.ShowHiddenBox"),
                               "$Bus.Muted");
    hidden->setVisibleStateConnectionSpec("Demo.ShowHiddenBox");
    addCheckBox(boxLayout, boxes, "unboundBox", QStringLiteral("No model: disabled"), QByteArray());
    layout->addWidget(boxes);

    auto* labels = new QGroupBox(QStringLiteral("Labels"), page);
    auto* form = new QFormLayout(labels);
    auto* state = new Kel_Label(labels, "stateLabel");
    state->setTextConnectionSpec("Transport.State");
    state->setToolTipConnections("Demo.StateToolTip");
    state->setFontConnectionSpec(kTitleFontKey);
    form->addRow(QStringLiteral("Transport.State"), state);
    auto* volume = new Kel_LongLabel(labels, "volumeLabel");
    volume->SetConnectionName("$Bus.Volume");
    form->addRow(QStringLiteral("Mixer.Volume"), volume);
    auto* missing = new Kel_Label(labels, "missingLabel");
    missing->setTextConnectionSpec("Demo.NotPublished");
    form->addRow(QStringLiteral("Demo.NotPublished (no model: empty)"), missing);
    layout->addWidget(labels);

    auto* buttons = new QHBoxLayout;
    DemoModels& models = DemoModels::instance();
    auto addButton = [&](const QString& text, std::function<void()> f) {
        auto* b = new QPushButton(text, page);
        QObject::connect(b, &QPushButton::clicked, page, f);
        buttons->addWidget(b);
    };
    addButton(QStringLiteral("Play / Stop"), [&models] {
        Mvt_Action<void()>::Listener(models.playing.getValue() ? "Transport.Stop" : "Transport.Play",
                                     Mv_ConnectionEnvironment::blankEnvironment())
            .call();
    });
    addButton(QStringLiteral("Volume -5"), [&models] { models.volume.setValue(qMax(0L, models.volume.getValue() - 5)); });
    addButton(QStringLiteral("Show hidden box"), [] {
        Mve_SimpleValue<bool>& show = BindingPanelModels::instance().showHiddenBox;
        show.setValue(!show.getValue());
    });
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addStretch();

    // "$Bus" stands for the mixer, as a form reused per channel would see it.
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Bus"), QStringLiteral("Mixer"));
    Kel_ConnectionUtils::recursiveConnect(page, env);
    return page;
}

// Tries to untick the read-only box: the model refuses and the box stays ticked.
void clickLockedBox(QWidget* page)
{
    if (auto* locked = page->findChild<Kel_CheckBox*>(QStringLiteral("lockedBox")))
        locked->click();
}

const DemoPanelRegistrar registrar({QStringLiteral("Bound widgets"), 200, &createBindingPanel, &clickLockedBox});

} // namespace
