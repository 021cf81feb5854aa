#ifndef KEL_MONITOR_H
#define KEL_MONITOR_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Mvt_Action.h"
#include "Mvt_Array.h"
#include "Mvt_ArrayContainer.h"
#include "Mvt_ClipInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>
#include <memory>

class Kel_PopupMenu;
class Kel_TransparentOverlay;
class Mnu_QtManager;
class QMimeData;
class TaskSchedulerTask;

// The black frame in which the application shows video. Its picture
// rectangle is fitted to the current aspect ratio (pillar-box or letter-box)
// and published to the monitor's models; while the material plays
// off-speed, a small overlay in the bottom-left corner tells the play rate
// ("2x >>", "< .25x"). Model names derive from the monitor connection
// (setMonitorConn: base + ".monitorImage", base + ".Current.AspectRatio",
// ...); the transport's are fixed ("MainMonitor.PlayState",
// "PlayInterface.playRate"). The monitor publishes the bool model
// "Monitor.PlayRateOverlayEnabled" and the action
// "Monitor.EraseToColor.Action" (taking a QColor) when no other monitor
// holds those names, and takes them over when the monitor holding them goes.
class KELCORE_EXPORT Kel_Monitor : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray monitorConn READ getMonitorConn WRITE setMonitorConn)
    Q_PROPERTY(bool sequenceMonitor READ isSequenceMonitor WRITE setSequenceMonitor)
    Q_PROPERTY(bool showSlug READ isSlugShown WRITE setShowSlug)

