#include "Kel_ListViewAccessible_p.h"

#include "Kel_BridgeBase.h"
#include "Kel_ListView.h"
#include "Kel_ViewAccessibility.h"

#include <QKeyEvent>
#include <QRegion>
#include <QWidget>
#include <QWindow>
#include <climits>

namespace {

// Column headers are row -1; columns stay far below 2^20.
quint64 cellKey(long row, int column)
{
    return (quint64(row + 1) << 20) | quint64(column);
}

// The list's interface if one was made; events never make one.
Kel_ListViewAccessible* existingTable(Kel_ListView* list)
{
    return dynamic_cast<Kel_ListViewAccessible*>(Kel_ViewAccessibility::existingInterface(list));
}

} // namespace

// ---------------------------------------------------------------------------
// Kel_ListViewAccessible

Kel_ListViewAccessible::Kel_ListViewAccessible(Kel_ListView* list) : Kel_ViewAccessible(list)
{
}

Kel_ListViewAccessible::~Kel_ListViewAccessible()
{
    forgetCells();
}

Kel_ListView* Kel_ListViewAccessible::list() const
{
    return static_cast<Kel_ListView*>(view());
}

int Kel_ListViewAccessible::columnCount() const
{
    return 1;
}

Kel_ViewInterface* Kel_ListViewAccessible::columnView(Kel_ViewInterface* rowView, int column) const
{
    return column == 0 ? rowView : nullptr;
}

QString Kel_ListViewAccessible::columnHeaderText(int) const
{
    return QString();
}

bool Kel_ListViewAccessible::hasColumnHeaders() const
{
    for (int column = 0; column < columnCount(); ++column) {
        if (!columnHeaderText(column).isEmpty())
            return true;
    }
    return false;
}

int Kel_ListViewAccessible::headerCount() const
{
    return hasColumnHeaders() ? columnCount() : 0;
}

int Kel_ListViewAccessible::rowCount() const
{
    return list() ? list()->GetNumItems() : 0;
}

QString Kel_ListViewAccessible::cellText(long row, int column) const
{
    Kel_ListView* l = list();
    if (!l || row < 0 || row >= l->GetNumItems())
        return QString();
    QString text;
    l->visitRowQuietly(row, [&](Kel_ViewInterface* rowView) {
        text = Kel_ViewAccessibility::text(columnView(rowView, column));
    });
    return text;
}

QWidget* Kel_ListViewAccessible::host(QRect* listRectInHost) const
{
    return Kel_ViewAccessibility::hostWidget(list(), listRectInHost);
}

QRect Kel_ListViewAccessible::cellRect(long row, int column) const
{
    Kel_ListView* l = list();
    QRect listRect;
    QWidget* hostWidget = host(&listRect);
    Kel_ViewInterface* rowView = l ? l->getRowView() : nullptr;
    Kel_ViewInterface* cell = columnView(rowView, column);
    if (!hostWidget || !cell)
        return QRect();
    // The cell's place in its row: the origins from the cell up to the row view.
    QRect rect(QPoint(0, 0), cell->getSize());
    if (cell == rowView) {
        rect.setWidth(qMax(rowView->getWidth(), l->getWidth()));
    } else {
        for (Kel_ViewInterface* v = cell; v && v != rowView; v = Kel_ViewAccessibility::parentView(v))
            rect.translate(v->getOrigin());
    }
    const qint64 top = qint64(l->getCellHeight()) * row;
    // Row -1, the header line, sits just above the first row.
    rect.translate(listRect.topLeft() + QPoint(0, int(qBound(qint64(INT_MIN / 2), top, qint64(INT_MAX / 2)))));
    return QRect(hostWidget->mapToGlobal(rect.topLeft()), rect.size());
}

bool Kel_ListViewAccessible::isCellOffscreen(long row, int column) const
{
    QWidget* hostWidget = host(nullptr);
    if (!hostWidget)
        return true;
    const QRect rect = cellRect(row, column);
    return !hostWidget->visibleRegion().intersects(QRect(hostWidget->mapFromGlobal(rect.topLeft()), rect.size()));
}

