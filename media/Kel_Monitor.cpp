#include "Kel_Monitor.h"

#include "Kel_KeymapMgr.h"
#include "Kel_Logging_p.h"
#include "Kel_PopupMenu.h"
#include "Kel_QtCompat.h"
#include "Kel_ResourceImage.h"
#include "Kel_TransparentOverlay.h"
#include "Kel_WhatsThis.h"
#include "Mnu_QtManager.h"
#include "Mv_ConnectionDict.h"
#include "Mvt_Root_Notifications.h"
#include "Ost_Assert.h"
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDomDocument>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QRegion>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace {

const char* const kOverlayEnabledName = "Monitor.PlayRateOverlayEnabled";
const char* const kEraseActionName = "Monitor.EraseToColor.Action";
const char* const kPlaying = "playing";
const unsigned short kShownAlpha = 143;
const int kHideDelayMs = 750;
const int kHideTaskPriority = 5;
const int kOverlayPointSize = 11;
const int kOverlayMaxPointSize = 15;
const int kOverlayWeight = 45;
const int kOverlayBoldWeight = 75;
const int kOverlayLeftMargin = 6;
const int kOverlayBottomMargin = 8;
// Sizes the overlay: wide enough for every rate up to three digits.
const char* const kOverlaySampleText = " << 888x ";

// A text setting of the application, read from its published string model.
QString settingText(const char* name, const char* fallback)
{
    Mvt_SimpleValue<QString>::Listener setting(QString::fromLatin1(name),
                                               Mv_ConnectionEnvironment::blankEnvironment());
    return setting.value(QString::fromLatin1(fallback));
}

// Full-screen playback on a multi-screen desktop shows the material pixel
// for pixel; read once per process.
bool showsFullHdPixelForPixel()
{
    static const bool on = settingText("TYDevParams.FullScreen.Show1920x1080Pixels", "false") == QLatin1String("true");
    return on;
}

} // namespace

Kel_Monitor::Kel_Monitor(QWidget* parent, QString name, QString monitorConn, bool sequenceMonitor)
    : QWidget(parent), mMonitorConn(monitorConn), mSequenceMonitor(sequenceMonitor), mShowSlug(false), mPopupMenuP(nullptr),
      mOverlayEnabledModel(true), mIs4x3(false), mConnected(false), mIsAudioOnly(false), mShowLocalPicture(false),
      mOverlayP(nullptr), mShownAlpha(kShownAlpha), mHideWidgetMode(false), mHidePending(false),
      mDragArmed(false)
{
    setObjectName(name);
    setWindowTitle(name);
    QPalette black = palette();
    black.setColor(QPalette::Window, QColor(QStringLiteral("black")));
    setPalette(black);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::ClickFocus); // for the keys of the "MainMonitor" keymap context

    mMonitorImage.onNotify([this] { handleMsgFromMonitorImage(); });
    mSequence.onMessage([this](const Mv_MessageInterface& message) {
        if (message.is<Mvt_ClipInterface_Notifications::MsgMarkInChanged>())
            handleMarkInChanged();
        else if (message.is<Mvt_ClipInterface_Notifications::MsgMarkOutChanged>())
            handleMarkOutChanged();
        else
            handleMobIDChanged(); // another clip, or the clip came or went
    });
    mCurrentAspectRatio.onNotify([this] { handleAspectRatioChange(); });
    // A changed list of ratios may change the current one's shape.
    for (Kel_BoundPropertyBase* list : std::initializer_list<Kel_BoundPropertyBase*>{
             &mAspectRatios, &mAspectRatioIds, &mAspectRatioNumerators, &mAspectRatioDenominators})
        list->onNotify([this] { updateAspectRatioGeometry(); });
    mPlayState.onNotify([this] { handlePlayStateChanged(); });
    mPlayRate.onNotify([this] { handlePlayRateChanged(); });
    mOverlayEnabled.onNotify([this] {
        // The monitor that held the shared names went away: this one takes them over.
        if (!mOverlayEnabled.isConnected() && !mOverlayEnabledModel.isPublished())
            publishSharedModels();
        else
            handlePlayRateOverlayEnableChanged();
    });
    mAboutToClose.onMessage([this](const Mv_MessageInterface& message) {
        if (!message.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            handleAboutToClose();
    });
    mAppActive.onNotify([this] { handleAppActivated(); });

    // The models the monitor owns.
    mEraseToColorActionP.reset(
        new Mve_Action<void(QColor)>([this](const QColor& color) { eraseMonitorToColor(color); }));
    OST_ASSERT(mEraseToColorActionP);
    publishSharedModels();

    // The transport and the application, whatever the monitor is connected to.
    const auto blank = Mv_ConnectionEnvironment::blankEnvironment();
    mPlayRate.setSpec(QStringLiteral("PlayInterface.playRate"));
    mOverlayEnabled.setSpec(QString::fromLatin1(kOverlayEnabledName));
    mAboutToClose.setSpec(QStringLiteral("MainWindow.AboutToClose"));
    mAppActive.setSpec(QStringLiteral("Application.Active"));
    Kel_BoundPropertyBase::connectAll(blank, {&mPlayRate, &mOverlayEnabled, &mAboutToClose, &mAppActive});

    mSlug = Kel_ResourceImage::load(QStringLiteral("Images/Monitor/VideoMonitorSlug.png"));
    mSlug4x3 = Kel_ResourceImage::load(QStringLiteral("Images/Monitor/Video2ndMonitorSlug4x3.png"));

    initPlayRateOverlay();
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Monitor");
}

