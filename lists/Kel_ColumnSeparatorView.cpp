#include "Kel_ColumnSeparatorView.h"

#include <QPainter>

namespace kel_listwithcolumns {

Kel_ColumnSeparatorView::Kel_ColumnSeparatorView(const QSize& size)
    : mLineColor(200, 200, 200)
{
    setSize(size);
    setName(QStringLiteral("Separator"));
}

void Kel_ColumnSeparatorView::drawContents(QPainter* painter, const QRect&)
{
    if (!painter)
        return;
    const int x = getWidth() / 2;
    painter->setPen(mLineColor);
    painter->drawLine(x, 0, x, getHeight() - 1);
}

Kel_ViewInterface* Kel_ColumnSeparatorView::clone()
{
    return new Kel_ColumnSeparatorView(*this);
}

} // namespace kel_listwithcolumns
