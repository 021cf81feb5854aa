// "Widget gallery": the value, choice, reveal and container widgets and the
// status window, each bound to this panel's own models by name.
#include "DemoPanel.h"

#include "Kel_ActionButton.h"
#include "Kel_ActionDialog.h"
#include "Kel_Bitmap.h"
#include "Kel_Busy.h"
#include "Kel_Sprite.h"
#include "Kel_CheckBox.h"
#include "Kel_CheckBoxList.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_Double.h"
#include "Kel_DropdownList.h"
#include "Kel_EnhancedCheckBoxList.h"
#include "Kel_ImageMappedButtons.h"
#include "Kel_Label.h"
#include "Kel_PlayButton.h"
#include "Kel_PopupDisplay.h"
#include "Kel_ProgressThermometer.h"
#include "Kel_RadioGroupListBox.h"
#include "Kel_RevealBody.h"
#include "Kel_RevealButton.h"
#include "Kel_RevealHeader.h"
#include "Kel_ScrollView.h"
#include "Kel_ListSelectionDialog.h"
#include "Kel_LongLabel.h"
#include "Kel_StatusWindow.h"
#include "Mve_Action.h"
#include "Mve_ActionArray.h"
#include "Mve_Array.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The gallery's models, published under "Gallery." the first time the panel is built.
struct GalleryModels
{
    GalleryModels()
    {
        tracks.addField<QString>(QStringLiteral("name"));
        tracks.addField<bool>(QStringLiteral("checked"));
        tracks.addField<QString>(QStringLiteral("id"));
        const char* const names[][2] = {{"Dialogue", "DX"}, {"Music", "MX"}, {"Effects", "FX"}, {"Ambience", "AMB"}};
        for (const auto& n : names) {
            const long row = tracks.appendRow();
            tracks.setValue(row, QStringLiteral("name"), QString::fromLatin1(n[0]));
            tracks.setValue(row, QStringLiteral("id"), QString::fromLatin1(n[1]));
        }
        tracks.setValue(0, QStringLiteral("checked"), true);

        togglePlay.setFunction([this] {
            playState.setValue(playState.getValue() == QLatin1String("playing") ? QStringLiteral("stopped")
                                                                                  : QStringLiteral("playing"));
        });
        transport.setFunction([this](long i) {
            const char* const what[] = {"Rewind", "Play", "Fast forward"};
            lastTransport.setValue(QStringLiteral("Last pressed: %1").arg(QString::fromLatin1(what[i % 3])));
        });
        resetGain.setFunction([this] { gain.setValue(1.0); });

        // The "long work": a timer advances the progress until it is done or cancelled.
        work.setInterval(60);
        QObject::connect(&work, &QTimer::timeout, [this] {
            const double next = progress.getValue() + 0.01;
            if (next >= 1.0) {
                finishWork(QStringLiteral("Done"));
                return;
            }
            progress.setValue(next);
            message.setValue(QStringLiteral("Rendering frame %1 of 100").arg(int(next * 100)));
        });
        startWork.setFunction([this] {
            progress.setValue(-1.0); // unknown at first: the thermometer sweeps
            message.setValue(QStringLiteral("Preparing..."));
            busy.setValue(true);
            active.setValue(true);
            QTimer::singleShot(800, &work, [this] {
                if (active.getValue()) {
                    progress.setValue(0.0);
                    work.start();
                }
            });
        });
        cancel.setFunction([this] { finishWork(QStringLiteral("Cancelled")); });

        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{
                 &gain, &busy, &imagePath, &tracks, &currentTrack, &formats, &formatIndex, &frameRate, &playState,
                 &togglePlay, &transport, &transportTips, &lastTransport, &showDetails, &detailsTitle, &progress,
                 &message, &active, &cancel, &startWork, &resetGain, &lastWork, &chosenTrack})
            m->Publish();
    }
    static GalleryModels& instance()
    {
        static GalleryModels models;
        return models;
    }
    void finishWork(const QString& how)
    {
        work.stop();
        busy.setValue(false);
        active.setValue(false);
        lastWork.setValue(how);
    }

    Mve_SimpleValue<double> gain{0.75, "Gallery.Gain"};
    Mve_SimpleValue<bool> busy{false, "Gallery.Busy"};
    Mve_SimpleValue<QString> imagePath{QStringLiteral("Images/FormPlay.png"), "Gallery.ImagePath"};
    Mve_RecordArray tracks{"Gallery.Tracks"};
    Mve_SimpleValue<QString> currentTrack{QStringLiteral("MX"), "Gallery.Tracks.currentID"};
    Mve_Array<QString> formats{std::vector<QString>{QStringLiteral("1080p"), QStringLiteral("720p"),
                                                    QStringLiteral("PAL"), QStringLiteral("NTSC")},
                               "Gallery.Formats"};
    Mve_SimpleValue<long> formatIndex{0, "Gallery.FormatIndex"};
    Mve_SimpleValue<QString> frameRate{QStringLiteral("25"), "Gallery.FrameRate"};
    Mve_SimpleValue<QString> playState{QStringLiteral("stopped"), "Gallery.PlayState"};
    Mve_Action<void()> togglePlay{{}, "Gallery.TogglePlay"};
    Mve_ActionArray<void()> transport{{}, 3, "Gallery.Transport"};
    Mve_Array<QString> transportTips{std::vector<QString>{QStringLiteral("Rewind"), QStringLiteral("Play"),
                                                          QStringLiteral("Fast forward")},
                                     "Gallery.Transport.toolTip"};
    Mve_SimpleValue<QString> lastTransport{QStringLiteral("Click a shape"), "Gallery.LastTransport"};
    Mve_SimpleValue<bool> showDetails{false, "Gallery.ShowDetails"};
    Mve_SimpleValue<QString> detailsTitle{QStringLiteral("Details (a reveal group)"), "Gallery.DetailsTitle"};
    Mve_SimpleValue<double> progress{0.0, "Gallery.Progress"};
    Mve_SimpleValue<QString> message{QString(), "Gallery.Message"};
    Mve_SimpleValue<bool> active{false, "Gallery.WorkActive"};
    Mve_Action<void()> cancel{{}, "Gallery.CancelWork"};
    Mve_Action<void()> startWork{{}, "Gallery.StartWork"};
    Mve_Action<void()> resetGain{{}, "Gallery.ResetGain"};
    Mve_SimpleValue<QString> lastWork{QStringLiteral("Not run yet"), "Gallery.LastWork"};
    Mve_SimpleValue<long> chosenTrack{-1, "Gallery.ChosenTrack"};
    QTimer work;
};

