#include "Kel_ListWithColumns.h"

#include "Kel_BlankView.h"
#include "Kel_ColumnDragView.h"
#include "Kel_ColumnSeparatorView.h"
#include "Kel_HStackView.h"
#include "Kel_ListWithColumnsAccessible_p.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_Root_Notifications.h"
#include "Ost_Assert.h"

#include <QFontInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

namespace {

const char kAssertSource[] = "Kel_ListWithColumns";
const long kDefaultRowHeight = 47;

// The visible position a header drags, as last heard by any columned list.
// One variable for the whole process: only one header drag can be in
// progress at a time, and every list that hears of it first decides alone.
long sPreviousColumnBeingDragged = -1;

} // namespace

Kel_ListWithColumns::Kel_ListWithColumns()
    : Kel_ListView()
{
    init();
}

Kel_ListWithColumns::Kel_ListWithColumns(const Kel_ListWithColumns& other)
    : Kel_ListView(other), mViewTypeMap(other.mViewTypeMap), mColumnDataModelName(other.mColumnDataModelName)
{
    init();
    // The cloned row stack keeps the row height it was built with.
    mRowHeight = other.mRowHeight;
}

Kel_ListWithColumns::~Kel_ListWithColumns() = default;

void Kel_ListWithColumns::init()
{
    mRowHeight = kDefaultRowHeight;
    mColumnDragInProgress = false;
    mGridRow = -1;
    mGridColumn = -1;
    mConnecting = false;
    mColumnBeingDragged.onNotify([this] { handleColumnBeingDragged(); });
    mVisibleContainer.onMessage([this](const Mv_MessageInterface& m) { handleVisibleColumnsMessage(m); });
    mWidth.onMessage([this](const Mv_MessageInterface& m) { handleWidthMessage(m); });
    mMinWidth.onMessage([this](const Mv_MessageInterface& m) { handleWidthMessage(m); });
    // A per-column model arriving late (or leaving) changes every cell.
    mSortedVisibleColumns.onMessage([this](const Mv_MessageInterface& m) {
        if (m.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            rebuildUnlessConnecting();
    });
    for (Kel_BoundPropertyBase* p : {static_cast<Kel_BoundPropertyBase*>(&mLabel),
                                     static_cast<Kel_BoundPropertyBase*>(&mViewType),
                                     static_cast<Kel_BoundPropertyBase*>(&mReadOnlyFlags),
                                     static_cast<Kel_BoundPropertyBase*>(&mEnvironmentVars)})
        p->onMessage([this](const Mv_MessageInterface& m) { handleCellSettingMessage(m); });
}

Kel_ViewInterface* Kel_ListWithColumns::clone()
{
    return new Kel_ListWithColumns(*this);
}

void Kel_ListWithColumns::SetColumnDataModel(const QString& name)
{
    mColumnDataModelName = name;
}

Kel_HStackView* Kel_ListWithColumns::rowStack() const
{
    return dynamic_cast<Kel_HStackView*>(getRowView());
}

QString Kel_ListWithColumns::columnLabel(long p) const
{
    if (p < 0 || !mSortedVisibleColumns.isConnected() || !mLabel.isConnected())
        return QString();
    const long col = mSortedVisibleColumns->element<long>(p, -1);
    return col < 0 ? QString() : mLabel->element<QString>(col);
}

void Kel_ListWithColumns::reportColumnsChanged(int type, long first, long last)
{
    Kel_ListWithColumnsAccessible::columnsChanged(
        this, QAccessibleTableModelChangeEvent::ModelChangeType(type), first, last);
}

// ---------------------------------------------------------------------------
// Binding

void Kel_ListWithColumns::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();
    mEnvironment = environment;
    const QString& m = mColumnDataModelName;
    auto name = [&m](const char* suffix) { return m.isEmpty() ? QString() : m + QLatin1String(suffix); };
    mColumnBeingDragged.setSpec(name(".columnBeingDragged"));
    mVisibleContainer.setSpec(name(".sortedVisibleColumns.arrayMetaData"));
    mSortedVisibleColumns.setSpec(name(".sortedVisibleColumns"));
    mLabel.setSpec(name(".label"));
    mViewType.setSpec(name(".viewType"));
    mWidth.setSpec(name(".width"));
    mReadOnlyFlags.setSpec(name(".readOnly"));
    mEnvironmentVars.setSpec(name(".connectionEnvironmentVars"));
    mMinWidth.setSpec(name(".minWidth"));
    // The row is built once, after everything is connected, rather than
    // once per listener as each reports.
    mConnecting = true;
    Kel_BoundPropertyBase::connectAll(environment, {&mColumnBeingDragged, &mVisibleContainer, &mSortedVisibleColumns,
                                                    &mLabel, &mViewType, &mWidth, &mReadOnlyFlags,
                                                    &mEnvironmentVars, &mMinWidth});
    mConnecting = false;
    // The list would connect the old row in its plain cell environment,
    // without the columns' variables; the row is built anew afterwards.
    if (rowStack())
        SetRowView(nullptr);
    Kel_ListView::makeConnections(environment);
    BuildRowView();
}

