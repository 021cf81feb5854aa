#include "Kel_ListWithColumnsAccessible_p.h"

#include "Kel_HStackView.h"
#include "Kel_ListWithColumns.h"
#include "Kel_ViewAccessibility.h"

#include <QWidget>

Kel_ListWithColumnsAccessible::Kel_ListWithColumnsAccessible(Kel_ListWithColumns* list)
    : Kel_ListViewAccessible(list)
{
}

Kel_ListWithColumns* Kel_ListWithColumnsAccessible::columnedList() const
{
    return static_cast<Kel_ListWithColumns*>(list());
}

int Kel_ListWithColumnsAccessible::columnCount() const
{
    Kel_ListWithColumns* l = columnedList();
    Kel_HStackView* stack = l ? l->rowStack() : nullptr;
    return stack ? qMax(0, (stack->count() - 1) / 2) : 0;
}

Kel_ViewInterface* Kel_ListWithColumnsAccessible::columnView(Kel_ViewInterface* rowView, int column) const
{
    auto* stack = dynamic_cast<Kel_HStackView*>(rowView);
    if (!stack || column < 0 || column >= columnCount())
        return nullptr;
    return stack->viewAt(Kel_ListWithColumns::columnIndexToViewIndex(column));
}

QString Kel_ListWithColumnsAccessible::columnHeaderText(int column) const
{
    Kel_ListWithColumns* l = columnedList();
    return l && column >= 0 && column < columnCount() ? l->columnLabel(column) : QString();
}

QAccessibleInterface* Kel_ListWithColumnsAccessible::focusChild() const
{
    Kel_ListWithColumns* l = columnedList();
    QWidget* host = l ? Kel_ViewAccessibility::hostWidget(l) : nullptr;
    if (!host || !host->hasFocus())
        return nullptr;
    if (l->gridRow() >= 0 && l->gridColumn() >= 0)
        return cellInterface(l->gridRow(), int(l->gridColumn()));
    return cellInterface(l->getCurrentCell(), 0);
}

void Kel_ListWithColumnsAccessible::columnsChanged(Kel_ListWithColumns* list,
                                                   QAccessibleTableModelChangeEvent::ModelChangeType type,
                                                   long first, long last)
{
    // Events never make an interface; without one there are no cells either.
    auto* table = dynamic_cast<Kel_ListWithColumnsAccessible*>(Kel_ViewAccessibility::existingInterface(list));
    if (!table)
        return;
    table->forgetCells();
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    QAccessibleTableModelChangeEvent event(table, type);
    if (type != QAccessibleTableModelChangeEvent::ModelReset) {
        event.setFirstColumn(int(first));
        event.setLastColumn(int(last));
    }
    Kel_ViewAccessibility::send(&event);
}
