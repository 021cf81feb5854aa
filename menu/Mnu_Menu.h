#ifndef MNU_MENU_H
#define MNU_MENU_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Mnu_MenuID.h"
#include "Mnu_Segment.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mvt_SimpleValue.h"

#include <QHash>
#include <QString>
#include <boost/shared_ptr.hpp>
#include <iosfwd>
#include <memory>
#include <utility>
#include <vector>

class Mnu_Manager;
class Mnu_QtManager;
class QDomElement;

// One menu: a name, a title and an ordered list of segments, independent of
// any toolkit. It remembers which segment made each item of its last
// instantiation so that a chosen item reaches its segment.
class KELCORE_EXPORT Mnu_Menu
{
public:
    explicit Mnu_Menu(Mnu_Manager* manager);
    // Reads a <Menu> element: title, name, connections and segments.
    Mnu_Menu(Mnu_Manager* manager, QDomElement& element);
    ~Mnu_Menu();
    Mnu_Menu(const Mnu_Menu&) = delete;
    Mnu_Menu& operator=(const Mnu_Menu&) = delete;

    QString getName() const { return mName; }
    void setName(const QString& name) { mName = name; }
    // The static title, as written in the file.
    QString getText() const { return mText; }
    QString getMenuText() const { return mText; }
    void setMenuText(const QString& text) { mText = text; }
    // The title chosen by the last instantiation or refresh.
    QString getDisplayedText() const { return mDisplayedText; }
    QString getVisibleConnectionName() const { return mVisibility.spec(); }
    void setVisibleConnectionName(const QString& name) { mVisibility.setSpec(name); }
    QString getItemTextConnectionName() const { return mTitle.spec(); }
    void setItemTextConnectionName(const QString& name) { mTitle.setSpec(name); }
    Mnu_Manager* getManager() const { return mManagerP; }
    // Used by a manager that adopts a menu made elsewhere.
    void setManager(Mnu_Manager* manager) { mManagerP = manager; }
    int getSegmentCount() const { return int(mSegments.size()); }
    // Null when index is out of range.
    Mnu_Segment* getSegmentAt(int index) const;
    bool isVisible() const { return mVisible; }

    // Segment list changes; each re-instantiates an instantiated manager.
    // The menu takes ownership of added segments.
    void addSegment(Mnu_Segment* segment);
    // Inserts before anchor (after it when after is true); a null anchor
    // inserts first, an unknown one appends.
    void insertSegment(Mnu_Segment* segment, Mnu_Segment* anchor, bool after);
    // Takes the segment out without destroying it; always answers true.
    bool removeSegment(Mnu_Segment* segment);
    // Destroys every segment; does not re-instantiate.
    void clearSegments();

    // Makes the items of every segment in the manager, leaving out leading,
    // doubled and trailing separators. False when the menu is hidden.
    bool instantiate();
    // Recomputes visibility and displayed title from the models without
    // touching the items; answers the visibility.
    bool refreshTitleAndVisibility();

    // Called by a segment for each item it makes.
    void setIDAssignedToSegment(Mnu_Segment* segment, Mnu_MenuID id);
    // Routes a chosen item to the segment that made it; unknown ones do nothing.
    void itemActivated(Mnu_MenuID id);
    // Enables or disables every item of segment in the realised menu.
    void setItemEnabled(Mnu_Segment* segment, bool enabled);
    // The segment that made id at the last instantiation, or null.
    Mnu_Segment* getSegmentForID(Mnu_MenuID id) const;
    // Item identifiers of the last instantiation, in order.
    std::vector<Mnu_MenuID> getIDs() const;
    // The realisation records the name of each item it makes, for lookups by path.
    void setItemName(Mnu_MenuID id, const QString& name);
    QString getItemName(Mnu_MenuID id) const;

    // Connects the title and visibility listeners, then every segment.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    void menuTextNotifyCallback(const Mvt_SimpleValue_Notifications::MsgValueChanged& message);
    void menuVisibleNotifyCallback(const Mvt_SimpleValue_Notifications::MsgValueChanged& message);

    // Writes the menu as XML or as source code. menuMgr is the manager of a
    // stand-alone pop-up (null inside a menu bar or a submenu); isSubmenu
    // says the menu belongs to a submenu segment. Always true.
    bool saveMenu(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format, Mnu_QtManager* menuMgr,
                  bool isSubmenu);

    // Finds the item named by the depth-th part of a dotted path of item
    // names (descending into submenus for further parts). Fills segment, id
    // and the manager that made the item (each may be null).
    bool tstFindItemByPath(const QString& path, int depth, Mnu_Segment** segment, Mnu_MenuID* id,
                           Mnu_Manager** manager);

    void dump(const QString& prefix) const;

private:
    void parseMenu(QDomElement& element);
    void emitCode(std::ostream& out, const QString& indent, const QString& line);
    void afterSegmentsChanged();
    void forgetID(Mnu_MenuID id);
    void compactIDs();
    void clearIDs();
    void handleTitleConnectionChanged();
    void handleVisibleConnectionChanged();


    Mnu_Manager* mManagerP;             // not owned: the manager owns this menu
    std::vector<Mnu_Segment*> mSegments; // owned: deleted with the menu (removeSegment hands one back)
    void indexIDs() const;
    bool hasIDs() const { return mIDs.size() > mForgottenIDs; }

    // An item and the segment that made it.
    struct IDEntry
    {
        Mnu_MenuID mID;
        Mnu_Segment* mSegmentP;
    };
    // Identifiers in hand-out order. A forgotten one leaves an invalid
    // identifier behind until enough have gone to compact the list, so that
    // forgetting one needs no search of the list. A build only appends:
    // where each identifier stands (mIndex) is worked out on the first
    // lookup after it, so that building a menu allocates nothing per item.
    // An identifier handed out again moves to the end, which that indexing
    // settles too; so the lookups update these from const functions.
    mutable std::vector<IDEntry> mIDs;
    mutable QHash<const void*, size_t> mIndex;
    mutable size_t mIndexed; // entries of mIDs that mIndex covers
    mutable size_t mForgottenIDs;
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mTitle;
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mVisibility;
    QString mText;
    QString mName;
    QString mConnectedText;
    QString mDisplayedText;
    bool mVisible;
    // The name of each item of the build, latest last.
    std::vector<std::pair<Mnu_MenuID, QString>> mItemNames;
};

#endif