Kel_Monitor::~Kel_Monitor()
{
    if (mWatchedWindowP)
        mWatchedWindowP->removeEventFilter(this);
    mPopupManagerP.reset(); // before its menu, a child widget
}

void Kel_Monitor::publishSharedModels()
{
    // Published together: the names stay with the monitor that was first.
    if (mOverlayEnabledModel.isPublished() || Mv_ConnectionDict::Singleton()->isPublished(QString::fromLatin1(kOverlayEnabledName))) {
        qCDebug(lcKelMedia, "Kel_Monitor: %s is published by another monitor", kOverlayEnabledName);
        return;
    }
    mOverlayEnabledModel.SetConnectionName(QString::fromLatin1(kOverlayEnabledName));
    mOverlayEnabledModel.Publish();
    if (mEraseToColorActionP && !Mv_ConnectionDict::Singleton()->isPublished(QString::fromLatin1(kEraseActionName))) {
        mEraseToColorActionP->SetConnectionName(QString::fromLatin1(kEraseActionName));
        mEraseToColorActionP->Publish();
    }
}

void Kel_Monitor::setShowSlug(bool on)
{
    mShowSlug = on;
    update();
}

QString Kel_Monitor::baseName(const char* suffix) const
{
    // Without a monitor connection the monitor's own models stay unbound.
    return mMonitorConn.isEmpty() ? QString() : mMonitorConn + QLatin1String(suffix);
}

