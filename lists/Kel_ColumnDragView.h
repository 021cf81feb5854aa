#ifndef KEL_COLUMNDRAGVIEW_H
#define KEL_COLUMNDRAGVIEW_H

#include "kelcore_export.h"

#include "Kel_ViewBase.h"

#include <QColor>

namespace kel_listwithcolumns {

// A stand-in laid over the column a header is dragging, in every row of a
// columned list: it tints the column's cell and separator so that the user
// sees which column travels. It is a proxy view of the row stack, so it
// takes no place among the cells.
class KELCORE_EXPORT Kel_ColumnDragView : public Kel_ViewBase
{
public:
    explicit Kel_ColumnDragView(const QRect& rectInRow = QRect());

    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;

    void setTint(const QColor& color) { mTint = color; }
    QColor tint() const { return mTint; }

private:
    QColor mTint;
};

} // namespace kel_listwithcolumns

#endif