template <class W>
W* make(QWidget* parent, const char* name)
{
    return new W(parent, name);
}

QGroupBox* group(const QString& title, QWidget* parent)
{
    auto* box = new QGroupBox(title, parent);
    new QFormLayout(box);
    return box;
}

void addRow(QGroupBox* box, const QString& label, QWidget* widget)
{
    static_cast<QFormLayout*>(box->layout())->addRow(label, widget);
}

// A new widget in the next row of the group, after label.
template <class W>
W* row(QGroupBox* box, const char* name, const QString& label)
{
    W* widget = make<W>(box, name);
    addRow(box, label, widget);
    return widget;
}

QWidget* createGalleryPanel(QWidget* parent)
{
    GalleryModels::instance();
    auto* page = new QWidget(parent);
    auto* pageLayout = new QVBoxLayout(page);
    auto* scroll = make<Kel_ScrollView>(page, "galleryScroll");
    pageLayout->addWidget(scroll);
    auto* contents = new QWidget;
    auto* grid = new QGridLayout(contents);
    scroll->setWidget(contents);

    // Values.
    auto* values = group(QStringLiteral("Values"), contents);
    auto* gain = row<Kel_Double>(values, "gain", QStringLiteral("Kel_Double (Gallery.Gain)"));
    gain->setConnectionSpec("Gallery.Gain");
    auto* busyBox = make<Kel_CheckBox>(values, "busyBox");
    busyBox->setText(QStringLiteral("Busy"));
    busyBox->setCheckedStateConnectionSpec("Gallery.Busy");
    auto* busy = make<Kel_Busy>(values, "busy");
    busy->setConnection("Gallery.Busy");
    auto* busyRow = new QWidget(values);
    auto* busyLayout = new QHBoxLayout(busyRow);
    busyLayout->setContentsMargins(0, 0, 0, 0);
    busyLayout->addWidget(busyBox);
    busyLayout->addWidget(busy);
    busyLayout->addStretch();
    addRow(values, QStringLiteral("Kel_Busy (Gallery.Busy)"), busyRow);
    auto* sprite = row<Kel_Sprite>(values, "recordLight", QStringLiteral("Kel_Sprite (a film strip of 8 frames)"));
    sprite->setImagePath(QStringLiteral("Images/Demo/RecordLight.png"));
    sprite->setFrameCount(8);
    sprite->setInterval(90);
    auto* picture = row<Kel_PopupDisplay>(values, "picture", QStringLiteral("Kel_PopupDisplay (Gallery.ImagePath)"));
    picture->addItems({QStringLiteral("Images/FormPlay.png"), QStringLiteral("Images/GalleryPause.png"),
                       QStringLiteral("Images/GalleryTransport.png"), QStringLiteral("Images/Missing.png")});
    picture->setCurrentNameConnectionSpec("Gallery.ImagePath");
    auto* bitmap = row<Kel_Bitmap>(values, "bitmap", QStringLiteral("Kel_Bitmap"));
    bitmap->setPathConnection("Gallery.ImagePath");
    bitmap->setMinimumHeight(50);
    grid->addWidget(values, 0, 0);

    // Choices among rows.
    auto* choices = group(QStringLiteral("Lists"), contents);
    auto* tracks = row<Kel_CheckBoxList>(choices, "tracks", QStringLiteral("Kel_CheckBoxList"));
    tracks->setListConnectionSpec("Gallery.Tracks");
    auto* moreTracks = row<Kel_EnhancedCheckBoxList>(choices, "moreTracks", QStringLiteral("Kel_EnhancedCheckBoxList"));
    moreTracks->setListConnectionSpec("Gallery.Tracks");
    auto* solo = row<Kel_RadioGroupListBox>(choices, "solo", QStringLiteral("Kel_RadioGroupListBox"));
    solo->SetConn("Gallery.Tracks");
    auto* format = row<Kel_DropdownList>(choices, "format", QStringLiteral("Kel_DropdownList"));
    format->setListConnectionSpec("Gallery.Formats");
    format->setCurrentIndexConnectionSpec("Gallery.FormatIndex");
    auto* rate = row<Kel_PopupDisplay>(choices, "rate", QStringLiteral("Kel_PopupDisplay"));
    rate->addItems({QStringLiteral("24"), QStringLiteral("25"), QStringLiteral("30")});
    rate->setCurrentNameConnectionSpec("Gallery.FrameRate");
    grid->addWidget(choices, 0, 1, 2, 1);

    // Transport.
    auto* transport = group(QStringLiteral("Transport"), contents);
    auto* play = row<Kel_PlayButton>(transport, "play", QStringLiteral("Kel_PlayButton"));
    play->setNormalImage("Images/FormPlay.png");
    play->setTrackingImage("Images/FormPlayPressed.png");
    play->setPlayingNormalImage("Images/GalleryPause.png");
    play->setPlayingTrackingImage("Images/GalleryPausePressed.png");
    play->setActionScript("Gallery.TogglePlay()");
    play->setPlayStateConnSpec("Gallery.PlayState");
    auto* state = row<Kel_Label>(transport, "playState", QStringLiteral("Gallery.PlayState"));
    state->setTextConnectionSpec("Gallery.PlayState");
    auto* shapes = row<Kel_ImageMappedButtons>(transport, "shapes", QStringLiteral("Kel_ImageMappedButtons"));
    shapes->setImage("Images/GalleryTransport.png");
    shapes->setTrackingImage("Images/GalleryTransportPressed.png");
    shapes->setMapImage("Images/GalleryTransportMap.png");
    shapes->setButtonColors({QStringLiteral("#ff0000"), QStringLiteral("#00ff00"), QStringLiteral("#0000ff")});
    shapes->setBaseConnectionSpec("Gallery.Transport");
    auto* last = row<Kel_Label>(transport, "lastTransport", QString());
    last->setTextConnectionSpec("Gallery.LastTransport");
    grid->addWidget(transport, 1, 0);

    // A reveal group.
    auto* reveal = new QGroupBox(QStringLiteral("Reveal"), contents);
    auto* revealLayout = new QVBoxLayout(reveal);
    auto* header = make<Kel_RevealHeader>(reveal, "detailsHeader");
    header->setRevealStateConnection("Gallery.ShowDetails");
    header->setTextConnectionSpec("Gallery.DetailsTitle");
    auto* body = make<Kel_RevealBody>(reveal, "detailsBody");
    body->setRevealStateConnection("Gallery.ShowDetails");
    auto* bodyLayout = new QFormLayout(body);
    auto* bodyGain = make<Kel_Double>(body, "bodyGain");
    bodyGain->setConnectionSpec("Gallery.Gain");
    bodyLayout->addRow(QStringLiteral("Gain, again"), bodyGain);
    revealLayout->addWidget(header);
    revealLayout->addWidget(body);
    revealLayout->addStretch();
    grid->addWidget(reveal, 2, 0);

    // Long work with a status window, and an action dialog.
    auto* work = group(QStringLiteral("Dialogs"), contents);
    auto* start = new Kel_ActionButton(work, "startWork", QStringLiteral("Start long work"),
                                       QStringLiteral("Gallery.StartWork()"));
    addRow(work, QStringLiteral("Kel_StatusWindow"), start);
    auto* lastWork = row<Kel_Label>(work, "lastWork", QString());
    lastWork->setTextConnectionSpec("Gallery.LastWork");
    auto* thermometer = row<Kel_ProgressThermometer>(work, "thermometer", QStringLiteral("Kel_ProgressThermometer"));
    thermometer->setProgressConnectionSpec("Gallery.Progress");
    auto* status = make<Kel_StatusWindow>(page, "statusWindow");
    status->setMessageConnectionSpec("Gallery.Message");
    status->setProgressConnectionSpec("Gallery.Progress");
    status->setCancelConnectionSpec("Gallery.CancelWork");
    status->setActiveStateConnectionSpec("Gallery.WorkActive");
    status->resize(360, status->sizeHint().height());

    auto* dialog = make<Kel_ActionDialog>(page, "resetDialog");
    dialog->setWindowTitle(QStringLiteral("Reset gain"));
    dialog->setActionScript("Gallery.ResetGain()");
    auto* dialogLayout = new QVBoxLayout(dialog);
    dialogLayout->addWidget(new QLabel(QStringLiteral("OK runs Gallery.ResetGain(); the gain now is:"), dialog));
    auto* dialogGain = make<Kel_Double>(dialog, "dialogGain");
    dialogGain->setConnectionSpec("Gallery.Gain");
    dialogGain->setReadOnly(true);
    dialogLayout->addWidget(dialogGain);
    dialogLayout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog));
    auto* openDialog = new QPushButton(QStringLiteral("Reset gain..."), work);
    QObject::connect(openDialog, &QPushButton::clicked, dialog, &QDialog::open);
    addRow(work, QStringLiteral("Kel_ActionDialog"), openDialog);
    auto* chooser = make<Kel_ListSelectionDialog>(page, "trackChooser");
    chooser->setWindowTitle(QStringLiteral("Choose a track"));
    chooser->setPrompt(QStringLiteral("The track to solo (Gallery.ChosenTrack):"));
    chooser->setListConnectionSpec("Gallery.Tracks.name");
    chooser->setSelectionConnectionSpec("Gallery.ChosenTrack");
    auto* chooseRow = new QWidget(work);
    auto* chooseLayout = new QHBoxLayout(chooseRow);
    chooseLayout->setContentsMargins(0, 0, 0, 0);
    auto* openChooser = new QPushButton(QStringLiteral("Choose a track..."), chooseRow);
    QObject::connect(openChooser, &QPushButton::clicked, chooser, &QDialog::open);
    auto* chosenRow = make<Kel_LongLabel>(chooseRow, "chosenTrack");
    chosenRow->SetConnectionName("Gallery.ChosenTrack");
    chooseLayout->addWidget(openChooser);
    chooseLayout->addWidget(chosenRow);
    chooseLayout->addStretch();
    addRow(work, QStringLiteral("Kel_ListSelectionDialog"), chooseRow);
    grid->addWidget(work, 2, 1);
    grid->setRowStretch(3, 1);

    // The dialogs are windows of the page: connecting the page reaches them too.
    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

// Opens the reveal group and ticks every track with the enhanced list's "All".
void revealAndTickAll(QWidget* page)
{
    if (auto* header = page->findChild<Kel_RevealHeader*>(QStringLiteral("detailsHeader"))) {
        if (!header->button()->isRevealed())
            header->button()->click();
    }
    if (auto* list = page->findChild<Kel_EnhancedCheckBoxList*>(QStringLiteral("moreTracks")))
        list->allButton()->click();
}

const DemoPanelRegistrar registrar({QStringLiteral("Widget gallery"), 450, &createGalleryPanel, &revealAndTickAll});

} // namespace