void Kel_Monitor::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment;
    const QPointer<Kel_Monitor> self(this);
    if (mSequenceMonitor) {
        mSequence.setSpec(QStringLiteral("MonitorSequence"));
        if (!mSequence.connect(environment))
            return; // a notification deleted the monitor
    }
    mMonitorImage.setSpec(baseName(".monitorImage"));
    mSetMonWidget.setSpec(baseName(".setMonWidget"));
    if (!Kel_BoundPropertyBase::connectAll(environment, {&mMonitorImage, &mSetMonWidget}))
        return;
    connectMonitor();
    if (!self)
        return;

    mMonitorMoved.setSpec(baseName(".MonitorMoved"));
    mMonitorStop.setSpec(QStringLiteral("monitorStop"));
    mCanBeDragged.setSpec(baseName(".CanBeDragged"));
    mPictureRectModel.setSpec(baseName(".AspectRatio.Rectangle"));
    mGlobalOffsetModel.setSpec(baseName(".AspectRatio.RectangleGlobalOffset"));
    if (!Kel_BoundPropertyBase::connectAll(environment, {&mMonitorMoved, &mMonitorStop, &mCanBeDragged,
                                                         &mPictureRectModel, &mGlobalOffsetModel}))
        return;

    // The ratios are the application's, whatever monitor shows them.
    mAspectRatios.setSpec(baseName(".AspectRatios"));
    mAspectRatioIds.setSpec(baseName(".AspectRatios.id"));
    mAspectRatioNumerators.setSpec(baseName(".AspectRatios.numerator"));
    mAspectRatioDenominators.setSpec(baseName(".AspectRatios.denominator"));
    mCurrentAspectRatio.setSpec(baseName(".Current.AspectRatio"));
    if (!Kel_BoundPropertyBase::connectAll(Mv_ConnectionEnvironment::blankEnvironment(),
                                           {&mAspectRatios, &mAspectRatioIds, &mAspectRatioNumerators,
                                            &mAspectRatioDenominators, &mCurrentAspectRatio}))
        return;

    mPlayState.setSpec(QStringLiteral("MainMonitor.PlayState"));
    mAudioOnly.setSpec(QStringLiteral("MainMonitor.isAudioOnly"));
    Kel_BoundPropertyBase::connectAll(environment, {&mPlayState, &mAudioOnly});
}

void Kel_Monitor::connectMonitor()
{
    const QPointer<Kel_Monitor> self(this);
    mConnected = true;
    if (mSetMonWidget.isConnected()) {
        mSetMonWidget->call(this);
        if (!self)
            return;
    }
    updateAspectRatioGeometry();
    if (!self)
        return;
    updatePlayRateOverlay(false, true, false);
}

void Kel_Monitor::disconnectMonitor()
{
    mConnected = false;
}

void Kel_Monitor::drawImage(const QImage& image)
{
    mLocalPicture = QPixmap::fromImage(image);
    mShowLocalPicture = true;
    update();
}

void Kel_Monitor::eraseMonitorToColor(const QColor& color)
{
    // One pixel, drawn scaled over the whole picture rectangle.
    QPixmap plain(1, 1);
    plain.fill(color);
    mLocalPicture = plain;
    mShowLocalPicture = true;
    update();
}

QPixmap Kel_Monitor::imageToDisplayInMonitor()
{
    if (mShowLocalPicture)
        return mLocalPicture;
    QPixmap picture;
    mMonitorImage->get(picture);
    return picture;
}

void Kel_Monitor::handleMsgFromMonitorImage()
{
    mShowLocalPicture = false;
    mLocalPicture = QPixmap();
    setUpdatesEnabled(true);
    repaint();
}

void Kel_Monitor::handleMarkInChanged()
{
    update();
}

void Kel_Monitor::handleMarkOutChanged()
{
    update();
}

void Kel_Monitor::handleMobIDChanged()
{
    update();
}

void Kel_Monitor::handleAspectRatioChange()
{
    const QPointer<Kel_Monitor> self(this);
    if (mCurrentAspectRatio.isConnected()) {
        // Remembers the user's choice for the next session.
        QString id;
        mCurrentAspectRatio->get(id);
        Mvt_Action<void(QString, QString)>::Listener remember(QStringLiteral("Settings.User.Set"),
                                                                Mv_ConnectionEnvironment::blankEnvironment());
        if (remember.isConnectedToModel())
            remember.call(QStringLiteral("Monitor.AspectRatio"), id);
        if (!self)
            return;
    }
    updateAspectRatioGeometry();
    if (!self || !triggerMonitorMoved())
        return;
    updatePlayRateOverlay(false, true, false);
    if (self)
        update();
}

bool Kel_Monitor::triggerMonitorMoved()
{
    if (!mMonitorMoved.isConnected())
        return true;
    const QPointer<Kel_Monitor> self(this);
    mMonitorMoved->call();
    return !self.isNull();
}