bool Kel_ListWithColumns::columnListenersConnected() const
{
    return mSortedVisibleColumns.isConnected() && mWidth.isConnected() && mReadOnlyFlags.isConnected()
        && mViewType.isConnected() && mEnvironmentVars.isConnected() && mLabel.isConnected();
}

void Kel_ListWithColumns::rebuildUnlessConnecting()
{
    if (!mConnecting && mEnvironment)
        BuildRowView();
}

// ---------------------------------------------------------------------------
// Building the row

void Kel_ListWithColumns::BuildRowView()
{
    auto* stack = new Kel_HStackView;
    stack->setName(QStringLiteral("RowView"));
    SetRowView(stack);
    stack->AddSubView(new Kel_BlankView(QSize(2, int(mRowHeight))));
    // A drag in progress keeps its marks in the new row.
    const long columns = mVisibleContainer.isConnected() ? mVisibleContainer->size() : 0;
    for (long p = 0; p < columns; ++p)
        insertColumn(p);
    if (mColumnDragInProgress)
        insertColumnDragViews(mColumnBeingDragged->value(-1));
    reportColumnsChanged(QAccessibleTableModelChangeEvent::ModelReset, -1, -1);
}

Kel_ViewInterface* Kel_ListWithColumns::NewCellViewForViewType(long viewType) const
{
    const auto it = mViewTypeMap.find(int(viewType));
    if (it != mViewTypeMap.end() && it->second) {
        if (Kel_ViewInterface* cell = it->second->clone())
            return cell;
    }
    return new Kel_BlankView;
}

void Kel_ListWithColumns::insertColumn(long p)
{
    Kel_HStackView* stack = rowStack();
    if (!stack || !columnListenersConnected())
        return;
    const long col = mSortedVisibleColumns->element<long>(p, -1);
    const long width = cellWidth(col);
    const bool readOnly = mReadOnlyFlags->element<bool>(col, false);
    const long viewType = mViewType->element<long>(col, 0);
    const QString envVars = mEnvironmentVars->element<QString>(col);
    QString label = mLabel->element<QString>(col);
    if (label.isEmpty())
        label = QString::asprintf("column%ld", col);

    Kel_ViewInterface* cell = NewCellViewForViewType(viewType);
    QSize size(static_cast<int>(width), static_cast<int>(mRowHeight));
    if (cell->isFixedAspect()) {
        const float aspect = cell->getAspect();
        size.setHeight(int(std::floor(aspect * float(width))));
        SetRowHeight(size.height());
        if (aspect > 0)
            keepMinWidth(col, aspect, GetFontRowHeight());
        if (rowStack() != stack) { // a listener rebuilt the row meanwhile
            delete cell;
            return;
        }
    }
    cell->setName(label);
    cell->setSize(size);
    cell->setReadOnly(readOnly);
    stack->insertView(columnIndexToViewIndex(p), cell);

    auto cellEnvironment = Mv_ConnectionEnvironment::create(getCellConnectionEnv(mEnvironment),
                                                            Mv_ConnectionDict::Singleton());
    cellEnvironment->set(envVars);
    cell->makeConnections(cellEnvironment);

    stack->insertView(columnIndexToViewIndex(p) + 1, new kel_listwithcolumns::Kel_ColumnSeparatorView(separatorSize()));
}

long Kel_ListWithColumns::cellWidth(long col) const
{
    return std::max(mWidth->element<long>(col, 0), mMinWidth->element<long>(col, 0));
}

void Kel_ListWithColumns::keepMinWidth(long col, float aspect, long fontRowHeight)
{
    const long minWidth = long(std::floor(float(fontRowHeight) / aspect));
    if (mMinWidth->element<long>(col, minWidth) != minWidth)
        mMinWidth->setElement<long>(col, minWidth);
}

void Kel_ListWithColumns::removeColumn(long p)
{
    if (Kel_HStackView* stack = rowStack()) {
        // The cell, then the separator that slid into its place.
        stack->removeViewAt(columnIndexToViewIndex(p));
        stack->removeViewAt(columnIndexToViewIndex(p));
    }
}

