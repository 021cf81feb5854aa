#include "Kel_ImmediateActionButton.h"

#include "Kel_WhatsThis.h"
#include "Mv_MessageDispatcher.h"
#include "Mv_Variant.h"
#include "Ost_Resource.h"
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QContextMenuEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace {

const char* const kRepeatTaskName = "ImmediateActionButtonAutoRepeatTask";
const int kRepeatTaskPriority = 5;
const QSize kSizeWithoutImage(32, 32);

const Mv_MessageDispatcher<Kel_ImmediateActionButton>& enabledDispatcher()
{
    static const Mv_MessageDispatcher<Kel_ImmediateActionButton> dispatcher(
        &Kel_ImmediateActionButton::handleMsgEnabledStateDefault);
    return dispatcher;
}

const Mv_MessageDispatcher<Kel_ImmediateActionButton>& visibleDispatcher()
{
    static const Mv_MessageDispatcher<Kel_ImmediateActionButton> dispatcher(
        &Kel_ImmediateActionButton::handleMsgVisibleStateDefault);
    return dispatcher;
}

} // namespace

Kel_ImmediateActionButton::Kel_ImmediateActionButton(QWidget* parent, const char* name, QString actionScript,
                                                     QString /*ignoredText*/)
    : QWidget(parent)
    , mActionDelay(false)
    , mImageReversed(false)
    , mQuorAutoRepeat(false)
    , mVisualState(kNormalState)
    , mRepeatState(0)
    , mRepeatDelay(1000)
    , mRepeatInterval(500)
{
    setObjectName(QString::fromLatin1(name));
    setActionScript(actionScript.toLatin1());

    const auto blank = Mv_ConnectionEnvironment::blankEnvironment();
    mEnabledListenerP.reset(new BoolListener(QString(), blank));
    mEnabledListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { enabledDispatcher().dispatch(this, m); });
    mVisibleListenerP.reset(new BoolListener(QString(), blank));
    mVisibleListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { visibleDispatcher().dispatch(this, m); });
    mContextMenuListenerP.reset(new ContextMenuAction::Listener(QString(), blank));

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ImmediateActionButton");
}

Kel_ImmediateActionButton::~Kel_ImmediateActionButton()
{
    mRepeatTaskP.reset();
    // Leave the models before the widget part goes away.
    mEnabledListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mVisibleListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mContextMenuListenerP.reset();
    mVisibleListenerP.reset();
    mEnabledListenerP.reset();
}

void Kel_ImmediateActionButton::setActionScript(QByteArray script)
{
    if (script == mActionScript)
        return;
    mActionScript = script;
    mScriptP.reset();
    if (!script.isEmpty())
        mScriptP.reset(Uip_ParseScript(QString::fromLatin1(script), nullptr));
}

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

void Kel_ImmediateActionButton::setImage(visualState state, const QByteArray& path)
{
    mImageNames[state] = path;
    // The image path is joined to the resource path as it is (no separator added).
    QImage image(Ost_Resource::getResourcePath() + QString::fromLocal8Bit(path));
    if (image.isNull())
        return;
    if (mImageReversed)
        image = image.mirrored(true, false);
    mPixmaps[state] = QPixmap::fromImage(image);
    updateGeometry();
    update();
}

void Kel_ImmediateActionButton::setQuorAutoRepeat(bool on)
{
    mQuorAutoRepeat = on;
    if (!on)
        stopRepeat();
}

void Kel_ImmediateActionButton::setRepeatDelay(int ms)
{
    mRepeatDelay = ms;
}

void Kel_ImmediateActionButton::setRepeatInterval(int ms)
{
    mRepeatInterval = ms;
    if (mRepeatTaskP)
        mRepeatTaskP->setTimer(ms);
}

void Kel_ImmediateActionButton::setActionDelay(bool delay)
{
    mActionDelay = delay;
}

void Kel_ImmediateActionButton::setEnabledStateConnSpec(QByteArray spec)
{
    mEnabledConnSpec = spec;
}

void Kel_ImmediateActionButton::setVisibleStateConnectionSpec(QByteArray spec)
{
    mVisibleStateConnectionSpec = spec;
}

void Kel_ImmediateActionButton::setContextMenuConnectionSpec(QByteArray spec)
{
    mContextMenuConnSpec = spec;
}

