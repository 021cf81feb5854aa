#ifndef MNU_RADIOLISTSEGMENT_H
#define MNU_RADIOLISTSEGMENT_H

#include "kelcore_export.h"

// The two radio kinds go together: code written for one (generated pop-up
// menus among it) gets both.
#include "Mnu_RadioItemsSegment.h"
#include "Mnu_Segment.h"
#include "Mvt_Array.h"
#include "Mvt_ArrayContainer.h"

#include <map>
#include <vector>

// An exclusive choice among the elements of an array model. Elements give
// ".name", ".id" and ".accel"; the current-item model holds the ".id" of
// the chosen element.
class KELCORE_EXPORT Mnu_RadioListSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_RadioListSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_RadioListSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    void itemActivated(Mnu_MenuID id) override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    QString getItemsConnectionName() const { return mItemsConnectionName; }
    // Renames the ".name", ".id", ".accel" and array listeners.
    void setItemsConnectionName(const QString& name);
    QString getSelectedItemConnectionName() const { return mCurrentItemModel.spec(); }
    void setSelectedItemConnectionName(const QString& name);
    // The checked item of the last instantiation or selection change, or invalid.
    Mnu_MenuID getCurrentItemID() const { return mCurrentItemID; }

protected:
    bool parseSubElement(QDomElement* element) override;
    // The current-item model changed: find the item that now matches it.
    void handleMsgSelectionChanged();

private:
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> StringField;
    // Every model is connected even with an empty name.
    static constexpr Kel_BoundPropertyBase::ConnectPolicy kAlways = Kel_BoundPropertyBase::kConnectAlways;

    Mnu_MenuID mCurrentItemID;
    QString mCurrentItemText;
    std::map<Mnu_MenuID, QString> mItemIdentifierMap;
    std::vector<Mnu_MenuID> mIDs;
    QString mItemsConnectionName;
    StringProperty mCurrentItemModel{this, kAlways};
    StringField mNameModel{this, kAlways};
    StringField mIDModel{this, kAlways};
    StringField mAccelModel{this, kAlways};
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mArrayModel{this, kAlways};
};

#endif
