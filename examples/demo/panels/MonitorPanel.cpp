// "Monitor": a Kel_Monitor showing a generated test picture that follows the
// aspect-ratio menu, image-button transport controls that drive the play
// state and rate (with the monitor's play-rate overlay), a volume slider, a
// mute button and radio buttons for the playback speed. Everything here is
// bound by name to the panel's own models and connected in one go.
#include "DemoPanel.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_Monitor.h"
#include "Kel_PopupMenu.h"
#include "Kel_Slider.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_StandardRadioButton.h"
#include "Mnu_QtManager.h"
#include "Mv_ConnectionDict.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>
#include <memory>

namespace {

const int kPictureHeight = 360;
const int kFramesPerSecond = 25;

// The panel's models. The transport's names ("MainMonitor.PlayState",
// "PlayInterface.playRate") are the monitor's fixed ones; they are published
// here unless another part of the application holds them already, and are
// driven only through listeners either way.
struct MonitorPanelModels
{
    MonitorPanelModels()
    {
        ratios.addField<QString>("id");
        ratios.addField<QString>("name");
        ratios.addField<long>("numerator");
        ratios.addField<long>("denominator");
        addRatio("4 x 3", "&4:3", 4, 3);
        addRatio("16 x 9", "&16:9", 16, 9);
        addRatio("2.35 x 1", "&2.35:1 (scope)", 235, 100);

        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{
                 &ratios, &currentRatio, &picture, &speed, &shuttle, &rewinding, &fastForwarding, &muted, &volume,
                 &volumeMin, &volumeMax, &volumeEnabled, &status, &rectangle})
            m->Publish();
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&playStateModel, &playRateModel})
            if (!Mv_ConnectionDict::Singleton()->isPublished(m->GetConnectionName()))
                m->Publish();

        // Any change of the transport's inputs recomputes what follows from them.
        const auto blank = Mv_ConnectionEnvironment::blankEnvironment();
        for (Mv_ListenerBase* l : std::initializer_list<Mv_ListenerBase*>{&playState, &speedIn, &shuttleIn, &mutedIn,
                                                                          &ratioIn, &rectangleIn, &volumeIn})
            l->setReceiveMessageCB([this](const Mv_MessageInterface&) { update(); });
        for (Mv_ListenerBase* l : std::initializer_list<Mv_ListenerBase*>{&playState, &playRate, &speedIn, &shuttleIn,
                                                                          &mutedIn, &ratioIn, &rectangleIn, &volumeIn})
            l->connect(blank);
        update();
    }

    static MonitorPanelModels& instance()
    {
        static MonitorPanelModels models;
        return models;
    }

    void addRatio(const char* id, const char* name, long n, long d)
    {
        const long row = ratios.appendRow();
        ratios.setValue<QString>(row, "id", QString::fromLatin1(id));
        ratios.setValue<QString>(row, "name", QString::fromLatin1(name));
        ratios.setValue<long>(row, "numerator", n);
        ratios.setValue<long>(row, "denominator", d);
    }

    // The rate the transport plays at: the speed, backwards and four times
    // faster while rewinding, four times faster while fast-forwarding.
    double rate() const
    {
        const double factor = speedIn.value(QStringLiteral("1")).toDouble();
        const QString mode = shuttleIn.value();
        if (mode == QLatin1String("rewind"))
            return -4 * factor;
        if (mode == QLatin1String("fastforward"))
            return 4 * factor;
        return factor > 0 ? factor : 1.0;
    }

    void update()
    {
        if (mUpdating)
            return;
        mUpdating = true;
        const bool playing = playState.value() == QLatin1String("playing");
        const QString mode = shuttleIn.value();
        // Shuttling starts the transport, stopping ends the shuttle.
        if (!playing && mode != QLatin1String("normal") && !mode.isEmpty()) {
            if (mLastPlaying)
                shuttleIn.set(QStringLiteral("normal"));
            else
                playState.set(QStringLiteral("playing"));
        }
        mLastPlaying = playState.value() == QLatin1String("playing");
        rewinding.setValue(shuttleIn.value() == QLatin1String("rewind"));
        fastForwarding.setValue(shuttleIn.value() == QLatin1String("fastforward"));
        playRate.set(rate());
        volumeEnabled.setValue(!mutedIn.value(false));
        drawPicture();
        status.setValue(QStringLiteral("%1 at %2x  ·  volume %3%4  ·  picture %5 x %6 in the monitor")
                            .arg(playState.value(), QString::number(playRate.value(1.0)))
                            .arg(volumeIn.value(0))
                            .arg(mutedIn.value(false) ? QStringLiteral(" (muted)") : QString())
                            .arg(rectangleIn.value().width())
                            .arg(rectangleIn.value().height()));
        mUpdating = false;
    }

    // Moves the picture on by one tick of playback.
    void advance()
    {
        mFrame += playRate.value(1.0);
        drawPicture();
    }

    // A test card in the current ratio: colour bars, a circle that stays
    // round only when the monitor fits the ratio, and a moving frame counter.
    void drawPicture()
    {
        long n = 16;
        long d = 9;
        for (long row = 0; row < ratios.rowCount(); ++row) {
            if (ratios.field<QString>("id")->at(row) == ratioIn.value()) {
                n = ratios.field<long>("numerator")->at(row);
                d = ratios.field<long>("denominator")->at(row);
            }
        }
        const int h = kPictureHeight;
        const int w = int(h * n / d);
        QPixmap card(w, h);
        card.fill(Qt::black);
        QPainter p(&card);
        p.setRenderHint(QPainter::Antialiasing);
        const QColor bars[] = {QColor(192, 192, 192), QColor(192, 192, 0), QColor(0, 192, 192), QColor(0, 192, 0),
                               QColor(192, 0, 192),   QColor(192, 0, 0),   QColor(0, 0, 192)};
        for (int i = 0; i < 7; ++i)
            p.fillRect(QRectF(w * i / 7.0, 0, w / 7.0 + 1, h * 0.67), bars[i]);
        QLinearGradient ramp(0, 0, w, 0);
        ramp.setColorAt(0, Qt::black);
        ramp.setColorAt(1, Qt::white);
        p.fillRect(QRectF(0, h * 0.67, w, h * 0.13), ramp);
        p.setPen(QPen(Qt::white, 3));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(w / 2.0, h / 2.0), h * 0.38, h * 0.38);
        p.drawLine(QPointF(w / 2.0, h * 0.12), QPointF(w / 2.0, h * 0.88));
        p.drawLine(QPointF(w / 2.0 - h * 0.38, h / 2.0), QPointF(w / 2.0 + h * 0.38, h / 2.0));
        const double sweep = std::fmod(std::fmod(mFrame, 100.0) + 100.0, 100.0) / 100.0;
        p.fillRect(QRectF(sweep * (w - 8), h * 0.8, 8, h * 0.2), QColor(255, 140, 0));
        QFont font;
        font.setPixelSize(h / 14);
        font.setBold(true);
        p.setFont(font);
        p.setPen(Qt::white);
        p.drawText(QRectF(0, h * 0.8, w, h * 0.2), Qt::AlignCenter,
                   QStringLiteral("%1   frame %2").arg(ratioIn.value(), QString::number(qint64(std::floor(mFrame)))));
        p.end();
        picture.setValue(card);
    }

    Mve_RecordArray ratios{"DemoMonitor.AspectRatios"};
    Mve_SimpleValue<QString> currentRatio{"16 x 9", "DemoMonitor.Current.AspectRatio"};
    Mve_SimpleValue<QPixmap> picture{QPixmap(), "DemoMonitor.monitorImage"};
    Mve_SimpleValue<QString> playStateModel{"stopped", "MainMonitor.PlayState"};
    Mve_SimpleValue<double> playRateModel{1.0, "PlayInterface.playRate"};
    Mve_SimpleValue<QString> speed{"1", "DemoMonitor.Speed"};
    Mve_SimpleValue<QString> shuttle{"normal", "DemoMonitor.Shuttle"};
    Mve_SimpleValue<bool> rewinding{false, "DemoMonitor.Rewinding"};
    Mve_SimpleValue<bool> fastForwarding{false, "DemoMonitor.FastForwarding"};
    Mve_SimpleValue<bool> muted{false, "DemoMonitor.Muted"};
    Mve_SimpleValue<long> volume{70, "DemoMonitor.Volume"};
    Mve_SimpleValue<long> volumeMin{0, "DemoMonitor.VolumeRange.min"};
    Mve_SimpleValue<long> volumeMax{100, "DemoMonitor.VolumeRange.max"};
    Mve_SimpleValue<bool> volumeEnabled{true, "DemoMonitor.VolumeEnabled"};
    Mve_SimpleValue<QString> status{"", "DemoMonitor.Status"};
    Mve_SimpleValue<QRect> rectangle{QRect(), "DemoMonitor.AspectRatio.Rectangle"}; // written by the monitor

    Mvt_SimpleValue<QString>::Listener playState{"MainMonitor.PlayState"};
    Mvt_SimpleValue<double>::Listener playRate{"PlayInterface.playRate"};
    Mvt_SimpleValue<QString>::Listener speedIn{"DemoMonitor.Speed"};
    Mvt_SimpleValue<QString>::Listener shuttleIn{"DemoMonitor.Shuttle"};
    Mvt_SimpleValue<bool>::Listener mutedIn{"DemoMonitor.Muted"};
    Mvt_SimpleValue<QString>::Listener ratioIn{"DemoMonitor.Current.AspectRatio"};
    Mvt_SimpleValue<QRect>::Listener rectangleIn{"DemoMonitor.AspectRatio.Rectangle"};
    Mvt_SimpleValue<long>::Listener volumeIn{"DemoMonitor.Volume"};