void Kel_ListWithColumns::moveColumnAndDivider(long from, long to)
{
    Kel_HStackView* stack = rowStack();
    if (!stack || from == to)
        return;
    const int cellFrom = columnIndexToViewIndex(from);
    if (from < to) {
        // The cell goes behind the target's separator, and its own separator follows.
        stack->moveView(cellFrom, columnIndexToViewIndex(to) + 1);
        stack->moveView(cellFrom, columnIndexToViewIndex(to) + 1);
    } else {
        stack->moveView(cellFrom, columnIndexToViewIndex(to));
        stack->moveView(cellFrom + 1, columnIndexToViewIndex(to) + 1);
    }
}

void Kel_ListWithColumns::insertColumnDragViews(long p)
{
    Kel_HStackView* stack = rowStack();
    Kel_ViewInterface* cell = cellAt(p);
    if (!stack || !cell)
        return;
    QRect marked = cell->getRectInParent();
    if (Kel_ViewInterface* separator = stack->viewAt(columnIndexToViewIndex(p) + 1))
        marked = marked.united(separator->getRectInParent());
    stack->addProxyView(new kel_listwithcolumns::Kel_ColumnDragView(marked));
}

long Kel_ListWithColumns::cellCount() const
{
    // The leading blank, then a cell and its separator per column.
    Kel_HStackView* stack = rowStack();
    return stack ? stack->count() / 2 : 0;
}

Kel_ViewInterface* Kel_ListWithColumns::cellAt(long p) const
{
    Kel_HStackView* stack = rowStack();
    return stack && p >= 0 ? stack->viewAt(columnIndexToViewIndex(p)) : nullptr;
}

long Kel_ListWithColumns::positionOfColumn(long column) const
{
    long found = -1;
    const long columns = cellCount();
    for (long p = 0; p < columns; ++p) {
        if (mSortedVisibleColumns->element<long>(p, -1) == column)
            found = p;
    }
    return found;
}

// ---------------------------------------------------------------------------
// Model changes

void Kel_ListWithColumns::handleVisibleColumnsMessage(const Mv_MessageInterface& message)
{
    if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        rebuildUnlessConnecting();
    } else if (const auto* r = message.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
        const long removed = r->removedEnd() - r->first();
        const long inserted = r->insertedCount();
        if (removed > inserted && inserted == 0) {
            for (long p = r->removedEnd() - 1; p >= r->first(); --p)
                removeColumn(p);
            reportColumnsChanged(QAccessibleTableModelChangeEvent::ColumnsRemoved, r->first(), r->removedEnd() - 1);
        } else if (removed == 0 && inserted > 0) {
            for (long p = r->first(); p < r->first() + inserted; ++p)
                insertColumn(p);
            reportColumnsChanged(QAccessibleTableModelChangeEvent::ColumnsInserted, r->first(),
                                 r->first() + inserted - 1);
        } else {
            BuildRowView();
            if (mParent)
                mParent->childInsertedColumn(this);
        }
    } else if (const auto* m = message.as<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()) {
        moveColumnAndDivider(m->from(), m->to());
        // A table event has no move: the columns between the two places renumber.
        reportColumnsChanged(QAccessibleTableModelChangeEvent::ModelReset, -1, -1);
        if (mColumnDragInProgress) {
            if (Kel_HStackView* stack = rowStack())
                stack->clearProxyViews();
            insertColumnDragViews(m->to());
        }
        if (mParent)
            mParent->childInsertedColumn(this);
    }
}

void Kel_ListWithColumns::handleWidthMessage(const Mv_MessageInterface& message)
{
    if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        rebuildUnlessConnecting();
    } else if (const auto* changed = message.as<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>()) {
        const long p = positionOfColumn(changed->index());
        if (p >= 0)
            applyWidth(p);
    } else if (message.is<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
        // Many columns at once: every visible one is checked.
        const long columns = cellCount();
        for (long p = 0; p < columns; ++p)
            applyWidth(p);
    }
}

// A shown column's label, cell type, read-only flag or variables changed:
// its cell is made again as it was made first, so that the name, the
// prototype and the connections all agree with the model.
void Kel_ListWithColumns::handleCellSettingMessage(const Mv_MessageInterface& message)
{
    if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        rebuildUnlessConnecting();
        return;
    }
    const auto* changed = message.as<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>();
    const long p = changed ? positionOfColumn(changed->index()) : -1;
    if (p < 0 || !cellAt(p) || mColumnDragInProgress)
        return;
    removeColumn(p);
    insertColumn(p);
    reportColumnsChanged(QAccessibleTableModelChangeEvent::ModelReset, -1, -1);
    if (mParent)
        mParent->childInsertedColumn(this);
}

