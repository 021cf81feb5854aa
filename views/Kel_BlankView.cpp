#include "Kel_BlankView.h"

Kel_BlankView::Kel_BlankView(const QSize& size) : Kel_ViewBase()
{
    setSize(size);
}

void Kel_BlankView::drawContents(QPainter*, const QRect&)
{
}

Kel_ViewInterface* Kel_BlankView::clone()
{
    return new Kel_BlankView(*this);
}