public:
    // monitorConn is the base of the monitor's model names; a sequence
    // monitor also follows the clip model "MonitorSequence".
    explicit Kel_Monitor(QWidget* parent = nullptr, QString name = QString(), QString monitorConn = QString(),
                         bool sequenceMonitor = false);
    ~Kel_Monitor() override;

    // Takes effect at the next makeConnections.
    void setMonitorConn(const QByteArray& base) { mMonitorConn = QString::fromUtf8(base); }
    QByteArray getMonitorConn() const { return mMonitorConn.toUtf8(); }
    // Takes effect at the next makeConnections.
    void setSequenceMonitor(bool on) { mSequenceMonitor = on; }
    bool isSequenceMonitor() const { return mSequenceMonitor; }
    // With the slug on, a monitor whose picture is not connected shows the
    // slug image (the 4:3 one while the ratio is "4 x 3") instead of black.
    void setShowSlug(bool on);
    bool isSlugShown() const { return mShowSlug; }

    // Connects the monitor's models in environment (the aspect-ratio models
    // in the blank one) and then connects the picture (connectMonitor).
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    // Hands this widget to the ".setMonWidget" action, fits the picture
    // rectangle and shows or hides the overlay as the transport says.
    void connectMonitor();
    // Stops fitting and drawing the picture.
    void disconnectMonitor();
    bool isMonitorConnected() const { return mConnected; }

    // Shows image as the picture until the ".monitorImage" model reports a new one.
    void drawImage(const QImage& image);
    // Shows a plain picture of color until the ".monitorImage" model reports
    // a new one (the "Monitor.EraseToColor.Action" calls this).
    void eraseMonitorToColor(const QColor& color);
    // The picture to draw: the last one given to drawImage or
    // eraseMonitorToColor, else the pixmap held by the ".monitorImage" model.
    virtual QPixmap imageToDisplayInMonitor();
    // A menu file (root <Menu>) shown on a right-click in the monitor.
    void setPopupMenuFile(const QString& file) { mPopupMenuFile = file; }
    QString popupMenuFile() const { return mPopupMenuFile; }

    // The picture rectangle, in widget coordinates.
    QRect pictureRect() const { return mPictureRect; }
    // Whether the current ratio's id is "4 x 3".
    bool is4x3() const { return mIs4x3; }

    // Model handlers.
    void handleAspectRatioChange();
    // Fits the picture rectangle to the current ratio and writes it, and
    // the widget's screen position, to their models.
    void updateAspectRatioGeometry();
    void handlePlayStateChanged();
    void handleMsgFromMonitorImage();
    void handleMarkInChanged();
    void handleMarkOutChanged();
    void handleMobIDChanged();
    void handlePlayRateChanged();
    void handlePlayRateOverlayEnableChanged();
    void handleAboutToClose();
    // The overlay, a window of its own, is hidden while the application is
    // not active ("Application.Active" false) and comes back with it.
    void handleAppActivated();

    // The overlay window; null when switched off by the settings.
    Kel_TransparentOverlay* playRateOverlay() const { return mOverlayP; }
    // The text the overlay shows now; empty when cleared.
    QString playRateOverlayText() const { return mOverlayText; }
    bool isPlayRateOverlayHidePending() const { return mHidePending; }
    // The overlay's text for a play rate.
    static QString playRateText(double rate);

    // Overlay operations.
    virtual void initPlayRateOverlay();
    // Redraws the overlay's text (empty with clearText, or unless playing)
    // and places it; with apply, shows it when enabled and playing and hides
    // it otherwise (immediate: without the delay of the alpha mode).
    virtual void updatePlayRateOverlay(bool clearText, bool apply, bool immediate);
    virtual void showPlayRateOverlay(unsigned short alpha);
    // hideWidget and immediate both false: a gentle hide, which clears the
    // text and makes the overlay transparent 750 ms later.
    virtual void hidePlayRateOverlay(bool hideWidget, bool immediate);
    virtual void hidePlayRateOverlayTaskCB();
    virtual void hidePlayRateOverlayFunc(bool hideWidget);

    // What a drag from the picture carries: a "mobIDDragObjectList" document
    // (as the lists' drags) with one "mobIDDragObject" holding the "mobID"
    // and "markIn" of the sequence shown. Null unless the ".CanBeDragged"
    // model says true and the monitor shows a sequence with a mob id.
    QMimeData* createDragData();

    // Keeps the overlay with the monitor when its window moves or resizes.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    // A press in the picture dragged beyond the drag distance drags the sequence.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Keys mapped in the keymap context "MainMonitor" run there; others go to the parent.
    void keyPressEvent(QKeyEvent* event) override;

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;
    typedef Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> StringProperty;
    typedef Kel_BoundProperty<Mvt_Action<void()>::Listener> ActionProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> StringArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<long>>::Listener> LongArrayProperty;

    // Publishes the overlay-enabled model and the erase action unless
    // another monitor holds their names.
    void publishSharedModels();
    QString baseName(const char* suffix) const;
    QString playState() const;
    bool overlayEnabled() const;
    // Whether the overlay may be on screen at all: the monitor is shown and
    // the application is active.
    bool overlayMayShow() const;
    // Tells the ".MonitorMoved" action; false when that deleted the monitor.
    bool triggerMonitorMoved();
    void sendGlobalOffset();
    void startDrag();
    // Filters the events of the window holding the monitor (not of the
    // monitor itself), for eventFilter.
    void watchWindow();

    QString mMonitorConn;
    bool mSequenceMonitor;
    bool mShowSlug;
    QString mPopupMenuFile;
    QString mPopupLoadedFile;
    Kel_PopupMenu* mPopupMenuP; // a child widget: deleted with the monitor
    std::unique_ptr<Mnu_QtManager> mPopupManagerP;
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;

    // Published by the monitor (when the names are free). Declared before
    // the listeners, so that they are gone before these models leave.
    Mve_SimpleValue<bool> mOverlayEnabledModel;
    std::unique_ptr<Mve_Action<void(QColor)>> mEraseToColorActionP;

    Kel_BoundProperty<Mvt_SimpleValue<QPixmap>::Listener> mMonitorImage{this};
    Kel_BoundProperty<Mvt_Action<void(QWidget*)>::Listener> mSetMonWidget{this};
    Kel_BoundProperty<Mvt_ClipInterface::Listener> mSequence{this};
    BoolProperty mCanBeDragged{this};
    ActionProperty mMonitorStop{this};
    ActionProperty mMonitorMoved{this};
    Kel_BoundProperty<Mvt_SimpleValue<QRect>::Listener> mPictureRectModel{this};
    Kel_BoundProperty<Mvt_SimpleValue<QPoint>::Listener> mGlobalOffsetModel{this};
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mAspectRatios{this};
    StringArrayProperty mAspectRatioIds{this};
    LongArrayProperty mAspectRatioNumerators{this};
    LongArrayProperty mAspectRatioDenominators{this};
    StringProperty mCurrentAspectRatio{this};
    StringProperty mPlayState{this};
    BoolProperty mAudioOnly{this};
    Kel_BoundProperty<Mvt_SimpleValue<double>::Listener> mPlayRate{this};
    BoolProperty mOverlayEnabled{this};
    Kel_BoundProperty<Mv_ListenerBase> mAboutToClose{this};
    BoolProperty mAppActive{this};

    QRect mPictureRect;
    bool mIs4x3;
    bool mConnected;
    bool mIsAudioOnly;
    // The picture given by drawImage or eraseMonitorToColor, shown until
    // the monitor image model reports.
    QPixmap mLocalPicture;
    bool mShowLocalPicture;
    QPixmap mSlug;
    QPixmap mSlug4x3;

    Kel_TransparentOverlay* mOverlayP; // a child window: deleted with the monitor
    QPointer<QWidget> mWatchedWindowP;
    QPixmap mOverlayPixmap;
    QString mOverlayText;
    unsigned short mShownAlpha;
    bool mHideWidgetMode; // true: hiding hides the window; false: only makes it transparent
    std::unique_ptr<TaskSchedulerTask> mHideTaskP;
    bool mHidePending;

    bool mDragArmed; // a press in the picture that may become a drag
    QPoint mDragStart;
};

#endif
