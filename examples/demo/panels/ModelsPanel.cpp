// "Models": the demo models seen through plain listeners, the way any
// application code can watch and drive published models.
#include "DemoModels.h"
#include "DemoPanel.h"
#include "DemoValueLabel.h"

#include "Mvt_ArrayContainer.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

namespace {

// The clip list as text, rebuilt whenever the container reports a change.
class ClipListLabel : public QLabel
{
public:
    explicit ClipListLabel(QWidget* parent) : QLabel(parent), mRows("Clips"), mNames("Clips.name")
    {
        mRows.setReceiveMessageCB([this](const Mv_MessageInterface&) { refresh(); });
        mNames.setReceiveMessageCB([this](const Mv_MessageInterface&) { refresh(); });
        mNames.connect(Mv_ConnectionEnvironment::blankEnvironment());
        mRows.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }

private:
    void refresh()
    {
        QStringList lines;
        for (long i = 0; i < mRows.size(); ++i)
            lines.append(QString("%1. %2").arg(i + 1).arg(mNames.element<QString>(i)));
        setText(lines.join('\n'));
    }
    Mvt_ArrayContainer::Listener mRows;
    Mvt_Array<Mvt_SimpleValue<QString>>::Listener mNames;
};

QWidget* createModelsPanel(QWidget* parent)
{
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    for (const char* name : {"Transport.State", "Transport.Playing", "Transport.Speed", "Mixer.Volume",
                             "Mixer.Muted", "Mixer.Locked"})
        form->addRow(QString::fromLatin1(name), new DemoValueLabel(QString::fromLatin1(name), page));
    form->addRow("Clips", new ClipListLabel(page));
    layout->addLayout(form);

    auto* buttons = new QHBoxLayout;
    DemoModels& models = DemoModels::instance();
    auto addButton = [&](const QString& text, std::function<void()> f) {
        auto* b = new QPushButton(text, page);
        QObject::connect(b, &QPushButton::clicked, page, f);
        buttons->addWidget(b);
    };
    addButton("Play", [] { Mvt_Action<void()>::Listener("Transport.Play", Mv_ConnectionEnvironment::blankEnvironment()).call(); });
    addButton("Stop", [] { Mvt_Action<void()>::Listener("Transport.Stop", Mv_ConnectionEnvironment::blankEnvironment()).call(); });
    addButton("Volume +10", [&models] { models.volume.setValue(qMin(100L, models.volume.getValue() + 10)); });
    addButton("Add clip", [&models] { models.addClip(QString("Clip %1").arg(models.clips.rowCount() + 1), 10); });
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addStretch();
    return page;
}

const DemoPanelRegistrar registrar({QStringLiteral("Models"), 100, &createModelsPanel, nullptr});

} // namespace