void Kel_ListWithColumns::applyWidth(long p)
{
    Kel_HStackView* stack = rowStack();
    Kel_ViewInterface* cell = cellAt(p);
    if (!cell)
        return;
    const long col = mSortedVisibleColumns->element<long>(p, -1);
    const long width = cellWidth(col);
    cell->setSize(QSize(int(width), cell->getHeight()));
    if (cell->isFixedAspect())
        SetRowHeight(long(std::floor(cell->getAspect() * float(width))));
    if (rowStack() == stack)
        stack->relayout();
}

void Kel_ListWithColumns::handleColumnBeingDragged()
{
    const long dragged = mColumnBeingDragged->value(-1);
    if (sPreviousColumnBeingDragged < 0 && dragged >= 0) {
        mColumnDragInProgress = true;
        insertColumnDragViews(dragged);
    } else if (sPreviousColumnBeingDragged >= 0 && dragged < 0) {
        mColumnDragInProgress = false;
        if (Kel_HStackView* stack = rowStack())
            stack->clearProxyViews();
    }
    sPreviousColumnBeingDragged = dragged;
    sendAllBitsChangedImmediate();
}

// ---------------------------------------------------------------------------
// Row height and widths

void Kel_ListWithColumns::SetRowHeight(long height)
{
    mRowHeight = height;
    Kel_HStackView* stack = rowStack();
    if (!stack)
        return;
    for (int i = 0; i < stack->count(); ++i) {
        Kel_ViewInterface* view = stack->viewAt(i);
        view->setSize(QSize(view->getWidth(), int(height)));
    }
    stack->relayout();
}

long Kel_ListWithColumns::GetFontRowHeight() const
{
    const QFont font = GetFont();
    const int points = font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
    return points + 12;
}

long Kel_ListWithColumns::GetMinimumRowHeight()
{
    const long fontRowHeight = GetFontRowHeight();
    long height = fontRowHeight;
    const long columns = cellCount();
    for (long p = 0; p < columns; ++p) {
        Kel_ViewInterface* cell = cellAt(p);
        if (!cell || !cell->isFixedAspect() || cell->getAspect() <= 0)
            continue;
        const float aspect = cell->getAspect();
        const long col = mSortedVisibleColumns->element<long>(p, -1);
        height = std::max(height, long(std::floor(aspect * float(mWidth->element<long>(col, 0)))));
        keepMinWidth(col, aspect, fontRowHeight);
    }
    return height;
}

void Kel_ListWithColumns::AdjustWidths()
{
    const long columns = cellCount();
    for (long p = 0; p < columns; ++p) {
        Kel_ViewInterface* cell = cellAt(p);
        if (!cell || !cell->isFixedAspect() || cell->getAspect() <= 0)
            continue;
        const long col = mSortedVisibleColumns->element<long>(p, -1);
        const long width = long(std::floor(float(mRowHeight) / cell->getAspect()));
        // The model tells the change back through the width path.
        if (mWidth->element<long>(col, width) != width)
            mWidth->setElement<long>(col, width);
    }
}

void Kel_ListWithColumns::SetFont(const QFont& font)
{
    Kel_ListView::SetFont(font);
    const long height = GetMinimumRowHeight();
    setCellHeight(int(height));
    SetRowHeight(height);
    AdjustWidths();
    sendAllBitsChanged();
}

QSize Kel_ListWithColumns::getMinSize()
{
    // The cells' extent, whatever width the row was last stretched to.
    Kel_HStackView* stack = rowStack();
    const QSize rows = Kel_ListView::getMinSize();
    return stack ? QSize(stack->getMinSize().width(), rows.height()) : rows;
}

void Kel_ListWithColumns::adjustToPortSize(const QSize& size)
{
    Kel_ListView::adjustToPortSize(size);
    // The list stretched the row to the visible width; the cells keep theirs.
    if (Kel_HStackView* stack = rowStack())
        stack->relayout();
}

// ---------------------------------------------------------------------------
// Selection, mouse and keys

void Kel_ListWithColumns::executeSelectionAction()
{
    if (!hasSelectionAction())
        return;
    setCurrentCell(GetFirstRowSelection());
    runSelectionAction();
}