void Kel_Monitor::updateAspectRatioGeometry()
{
    if (!mCurrentAspectRatio.isConnected())
        return;
    QString cAspectRatio;
    mCurrentAspectRatio->get(cAspectRatio);
    mIs4x3 = cAspectRatio == QLatin1String("4 x 3");
    if (!mConnected)
        return;

    long aspectRatioN = 0;
    long aspectRatioD = 0;
    const long count = mAspectRatios->size();
    for (long i = 0; i < count; ++i) {
        if (mAspectRatioIds->element<QString>(i) != cAspectRatio)
            continue;
        aspectRatioN = mAspectRatioNumerators->element<long>(i, 0);
        aspectRatioD = mAspectRatioDenominators->element<long>(i, 0);
        break;
    }
    OST_ASSERT( ( 0 != aspectRatioN ) && "Could not find aspect ratio in model: " && !cAspectRatio.isEmpty() );
    OST_ASSERT(0 != aspectRatioD);
    if (aspectRatioN == 0 || aspectRatioD == 0 || cAspectRatio.isEmpty())
        return;

    const qint64 w0 = width();
    const qint64 h0 = height();
    QRect picture;
    if (w0 - (h0 * aspectRatioN) / aspectRatioD > 0) { // pillar-box
        const int w = int(float(h0 * aspectRatioN) / float(aspectRatioD) + 0.5f);
        picture = QRect(int((w0 - w) / 2), 0, w, int(h0));
    } else { // letter-box
        const int h = int(float(w0 * aspectRatioD) / float(aspectRatioN) + 0.5f);
        picture = QRect(0, int((h0 - h) / 2), int(w0), h);
    }
    mPictureRect = picture;

    const QPointer<Kel_Monitor> self(this);
    if (mPictureRectModel.isConnected() && mPictureRectModel.set(picture) == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    if (self)
        sendGlobalOffset();
}

void Kel_Monitor::sendGlobalOffset()
{
    if (mGlobalOffsetModel.isConnected())
        mGlobalOffsetModel.set(mapToGlobal(QPoint(0, 0)));
}

QString Kel_Monitor::playState() const
{
    return mPlayState.isConnected() ? mPlayState->value() : QString();
}

void Kel_Monitor::handlePlayStateChanged()
{
    if (!mPlayState.isConnected())
        return;
    const QString state = playState();
    if (state == QLatin1String(kPlaying)) {
        // The frame around the picture, drawn at once before frames arrive.
        const QRegion outside = QRegion(rect()) - QRegion(mPictureRect.adjusted(0, 0, -1, -1));
        repaint(outside);
        mIsAudioOnly = mAudioOnly.isConnected() && mAudioOnly->value(false);
        updatePlayRateOverlay(false, true, false);
    } else if (state == QLatin1String("stopped")) {
        mIsAudioOnly = false;
        if (!mHidePending)
            updatePlayRateOverlay(false, true, false);
    } else if (state == QLatin1String("cueing")) {
        if (mConnected)
            sendGlobalOffset();
    }
}

void Kel_Monitor::handlePlayRateChanged()
{
    const double rate = mPlayRate->value(0.0);
    qCDebug(lcKelMedia, "Kel_Monitor play rate: %d", std::isfinite(rate) ? int(std::max(-1e9, std::min(rate, 1e9))) : 0);
    updatePlayRateOverlay(false, true, false);
}

void Kel_Monitor::handlePlayRateOverlayEnableChanged()
{
    updatePlayRateOverlay(false, true, false);
}

void Kel_Monitor::handleAboutToClose()
{
    hidePlayRateOverlay(true, false);
}

void Kel_Monitor::handleAppActivated()
{
    if (overlayMayShow())
        updatePlayRateOverlay(false, true, true);
    else
        hidePlayRateOverlayFunc(true);
}

bool Kel_Monitor::overlayEnabled() const
{
    bool enabled = mOverlayEnabledModel.getValue();
    mOverlayEnabled->get(enabled);
    return enabled;
}

bool Kel_Monitor::overlayMayShow() const
{
    return isVisible() && (!mAppActive.isConnected() || mAppActive->value(true));
}

QString Kel_Monitor::playRateText(double rate)
{
    if (!std::isfinite(rate))
        return QString();
    const qint64 whole = qAbs(qint64(std::trunc(std::max(-1e12, std::min(rate, 1e12)))));
    if (rate < -1)
        return QStringLiteral("<< %1x").arg(whole);
    if (rate == -1)
        return QStringLiteral("< 1x");
    if (rate < 0)
        return QStringLiteral("< .25x"); // every slow rate reads as a quarter speed
    if (rate == 0)
        return QStringLiteral("||");
    if (rate < 1)
        return QStringLiteral(".25x >");
    if (rate == 1)
        return QStringLiteral("1x >");
    return QStringLiteral("%1x >>").arg(whole);
}

void Kel_Monitor::initPlayRateOverlay()
{
    if (settingText("TYDevParams.MonitorOverlays.OffspeedPlayOverlayEnabled", "yes") == QLatin1String("no"))
        return;
    mHideWidgetMode =
        settingText("TYDevParams.MonitorOverlays.OffspeedPlayOverlayHide", "UseAlpha") == QLatin1String("UseHideWidget");

    mOverlayP = new Kel_TransparentOverlay(this);
    mOverlayPixmap = QPixmap(size());
    mOverlayPixmap.fill(Qt::transparent);
    mOverlayP->setFixedSize(0, 0);
    mOverlayP->move(mapToGlobal(QPoint(0, height())));
    mOverlayP->setAlpha(0, true); // nothing to tell until play starts
    mShownAlpha = kShownAlpha;
}

void Kel_Monitor::updatePlayRateOverlay(bool clearText, bool apply, bool immediate)
{
    if (!mOverlayP)
        return;

    // The text grows with the monitor beyond its minimum size, up to 15 points.
    float scale = 1.0f;
    if (minimumWidth() > 0 && minimumHeight() > 0)
        scale = std::min(float(width()) / float(minimumWidth()), float(height()) / float(minimumHeight()));
    else if (minimumWidth() > 0)
        scale = float(width()) / float(minimumWidth());
    else if (minimumHeight() > 0)
        scale = float(height()) / float(minimumHeight());
    const int pointSize = std::max(1, int(std::min(kOverlayPointSize * scale, float(kOverlayMaxPointSize))));
    QFont font(QStringLiteral("Tahoma"));
    font.setPointSize(pointSize);
    Kel_QtCompat::setLegacyFontWeight(font, kOverlayWeight);

    const QSize overlaySize = QFontMetrics(font)
                                  .boundingRect(QRect(), Qt::AlignLeft | Qt::TextSingleLine,
                                                QString::fromLatin1(kOverlaySampleText))
                                  .size();
    mOverlayP->setFixedSize(overlaySize);
    mOverlayP->move(mapToGlobal(QPoint(kOverlayLeftMargin, height() - kOverlayBottomMargin - overlaySize.height())));

    const bool playing = playState() == QLatin1String(kPlaying);
    double rate = 0;
    QString text;
    if (!clearText && mPlayRate.isConnected() && playing) {
        rate = mPlayRate->value(0.0);
        text = playRateText(rate);
    }
    mOverlayText = text;

    QImage pane(overlaySize, QImage::Format_ARGB32_Premultiplied);
    pane.fill(0xFF000000);
    {
        QPainter painter(&pane);
        painter.setPen(Qt::white);
        if (!text.isEmpty() && rate == 0)
            Kel_QtCompat::setLegacyFontWeight(font, kOverlayBoldWeight);
        painter.setFont(font);
        painter.drawText(pane.rect(), Qt::AlignCenter | Qt::TextSingleLine, text);
    }
    if (mOverlayPixmap.width() < overlaySize.width() || mOverlayPixmap.height() < overlaySize.height()) {
        mOverlayPixmap = QPixmap(mOverlayPixmap.size().expandedTo(overlaySize));
        mOverlayPixmap.fill(Qt::transparent);
    }
    {
        QPainter painter(&mOverlayPixmap);
        painter.drawImage(0, 0, pane);
    }
    mOverlayP->setPixmap(mOverlayPixmap);
    qCDebug(lcKelMedia, "PlayRateOverlay setPixmap: %d", int(text.size()));

    if (!apply)
        return;
    if (overlayEnabled() && playing && overlayMayShow())
        showPlayRateOverlay(mShownAlpha);
    else
        hidePlayRateOverlay(mHideWidgetMode, immediate);
}

void Kel_Monitor::showPlayRateOverlay(unsigned short alpha)
{
    if (!mOverlayP)
        return;
    if (mOverlayP->isHidden()) {
        mOverlayP->show();
        window()->activateWindow(); // the overlay never keeps the focus
    }
    mOverlayP->setAlpha(alpha, true);
    qCDebug(lcKelMedia, "PlayRateOverlay alpha == %d", int(alpha));
}

void Kel_Monitor::hidePlayRateOverlay(bool hideWidget, bool immediate)
{
    if (!mOverlayP)
        return;
    if (hideWidget || immediate) {
        hidePlayRateOverlayFunc(hideWidget);
        return;
    }
    // A gentle hide: an empty pane now, transparent a moment later.
    if (mOverlayP->windowOpacity() < 0.1 || mHidePending)
        return;
    if (!mHideTaskP)
        mHideTaskP.reset(new TaskSchedulerTask(QStringLiteral("HidePlayRateOverlay"), kHideTaskPriority,
                                               [this] { hidePlayRateOverlayTaskCB(); }, false, kHideDelayMs, false));
    mHideTaskP->setReady(true);
    TaskScheduler::instance()->addTask(mHideTaskP.get());
    updatePlayRateOverlay(true, false, false);
    mHidePending = true;
}

void Kel_Monitor::hidePlayRateOverlayTaskCB()
{
    if (mHideTaskP)
        mHideTaskP->setReady(false);
    mHidePending = false;
    // Shows the overlay again if play resumed meanwhile.
    updatePlayRateOverlay(false, true, true);
}

void Kel_Monitor::hidePlayRateOverlayFunc(bool hideWidget)
{
    if (!mOverlayP)
        return;
    if (hideWidget)
        mOverlayP->hide();
    mOverlayP->setAlpha(0, true);
    qCDebug(lcKelMedia, "PlayRateOverlay alpha == %d", 0);
}

bool Kel_Monitor::eventFilter(QObject* watched, QEvent* event)
{
    if (mOverlayP && (event->type() == QEvent::Move || event->type() == QEvent::Resize) && watched == window()
        && watched != this)
        updatePlayRateOverlay(false, false, false);
    return QWidget::eventFilter(watched, event);
}

void Kel_Monitor::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    if (!mShowSlug || mConnected) {
        const bool hasPicture = mMonitorImage.isConnected() || mShowLocalPicture;
        if (!mConnected || !hasPicture || mIsAudioOnly)
            return;
        const QPixmap picture = imageToDisplayInMonitor();
        if (picture.isNull())
            return;
        QRect target = mPictureRect;
        if (target.width() > 1920 && showsFullHdPixelForPixel() && QGuiApplication::screens().size() > 1) {
            if (const QScreen* holder = screen()) {
                const QSize screenSize = holder->geometry().size();
                target = QRect((screenSize.width() - 1920) / 2, (screenSize.height() - 1080) / 2, 1920, 1080);
            }
        }
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(target, picture);
        return;
    }
    const QPixmap& slug = mIs4x3 ? mSlug4x3 : mSlug;
    if (!slug.isNull())
        painter.drawPixmap(QPoint(0, 0), slug);
}

