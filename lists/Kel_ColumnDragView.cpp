#include "Kel_ColumnDragView.h"

#include <QPainter>

namespace kel_listwithcolumns {

Kel_ColumnDragView::Kel_ColumnDragView(const QRect& rectInRow)
    : mTint(100, 136, 170, 70)
{
    setRectInParent(rectInRow);
    setName(QStringLiteral("ColumnDrag"));
    // Above the cells, whatever order they were added in.
    setZOrder(1);
}

void Kel_ColumnDragView::drawContents(QPainter* painter, const QRect& rect)
{
    if (painter)
        painter->fillRect(rect.intersected(getLocalDrawingRect()), mTint);
}

Kel_ViewInterface* Kel_ColumnDragView::clone()
{
    return new Kel_ColumnDragView(*this);
}

} // namespace kel_listwithcolumns
