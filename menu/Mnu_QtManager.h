#ifndef MNU_QTMANAGER_H
#define MNU_QTMANAGER_H

#include "kelcore_export.h"

#include "Mnu_Manager.h"
// Whoever has a manager works with its menu (generated menu code does).
#include "Mnu_Menu.h"
#include "Mnu_Segment.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSet>
#include <QString>
#include <iosfwd>
#include <vector>

class Kel_PopupMenu;
class Mnu_QtMenuBarManager;
class QAction;
class QActionGroup;

// Realises one menu in a Kel_PopupMenu: rebuilds its items from the models
// every time the menu is about to be shown and routes a chosen action to
// the segment that made it. Menus can also come from factories that
// generated code registers by name.
class KELCORE_EXPORT Mnu_QtManager : public QObject, public Mnu_Manager
{
    Q_OBJECT

public:
    typedef void (*AboutToShowFunc)(Mnu_QtManager* manager, void* data);
    typedef Mnu_QtManager* (*MenuFactory)(Mnu_QtManager* manager);

    Mnu_QtManager();
    // A menu named name: built by the factory registered under the name's
    // last "/" part, or else read from the menu file of that name. popup
    // (not owned) may be null; one is then made and owned.
    Mnu_QtManager(Kel_PopupMenu* popup, char* name);
    Mnu_QtManager(Mnu_QtMenuBarManager* menuBar, Kel_PopupMenu* popup);
    // Reads the <Menu> element as its menu.
    Mnu_QtManager(Mnu_QtMenuBarManager* menuBar, Kel_PopupMenu* popup, QDomElement* element);
    ~Mnu_QtManager() override;

    // Registry of menu factories; several owners may register one name,
    // and lookups use the first entry.
    static void registerMenuFactory(const char* name, void* owner, MenuFactory factory);
    static void unregisterMenuFactory(const char* name, void* owner);
    static MenuFactory getMenuFactory(const char* name);

    // The shared table of accelerators handed to items (portable key text).
    static bool isDefinedAccelerator(const QString& accelerator);
    // Marks the accelerator as no longer defined.
    static void deleteAccelerator(const QString& accelerator);

    Mnu_Manager* managerFactory(QDomElement* element) override;
    Mnu_Manager* managerFactory(char* name) override;
    Mnu_Manager* managerFactory() override;
    bool instantiateMenus() override;
    void clearMenus() override;
    bool doSystemMessageConnect() override;
    Mnu_MenuID insertSeparator() override;
    Mnu_MenuID insertItem(const QString& name, QString& text, Mnu_Manager* submenu) override;
    Mnu_MenuID insertItem(const QString& name, QString& text) override;
    void setItemAccelerator(Mnu_MenuID id, const QString& accelerator) override;
    void setItemEnabled(Mnu_MenuID id, bool enabled) override;
    void setItemCheckable(Mnu_MenuID id, bool checkable) override;
    void setItemChecked(Mnu_MenuID id, bool checked) override;
    bool getItemChecked(Mnu_MenuID id) override;
    bool removeItem(Mnu_MenuID id) override;
    void setItemIcon(Mnu_MenuID id, void* pixmap) override;
    void setItemIcon(Mnu_MenuID id, const QString& fileName) override;
    void setItemIcon(Mnu_MenuID id, unsigned char* data, int length) override;
    using Mnu_Manager::setWhatsThis;
    void setWhatsThis(Mnu_MenuID id, const QString& text) override;
    void setItemRadioGroup(Mnu_MenuID id, const void* group) override;
    bool tstGetItemEnabled(const QString& path) override;
    bool tstGetItemChecked(const QString& path) override;
    bool tstGetItemVisible(const QString& path) override;
    QString tstGetItemText(const QString& path) override;
    bool tstActivateItem(const QString& path) override;
    bool tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    Kel_PopupMenu* getPopupMenu() const;
    Mnu_QtMenuBarManager* getMenuBarManager() const { return mMenuBarManagerP; }
    // The menu's displayed title (empty without a menu).
    QString getText() const;
    // True without a menu or with a menu that has no segments.
    bool isEmpty() const;
    // The menu's visibility from its model.
    bool isVisible() const;
    // Called at the end of every about-to-show, after the rebuild.
    void setAboutToShowFunc(AboutToShowFunc func, void* data);
    // Connects in environment (when given and new), instantiates and pops
    // the menu up at point (global coordinates).
    void popup(QPoint& point, boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    // Writes the menu as an XML menu file or as a source file (class name)
    // that registers a factory building the same menu. Always true.
    bool savePopupMenu(std::ostream& out, const QString& name, Mnu_Segment::saveFormat format);

    // The action that id stands for, when it is one of this manager's.
    QAction* actionForID(Mnu_MenuID id) const;
    // Makes (and owns) a pop-up menu when there is none yet.
    Kel_PopupMenu* createPopupMenu(QWidget* parent = nullptr);

public slots:
    // Rebuilds the items from the current model values.
    void aboutToShow();
    // Routes a chosen action to its segment.
    void triggered(QAction* action);

protected:
    bool xmlDerivedParser(QDomElement& root) override;

private:
    void init(Kel_PopupMenu* popup, Mnu_QtMenuBarManager* menuBar);
    void clearPopup();
    // The action of the item at a dotted path of item names, or null.
    QAction* findItemAction(const QString& path);

    QPointer<Kel_PopupMenu> mPopupMenuP;
    bool mOwnsPopupMenu;
    Mnu_QtMenuBarManager* mMenuBarManagerP; // not owned: the bar's manager owns this one
    void addItemID(QAction* action);

    std::vector<QAction*> mItemIDs;
    // The same actions, for constant-time identifier lookups (a linear
    // search made a rebuild quadratic in the number of items). A segment
    // sets up each item right after making it, which the last identifier
    // answers; so the set is made only when an older one is asked for.
    mutable QSet<const void*> mItemSet;
    mutable bool mItemSetComplete;
    bool mSystemMessagesConnected;
    AboutToShowFunc mAboutToShowFuncP;
    void* mAboutToShowDataP;
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    // The exclusive groups of the current build, by segment; children of the pop-up.
    QHash<const void*, QPointer<QActionGroup>> mRadioGroups;
};

#endif
