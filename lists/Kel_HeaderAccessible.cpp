#include "Kel_HeaderAccessible_p.h"

#include "Kel_Header.h"

#include <QWidget>
#include <utility>

// ---------------------------------------------------------------------------
// Kel_HeaderAccessible

Kel_HeaderAccessible::Kel_HeaderAccessible(Kel_Header* header) : QAccessibleWidget(header, QAccessible::Grouping)
{
}

Kel_HeaderAccessible::~Kel_HeaderAccessible()
{
    for (QAccessible::Id id : std::as_const(mItems))
        QAccessible::deleteAccessibleInterface(id);
}

Kel_Header* Kel_HeaderAccessible::header() const
{
    return static_cast<Kel_Header*>(widget());
}

QAccessibleInterface* Kel_HeaderAccessible::item(int position) const
{
    Kel_Header* h = isValid() ? header() : nullptr;
    const long column = h ? h->columnAt(position) : -1;
    if (column < 0)
        return nullptr;
    const auto known = mItems.constFind(column);
    if (known != mItems.constEnd()) {
        QAccessibleInterface* iface = QAccessible::accessibleInterface(known.value());
        if (iface && iface->isValid())
            return iface;
        // Another column took this index: its reader gets a new item.
        if (iface)
            QAccessible::deleteAccessibleInterface(known.value());
    }
    auto* made = new Kel_HeaderItemAccessible(h, column);
    mItems.insert(column, QAccessible::registerAccessibleInterface(made));
    return made;
}

int Kel_HeaderAccessible::childCount() const
{
    return isValid() ? header()->visibleColumnCount() : 0;
}

QAccessibleInterface* Kel_HeaderAccessible::child(int index) const
{
    return item(index);
}

int Kel_HeaderAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* item = dynamic_cast<const Kel_HeaderItemAccessible*>(child);
    return item && item->parent() == this ? item->position() : -1;
}

QAccessibleInterface* Kel_HeaderAccessible::childAt(int x, int y) const
{
    if (!isValid())
        return nullptr;
    const QPoint local = header()->mapFromGlobal(QPoint(x, y));
    for (int p = 0; p < childCount(); ++p) {
        if (header()->labelRect(p).contains(local))
            return item(p);
    }
    return nullptr;
}

QAccessibleInterface* Kel_HeaderAccessible::focusChild() const
{
    return isValid() && header()->hasFocus() ? item(header()->keyboardColumn()) : nullptr;
}

QString Kel_HeaderAccessible::text(QAccessible::Text type) const
{
    const QString own = QAccessibleWidget::text(type);
    return type == QAccessible::Name && own.isEmpty() && isValid() ? widget()->objectName() : own;
}

// ---------------------------------------------------------------------------
// Kel_HeaderItemAccessible

Kel_HeaderItemAccessible::Kel_HeaderItemAccessible(Kel_Header* header, long column)
    : mHeader(header), mColumn(column), mIdentifier(header ? header->columnIdentifier(column) : QString())
{
}

int Kel_HeaderItemAccessible::position() const
{
    if (!mHeader)
        return -1;
    for (int p = 0; p < mHeader->visibleColumnCount(); ++p) {
        if (mHeader->columnAt(p) == mColumn)
            return p;
    }
    return -1;
}

bool Kel_HeaderItemAccessible::isValid() const
{
    return position() >= 0 && mHeader->columnIdentifier(mColumn) == mIdentifier;
}

QWindow* Kel_HeaderItemAccessible::window() const
{
    QAccessibleInterface* header = parent();
    return header ? header->window() : nullptr;
}

QAccessibleInterface* Kel_HeaderItemAccessible::parent() const
{
    return mHeader ? QAccessible::queryAccessibleInterface(mHeader.data()) : nullptr;
}

QString Kel_HeaderItemAccessible::text(QAccessible::Text type) const
{
    const int p = position();
    if (p < 0)
        return QString();
    bool ascending = false;
    const bool sorted = mHeader->isSortedBy(p, &ascending);
    switch (type) {
    case QAccessible::Name:
        return mHeader->columnLabel(p);
    case QAccessible::Value:
        return sorted ? (ascending ? QStringLiteral("ascending") : QStringLiteral("descending")) : QString();
    case QAccessible::Description:
        return sorted ? (ascending ? Kel_Header::tr("Sorted ascending") : Kel_Header::tr("Sorted descending"))
                      : QString();
    default:
        return QString();
    }
}

QRect Kel_HeaderItemAccessible::rect() const
{
    const int p = position();
    if (p < 0)
        return QRect();
    const QRect local = mHeader->labelRect(p);
    return QRect(mHeader->mapToGlobal(local.topLeft()), local.size());
}

QAccessible::State Kel_HeaderItemAccessible::state() const
{
    QAccessible::State state;
    const int p = position();
    if (p < 0) {
        state.invalid = true;
        return state;
    }
    if (!mHeader->isVisible())
        state.invisible = true;
    else if (!mHeader->visibleRegion().intersects(mHeader->labelRect(p)))
        state.offscreen = true;
    state.disabled = !mHeader->isEnabled();
    state.focusable = true;
    state.focused = mHeader->hasFocus() && mHeader->keyboardColumn() == p;
    return state;
}

void* Kel_HeaderItemAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList Kel_HeaderItemAccessible::actionNames() const
{
    if (!isValid())
        return QStringList();
    return QStringList{pressAction(), showMenuAction(), setFocusAction()};
}

void Kel_HeaderItemAccessible::doAction(const QString& actionName)
{
    const int p = position();
    if (p < 0 || !mHeader->isEnabled())
        return;
    if (actionName == pressAction()) {
        mHeader->sortByPosition(p);
    } else if (actionName == showMenuAction()) {
        mHeader->showContextMenu(p);
    } else if (actionName == setFocusAction()) {
        mHeader->setFocus(Qt::OtherFocusReason);
        mHeader->setKeyboardColumn(p);
    }
}

QStringList Kel_HeaderItemAccessible::keyBindingsForAction(const QString& actionName) const
{
    if (actionName == pressAction())
        return QStringList{QStringLiteral("Space")};
    if (actionName == showMenuAction())
        return QStringList{QStringLiteral("Shift+F10")};
    return QStringList();
}
