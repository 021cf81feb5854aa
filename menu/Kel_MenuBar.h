#ifndef KEL_MENUBAR_H
#define KEL_MENUBAR_H

#include "kelcore_export.h"

#include "Kel_IPointOfInterestFinder.h"
#include "Kel_MenuCommandInterface.h"
#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QKeySequence>
#include <QMenuBar>
#include <QVariant>
#include <memory>

class Mnu_Manager;
class Mnu_QtMenuBarManager;
class Mnu_Segment;
class QAction;

// A menu bar whose menus come from a menu file (or a registered factory)
// named by its menuBarFileName, bound to models when the owner connects it.
class KELCORE_EXPORT Kel_MenuBar : public QMenuBar,
                                   public Kel_WidgetConnectInterface,
                                   public Kel_IPointOfInterestFinder,
                                   public Kel_MenuCommandInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray menuBarFileName READ getMenuBarFileName WRITE setMenuBarFileName)

public:
    // A non-empty name is both the object name and the menu-bar file name.
    explicit Kel_MenuBar(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_MenuBar() override;

    // Replaces the menus with those of the named menu bar (factory or file
    // "name.xml" under the resource path, or a file path); a bar connected
    // before is connected again with the same environment.
    void setMenuBarFileName(const QByteArray& name);
    QByteArray getMenuBarFileName() const { return mMenuBarFileName; }
    Mnu_QtMenuBarManager* getMenuBarManager() const { return mMenuBarManagerP.get(); }

    // Connects every menu and builds the bar.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Menu commands for keys (Kel_KeymapMgr): command segments found by
    // getSegmentByAccelerator.
    QObject* menuCommandOwner() override { return this; }
    bool triggerMenuCommand(const QKeySequence& accelerator) override;
    QString menuCommandText(const QKeySequence& accelerator) override;

    // The visible menu segment whose current accelerator is sequence
    // (menus are refreshed from their models first); null when none.
    Mnu_Segment* getSegmentByAccelerator(const QKeySequence& sequence);
    // Whether an item was given sequence as its shortcut (and it was not deleted since).
    bool isDefinedAccelerator(const QKeySequence& sequence) const;
    // Takes sequence away from the bar's items until they are rebuilt.
    void deleteAccelerator(const QKeySequence& sequence);
    // The item of the bar's menus that has sequence as its shortcut, or null.
    QAction* findAccel(const QKeySequence& sequence) const;

    // The bar's own item whose data (the menu's name) equals data.
    QAction* findAction(QVariant data) const;
    // A dotted path of names: a menu of the bar, then items of its menu and submenus.
    QAction* getItemByPath(const QString& path) const;
    // Test lookup through the bar manager (see Mnu_Manager::tstFindItemByPath).
    bool tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index);

    // The bar (empty name or its object name), one of its menus, or an
    // item of a menu that is open.
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

private:
    std::unique_ptr<Mnu_QtMenuBarManager> mMenuBarManagerP;
    QByteArray mMenuBarFileName;
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    bool mConnected;
};

#endif