QAccessibleInterface* Kel_ListViewAccessible::cellInterface(long row, int column) const
{
    if (!list() || column < 0 || column >= columnCount() || row < -1 || row >= rowCount() ||
        (row == -1 && !hasColumnHeaders()))
        return nullptr;
    const quint64 key = cellKey(row, column);
    const auto known = mCells.constFind(key);
    if (known != mCells.constEnd()) {
        if (QAccessibleInterface* iface = QAccessible::accessibleInterface(known.value()))
            return iface;
    }
    auto* cell = new Kel_ListCellAccessible(const_cast<Kel_ListViewAccessible*>(this), row, column);
    mCells.insert(key, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

void Kel_ListViewAccessible::forgetCells()
{
    const QHash<quint64, QAccessible::Id> cells = mCells;
    mCells.clear();
    for (QAccessible::Id id : cells)
        QAccessible::deleteAccessibleInterface(id);
}

QAccessible::Role Kel_ListViewAccessible::role() const
{
    return columnCount() > 1 || hasColumnHeaders() ? QAccessible::Table : QAccessible::List;
}

int Kel_ListViewAccessible::childCount() const
{
    const qint64 count = qint64(headerCount()) + qint64(rowCount()) * columnCount();
    return int(qMin(count, qint64(INT_MAX)));
}

QAccessibleInterface* Kel_ListViewAccessible::child(int index) const
{
    const int headers = headerCount();
    const int columns = columnCount();
    if (index < 0 || columns < 1)
        return nullptr;
    if (index < headers)
        return cellInterface(-1, index);
    return cellInterface((index - headers) / columns, (index - headers) % columns);
}

int Kel_ListViewAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* cell = dynamic_cast<const Kel_ListCellAccessible*>(child);
    if (!cell || cell->table() != this)
        return -1;
    if (cell->row() < 0)
        return cell->columnIndex();
    const qint64 index = qint64(headerCount()) + qint64(cell->row()) * columnCount() + cell->columnIndex();
    return index > INT_MAX ? -1 : int(index);
}

QAccessibleInterface* Kel_ListViewAccessible::childAt(int x, int y) const
{
    Kel_ListView* l = list();
    QRect listRect;
    QWidget* hostWidget = host(&listRect);
    if (!hostWidget || l->getCellHeight() < 1)
        return nullptr;
    const QPoint local = hostWidget->mapFromGlobal(QPoint(x, y)) - listRect.topLeft();
    if (local.y() < 0)
        return nullptr;
    const long row = local.y() / l->getCellHeight();
    for (int column = 0; column < columnCount(); ++column) {
        if (cellRect(row, column).contains(x, y))
            return cellInterface(row, column);
    }
    return nullptr;
}

QAccessibleInterface* Kel_ListViewAccessible::focusChild() const
{
    Kel_ListView* l = list();
    QWidget* hostWidget = host(nullptr);
    if (!l || !hostWidget || !hostWidget->hasFocus())
        return nullptr;
    return cellInterface(l->getCurrentCell(), 0);
}

QString Kel_ListViewAccessible::text(QAccessible::Text type) const
{
    Kel_ListView* l = list();
    if (!l || type != QAccessible::Name)
        return QString();
    // A list hosted by a bridge under its default name is named by the bridge.
    const QString name = Kel_ViewAccessibility::name(l);
    Kel_BridgeBase* bridge = Kel_ViewAccessibility::bridge(l);
    if (name == QLatin1String("ListView") && bridge && bridge->getChild() == l) {
        QWidget* bridgeWidget = l->getBridgeWidget();
        if (bridgeWidget && !bridgeWidget->accessibleName().isEmpty())
            return bridgeWidget->accessibleName();
        if (bridgeWidget && !bridgeWidget->objectName().isEmpty())
            return bridgeWidget->objectName();
    }
    return name;
}

QAccessible::State Kel_ListViewAccessible::state() const
{
    QAccessible::State state = Kel_ViewAccessible::state();
    if (Kel_ListView* l = list()) {
        state.multiSelectable = l->getSelectionMode() == Kel_ListView::Multi;
        state.extSelectable = l->getSelectionMode() == Kel_ListView::Extended;
        QWidget* hostWidget = host(nullptr);
        state.focused = hostWidget && hostWidget->hasFocus() && state.focusable;
    }
    return state;
}

void* Kel_ListViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    switch (type) {
    case QAccessible::TableInterface:
        return static_cast<QAccessibleTableInterface*>(this);
    case QAccessible::ActionInterface:
        return static_cast<QAccessibleActionInterface*>(this);
    default:
        return nullptr;
    }
}

QStringList Kel_ListViewAccessible::actionNames() const
{
    QStringList names;
    if (!list())
        return names;
    if (list()->getSelectionMode() != Kel_ListView::None)
        names.append(pressAction());
    if (host(nullptr))
        names.append(setFocusAction());
    return names;
}

void Kel_ListViewAccessible::doAction(const QString& actionName)
{
    Kel_ListView* l = list();
    if (!l || !actionNames().contains(actionName))
        return;
    if (actionName == setFocusAction()) {
        if (QWidget* hostWidget = host(nullptr))
            hostWidget->setFocus(Qt::OtherFocusReason);
        return;
    }
    // As Return does: mode and keymap rules included.
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    l->keyPressEvent(&key);
}

