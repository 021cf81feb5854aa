#ifndef KEL_STANDARDBISTATEBUTTON_H
#define KEL_STANDARDBISTATEBUTTON_H

#include "kelcore_export.h"

#include "Kel_ActionScriptRunner.h"
#include "Kel_BoundProperty.h"
#include "Kel_QtCompat.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QPixmap>
#include <QString>
#include <QWidget>

// An image button with an on and an off state taken from a bool model.
// Clicking it runs the on script while it is off and the off script while it
// is on; it never changes its own state, which always follows the model. A
// bool model named by the state specification + ".disabled" greys it out.
// It is drawn from five images, one per visual state.
class KELCORE_EXPORT Kel_StandardBistateButton : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray imageBase READ GetImageBase WRITE SetImageBase)
    Q_PROPERTY(QByteArray stateConnSpec READ GetStateConnectionSpec WRITE SetStateConnectionSpec)
    Q_PROPERTY(QByteArray actionScriptOff READ GetActionScriptOff WRITE SetActionScriptOff)
    Q_PROPERTY(QByteArray actionScriptOn READ GetActionScriptOn WRITE SetActionScriptOn)
    Q_PROPERTY(QByteArray offImage READ GetOffImage WRITE SetOffImage)
    Q_PROPERTY(QByteArray onImage READ GetOnImage WRITE SetOnImage)
    Q_PROPERTY(QByteArray offTrackingImage READ GetOffTrackingImage WRITE SetOffTrackingImage)
    Q_PROPERTY(QByteArray onTrackingImage READ GetOnTrackingImage WRITE SetOnTrackingImage)
    Q_PROPERTY(QByteArray disabledImage READ GetDisabledImage WRITE SetDisabledImage)
    Q_PROPERTY(QString tooltipText READ GetTooltipText WRITE SetTooltipText)

public:
    // Indexes the images.
    enum visualState
    {
        kOffState = 0,
        kOnState = 1,
        kOffTrackingState = 2, // off and pressed
        kOnTrackingState = 3,  // on and pressed
        kDisabledState = 4,
        kVisualStateCount
    };

    // Scripts are taken as Latin-1; empty texts leave their property unset.
    explicit Kel_StandardBistateButton(QWidget* parent = nullptr, const char* name = nullptr,
                                       QString imageBase = QString(), QString actionScriptOn = QString(),
                                       QString actionScriptOff = QString(), QString stateConnSpec = QString(),
                                       QString tooltipText = QString());
    ~Kel_StandardBistateButton() override;

    // Sets the five images to "Images/" + base + "_off.png", "_on.png",
    // "_offtracking.png", "_ontracking.png" and "_disabled.png".
    void SetImageBase(const QByteArray& base);
    QByteArray GetImageBase() const { return mImageBase; }

    // Image paths relative to the resource path; a file that does not load
    // keeps the previous image.
    void SetOffImage(const QByteArray& path);
    void SetOnImage(const QByteArray& path);
    void SetOffTrackingImage(const QByteArray& path);
    void SetOnTrackingImage(const QByteArray& path);
    void SetDisabledImage(const QByteArray& path);
    QByteArray GetOffImage() const { return mImageNames[kOffState].toLatin1(); }
    QByteArray GetOnImage() const { return mImageNames[kOnState].toLatin1(); }
    QByteArray GetOffTrackingImage() const { return mImageNames[kOffTrackingState].toLatin1(); }
    QByteArray GetOnTrackingImage() const { return mImageNames[kOnTrackingState].toLatin1(); }
    QByteArray GetDisabledImage() const { return mImageNames[kDisabledState].toLatin1(); }

    // Parsed at once; a script that does not parse, or whose models are
    // missing when it would run, makes the click inert.
    void SetActionScriptOn(const QByteArray& script) { mOnScript.setScript(script); }
    QByteArray GetActionScriptOn() const { return mOnScript.script(); }
    void SetActionScriptOff(const QByteArray& script) { mOffScript.setScript(script); }
    QByteArray GetActionScriptOff() const { return mOffScript.script(); }

    // The state model's specification; takes effect at the next makeConnections.
    void SetStateConnectionSpec(const QByteArray& spec) { mStateConnSpec = QString::fromUtf8(spec); }
    QByteArray GetStateConnectionSpec() const { return mStateConnSpec.toUtf8(); }

    void SetTooltipText(const QString& text);
    QString GetTooltipText() const { return mTooltipText; }

    // Connects the state model and the ".disabled" model beside it (when the
    // specification is not empty), then both scripts, and shows the state.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The current image's size; 32 x 32 without one.
    QSize sizeHint() const override;

    virtual visualState getState() const { return mVisualState; }
    virtual void setState(visualState state);
    // Stores path for state and loads it; a missing file keeps the old image.
    virtual void setImage(visualState state, const QString& path);
    // Disabled when the disabled model says so, else on or off as the state
    // model says; disabled without a state model.
    virtual void handleStateChangeMsgDefault();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(Kel_QtCompat::EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // Connects state to the state specification and disabled to it +
    // ".disabled" (when it is not empty), then both scripts; false when a
    // notification deleted the button.
    bool connectModelsAndScripts(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                 Kel_BoundPropertyBase& state, Kel_BoundPropertyBase& disabled);
    // Runs one script, then shows the models' state again (a script that
    // changed nothing leaves the button as it was). False when the script
    // deleted the button.
    bool runScript(Kel_ActionScriptRunner& script);
    // The pointer came back over the button while it is held.
    void trackEnter();
    // The pointer left the button while it is held.
    void trackLeave();
    Kel_ActionScriptRunner& onScript() { return mOnScript; }
    bool isPressed() const { return mPressed; }
    void setPressed(bool pressed) { mPressed = pressed; }

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

    Kel_ActionScriptRunner mOnScript{this, "StandardBistateButtonOnTask"};
    Kel_ActionScriptRunner mOffScript{this, "StandardBistateButtonOffTask"};
    bool mPressed;
    QString mTooltipText;
    QString mStateConnSpec;
    BoolProperty mState{this};
    BoolProperty mDisabled{this};
    QByteArray mImageBase;
    QString mImageNames[kVisualStateCount];
    QPixmap mPixmaps[kVisualStateCount];
    visualState mVisualState;
};

#endif