void Kel_Monitor::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const QRect before = mPictureRect;
    const QPointer<Kel_Monitor> self(this);
    updateAspectRatioGeometry();
    if (!self || (mPictureRect != before && !triggerMonitorMoved()))
        return;
    updatePlayRateOverlay(false, false, false);
}

void Kel_Monitor::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    watchWindow();
    updatePlayRateOverlay(false, true, true);
}

void Kel_Monitor::watchWindow()
{
    // Only the window holding the monitor, rather than every event of the
    // application; a monitor is shown again after it moved to another window.
    QWidget* holder = window() != this ? window() : nullptr;
    if (holder == mWatchedWindowP)
        return;
    if (mWatchedWindowP)
        mWatchedWindowP->removeEventFilter(this);
    mWatchedWindowP = holder;
    if (holder)
        holder->installEventFilter(this);
}

void Kel_Monitor::hideEvent(QHideEvent* event)
{
    // The overlay is a window of its own: it would stay on screen.
    hidePlayRateOverlayFunc(true);
    QWidget::hideEvent(event);
}

void Kel_Monitor::contextMenuEvent(QContextMenuEvent* event)
{
    if (mPopupMenuFile.isEmpty()) {
        QWidget::contextMenuEvent(event);
        return;
    }
    event->accept();
    // Loaded on the first right-click, and again after the file changed.
    if (!mPopupManagerP || mPopupLoadedFile != mPopupMenuFile) {
        mPopupManagerP.reset();
        delete mPopupMenuP;
        mPopupMenuP = new Kel_PopupMenu(this, "MonitorPopupMenu");
        QByteArray name = mPopupMenuFile.toLocal8Bit();
        mPopupManagerP.reset(new Mnu_QtManager(mPopupMenuP, name.data()));
        mPopupLoadedFile = mPopupMenuFile;
    }
    QPoint where = event->globalPos();
    mPopupManagerP->popup(where, mEnvironment ? mEnvironment : Mv_ConnectionEnvironment::blankEnvironment());
}