void Kel_ImmediateActionButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_ImmediateActionButton> self(this); // a notification may delete the form
    if (mScriptP) {
        const std::shared_ptr<Uip_ParseNode> script = mScriptP;
        const bool connected = script->ConnectAndTypeCheck(environment, this);
        if (!self)
            return;
        if (!connected && mScriptP == script)
            mScriptP.reset(); // inert until it is given a new script
    }
    const std::pair<Mv_ListenerBase*, const QByteArray*> listeners[] = {
        {mEnabledListenerP.get(), &mEnabledConnSpec},
        {mVisibleListenerP.get(), &mVisibleStateConnectionSpec},
        {mContextMenuListenerP.get(), &mContextMenuConnSpec},
    };
    for (const auto& listener : listeners) {
        if (listener.second->isEmpty())
            continue;
        listener.first->SetConnectionName(QString::fromUtf8(*listener.second));
        listener.first->connect(environment);
        if (!self)
            return;
    }
}

QSize Kel_ImmediateActionButton::sizeHint() const
{
    const QPixmap& pixmap = mPixmaps[mVisualState];
    return pixmap.isNull() ? kSizeWithoutImage : pixmap.size();
}

void Kel_ImmediateActionButton::handleMsgEnabledStateDefault()
{
    if (!mEnabledListenerP->isConnectedToModel())
        return;
    bool enabled = true;
    mEnabledListenerP->get(enabled);
    mVisualState = enabled ? kNormalState : kDisabledState;
    setEnabled(enabled);
    repaint();
}

void Kel_ImmediateActionButton::handleMsgVisibleStateDefault()
{
    bool visible = mVisibleStateConnectionSpec.isEmpty();
    mVisibleListenerP->get(visible);
    if (visible)
        show();
    else
        hide();
}

bool Kel_ImmediateActionButton::isContextMenuClick(const QMouseEvent* event) const
{
    return event->button() == Qt::RightButton && !mContextMenuConnSpec.isEmpty();
}

void Kel_ImmediateActionButton::mousePressEvent(QMouseEvent* event)
{
    if (mVisualState == kDisabledState || isContextMenuClick(event)) {
        event->ignore();
        return;
    }
    QPointer<Kel_ImmediateActionButton> self(this);
    mVisualState = kTrackingState;
    repaint();
    if (!mActionDelay) {
        runScript();
        if (!self)
            return;
    }
    if (mQuorAutoRepeat && !mRepeatTaskP) {
        mRepeatTaskP.reset(new TaskSchedulerTask(QString::fromLatin1(kRepeatTaskName), kRepeatTaskPriority,
                                                 [this] { repeatHandler(); }, false, mRepeatDelay, true));
        mRepeatState = 1;
        TaskScheduler::instance()->addTask(mRepeatTaskP.get(), false);
    }
}

void Kel_ImmediateActionButton::mouseReleaseEvent(QMouseEvent* event)
{
    // The right button belongs to the context menu; its press was not taken.
    if (isContextMenuClick(event)) {
        event->ignore();
        return;
    }
    handleMsgEnabledStateDefault();
    stopRepeat();
    if (mActionDelay && mScriptP && mVisualState != kDisabledState && rect().contains(event->pos()))
        runScript();
}

void Kel_ImmediateActionButton::leaveEvent(QEvent* event)
{
    // A drag out of the button drops the tracking image.
    handleMsgEnabledStateDefault();
    QWidget::leaveEvent(event);
}

void Kel_ImmediateActionButton::contextMenuEvent(QContextMenuEvent* event)
{
    if (mVisualState == kDisabledState || !mContextMenuListenerP->isConnectedToModel()) {
        QWidget::contextMenuEvent(event);
        return;
    }
    event->accept();
    mContextMenuListenerP->call(this, event);
}

void Kel_ImmediateActionButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(backgroundRole()));
    painter.drawPixmap(0, 0, mPixmaps[mVisualState]);
}

void Kel_ImmediateActionButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        stopRepeat();
    QWidget::changeEvent(event);
}

void Kel_ImmediateActionButton::hideEvent(QHideEvent* event)
{
    stopRepeat();
    QWidget::hideEvent(event);
}

void Kel_ImmediateActionButton::runScript()
{
    if (!mScriptP)
        return;
    // Keeps the tree alive even if the script's models delete this button.
    const std::shared_ptr<Uip_ParseNode> script = mScriptP;
    Mv_Variant result;
    script->Evaluate(&result);
}

void Kel_ImmediateActionButton::repeatHandler()
{
    if (mRepeatState == 0)
        return;
    QPointer<Kel_ImmediateActionButton> self(this);
    runScript();
    // The script may have released, disabled or deleted the button.
    if (!self || !mRepeatTaskP || mRepeatState != 1)
        return;
    mRepeatState = 2;
    mRepeatTaskP->setTimer(mRepeatInterval);
}

void Kel_ImmediateActionButton::stopRepeat()
{
    mRepeatTaskP.reset();
    mRepeatState = 0;
}
