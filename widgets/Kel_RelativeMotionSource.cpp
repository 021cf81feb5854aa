#include "Kel_RelativeMotionSource_p.h"

#include <QCursor>
#include <QWidget>

Kel_RelativeMotionSource::~Kel_RelativeMotionSource() = default;

void Kel_PointerWarpMotionSource::begin(QWidget* widget, const QPoint& globalAnchor, const Report&)
{
    mWidgetP = widget;
    mAnchor = globalAnchor;
    mLast = globalAnchor;
    // Moves outside the widget keep coming to it until the release.
    if (mWidgetP)
        mWidgetP->grabMouse();
}

QPoint Kel_PointerWarpMotionSource::pointerMoved(const QPoint& globalPosition)
{
    const QPoint delta = globalPosition - mLast;
    mLast = globalPosition;
    if ((globalPosition - mAnchor).manhattanLength() > kWarpDistance) {
        // Warping only now and then keeps the error of moves queued before
        // the warp (measured from the wrong place) rare.
        mLast = mAnchor;
        QCursor::setPos(mAnchor);
    }
    return delta;
}

void Kel_PointerWarpMotionSource::end()
{
    if (mWidgetP)
        mWidgetP->releaseMouse();
    mWidgetP = nullptr;
}
