#ifndef MNU_QTMENUBARMANAGER_H
#define MNU_QTMENUBARMANAGER_H

#include "kelcore_export.h"

#include "Mnu_Manager.h"
#include "Mnu_Segment.h"

#include <QKeySequence>
#include <QList>
#include <QPointer>
#include <iosfwd>
#include <memory>

class Kel_MenuBar;
class Mnu_QtManager;
class Mnu_QtMenuBarEventFilter;
class QAction;

// The manager of a menu bar: a manager of drop-down menu managers, read
// from a <MenuBar> file or built by a factory that generated code
// registered under the bar's name.
class KELCORE_EXPORT Mnu_QtMenuBarManager : public Mnu_Manager
{
public:
    typedef Mnu_QtMenuBarManager* (*MenuBarFactory)(Mnu_QtMenuBarManager* manager);

    explicit Mnu_QtMenuBarManager(Kel_MenuBar* menuBar);
    // Fills the bar through the factory registered under the last part of
    // fileName ("\\" counts as "/"), or else reads the menu file fileName.
    Mnu_QtMenuBarManager(Kel_MenuBar* menuBar, char* fileName);
    ~Mnu_QtMenuBarManager() override;

    // Registry of menu-bar factories; one per name.
    static void registerMenuBarFactory(const char* name, MenuBarFactory factory);
    static void unregisterMenuBarFactory(const char* name);
    static MenuBarFactory getMenuBarFactory(const char* name);

    // New drop-down managers (not added to this bar).
    Mnu_Manager* managerFactory(QDomElement* element) override;
    Mnu_Manager* managerFactory(char* name) override;
    Mnu_Manager* managerFactory() override;
    // Wraps menu in a new drop-down manager and appends it.
    void addMenu(Mnu_Menu* menu) override;
    // Instantiates every drop-down menu and puts one bar item per menu.
    bool instantiateMenus() override;
    void clearMenus() override;
    Mnu_Menu* getMenu() override;
    bool tstGetItemEnabled(const QString& path) override;
    bool tstGetItemChecked(const QString& path) override;
    bool tstGetItemVisible(const QString& path) override;
    QString tstGetItemText(const QString& path) override;
    bool tstActivateItem(const QString& path) override;
    // The first part of path names a drop-down menu (its menu's name).
    bool tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    // Makes a drop-down manager for the <Menu> element and appends it.
    Mnu_QtManager* addManager(QDomElement* element);
    // Appends manager (ownership passes); an instantiated bar reserves an
    // empty item for it, filled at the next refresh.
    void addManager(Mnu_QtManager* manager);
    // An empty drop-down manager of this bar with its own pop-up (not appended).
    Mnu_QtManager* createManager();
    int getManagerCount() const { return mManagers.size(); }
    Mnu_QtManager* getManagerAt(int index) const;
    Kel_MenuBar* getMenuBar() const;

    // Places the application's Edit menu (Dak_EditMenu) after the drop-down
    // menus added so far; an <EditMenu/> element of a <MenuBar> file does
    // this at its place. A bar holds the Edit menu once: a second call moves it.
    void addEditMenu();
    // Whether the bar holds the Edit menu.
    bool hasEditMenu() const { return mEditMenuIndex >= 0; }

    // Updates the bar's items (titles, visibility, reserved items) from the
    // menus' models without rebuilding the drop-down menus.
    void refreshMenuBar();
    // The visible segment whose current accelerator is sequence, searching
    // every menu and submenu in bar order; null when none.
    Mnu_Segment* getSegmentByAccelerator(const QKeySequence& sequence);
    Mnu_QtMenuBarEventFilter* getEventFilter() const { return mEventFilterP.get(); }

    // Where insertItems puts new items: before or after the item a path
    // names, or at the end of the menu a path names.
    enum InsertPosition { kInsertBefore, kInsertAfter, kAppend };
    // The menu at a dotted path: a menu of the bar by its name, then
    // submenus, each by the name of its segment or of its menu. Null when
    // there is none.
    Mnu_Menu* getMenuByPath(const QString& path) const;
    // Adds the segments of a <Menu> element (its own name, title and
    // connections are not used) to a menu of the bar, so that a plug-in can
    // put its commands into the application's menus. For kInsertBefore and
    // kInsertAfter the path ends with the name of a segment of that menu
    // ("Edit.Paste"); for kAppend it names the menu ("Edit.Recent"). A bar
    // already connected connects the new segments in the same environment;
    // a built menu is rebuilt. False (nothing added) when the path leads
    // nowhere or the element is not a <Menu>.
    bool insertItems(const QString& path, QDomElement* menuElement, InsertPosition position);
    // The same from the text of a <Menu> element; false also when it does not parse.
    bool insertItems(const QString& path, const QString& menuXml, InsertPosition position);
    // Adds a drop-down menu read from a <Menu> element before the bar's menu
    // named before (at the end when before is empty); connected and shown
    // like the others. Null when before names no menu or the element is not
    // a <Menu>.
    Mnu_QtManager* insertMenu(const QString& before, QDomElement* menuElement);
    Mnu_QtManager* insertMenu(const QString& before, const QString& menuXml);

    // Writes the bar and all its menus as an XML menu file or as a source
    // file (class name) that registers a factory building the same bar. Always true.
    bool saveMenuBar(std::ostream& out, const QString& name, Mnu_Segment::saveFormat format);

protected:
    bool xmlDerivedParser(QDomElement& root) override;

private:
    void init();
    void removeBarItems();
    // A bar item opening manager's menu, inserted before before (appended when null).
    QAction* makeBarItem(Mnu_QtManager* manager, QAction* before);
    Mnu_QtManager* managerNamed(const QString& name) const;
    Mnu_Segment* findSegmentByAccelerator(Mnu_Menu* menu, const QKeySequence& sequence, int depth);
    // The bar item shown after the menu at index, in bar order; null when none.
    QAction* itemAfter(int index) const;
    void insertEditMenuItem(QAction* before);

    QPointer<Kel_MenuBar> mMenuBarP;
    QList<Mnu_QtManager*> mManagers; // owned: deleted when replaced and with the bar manager
    QList<QPointer<QAction>> mItemIDs;
    // The Edit menu's place: the number of drop-down menus before it (-1: none).
    int mEditMenuIndex = -1;
    // The Edit menu's own item while the bar shows it (owned by Dak_EditMenu).
    QPointer<QAction> mEditMenuItem;
    std::unique_ptr<Mnu_QtMenuBarEventFilter> mEventFilterP;
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment; // of the last makeConnections
};

#endif
