#ifndef KEL_RELATIVEMOUSETRACKER_H
#define KEL_RELATIVEMOUSETRACKER_H

#include "kelcore_export.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <memory>

class Kel_RelativeMotionSource;

// Reports how far the mouse moves while a button is held on a widget, not
// where it is: jog wheels, scrub bars and drag-to-change fields turn the
// motion into values, and the pointer never runs into the screen's edge.
// While tracking, the widget holds the mouse, the pointer is hidden (unless
// told otherwise) and stays near where the button went down; on Windows the
// motion comes from the raw mouse input, elsewhere from the pointer's moves.
//
//   auto* tracker = new Kel_RelativeMouseTracker(jogWidget);
//   connect(tracker, &Kel_RelativeMouseTracker::moved, [](int dx, int) { jog(dx); });
class KELCORE_EXPORT Kel_RelativeMouseTracker : public QObject
{
    Q_OBJECT

public:
    // Tracks presses of button on target (which becomes the parent and
    // whose mouse events the tracker watches). The press, moves and release
    // of a tracked drag are the tracker's: the widget does not see them.
    explicit Kel_RelativeMouseTracker(QWidget* target, Qt::MouseButton button = Qt::LeftButton);
    ~Kel_RelativeMouseTracker() override;

    QWidget* target() const { return mTargetP; }
    bool isTracking() const { return mTracking; }
    // The motion summed since the button went down.
    QPoint totalMotion() const { return mTotal; }
    // Whether the pointer is hidden while tracking (the default).
    void setHidesCursor(bool hides) { mHidesCursor = hides; }
    bool hidesCursor() const { return mHidesCursor; }

    // Ends tracking as if the button had been released (a widget that is
    // hidden or disabled mid-drag stops tracking the same way).
    void stop();

signals:
    void started();
    // Motion since the previous report, in pixels (right and down positive).
    void moved(int dx, int dy);
    void finished(const QPoint& totalMotion);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void report(const QPoint& delta);

    QPointer<QWidget> mTargetP;
    Qt::MouseButton mButton;
    bool mHidesCursor = true;
    bool mTracking = false;
    QPoint mTotal;
    std::unique_ptr<Kel_RelativeMotionSource> mSourceP;
};

#endif