QAccessibleInterface* Kel_ListViewAccessible::cellAt(int row, int column) const
{
    return row < 0 ? nullptr : cellInterface(row, column);
}

int Kel_ListViewAccessible::selectedRowCount() const
{
    return list() ? qMax(0, list()->GetRowSelectionListSize()) : 0;
}

int Kel_ListViewAccessible::selectedCellCount() const
{
    return int(qMin(qint64(selectedRowCount()) * columnCount(), qint64(INT_MAX)));
}

QList<int> Kel_ListViewAccessible::selectedRows() const
{
    QList<int> rows;
    if (Kel_ListView* l = list()) {
        for (long row = l->GetFirstRowSelection(); row != -1; row = l->GetNextRowSelection(row))
            rows.append(int(row));
    }
    return rows;
}

QList<QAccessibleInterface*> Kel_ListViewAccessible::selectedCells() const
{
    QList<QAccessibleInterface*> cells;
    for (int row : selectedRows()) {
        for (int column = 0; column < columnCount(); ++column) {
            if (QAccessibleInterface* cell = cellInterface(row, column))
                cells.append(cell);
        }
    }
    return cells;
}

bool Kel_ListViewAccessible::isRowSelected(int row) const
{
    return list() && list()->IsRowSelected(row);
}

bool Kel_ListViewAccessible::selectRow(int row)
{
    Kel_ListView* l = list();
    if (!l || row < 0 || row >= rowCount() || l->getSelectionMode() == Kel_ListView::None)
        return false;
    if (l->IsRowSelected(row))
        return true;
    const bool adds = l->getSelectionMode() == Kel_ListView::Multi || l->getSelectionMode() == Kel_ListView::Extended;
    l->SetSelected(row, false, adds ? Qt::ControlModifier : Qt::NoModifier);
    return l->IsRowSelected(row);
}

bool Kel_ListViewAccessible::unselectRow(int row)
{
    Kel_ListView* l = list();
    if (!l || !l->IsRowSelected(row))
        return false;
    if (l->getSelectionMode() == Kel_ListView::Single)
        l->SetSelected(-1, false, Qt::NoModifier);
    else
        l->SetSelected(row, false, Qt::ControlModifier);
    return !l->IsRowSelected(row);
}

void Kel_ListViewAccessible::modelChange(QAccessibleTableModelChangeEvent* event)
{
    // Cells are positions: any change of rows renumbers them.
    if (event && event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged)
        forgetCells();
}

void Kel_ListViewAccessible::selectionChanged(Kel_ListView* list, const QList<long>& changedRows, bool many)
{
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    auto* table = dynamic_cast<Kel_ListViewAccessible*>(Kel_ViewAccessibility::interfaceFor(list));
    if (!table)
        return;
    if (many) {
        QAccessibleEvent event(table, QAccessible::SelectionWithin);
        Kel_ViewAccessibility::send(&event);
        return;
    }
    const bool single = list->GetRowSelectionListSize() == 1;
    for (long row : changedRows) {
        QAccessibleInterface* cell = table->cellInterface(row, 0);
        if (!cell)
            continue;
        const bool selected = list->IsRowSelected(row);
        QAccessibleEvent event(cell, selected ? (single ? QAccessible::Selection : QAccessible::SelectionAdd)
                                              : QAccessible::SelectionRemove);
        Kel_ViewAccessibility::send(&event);
    }
}

void Kel_ListViewAccessible::rowsReplaced(Kel_ListView* list, long first, long removedEnd, long insertedCount)
{
    Kel_ListViewAccessible* table = existingTable(list);
    if (!table)
        return;
    table->forgetCells();
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    const long removed = removedEnd - first;
    QAccessibleTableModelChangeEvent event(table, QAccessibleTableModelChangeEvent::ModelReset);
    if (removed == 0 && insertedCount > 0) {
        event.setModelChangeType(QAccessibleTableModelChangeEvent::RowsInserted);
        event.setFirstRow(int(first));
        event.setLastRow(int(first + insertedCount - 1));
    } else if (removed > 0 && insertedCount == 0) {
        event.setModelChangeType(QAccessibleTableModelChangeEvent::RowsRemoved);
        event.setFirstRow(int(first));
        event.setLastRow(int(removedEnd - 1));
    }
    Kel_ViewAccessibility::send(&event);
}

