#ifndef KEL_IMMEDIATEACTIONBUTTON_H
#define KEL_IMMEDIATEACTIONBUTTON_H

#include "kelcore_export.h"

#include "Kel_ActionScriptRunner.h"
#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Action.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QPixmap>
#include <QWidget>

class QContextMenuEvent;

// An image button for transport controls: it runs its action script the
// moment the mouse button goes down (or, with actionDelay, on a release
// inside it), can auto-repeat while held, draws one image per visual state,
// and can be enabled and shown by bool models. It is greyed out while its
// script cannot run (a model it names is missing or an action it calls
// says it is disabled). A right-click calls the context-menu action model,
// if one is named.
class KELCORE_EXPORT Kel_ImmediateActionButton : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    // Declared first so that forms set it before they load the images.
    Q_PROPERTY(bool iconReversed READ getImageReversed WRITE setImageReversed)
    Q_PROPERTY(QByteArray actionScript READ getActionScript WRITE setActionScript)
    Q_PROPERTY(QByteArray normalImage READ getNormalImage WRITE setNormalImage)
    Q_PROPERTY(QByteArray trackingImage READ getTrackingImage WRITE setTrackingImage)
    Q_PROPERTY(QByteArray disabledImage READ getDisabledImage WRITE setDisabledImage)
    Q_PROPERTY(bool quorAutoRepeat READ getQuorAutoRepeat WRITE setQuorAutoRepeat)
    Q_PROPERTY(int repeatDelay READ getRepeatDelay WRITE setRepeatDelay)
    Q_PROPERTY(int repeatInterval READ getRepeatInterval WRITE setRepeatInterval)
    Q_PROPERTY(QByteArray enabledConnSpec READ getEnabledStateConnSpec WRITE setEnabledStateConnSpec)
    Q_PROPERTY(QByteArray visibleStateConnection READ getVisibleStateConnectionSpec WRITE setVisibleStateConnectionSpec)
    Q_PROPERTY(QByteArray contexMenuConnSpec READ getContextMenuConnectionSpec WRITE setContextMenuConnectionSpec)
    Q_PROPERTY(bool actionDelay READ getActionDelay WRITE setActionDelay)

public:
    enum visualState
    {
        kNormalState = 0,
        kTrackingState = 1, // pressed
        kDisabledState = 2,
        kVisualStateCount
    };
    // The action a right-click calls, with the button and the event.
    typedef Mvt_Action<void(QWidget*, QContextMenuEvent*)> ContextMenuAction;

    // actionScript is taken as Latin-1; ignoredText is accepted for
    // compatibility and not used.
    explicit Kel_ImmediateActionButton(QWidget* parent = nullptr, const char* name = nullptr,
                                       QString actionScript = QString(), QString ignoredText = QString());
    ~Kel_ImmediateActionButton() override;

    // Parses the script at once; one that does not parse leaves the button inert.
    void setActionScript(QByteArray script) { mScript.setScript(script); }
    QByteArray getActionScript() const { return mScript.script(); }

    // Image paths relative to the resource path. A file that does not load
    // keeps the previous image.
    void setNormalImage(QByteArray path);
    QByteArray getNormalImage() const { return mImageNames[kNormalState]; }
    void setTrackingImage(QByteArray path);
    QByteArray getTrackingImage() const { return mImageNames[kTrackingState]; }
    void setDisabledImage(QByteArray path);
    QByteArray getDisabledImage() const { return mImageNames[kDisabledState]; }
    // Mirrors images left to right; affects only images loaded afterwards.
    void setImageReversed(bool reversed);
    bool getImageReversed() const { return mImageReversed; }

    // Switching auto-repeat off stops a running repeat.
    void setQuorAutoRepeat(bool on) { mScript.setAutoRepeat(on); }
    bool getQuorAutoRepeat() const { return mScript.autoRepeat(); }
    // Takes effect at the next press.
    void setRepeatDelay(int ms) { mScript.setRepeatDelay(ms); }
    int getRepeatDelay() const { return mScript.repeatDelay(); }
    // Takes effect at once, also while the button is held.
    void setRepeatInterval(int ms) { mScript.setRepeatInterval(ms); }
    int getRepeatInterval() const { return mScript.repeatInterval(); }
    // Runs the script on a release inside the button instead of on press.
    void setActionDelay(bool delay);
    bool getActionDelay() const { return mActionDelay; }

    // Connection specifications; they take effect at the next makeConnections.
    void setEnabledStateConnSpec(QByteArray spec) { mEnabled.setSpec(QString::fromUtf8(spec)); }
    QByteArray getEnabledStateConnSpec() const { return mEnabled.spec().toUtf8(); }
    void setVisibleStateConnectionSpec(QByteArray spec) { mVisible.setSpec(QString::fromUtf8(spec)); }
    QByteArray getVisibleStateConnectionSpec() const { return mVisible.spec().toUtf8(); }
    // With a context-menu specification the right button no longer presses the button.
    void setContextMenuConnectionSpec(QByteArray spec) { mContextMenu.setSpec(QString::fromUtf8(spec)); }
    QByteArray getContextMenuConnectionSpec() const { return mContextMenu.spec().toUtf8(); }

    visualState getVisualState() const { return mVisualState; }

    // Connects the script, then the enabled, visible and context-menu models
    // that are named. A script whose models are missing keeps the button
    // greyed out until they are published.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The current image's size; 32 x 32 without one.
    QSize sizeHint() const override;

    // Normal and enabled, or disabled, as the enabled model says and only
    // while the script can run; without an enabled model only the script
    // greys the button out and gives it back.
    void handleMsgEnabledStateDefault();
    // Shown as the visible model says; without a specification always shown,
    // with one hidden until its model says otherwise.
    void handleMsgVisibleStateDefault();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // A disabled or hidden button never sees its release: the repeat stops here.
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    // The picture drawn in a visual state; buttons with several sets of
    // images (a play button while playing) choose here.
    virtual const QPixmap& pixmapForState(visualState state) const { return mPixmaps[state]; }
    // Loads an image path relative to the resource path (null when it does
    // not load), mirrored left to right when reversed.
    static QPixmap loadButtonImage(const QByteArray& path, bool reversed);

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

    void setImage(visualState state, const QByteArray& path);
    void showEnabled(bool enabled);
    bool isContextMenuClick(const QMouseEvent* event) const;

    BoolProperty mEnabled{this};
    BoolProperty mVisible{this};
    Kel_BoundProperty<ContextMenuAction::Listener> mContextMenu{this};
    Kel_ActionScriptRunner mScript{this, "ImmediateActionButtonAutoRepeatTask"};
    bool mActionDelay;
    bool mImageReversed;
    QByteArray mImageNames[kVisualStateCount];
    QPixmap mPixmaps[kVisualStateCount];
    visualState mVisualState;
    // Set while the button is greyed out because its script cannot run, so
    // that readiness gives it back even without an enabled model.
    bool mGreyedForScript;
};

#endif
