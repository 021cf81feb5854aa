#include "Kel_ImmediateActionButton.h"

#include "Kel_KeyboardClick_p.h"
#include "Kel_WhatsThis.h"
#include "Ost_Resource.h"

#include <QContextMenuEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

namespace {

const QSize kSizeWithoutImage(32, 32);

} // namespace

Kel_ImmediateActionButton::Kel_ImmediateActionButton(QWidget* parent, const char* name, QString actionScript,
                                                     QString /*ignoredText*/)
    : QWidget(parent), mActionDelay(false), mImageReversed(false), mVisualState(kNormalState), mGreyedForScript(false)
{
    setObjectName(QString::fromLatin1(name));
    setActionScript(actionScript.toLatin1());

    mEnabled.onNotify([this] { handleMsgEnabledStateDefault(); });
    mVisible.onNotify([this] { handleMsgVisibleStateDefault(); });
    mScript.onReadinessChanged([this] { handleMsgEnabledStateDefault(); });

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ImmediateActionButton");
    // Tab reaches it, Space or Return presses it.
    Kel_KeyboardClick::install(this);
}

Kel_ImmediateActionButton::~Kel_ImmediateActionButton() = default;

void Kel_ImmediateActionButton::setNormalImage(QByteArray path)
{
    setImage(kNormalState, path);
}

void Kel_ImmediateActionButton::setTrackingImage(QByteArray path)
{
    setImage(kTrackingState, path);
}

void Kel_ImmediateActionButton::setDisabledImage(QByteArray path)
{
    setImage(kDisabledState, path);
}

void Kel_ImmediateActionButton::setImageReversed(bool reversed)
{
    mImageReversed = reversed;
}

QPixmap Kel_ImmediateActionButton::loadButtonImage(const QByteArray& path, bool reversed)
{
    // The image path is joined to the resource path as it is (no separator added).
    QImage image(Ost_Resource::getResourcePath() + QString::fromLocal8Bit(path));
    if (image.isNull())
        return QPixmap();
    return QPixmap::fromImage(reversed ? image.mirrored(true, false) : image);
}

void Kel_ImmediateActionButton::setImage(visualState state, const QByteArray& path)
{
    mImageNames[state] = path;
    const QPixmap pixmap = loadButtonImage(path, mImageReversed);
    if (pixmap.isNull())
        return;
    mPixmaps[state] = pixmap;
    updateGeometry();
    update();
}

void Kel_ImmediateActionButton::setActionDelay(bool delay)
{
    mActionDelay = delay;
}

void Kel_ImmediateActionButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!mScript.connect(environment)
        || !Kel_BoundPropertyBase::connectAll(environment, {&mEnabled, &mVisible, &mContextMenu}))
        return; // a notification deleted the form
    handleMsgEnabledStateDefault();
}

QSize Kel_ImmediateActionButton::sizeHint() const
{
    const QPixmap& pixmap = pixmapForState(mVisualState);
    return pixmap.isNull() ? kSizeWithoutImage : pixmap.size();
}

void Kel_ImmediateActionButton::handleMsgEnabledStateDefault()
{
    const bool ready = mScript.isReady();
    if (!mEnabled.isConnected()) {
        // Nothing else changes the state then: a release keeps the tracking image.
        if (!ready)
            showEnabled(false);
        else if (mGreyedForScript)
            showEnabled(true);
        mGreyedForScript = !ready;
        return;
    }
    mGreyedForScript = !ready;
    bool enabled = true;
    mEnabled->get(enabled);
    showEnabled(enabled && ready);
}

void Kel_ImmediateActionButton::showEnabled(bool enabled)
{
    mVisualState = enabled ? kNormalState : kDisabledState;
    setEnabled(enabled);
    repaint();
}

void Kel_ImmediateActionButton::handleMsgVisibleStateDefault()
{
    bool visible = !mVisible.isNamed();
    mVisible->get(visible);
    if (visible)
        show();
    else
        hide();
}

bool Kel_ImmediateActionButton::isContextMenuClick(const QMouseEvent* event) const
{
    return event->button() == Qt::RightButton && mContextMenu.isNamed();
}

void Kel_ImmediateActionButton::mousePressEvent(QMouseEvent* event)
{
    if (mVisualState == kDisabledState || isContextMenuClick(event)) {
        event->ignore();
        return;
    }
    mVisualState = kTrackingState;
    repaint();
    if (!mActionDelay && !mScript.run())
        return; // the script deleted the button
    // Only a button still there to be held repeats: the script may have
    // disabled or hidden it, and then no release will come.
    if (isEnabled() && isVisible() && mVisualState != kDisabledState)
        mScript.startRepeat();
}

void Kel_ImmediateActionButton::mouseReleaseEvent(QMouseEvent* event)
{
    // The right button belongs to the context menu; its press was not taken.
    if (isContextMenuClick(event)) {
        event->ignore();
        return;
    }
    handleMsgEnabledStateDefault();
    mScript.stopRepeat();
    if (mActionDelay && mVisualState != kDisabledState && rect().contains(event->pos()))
        mScript.run();
}

void Kel_ImmediateActionButton::leaveEvent(QEvent* event)
{
    // A drag out of the button drops the tracking image.
    handleMsgEnabledStateDefault();
    QWidget::leaveEvent(event);
}

void Kel_ImmediateActionButton::contextMenuEvent(QContextMenuEvent* event)
{
    if (mVisualState == kDisabledState || !mContextMenu.isConnected()) {
        QWidget::contextMenuEvent(event);
        return;
    }
    event->accept();
    mContextMenu->call(this, event);
}

void Kel_ImmediateActionButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(backgroundRole()));
    painter.drawPixmap(0, 0, pixmapForState(mVisualState));
}

void Kel_ImmediateActionButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        mScript.stopRepeat();
    QWidget::changeEvent(event);
}

void Kel_ImmediateActionButton::hideEvent(QHideEvent* event)
{
    mScript.stopRepeat();
    QWidget::hideEvent(event);
}
