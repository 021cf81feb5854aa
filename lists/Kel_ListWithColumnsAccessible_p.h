#ifndef KEL_LISTWITHCOLUMNSACCESSIBLE_P_H
#define KEL_LISTWITHCOLUMNSACCESSIBLE_P_H

// Internal to the library; not installed (exported for white-box tests).

#include "kelcore_export.h"

#include "Kel_ListViewAccessible_p.h"

#include <QAccessible>

class Kel_ListWithColumns;

// The accessible interface of a columned list: a table with one column per
// visible column of its column data model, in the order shown, headed by
// the columns' labels. A cell is the column's view in the row view, shown
// for its row quietly.
class KELCORE_EXPORT Kel_ListWithColumnsAccessible : public Kel_ListViewAccessible
{
public:
    explicit Kel_ListWithColumnsAccessible(Kel_ListWithColumns* list);

    Kel_ListWithColumns* columnedList() const;

    // The columns shown: the row stack holds a leading blank, then a cell
    // and its separator per column.
    int columnCount() const override;
    Kel_ViewInterface* columnView(Kel_ViewInterface* rowView, int column) const override;
    QString columnHeaderText(int column) const override;
    // The grid cell while keys walk the cells, else the current row's first cell.
    QAccessibleInterface* focusChild() const override;

    // The visible columns changed (type ColumnsInserted, ColumnsRemoved or
    // ModelReset, with the positions concerned): the cells made so far are
    // dropped and, while a client listens, told with a table-model event.
    static void columnsChanged(Kel_ListWithColumns* list, QAccessibleTableModelChangeEvent::ModelChangeType type,
                               long first, long last);
};

#endif
