#ifndef KEL_ANIMATIONTIMER_P_H
#define KEL_ANIMATIONTIMER_P_H

#include <QBasicTimer>
#include <QObject>
#include <functional>

class QWidget;

// Steps a widget's animation at a fixed interval while the animation is
// wanted and the widget is shown: it watches the widget's show and hide
// events, so that an indicator nobody sees costs nothing.
class Kel_AnimationTimer : public QObject
{
public:
    Kel_AnimationTimer(QWidget* widget, int intervalMs, const std::function<void()>& step);

    // Whether the animation is wanted; it runs only while the widget is shown too.
    void setRunning(bool running);
    void setInterval(int ms);
    int interval() const { return mInterval; }
    // Whether steps are being taken now.
    bool isActive() const { return mTimer.isActive(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void apply();

    QWidget* mWidgetP;
    std::function<void()> mStep;
    QBasicTimer mTimer;
    int mInterval;
    bool mRunning;
};

#endif
