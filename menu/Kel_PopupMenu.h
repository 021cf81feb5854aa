#ifndef KEL_POPUPMENU_H
#define KEL_POPUPMENU_H

#include "kelcore_export.h"

#include "Kel_IPointOfInterestFinder.h"

#include <QList>
#include <QMenu>
#include <QVariant>
#include <string>

// The pop-up menu that the menu system fills. Items carry their name as
// action data, so that they can be found by a dotted path of names.
class KELCORE_EXPORT Kel_PopupMenu : public QMenu, public Kel_IPointOfInterestFinder
{
    Q_OBJECT

public:
    // Without a name the menu is called "unnamed" until a menu names it.
    explicit Kel_PopupMenu(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_PopupMenu() override;

    // Appends an item showing text, with data as its action data.
    QAction* insertItem(const QString& text, QVariant data);
    // Appends an item showing text that opens submenu.
    QAction* insertItem(const QString& text, QMenu* submenu, QVariant data);
    QAction* insertItem(const std::string& text, QVariant data);
    QAction* insertItem(const std::string& text, QMenu* submenu, QVariant data);
    QAction* insertItem(const QString& text, const QString& data);
    QAction* insertItem(const QString& text, QMenu* submenu, const QString& data);

    // The first action whose data equals data; with recursive, submenus are
    // searched too (depth first).
    QAction* findAction(QVariant data, bool recursive);
    // Follows a path of data values through submenus; null when a part is
    // missing or the list is empty. An item without a submenu ends the path.
    QAction* findAction(QList<QVariant> path);
    // findAction on the parts of a dotted path (empty parts are skipped).
    QAction* getItemByPath(const QString& path);
    using QMenu::actionAt;

    // The menu itself (empty name or its object name) or an item path
    // within it; only while the menu is shown.
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

    // Splits a dotted path into action data values.
    static QList<QVariant> splitPath(const QString& path);
};

#endif
