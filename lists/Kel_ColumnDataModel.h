#ifndef KEL_COLUMNDATAMODEL_H
#define KEL_COLUMNDATAMODEL_H

#include "kelcore_export.h"

#include <QString>
#include <functional>
#include <memory>
#include <vector>

class Mv_ConnectionDict;
class Mve_RecordArray;

// The columns of a columned list and of its header, described by the
// application and published as models under one base name B:
//
//   B                                   the columns (a record array, one row
//                                       per column index), with the fields
//                                       B.identifier, B.label, B.width,
//                                       B.minWidth, B.viewType, B.readOnly,
//                                       B.connectionEnvironmentVars,
//                                       B.canHide, B.visible, B.isSorted and
//                                       B.isSortedAscending
//   B.sortedVisibleColumns              column index at each visible position
//   B.hiddenColumns                     column indices of the hidden columns
//   B.sortedVisibleColumns.arrayMetaData, B.hiddenColumns.arrayMetaData
//                                       the two arrays' containers
//   B.hideColumn, B.sortByColumn        per-column actions
//   B.showColumn                        per-column action taking the visible
//                                       position to show the column at
//   B.columnBeingDragged                visible position dragged in a header
//   B.Actions.addNewColumn              asks the application for a column
//
// A column keeps its index for its whole life; its place on screen is its
// position in B.sortedVisibleColumns. The model keeps the visible and hidden
// arrays, the visible flags and the sort flags consistent: listeners may
// write widths, labels and the other descriptive fields and reorder the
// visible columns, but visibility and sorting change only through the
// actions (or the functions below), which refuse what makes no sense.
class KELCORE_EXPORT Kel_ColumnDataModel
{
public:
    // One column's description.
    struct Column
    {
        QString identifier;
        QString label;
        long width = 100;
        long minWidth = 20;
        // Key into the list's view type map (the cell's kind).
        long viewType = 0;
        bool readOnly = false;
        // Assignments ("Name=Value; ...") for the cell's connection environment.
        QString connectionEnvironmentVars;
        bool canHide = true;
        bool visible = true;
    };

    // Sorts the application's rows by column; false refuses (the sort flags
    // then stay as they were).
    typedef std::function<bool(long column, bool ascending)> SortFunction;
    // Makes a new column (usually with addColumn) shown at a visible position.
    typedef std::function<void(long position)> AddColumnFunction;

    explicit Kel_ColumnDataModel(const QString& baseName = QString());
    ~Kel_ColumnDataModel();
    Kel_ColumnDataModel(const Kel_ColumnDataModel&) = delete;
    Kel_ColumnDataModel& operator=(const Kel_ColumnDataModel&) = delete;

    // The base name; renaming a published model republishes it under the new name.
    void setBaseName(const QString& baseName);
    QString baseName() const { return mBaseName; }

    // Publishes every model under the base name in dict (null: the
    // process-wide dictionary); listeners hear of all of them at once. False
    // when the base name is empty or any of the names is taken (nothing is
    // then published).
    bool publish(Mv_ConnectionDict* dict = nullptr);
    void unpublish();
    bool isPublished() const;

    // Adds a column and answers its index. A visible column is shown at
    // position (appended when out of range); a hidden one joins the hidden
    // columns.
    long addColumn(const Column& column, long position = -1);
    long addColumn(const QString& identifier, const QString& label, long width, long minWidth = 20,
                   long viewType = 0, bool readOnly = false);
    // Removes a column; the columns after it move down one index. False for
    // an index out of range.
    bool removeColumn(long column);
    void clearColumns();

    long columnCount() const;
    // The index of the column with that identifier, or -1.
    long columnIndex(const QString& identifier) const;
    // The description of a column as it is now (a default one out of range).
    Column column(long column) const;

    // Descriptive fields, written as a listener would write them; false for
    // an index out of range or an unchanged value.
    bool setLabel(long column, const QString& label);
    bool setWidth(long column, long width);
    bool setMinWidth(long column, long minWidth);
    bool setViewType(long column, long viewType);
    bool setReadOnly(long column, bool readOnly);
    bool setCanHide(long column, bool canHide);
    bool setConnectionEnvironmentVars(long column, const QString& assignments);

    // Column indices left to right, and those hidden (in the order hidden).
    std::vector<long> visibleColumns() const;
    std::vector<long> hiddenColumns() const;
    // The visible position of a column, -1 when hidden or unknown.
    long visiblePosition(long column) const;

    // Hides a visible column (whether or not it may be hidden by the user).
    bool hideColumn(long column);
    // Shows a hidden column at a visible position (appended when out of range).
    bool showColumn(long column, long position = -1);
    // Moves the column at visible position from to position to.
    bool moveVisibleColumn(long from, long to);

    // Sorts by a column through the sort function: ascending when the rows
    // were not sorted by it, else in the other direction. False without a
    // sort function, for an unknown column, or when the function refuses.
    bool sortByColumn(long column);
    bool sortByColumn(long column, bool ascending);
    // The column the rows are sorted by, -1 for none; and its direction.
    long sortColumn() const;
    bool isSortedAscending() const;
    // Forgets the sort (after the application reordered its rows otherwise).
    void clearSort();

    void setSortFunction(const SortFunction& sort);
    // The add action is enabled only while an add function is set.
    void setAddColumnFunction(const AddColumnFunction& add);

    // The visible position of the column a header is dragging, -1 when none.
    long columnBeingDragged() const;

    // The column record array, for reading and for listening in code.
    const Mve_RecordArray& records() const;

private:
    class Models;

    template <class T>
    bool setField(long column, const char* field, const T& value);
    bool setSortFlags(long sorted, bool ascending);

    QString mBaseName;
    std::unique_ptr<Models> mModelsP;
    SortFunction mSort;
    AddColumnFunction mAdd;
};

#endif