Kel_ViewInterface* Kel_ListWithColumns::GetCellAt(const QPoint& point, long* row, long* column)
{
    long r = -1;
    Kel_HStackView* stack = rowStack();
    if (!CellContaining(point.y(), &r) || r < 0 || !stack || stack->count() == 0)
        return nullptr;
    for (int i = 0; i < stack->count(); ++i) {
        Kel_ViewInterface* view = stack->viewAt(i);
        if (QRect(view->getOrigin(), view->getSize()).contains(point.x(), 0)) {
            if (row)
                *row = r;
            if (column)
                *column = (i + 1) / 2 - 1;
            return view;
        }
    }
    return nullptr;
}

void Kel_ListWithColumns::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    if (local.y() < 0) {
        // Above the rows (the grid's own way out): no row, no cell.
        SetSelected(-1, false, Qt::NoModifier);
        mGridRow = -1;
        mGridColumn = -1;
        return;
    }
    // The grid cell is settled before the list selects the row, so that
    // the focus a reader is told of is the cell the press lands on.
    long row = -1;
    if (!CellContaining(local.y(), &row) || row < 0) {
        mGridRow = -1;
    } else {
        long column = -1;
        Kel_ViewInterface* cell = GetCellAt(local, &row, &column);
        if (cell && !cell->getReadOnly()) {
            mGridRow = row;
            mGridColumn = column;
        } else {
            mGridColumn = -1;
        }
    }
    Kel_ListView::mousePressEvent(event, local);
}

void Kel_ListWithColumns::sendPressAt(const QPoint& local)
{
    QMouseEvent press(QEvent::MouseButtonPress, local, local, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    mousePressEvent(&press, local);
}

void Kel_ListWithColumns::changeGridSelection(int direction)
{
    if (mGridRow < 0) {
        if (direction == kGridUp)
            changeSelection(Qt::Key_Up);
        else if (direction == kGridDown)
            changeSelection(Qt::Key_Down);
        return;
    }
    const long columns = cellCount();
    const long rows = GetNumItems();
    if (rows <= 0 || columns <= 0)
        return;
    long row = mGridRow;
    long column = mGridColumn;
    bool leave = false;
    switch (direction) {
    case kGridUp:
        row = row == 0 ? rows - 1 : row - 1;
        break;
    case kGridDown:
        row = row >= rows - 1 ? 0 : row + 1;
        break;
    case kGridPrevious:
    case kGridNext: {
        const long step = direction == kGridNext ? 1 : -1;
        long r = row;
        long c = column;
        for (;;) {
            c += step;
            if (c < 0 || c >= columns) {
                r += step;
                c = step > 0 ? 0 : columns - 1;
                if (r < 0 || r >= rows) {
                    leave = true;
                    break;
                }
            }
            if (c == mGridColumn)
                return; // round to where it started: nothing else to go to
            Kel_ViewInterface* cell = cellAt(c);
            if (cell && !cell->getReadOnly())
                break;
        }
        row = r;
        column = c;
        break;
    }
    default:
        Ost_Assert::handleFailedAssert("0 && \"Illegal switch value\"", kAssertSource, __LINE__);
        return;
    }
    if (leave) {
        sendPressAt(QPoint(-1, -1));
        return;
    }
    if (row == mGridRow && column == mGridColumn)
        return;
    Kel_ViewInterface* cell = cellAt(column);
    const int x = cell ? cell->getOrigin().x() : 0;
    sendPressAt(QPoint(x, int(row * getCellHeight())));
}

void Kel_ListWithColumns::keyPressEvent(QKeyEvent* event)
{
    if (!event)
        return;
    // A list that selects nothing takes no keys, cells or not.
    const int key = getSelectionMode() == None ? Qt::Key_unknown : event->key();
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->accept();
        changeGridSelection(key == Qt::Key_Up ? kGridUp : kGridDown);
        return;
    case Qt::Key_Tab:
        event->accept();
        changeGridSelection(event->modifiers() & Qt::ShiftModifier ? kGridPrevious : kGridNext);
        return;
    case Qt::Key_Backtab:
        event->accept();
        changeGridSelection(kGridPrevious);
        return;
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore();
        if (mGridRow >= 0) {
            mGridRow = -1;
            mGridColumn = -1;
            return;
        }
        // Return and Enter run the enter action only when no cell was active.
        SetSelected(GetFirstRowSelection(), false, Qt::NoModifier);
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        event->ignore();
        break;
    default:
        break;
    }
    Kel_ListView::keyPressEvent(event);
}

bool Kel_ListWithColumns::event(QEvent* event)
{
    if (event && event->type() == QEvent::KeyPress && mGridRow >= 0 && getSelectionMode() != None) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
            keyPressEvent(key);
            return true;
        }
    }
    return Kel_ListView::event(event);
}
