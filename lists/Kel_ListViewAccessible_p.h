#ifndef KEL_LISTVIEWACCESSIBLE_P_H
#define KEL_LISTVIEWACCESSIBLE_P_H

// Internal to the library; not installed (exported for white-box tests).

#include "kelcore_export.h"

#include "Kel_ViewAccessible_p.h"

#include <QAccessibleInterface>
#include <QHash>

class Kel_ListView;

// The accessible interface of a list view: a list (or, with several columns
// or column headers, a table) whose children are its cells, made when asked
// for, whatever the array's size: no row is painted to be read. A cell's
// text is read by showing its row in the row view quietly (nothing repaints).
//
// A list that shows columns presents itself as a table by overriding three
// functions: columnCount, columnView (the view of the row view that shows a
// column) and columnHeaderText. Roles, children, cells, their texts,
// rectangles, header cells and the table interface follow from those.
class KELCORE_EXPORT Kel_ListViewAccessible : public Kel_ViewAccessible, public QAccessibleTableInterface
{
public:
    explicit Kel_ListViewAccessible(Kel_ListView* list);
    ~Kel_ListViewAccessible() override;

    Kel_ListView* list() const;

    // What a columned list overrides. Here one column, the whole row view.
    int columnCount() const override;
    // The view inside rowView that shows column; null when none.
    virtual Kel_ViewInterface* columnView(Kel_ViewInterface* rowView, int column) const;
    // The header label of column; while every label is empty (as here) the
    // list has no header cells.
    virtual QString columnHeaderText(int column) const;

    bool hasColumnHeaders() const;
    // What the cell at (row, column) shows; a row outside the array shows nothing.
    QString cellText(long row, int column) const;
    // The cell's rectangle on the screen; row -1 is the header line (above the first row).
    QRect cellRect(long row, int column) const;
    bool isCellOffscreen(long row, int column) const;
    // The cell's interface, made on first ask; row -1 for column headers.
    // Null outside the rows and columns.
    QAccessibleInterface* cellInterface(long row, int column) const;
    // Drops the cells' interfaces (the rows were renumbered or replaced).
    void forgetCells();

    // Events of the list, reported only while a client listens: the
    // selection changed (rows whose state changed, or many), the current
    // row got the focus, the array's rows changed.
    static void selectionChanged(Kel_ListView* list, const QList<long>& changedRows, bool many);
    static void rowsReplaced(Kel_ListView* list, long first, long removedEnd, long insertedCount);
    static void rowChanged(Kel_ListView* list, long row);

    // Kel_ViewAccessible
    bool presentsDescendants() const override { return true; }
    QAccessible::Role role() const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    using Kel_ViewAccessible::text;
    QString text(QAccessible::Text type) const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;
    // press runs the enter action (as Return does); set focus.
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;

    // QAccessibleTableInterface
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override { return columnHeaderText(column); }
    QString rowDescription(int) const override { return QString(); }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return QList<int>(); }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    // Selecting adds the row in the multiple modes, else selects it alone;
    // the selection action runs as after a click.
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

private:
    int headerCount() const;
    QWidget* host(QRect* listRectInHost) const;

    mutable QHash<quint64, QAccessible::Id> mCells;
};

// One cell of a list (row, column), or a column header (row -1).
class Kel_ListCellAccessible : public QAccessibleInterface,
                               public QAccessibleTableCellInterface,
                               public QAccessibleActionInterface
{
public:
    Kel_ListCellAccessible(Kel_ListViewAccessible* table, long row, int column);

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text type) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleTableCellInterface
    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return QList<QAccessibleInterface*>(); }
    int columnIndex() const override { return mColumn; }
    int rowIndex() const override { return int(mRow); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return mTableP; }

    // QAccessibleActionInterface: press selects the row alone (running the
    // selection action), toggle adds or removes it in the multiple modes,
    // set focus gives the list the focus on this row.
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString&) const override { return QStringList(); }

    long row() const { return mRow; }

private:
    Kel_ListViewAccessible* mTableP; // owns this cell's registration
    long mRow;
    int mColumn;
};

#endif