private:
    double mFrame = 0;
    bool mUpdating = false;
    bool mLastPlaying = false;
};

Kel_StandardBistateButton* addBistate(QHBoxLayout* row, QWidget* parent, const char* name, const char* images,
                                      const char* on, const char* off, const char* state, const QString& tip)
{
    auto* button = new Kel_StandardBistateButton(parent, name, QString::fromLatin1(images), QString::fromLatin1(on),
                                                 QString::fromLatin1(off), QString::fromLatin1(state), tip);
    row->addWidget(button);
    return button;
}

Kel_StandardRadioButton* addRadio(QHBoxLayout* row, QWidget* parent, const char* name, const char* images,
                                  const char* stateSpec, const char* stateName, const char* script, const QString& tip)
{
    auto* radio = new Kel_StandardRadioButton(parent, name);
    radio->SetImageBase(images);
    radio->SetStateConnectionSpec(stateSpec);
    radio->SetStateName(QString::fromLatin1(stateName));
    radio->SetActionScriptOn(script);
    radio->SetTooltipText(tip);
    row->addWidget(radio);
    return radio;
}

QWidget* createMonitorPanel(QWidget* parent)
{
    MonitorPanelModels& models = MonitorPanelModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);

    auto* monitor = new Kel_Monitor(page, QStringLiteral("demoMonitor"), QStringLiteral("DemoMonitor"));
    monitor->setMinimumSize(320, 180);
    monitor->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    monitor->setShowSlug(true);
    monitor->setPopupMenuFile(QStringLiteral("DemoMonitorRatios")); // right-click: the ratio menu
    layout->addWidget(monitor, 1);

    auto* controls = new QHBoxLayout;
    addBistate(controls, page, "rewindButton", "Demo/Rewind", "DemoMonitor.Shuttle = \"rewind\"",
               "DemoMonitor.Shuttle = \"normal\"", "DemoMonitor.Rewinding", QStringLiteral("Rewind"));
    addRadio(controls, page, "playButton", "Demo/Play", "MainMonitor.PlayState", "playing",
             "MainMonitor.PlayState = \"playing\"", QStringLiteral("Play"));
    addRadio(controls, page, "stopButton", "Demo/Stop", "MainMonitor.PlayState", "stopped",
             "MainMonitor.PlayState = \"stopped\"", QStringLiteral("Stop"));
    addBistate(controls, page, "fastForwardButton", "Demo/FastForward", "DemoMonitor.Shuttle = \"fastforward\"",
               "DemoMonitor.Shuttle = \"normal\"", "DemoMonitor.FastForwarding", QStringLiteral("Fast forward"));
    controls->addSpacing(16);
    controls->addWidget(new QLabel(QStringLiteral("Speed"), page));
    addRadio(controls, page, "halfSpeedButton", "Demo/SpeedHalf", "DemoMonitor.Speed", "0.5",
             "DemoMonitor.Speed = \"0.5\"", QStringLiteral("Half speed"));
    addRadio(controls, page, "normalSpeedButton", "Demo/SpeedOne", "DemoMonitor.Speed", "1",
             "DemoMonitor.Speed = \"1\"", QStringLiteral("Normal speed"));
    addRadio(controls, page, "doubleSpeedButton", "Demo/SpeedTwo", "DemoMonitor.Speed", "2",
             "DemoMonitor.Speed = \"2\"", QStringLiteral("Double speed"));
    controls->addSpacing(16);
    addBistate(controls, page, "muteButton", "Demo/Mute", "DemoMonitor.Muted = true", "DemoMonitor.Muted = false",
               "DemoMonitor.Muted", QStringLiteral("Mute"));
    auto* volume = new Kel_Slider(page, "volumeSlider");
    volume->setFixedSize(volume->sizeHint()); // the scale is taken from the width when the range arrives
    volume->setValueConnSpec("DemoMonitor.Volume");
    volume->setRangeConnSpec("DemoMonitor.VolumeRange");
    volume->setEnabledStateConnSpec("DemoMonitor.VolumeEnabled");
    volume->setEnabledToolTip(QStringLiteral("Volume"));
    volume->setDisabledToolTip(QStringLiteral("Muted"));
    controls->addWidget(volume);
    controls->addStretch();

    // The same ratio menu as the monitor's right-click, from a button.
    auto* ratioButton = new QToolButton(page);
    ratioButton->setText(QStringLiteral("Aspect ratio"));
    ratioButton->setPopupMode(QToolButton::InstantPopup);
    auto* ratioMenu = new Kel_PopupMenu(ratioButton, "ratioMenu");
    QByteArray menuName("DemoMonitorRatios");
    auto* ratioManager = new Mnu_QtManager(ratioMenu, menuName.data());
    QObject::connect(ratioButton, &QObject::destroyed, [ratioManager] { delete ratioManager; });
    ratioManager->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    ratioButton->setMenu(ratioMenu);
    controls->addWidget(ratioButton);
    layout->addLayout(controls);

    auto* status = new Kel_Label(page, "monitorStatus");
    status->setTextConnectionSpec("DemoMonitor.Status");
    layout->addWidget(status);

    // Playback moves the picture on while the transport plays.
    auto* clock = new QTimer(page);
    clock->setInterval(1000 / kFramesPerSecond);
    QObject::connect(clock, &QTimer::timeout, page, [&models, clock] {
        if (models.playState.value() == QLatin1String("playing"))
            models.advance();
        else
            clock->stop();
    });
    auto* playing = new Mvt_SimpleValue<QString>::Listener(QStringLiteral("MainMonitor.PlayState"));
    playing->setReceiveMessageCB([playing, clock](const Mv_MessageInterface&) {
        if (playing->value() == QLatin1String("playing"))
            clock->start();
    });
    QObject::connect(page, &QObject::destroyed, [playing] { delete playing; });
    playing->connect(Mv_ConnectionEnvironment::blankEnvironment());

    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

// Fast-forwards at double speed, so the status and buttons show a shuttle.
void shuttleForward(QWidget*)
{
    MonitorPanelModels& models = MonitorPanelModels::instance();
    models.speedIn.set(QStringLiteral("2"));
    models.shuttleIn.set(QStringLiteral("fastforward"));
}

const DemoPanelRegistrar registrar({QStringLiteral("Monitor"), 500, &createMonitorPanel, &shuttleForward});

} // namespace
