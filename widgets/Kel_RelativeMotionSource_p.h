#ifndef KEL_RELATIVEMOTIONSOURCE_P_H
#define KEL_RELATIVEMOTIONSOURCE_P_H

#include <QPoint>
#include <functional>
#include <memory>

class QWidget;

// Where the relative mouse tracker's motion comes from: the seam between the
// portable way (pointer moves, warped back before they reach the screen's
// edge) and the platform's own relative input.
class Kel_RelativeMotionSource
{
public:
    typedef std::function<void(const QPoint&)> Report;

    virtual ~Kel_RelativeMotionSource();
    // Starts tracking after a press at globalAnchor on widget; motion the
    // source finds itself goes to report.
    virtual void begin(QWidget* widget, const QPoint& globalAnchor, const Report& report) = 0;
    // The pointer moved to globalPosition: answers the motion it stands for
    // (null when the source reports its motion its own way).
    virtual QPoint pointerMoved(const QPoint& globalPosition) = 0;
    virtual void end() = 0;

    // The source for this platform.
    static std::unique_ptr<Kel_RelativeMotionSource> create();
};

// The portable source: the difference between successive pointer positions;
// a pointer that strays far from the anchor is put back there (QCursor::setPos),
// and the move that the warp causes counts for nothing.
class Kel_PointerWarpMotionSource : public Kel_RelativeMotionSource
{
public:
    // How far the pointer may stray before it is put back.
    static const int kWarpDistance = 64;

    void begin(QWidget* widget, const QPoint& globalAnchor, const Report& report) override;
    QPoint pointerMoved(const QPoint& globalPosition) override;
    void end() override;

private:
    QWidget* mWidgetP = nullptr; // the tracker's target, grabbing the mouse
    QPoint mAnchor;
    QPoint mLast;
};

#endif
