#include "Kel_StandardBistateButton.h"

#include "Kel_KeyboardClick_p.h"
#include "Kel_ResourceImage.h"
#include "Kel_WhatsThis.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace {

const QSize kSizeWithoutImage(32, 32);

const char* const kImageSuffixes[Kel_StandardBistateButton::kVisualStateCount] = {
    "_off.png", "_on.png", "_offtracking.png", "_ontracking.png", "_disabled.png"};

} // namespace

Kel_StandardBistateButton::Kel_StandardBistateButton(QWidget* parent, const char* name, QString imageBase,
                                                     QString actionScriptOn, QString actionScriptOff,
                                                     QString stateConnSpec, QString tooltipText)
    : QWidget(parent), mPressed(false), mStateConnSpec(stateConnSpec), mVisualState(kDisabledState)
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(QString::fromLatin1(name));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMouseTracking(false);
    if (!actionScriptOff.isEmpty())
        SetActionScriptOff(actionScriptOff.toLatin1());
    if (!actionScriptOn.isEmpty())
        SetActionScriptOn(actionScriptOn.toLatin1());
    if (!imageBase.isEmpty())
        SetImageBase(imageBase.toLatin1());
    SetTooltipText(tooltipText);

    // Value changes and the models coming and going alike lead to a re-read.
    for (BoolProperty* property : {&mState, &mDisabled})
        property->onNotify([this] { handleStateChangeMsgDefault(); });

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_StandardBistateButton");
    // Tab reaches it, Space or Return clicks it.
    Kel_KeyboardClick::install(this);
}

Kel_StandardBistateButton::~Kel_StandardBistateButton() = default;

void Kel_StandardBistateButton::SetImageBase(const QByteArray& base)
{
    mImageBase = base;
    const QString prefix = QStringLiteral("Images/") + QString::fromLatin1(base);
    for (int state = 0; state < kVisualStateCount; ++state)
        setImage(visualState(state), prefix + QLatin1String(kImageSuffixes[state]));
}

void Kel_StandardBistateButton::SetOffImage(const QByteArray& path)
{
    setImage(kOffState, QString::fromLatin1(path));
}

void Kel_StandardBistateButton::SetOnImage(const QByteArray& path)
{
    setImage(kOnState, QString::fromLatin1(path));
}

void Kel_StandardBistateButton::SetOffTrackingImage(const QByteArray& path)
{
    setImage(kOffTrackingState, QString::fromLatin1(path));
}

void Kel_StandardBistateButton::SetOnTrackingImage(const QByteArray& path)
{
    setImage(kOnTrackingState, QString::fromLatin1(path));
}

void Kel_StandardBistateButton::SetDisabledImage(const QByteArray& path)
{
    setImage(kDisabledState, QString::fromLatin1(path));
}

void Kel_StandardBistateButton::SetTooltipText(const QString& text)
{
    mTooltipText = text;
    setToolTip(text);
}

void Kel_StandardBistateButton::setImage(visualState state, const QString& path)
{
    if (state < 0 || state >= kVisualStateCount)
        return;
    mImageNames[state] = path;
    const QPixmap pixmap = Kel_ResourceImage::load(path);
    if (pixmap.isNull())
        return;
    mPixmaps[state] = pixmap;
    updateGeometry();
    update();
}

void Kel_StandardBistateButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (connectModelsAndScripts(environment, mState, mDisabled))
        handleStateChangeMsgDefault();
}

bool Kel_StandardBistateButton::connectModelsAndScripts(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                                        Kel_BoundPropertyBase& state, Kel_BoundPropertyBase& disabled)
{
    if (!mStateConnSpec.isEmpty()) {
        state.setSpec(mStateConnSpec);
        disabled.setSpec(mStateConnSpec + QStringLiteral(".disabled"));
        if (!Kel_BoundPropertyBase::connectAll(environment, {&state, &disabled}))
            return false; // a notification deleted the button
    }
    return mOffScript.connect(environment) && mOnScript.connect(environment);
}

QSize Kel_StandardBistateButton::sizeHint() const
{
    const QPixmap& pixmap = mPixmaps[mVisualState];
    return pixmap.isNull() ? kSizeWithoutImage : Kel_ResourceImage::logicalSize(pixmap);
}

void Kel_StandardBistateButton::setState(visualState state)
{
    mVisualState = state;
    update();
}

void Kel_StandardBistateButton::handleStateChangeMsgDefault()
{
    bool disabled = false;
    if (mDisabled.isConnected() && mDisabled->get(disabled) && disabled) {
        setState(kDisabledState);
    } else if (mState.isConnected()) {
        bool on = false;
        mState->get(on);
        setState(on ? kOnState : kOffState);
    } else {
        setState(kDisabledState); // nothing to show or to operate
    }
}

bool Kel_StandardBistateButton::runScript(Kel_ActionScriptRunner& script)
{
    // A script whose models are missing, or whose action is disabled, does nothing.
    if (script.isReady() && !script.run())
        return false;
    handleStateChangeMsgDefault();
    return true;
}

void Kel_StandardBistateButton::trackEnter()
{
    if (!mPressed)
        return;
    if (mVisualState == kOffState)
        setState(kOffTrackingState);
    else if (mVisualState == kOnState)
        setState(kOnTrackingState);
}

void Kel_StandardBistateButton::trackLeave()
{
    if (mVisualState == kOffTrackingState)
        setState(kOffState);
    else if (mVisualState == kOnTrackingState)
        setState(kOnState);
}

void Kel_StandardBistateButton::mousePressEvent(QMouseEvent* event)
{
    // The other buttons are left to context menus and the parent.
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    mPressed = true;
    trackEnter();
}

void Kel_StandardBistateButton::mouseMoveEvent(QMouseEvent* event)
{
    if (!mPressed) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    if (rect().contains(event->pos()))
        trackEnter();
    else
        trackLeave();
}

void Kel_StandardBistateButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !mPressed) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    event->accept();
    mPressed = false;
    // Released after the pointer left, the button is off or on again and runs nothing.
    if (mVisualState == kOffTrackingState)
        runScript(mOnScript);
    else if (mVisualState == kOnTrackingState)
        runScript(mOffScript);
}

void Kel_StandardBistateButton::enterEvent(Kel_QtCompat::EnterEvent* event)
{
    trackEnter();
    QWidget::enterEvent(event);
}

void Kel_StandardBistateButton::leaveEvent(QEvent* event)
{
    trackLeave();
    QWidget::leaveEvent(event);
}

void Kel_StandardBistateButton::paintEvent(QPaintEvent*)
{
    const QPixmap& pixmap = mPixmaps[mVisualState];
    if (pixmap.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), pixmap);
}
