#include "Kel_AnimationTimer_p.h"

#include <QEvent>
#include <QTimerEvent>
#include <QWidget>

Kel_AnimationTimer::Kel_AnimationTimer(QWidget* widget, int intervalMs, const std::function<void()>& step)
    : mWidgetP(widget), mStep(step), mInterval(intervalMs), mRunning(false)
{
    widget->installEventFilter(this);
}

void Kel_AnimationTimer::setRunning(bool running)
{
    mRunning = running;
    apply();
}

void Kel_AnimationTimer::setInterval(int ms)
{
    mInterval = qMax(10, ms);
    if (mTimer.isActive())
        mTimer.start(mInterval, this);
}

void Kel_AnimationTimer::apply()
{
    if (mRunning && mWidgetP->isVisible()) {
        if (!mTimer.isActive())
            mTimer.start(mInterval, this);
    } else {
        mTimer.stop();
    }
}

bool Kel_AnimationTimer::eventFilter(QObject* watched, QEvent* event)
{
    // The widget's visible flag has changed by the time these are sent.
    if (watched == mWidgetP && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        apply();
    return false;
}

void Kel_AnimationTimer::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == mTimer.timerId())
        mStep();
    else
        QObject::timerEvent(event);
}
