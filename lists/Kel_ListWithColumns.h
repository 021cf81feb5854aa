#ifndef KEL_LISTWITHCOLUMNS_H
#define KEL_LISTWITHCOLUMNS_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ListView.h"
#include "Mvt_Container_API.h"
#include "Mvt_SimpleValue.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <cstdint>
#include <map>
#include <memory>

class Kel_HStackView;

// A list view whose row view is built from a column data model (see
// Kel_ColumnDataModel): one cell per visible column, side by side, each
// followed by a thin separator, so that every list and header bound to the
// same column model shows the same columns in the same order and widths.
//
// The row stack's sub-view 0 is a 2-pixel blank; the cell of visible
// position p is sub-view 2p + 1 and its separator 2p + 2. A cell is a clone
// of the prototype registered for the column's view type (a blank cell when
// there is none), named after the column's label, connected in the list's
// cell environment (with $Row) plus the column's own variables.
//
// Up, Down, Tab and Shift+Tab walk the editable cells of the grid once a
// cell was clicked; Escape, Return and Enter leave the grid.
class KELCORE_EXPORT Kel_ListWithColumns : public Kel_ListView
{
public:
    typedef std::map<int, std::shared_ptr<Kel_ViewInterface>> ViewTypeMap;
    // changeGridSelection's directions.
    enum GridDirection : std::int32_t { kGridUp = 0, kGridDown = 1, kGridPrevious = 2, kGridNext = 3 };

    Kel_ListWithColumns();
    // Copies the settings; the copy is unconnected.
    Kel_ListWithColumns(const Kel_ListWithColumns& other);
    Kel_ListWithColumns& operator=(const Kel_ListWithColumns&) = delete;
    ~Kel_ListWithColumns() override;

    // Creates the listeners and resets the row height, the drag state and
    // the grid cell; the constructors call it.
    void init();

    // The base name of the column models; takes effect at the next makeConnections.
    void SetColumnDataModel(const QString& name);
    QString GetColumnDataModel() const { return mColumnDataModelName; }
    // Prototype cells by view type; used whenever cells are made.
    void SetViewTypeMap(const ViewTypeMap& map) { mViewTypeMap = map; }
    const ViewTypeMap& GetViewTypeMap() const { return mViewTypeMap; }

    // The height of every cell and separator of the row.
    void SetRowHeight(long height);
    long GetRowHeight() const { return mRowHeight; }
    // The list font's point size + 12.
    long GetFontRowHeight() const;
    // The font row height, raised to what fixed-aspect cells need at their
    // widths; writes their minimum widths on the way.
    long GetMinimumRowHeight();
    // Writes the widths that fixed-aspect cells have at the row height.
    void AdjustWidths();
    QSize separatorSize() const { return QSize(kSeparatorWidth, int(mRowHeight)); }
    // Runs the selection action with the first selected row as current row.
    void executeSelectionAction();
    // The cell view under point (list coordinates) with its row and visible
    // position (-1 for the leading blank; a separator counts as the column
    // on its left); null off the rows or without cells.
    Kel_ViewInterface* GetCellAt(const QPoint& point, long* row, long* column);
    // Moves the grid cell (GridDirection); without a grid cell, up and down
    // move the selection instead.
    void changeGridSelection(int direction);

    // The grid cell keyboard navigation starts from, -1 when none.
    long gridRow() const { return mGridRow; }
    long gridColumn() const { return mGridColumn; }
    // The row view built from the column model.
    Kel_HStackView* rowStack() const;
    // The label of the column at visible position p, as the column model
    // holds it (empty when none or out of range).
    QString columnLabel(long p) const;
    // The sub-view index of the cell of visible position p.
    static int columnIndexToViewIndex(long p) { return int(2 * p + 1); }

    // Kel_ListView
    Kel_ViewInterface* clone() override;
    QSize getMinSize() override;
    void adjustToPortSize(const QSize& size) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void SetFont(const QFont& font) override;
    void keyPressEvent(QKeyEvent* event) override;
    // Takes Tab and Shift+Tab from the focus chain while a grid cell is active.
    bool event(QEvent* event) override;

protected:
    // Makes a new row stack and a cell and separator per visible column.
    void BuildRowView();
    void insertColumn(long position);
    void removeColumn(long position);
    void moveColumnAndDivider(long from, long to);
    // Shows the proxies that mark the dragged column at position.
    void insertColumnDragViews(long position);
    Kel_ViewInterface* NewCellViewForViewType(long viewType) const;

private:
    static constexpr int kSeparatorWidth = 5;
    typedef Mvt_Container_API<long, Mvt_SimpleValue<long>>::Listener LongArrayListener;
    typedef Mvt_Container_API<long, Mvt_SimpleValue<bool>>::Listener BoolArrayListener;
    typedef Mvt_Container_API<long, Mvt_SimpleValue<QString>>::Listener StringArrayListener;

    bool columnListenersConnected() const;
    void handleVisibleColumnsMessage(const Mv_MessageInterface& message);
    void handleWidthMessage(const Mv_MessageInterface& message);
    void handleCellSettingMessage(const Mv_MessageInterface& message);
    void applyWidth(long position);
    // The width a column's cell takes: its width, at least its minimum.
    long cellWidth(long column) const;
    // Writes the minimum width at which a fixed-aspect cell is as tall as a
    // font row, when the model holds another.
    void keepMinWidth(long column, float aspect, long fontRowHeight);
    void handleColumnBeingDragged();
    void rebuildUnlessConnecting();
    // The visible position showing column, the last one when several do; -1 for none.
    long positionOfColumn(long column) const;
    // How many cells the row holds (one per visible position built).
    long cellCount() const;
    // The cell of visible position p, or null.
    Kel_ViewInterface* cellAt(long position) const;
    void sendPressAt(const QPoint& local);
    // Tells a reader that the visible columns changed (and drops its cells).
    void reportColumnsChanged(int type, long first, long last);

    long mRowHeight;
    ViewTypeMap mViewTypeMap;
    QString mColumnDataModelName;
    bool mColumnDragInProgress;
    long mGridRow;
    long mGridColumn;
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mColumnBeingDragged{this};
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mVisibleContainer{this};
    Kel_BoundProperty<LongArrayListener> mSortedVisibleColumns{this};
    Kel_BoundProperty<StringArrayListener> mLabel{this};
    Kel_BoundProperty<LongArrayListener> mViewType{this};
    Kel_BoundProperty<LongArrayListener> mWidth{this};
    Kel_BoundProperty<BoolArrayListener> mReadOnlyFlags{this};
    Kel_BoundProperty<StringArrayListener> mEnvironmentVars{this};
    Kel_BoundProperty<LongArrayListener> mMinWidth{this};
    // The environment of the last makeConnections, for cells made later.
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    bool mConnecting;
};

#endif
