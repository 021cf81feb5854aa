#ifndef KEL_COLUMNSEPARATORVIEW_H
#define KEL_COLUMNSEPARATORVIEW_H

#include "kelcore_export.h"

#include "Kel_ViewBase.h"

#include <QColor>

namespace kel_listwithcolumns {

// The thin rule after each cell of a columned list's row: a vertical line in
// the middle of its width, under the header's divider.
class KELCORE_EXPORT Kel_ColumnSeparatorView : public Kel_ViewBase
{
public:
    explicit Kel_ColumnSeparatorView(const QSize& size = QSize(5, 47));

    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;

    void setLineColor(const QColor& color) { mLineColor = color; }
    QColor lineColor() const { return mLineColor; }

private:
    QColor mLineColor;
};

} // namespace kel_listwithcolumns

#endif