QMimeData* Kel_Monitor::createDragData()
{
    if (!mCanBeDragged.isConnected() || !mCanBeDragged->value(false) || !mSequence.isConnected())
        return nullptr;
    const QString mobID = mSequence->mobID();
    if (mobID.isEmpty())
        return nullptr;
    Mv_Timecode markIn;
    mSequence->getMarkIn(markIn);

    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("mobIDDragObjectList"));
    document.appendChild(root);
    QDomElement clip = document.createElement(QStringLiteral("mobIDDragObject"));
    root.appendChild(clip);
    const std::pair<const char*, QString> fields[] = {{"mobID", mobID}, {"markIn", markIn.toString()}};
    for (const auto& field : fields) {
        QDomElement element = document.createElement(QString::fromLatin1(field.first));
        element.appendChild(document.createTextNode(field.second));
        clip.appendChild(element);
    }
    auto* data = new QMimeData;
    data->setText(document.toString(1));
    return data;
}

void Kel_Monitor::startDrag()
{
    QMimeData* data = createDragData();
    if (!data)
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    const QPixmap picture = imageToDisplayInMonitor();
    if (!picture.isNull())
        drag->setPixmap(picture.scaledToWidth(std::min(160, picture.width()), Qt::SmoothTransformation));
    drag->exec(Qt::CopyAction);
}

void Kel_Monitor::mousePressEvent(QMouseEvent* event)
{
    mDragArmed = event->button() == Qt::LeftButton && mConnected && mPictureRect.contains(event->pos());
    mDragStart = event->pos();
    QWidget::mousePressEvent(event);
}

void Kel_Monitor::mouseMoveEvent(QMouseEvent* event)
{
    if (mDragArmed && (event->pos() - mDragStart).manhattanLength() >= QApplication::startDragDistance()) {
        mDragArmed = false;
        startDrag();
        return;
    }
    QWidget::mouseMoveEvent(event);
}

void Kel_Monitor::mouseReleaseEvent(QMouseEvent* event)
{
    mDragArmed = false;
    QWidget::mouseReleaseEvent(event);
}

void Kel_Monitor::keyPressEvent(QKeyEvent* event)
{
    if (Kel_KeymapMgr::getInstance()->handleAction(
            event, QStringLiteral("MainMonitor"),
            mEnvironment ? mEnvironment : Mv_ConnectionEnvironment::blankEnvironment())) {
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}
