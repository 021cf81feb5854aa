#ifndef MNU_LISTSEGMENT_H
#define MNU_LISTSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"
#include "Mvt_Array.h"
#include "Mvt_ArrayContainer.h"

#include <QPixmap>
#include <vector>

// One item per element of an array model. Each element's fields come from
// arrays named after the items connection name with a suffix: ".name",
// ".id", ".accelerator", ".iconName", ".icon" and ".selected"; choosing an
// item toggles its ".selected" field.
class KELCORE_EXPORT Mnu_ListSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_ListSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_ListSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    void itemActivated(Mnu_MenuID id) override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    bool activate(Mnu_MenuID id) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    QString getItemsConnectionName() const { return mItemsConnectionName; }
    // Renames the ".name", ".id", ".selected" and array listeners at once;
    // the others take the new name at the next makeConnections.
    void setItemsConnectionName(const QString& name);
    // The ".id" value of the element that made id, or an empty string.
    QString getItemIdentifier(Mnu_MenuID id) const;

protected:
    bool parseSubElement(QDomElement* element) override;

private:
    int getIDIndex(Mnu_MenuID id) const;

    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> StringField;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<bool>>::Listener> BoolField;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QPixmap>>::Listener> PixmapField;
    // Element fields and the array are connected even with an empty items name.
    static constexpr Kel_BoundPropertyBase::ConnectPolicy kAlways = Kel_BoundPropertyBase::kConnectAlways;

    // The items of the last build in element order, and the ".id" of each
    // beside it (a list's items are few lookups and many builds: no map).
    std::vector<Mnu_MenuID> mIDs;
    std::vector<QString> mItemIdentifiers;
    QString mItemsConnectionName;
    StringField mNameModel{this, kAlways};
    StringField mIDModel{this, kAlways};
    StringField mItemAcceleratorModel{this, kAlways};
    StringField mIconNameModel{this, kAlways};
    PixmapField mIconModel{this, kAlways};
    BoolField mSelectedModel{this, kAlways};
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mArrayModel{this, kAlways};
};

#endif