void Kel_ListViewAccessible::rowChanged(Kel_ListView* list, long row)
{
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    Kel_ListViewAccessible* table = existingTable(list);
    if (!table)
        return;
    QAccessibleTableModelChangeEvent event(table, QAccessibleTableModelChangeEvent::DataChanged);
    event.setFirstRow(int(row));
    event.setLastRow(int(row));
    event.setFirstColumn(0);
    event.setLastColumn(table->columnCount() - 1);
    Kel_ViewAccessibility::send(&event);
    if (QAccessibleInterface* cell = table->cellInterface(row, 0)) {
        QAccessibleEvent nameChanged(cell, QAccessible::NameChanged);
        Kel_ViewAccessibility::send(&nameChanged);
    }
}

// ---------------------------------------------------------------------------
// Kel_ListCellAccessible

Kel_ListCellAccessible::Kel_ListCellAccessible(Kel_ListViewAccessible* table, long row, int column)
    : mTableP(table), mRow(row), mColumn(column)
{
}

bool Kel_ListCellAccessible::isValid() const
{
    if (!mTableP || !mTableP->isValid() || mColumn >= mTableP->columnCount())
        return false;
    return mRow == -1 ? mTableP->hasColumnHeaders() : mRow < mTableP->rowCount();
}

QWindow* Kel_ListCellAccessible::window() const
{
    return mTableP ? mTableP->window() : nullptr;
}

QAccessibleInterface* Kel_ListCellAccessible::parent() const
{
    return mTableP;
}

QString Kel_ListCellAccessible::text(QAccessible::Text type) const
{
    if (!isValid() || (type != QAccessible::Name && type != QAccessible::Value))
        return QString();
    return mRow < 0 ? mTableP->columnHeaderText(mColumn) : mTableP->cellText(mRow, mColumn);
}

QRect Kel_ListCellAccessible::rect() const
{
    return isValid() ? mTableP->cellRect(mRow, mColumn) : QRect();
}

QAccessible::Role Kel_ListCellAccessible::role() const
{
    if (mRow < 0)
        return QAccessible::ColumnHeader;
    return mTableP && mTableP->role() == QAccessible::List ? QAccessible::ListItem : QAccessible::Cell;
}

QAccessible::State Kel_ListCellAccessible::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    Kel_ListView* list = mTableP->list();
    QWidget* host = Kel_ViewAccessibility::hostWidget(list);
    if (!host || !host->isVisible())
        state.invisible = true;
    else if (mTableP->isCellOffscreen(mRow, mColumn))
        state.offscreen = true;
    if (mRow < 0)
        return state;
    state.readOnly = true;
    state.selectable = list->getSelectionMode() != Kel_ListView::None;
    state.selected = list->IsRowSelected(mRow);
    state.focusable = list->acceptsFocus();
    state.focused = host && host->hasFocus() && list->getCurrentCell() == mRow;
    return state;
}

void* Kel_ListCellAccessible::interface_cast(QAccessible::InterfaceType type)
{
    switch (type) {
    case QAccessible::TableCellInterface:
        return static_cast<QAccessibleTableCellInterface*>(this);
    case QAccessible::ActionInterface:
        return static_cast<QAccessibleActionInterface*>(this);
    default:
        return nullptr;
    }
}

bool Kel_ListCellAccessible::isSelected() const
{
    return isValid() && mRow >= 0 && mTableP->list()->IsRowSelected(mRow);
}

QList<QAccessibleInterface*> Kel_ListCellAccessible::columnHeaderCells() const
{
    QList<QAccessibleInterface*> headers;
    if (isValid() && mRow >= 0) {
        if (QAccessibleInterface* header = mTableP->cellInterface(-1, mColumn))
            headers.append(header);
    }
    return headers;
}

QStringList Kel_ListCellAccessible::actionNames() const
{
    QStringList names;
    if (!isValid() || mRow < 0 || mTableP->list()->getSelectionMode() == Kel_ListView::None)
        return names;
    names.append(pressAction());
    const Kel_ListView::SelectionMode mode = mTableP->list()->getSelectionMode();
    if (mode == Kel_ListView::Multi || mode == Kel_ListView::Extended)
        names.append(toggleAction());
    names.append(setFocusAction());
    return names;
}

void Kel_ListCellAccessible::doAction(const QString& actionName)
{
    if (!actionNames().contains(actionName))
        return;
    Kel_ListView* list = mTableP->list();
    if (actionName == toggleAction()) {
        list->SetSelected(mRow, false, Qt::ControlModifier);
        return;
    }
    if (actionName == setFocusAction()) {
        if (QWidget* host = Kel_ViewAccessibility::hostWidget(list))
            host->setFocus(Qt::OtherFocusReason);
    }
    // Press, and the focus too, select the row as a click or an arrow key does.
    list->SetSelected(mRow, false, Qt::NoModifier);
}
