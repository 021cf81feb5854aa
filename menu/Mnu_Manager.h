#ifndef MNU_MANAGER_H
#define MNU_MANAGER_H

#include "kelcore_export.h"

#include "Mnu_MenuID.h"
#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <boost/shared_ptr.hpp>
#include <string>

class Mnu_Menu;
class Mnu_Segment;
class Mnu_SubmenuSegment;
class QDomElement;

// Abstract manager of one menu: owns the menu, reads it from a menu file and
// knows how to put items into a realised menu. The item operations do
// nothing here; a realisation (Mnu_QtManager) supplies them.
class KELCORE_EXPORT Mnu_Manager
{
public:
    Mnu_Manager();
    virtual ~Mnu_Manager();
    Mnu_Manager(const Mnu_Manager&) = delete;
    Mnu_Manager& operator=(const Mnu_Manager&) = delete;

    // New managers of the same realisation: parsing a <Menu> element,
    // reading a named menu, or empty.
    virtual Mnu_Manager* managerFactory(QDomElement* element) = 0;
    virtual Mnu_Manager* managerFactory(char* name) = 0;
    virtual Mnu_Manager* managerFactory() = 0;
    // Replaces the contents with the element (a root already parsed).
    virtual bool setMenus(QDomElement* element);
    // Replaces the contents with the menu file of that name.
    virtual bool setMenus(char* name);
    // Reads the menu file of that name without clearing first.
    virtual bool addMenus(char* name);
    // Takes menu as this manager's menu (ownership passes).
    virtual void addMenu(Mnu_Menu* menu);
    virtual bool instantiateMenus();
    virtual void clearMenus();
    virtual bool doSystemMessageConnect();
    virtual Mnu_Menu* getMenu();
    virtual bool isInstantiated();
    virtual Mnu_MenuID insertSeparator();
    // Adds an item named name showing text, opening submenu.
    virtual Mnu_MenuID insertItem(const QString& name, QString& text, Mnu_Manager* submenu);
    // Adds an item named name showing text; invalid when none could be made.
    virtual Mnu_MenuID insertItem(const QString& name, QString& text);
    virtual void setItemAccelerator(Mnu_MenuID id, const QString& accelerator);
    virtual void setItemEnabled(Mnu_MenuID id, bool enabled);
    virtual void setItemCheckable(Mnu_MenuID id, bool checkable);
    virtual void setItemChecked(Mnu_MenuID id, bool checked);
    virtual bool getItemChecked(Mnu_MenuID id);
    virtual bool removeItem(Mnu_MenuID id);
    // pixmap is a QPixmap* in the Qt realisation.
    virtual void setItemIcon(Mnu_MenuID id, void* pixmap);
    virtual void setItemIcon(Mnu_MenuID id, const QString& fileName);
    // Icon from the bytes of an image file.
    virtual void setItemIcon(Mnu_MenuID id, unsigned char* data, int length);
    virtual void setParentSegment(Mnu_SubmenuSegment* segment);
    virtual void setWhatsThis(Mnu_MenuID id, const QString& text);
    // Test queries on the item at a dotted path of item names.
    virtual bool tstGetItemEnabled(const QString& path);
    virtual bool tstGetItemChecked(const QString& path);
    virtual bool tstGetItemVisible(const QString& path);
    virtual QString tstGetItemText(const QString& path);
    virtual bool tstActivateItem(const QString& path);
    // Finds the item at path: the manager that made it, its segment and its
    // position among that segment's items.
    virtual bool tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index);
    // Connects the menu's listeners (nothing in the base).
    virtual void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);

protected:
    // Reads resource path + name + ".xml", or else name as given, and hands
    // the root element to xmlDerivedParser.
    virtual bool xmlParser(char* name);
    // Checks the root tag and reads the menu (or menus) from it.
    virtual bool xmlDerivedParser(QDomElement& root) = 0;

public:
    virtual void dump(const QString& prefix) const = 0;
    // Puts the item into the exclusive choice of group (one per segment and
    // build), shown with radio indicators; nothing in the base.
    virtual void setItemRadioGroup(Mnu_MenuID id, const void* group);

    void setWhatsThis(Mnu_MenuID id, const std::string& text);
    Mnu_SubmenuSegment* getParentSegment() const { return mParentSegmentP; }
    // The manager's own lines of a dump, then the menu's.
    void dumpManagerInformation(const QString& prefix) const;

protected:
    Mnu_Menu* mMenuP;                    // owned: replaced by setMenu, deleted with the manager
    bool mInstantiated;
    Mnu_SubmenuSegment* mParentSegmentP; // not owned: the segment owns this manager
};

#endif
