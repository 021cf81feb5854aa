#include "Kel_PopupMenu.h"

#include <QAction>
#include <QSet>
#include <QStringList>

namespace {

// Depth-first search for an action by its data; visited guards against a
// menu that contains itself through its submenus.
QAction* findActionIn(QMenu* menu, const QVariant& data, bool recursive, QSet<QMenu*>& visited)
{
    visited.insert(menu);
    const QList<QAction*> items = menu->actions();
    for (QAction* action : items) {
        if (!action->isSeparator() && action->data() == data)
            return action;
    }
    if (!recursive)
        return nullptr;
    for (QAction* action : items) {
        QMenu* submenu = action->menu();
        if (submenu && !visited.contains(submenu)) {
            if (QAction* found = findActionIn(submenu, data, true, visited))
                return found;
        }
    }
    return nullptr;
}

} // namespace

Kel_PopupMenu::Kel_PopupMenu(QWidget* parent, const char* name) : QMenu(parent)
{
    setObjectName(name && *name ? QString::fromLatin1(name) : QStringLiteral("unnamed"));
}

Kel_PopupMenu::~Kel_PopupMenu() = default;

QAction* Kel_PopupMenu::insertItem(const QString& text, QVariant data)
{
    // Filled in before it joins the menu: a change to an action already in
    // a menu sends the menu an event, which costs as much as the adding.
    auto* action = new QAction(text, this);
    action->setData(data);
    addAction(action);
    return action;
}

QAction* Kel_PopupMenu::insertItem(const QString& text, QMenu* submenu, QVariant data)
{
    // An action of our own rather than the submenu's menuAction(): clearing
    // this menu must not take the submenu's action with it.
    auto* action = new QAction(text, this);
    action->setMenu(submenu);
    action->setData(data);
    addAction(action);
    return action;
}

QAction* Kel_PopupMenu::insertItem(const std::string& text, QVariant data)
{
    return insertItem(QString::fromStdString(text), data);
}

QAction* Kel_PopupMenu::insertItem(const std::string& text, QMenu* submenu, QVariant data)
{
    return insertItem(QString::fromStdString(text), submenu, data);
}

QAction* Kel_PopupMenu::insertItem(const QString& text, const QString& data)
{
    return insertItem(text, QVariant(data));
}

QAction* Kel_PopupMenu::insertItem(const QString& text, QMenu* submenu, const QString& data)
{
    return insertItem(text, submenu, QVariant(data));
}

QAction* Kel_PopupMenu::findAction(QVariant data, bool recursive)
{
    QSet<QMenu*> visited;
    return findActionIn(this, data, recursive, visited);
}

QAction* Kel_PopupMenu::findAction(QList<QVariant> path)
{
    QMenu* menu = this;
    QAction* found = nullptr;
    for (int i = 0; i < path.size(); ++i) {
        found = nullptr;
        for (QAction* action : menu->actions()) {
            if (!action->isSeparator() && action->data() == path.at(i)) {
                found = action;
                break;
            }
        }
        if (!found)
            return nullptr;
        // Further parts lead into the item's submenu; an item without one
        // is where the path ends.
        menu = found->menu();
        if (!menu)
            return found;
    }
    return found;
}

QAction* Kel_PopupMenu::getItemByPath(const QString& path)
{
    return findAction(splitPath(path));
}

bool Kel_PopupMenu::findPoi(const QString& dottedName, QRect* globalRect)
{
    if (!isVisible())
        return false;
    if (dottedName.isEmpty() || dottedName == objectName()) {
        if (globalRect)
            *globalRect = QRect(mapToGlobal(QPoint(0, 0)), size());
        return true;
    }
    // Walk down to the menu that shows the last part; it must be open.
    const QList<QVariant> parts = splitPath(dottedName);
    QMenu* menu = this;
    for (int i = 0; i < parts.size() && menu; ++i) {
        QAction* found = nullptr;
        for (QAction* action : menu->actions()) {
            if (!action->isSeparator() && action->data() == parts.at(i)) {
                found = action;
                break;
            }
        }
        if (!found)
            return false;
        if (i + 1 == parts.size()) {
            if (!menu->isVisible() || !found->isVisible())
                return false;
            const QRect local = menu->actionGeometry(found);
            if (globalRect)
                *globalRect = QRect(menu->mapToGlobal(local.topLeft()), local.size());
            return true;
        }
        menu = found->menu();
    }
    return false;
}

QList<QVariant> Kel_PopupMenu::splitPath(const QString& path)
{
    QList<QVariant> parts;
    for (const QString& part : path.split(QLatin1Char('.'), Qt::SkipEmptyParts))
        parts.append(QVariant(part));
    return parts;
}
