#ifndef KEL_BLANKVIEW_H
#define KEL_BLANKVIEW_H

#include "kelcore_export.h"

#include "Kel_ViewBase.h"

// A view that paints nothing: it only takes room (a spacer in a row, a
// placeholder cell, the default row of an empty list).
class KELCORE_EXPORT Kel_BlankView : public Kel_ViewBase
{
public:
    explicit Kel_BlankView(const QSize& size = QSize(0, 0));

    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;
};

#endif
