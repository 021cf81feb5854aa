#ifndef KEL_VIEWCONTAINERINTERFACE_H
#define KEL_VIEWCONTAINERINTERFACE_H

#include "kelcore_export.h"

#include <QRect>
#include <QSize>

class Kel_ViewInterface;
class QWidget;

// What a light-weight view asks of its parent: a container view, or the
// bridge widget at the top of a view tree.
class KELCORE_EXPORT Kel_ViewContainerInterface
{
public:
    virtual ~Kel_ViewContainerInterface();

    // child changed its size from oldSize to newSize.
    virtual void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) = 0;
    // child inserted (deleted) a row of the given height at vertical position y.
    virtual void childInsertedRow(Kel_ViewInterface* child, int y, int height) = 0;
    virtual void childDeletedRow(Kel_ViewInterface* child, int y, int height) = 0;
    virtual void childInsertedColumn(Kel_ViewInterface* child) = 0;
    // The area rect of child (child coordinates) needs repainting: at once
    // when immediate, else with the next paint.
    virtual void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) = 0;
    // The Qt widget that finally hosts the view tree, or null.
    virtual QWidget* getBridgeWidget() = 0;
    // Places a real editor widget over child at (x, y) in child coordinates.
    virtual void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) = 0;
    // Removes and deletes view.
    virtual void removeView(Kel_ViewInterface* view) = 0;
    // Gives up view without deleting it, so that another container can own
    // it; false when view is not held here. This base holds nothing.
    virtual bool releaseView(Kel_ViewInterface* view);
};

#endif
