#include "Kel_RelativeMouseTracker.h"

#include "Kel_QtCompat.h"
#include "Kel_RelativeMotionSource_p.h"

#include <QEvent>
#include <QMouseEvent>

Kel_RelativeMouseTracker::Kel_RelativeMouseTracker(QWidget* target, Qt::MouseButton button)
    : QObject(target), mTargetP(target), mButton(button), mSourceP(Kel_RelativeMotionSource::create())
{
    if (mTargetP)
        mTargetP->installEventFilter(this);
}

Kel_RelativeMouseTracker::~Kel_RelativeMouseTracker()
{
    // Quietly: nobody listens to an object being destroyed.
    if (mTracking) {
        mTracking = false;
        mSourceP->end();
        if (mTargetP && mHidesCursor)
            mTargetP->unsetCursor();
    }
}

void Kel_RelativeMouseTracker::stop()
{
    if (!mTracking)
        return;
    mTracking = false;
    mSourceP->end();
    if (mTargetP && mHidesCursor)
        mTargetP->unsetCursor();
    emit finished(mTotal);
}

void Kel_RelativeMouseTracker::report(const QPoint& delta)
{
    if (!mTracking || delta.isNull())
        return;
    mTotal += delta;
    emit moved(delta.x(), delta.y());
}

bool Kel_RelativeMouseTracker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != mTargetP)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mTracking || mouse->button() != mButton || !mTargetP->isEnabled())
            break;
        mTracking = true;
        mTotal = QPoint();
        if (mHidesCursor)
            mTargetP->setCursor(Qt::BlankCursor);
        mSourceP->begin(mTargetP, Kel_QtCompat::globalMousePosition(mouse), [this](const QPoint& delta) { report(delta); });
        emit started();
        return true;
    }
    case QEvent::MouseMove:
        if (!mTracking)
            break;
        report(mSourceP->pointerMoved(Kel_QtCompat::globalMousePosition(static_cast<QMouseEvent*>(event))));
        return true;
    case QEvent::MouseButtonRelease:
        if (!mTracking || static_cast<QMouseEvent*>(event)->button() != mButton)
            break;
        stop();
        return true;
    case QEvent::Hide:
    case QEvent::EnabledChange:
        stop();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
