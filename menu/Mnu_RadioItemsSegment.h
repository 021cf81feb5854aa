#ifndef MNU_RADIOITEMSSEGMENT_H
#define MNU_RADIOITEMSSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"

#include <map>
#include <memory>
#include <vector>

// An exclusive choice among fixed choices (text and integer identifier);
// an integer model holds the identifier of the chosen one.
class KELCORE_EXPORT Mnu_RadioItemsSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_RadioItemsSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_RadioItemsSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    void itemActivated(Mnu_MenuID id) override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    QString getSelectedItemConnectionName() const { return mCurrentItemModel.spec(); }
    void setSelectedItemConnectionName(const QString& name) { mCurrentItemModel.setSpec(name); }
    // The choice at index; an empty text and 0 when out of range.
    QString getItemTextAt(int index) const;
    int getItemIDAt(int index) const;
    // Replaces the choice at index; does nothing when out of range.
    void setItemTextIDAt(int index, const QString& text, int id);
    void clearItemMap();
    // Appends a choice.
    void addItemToMap(const QString& text, int id);
    int getChoiceCount() const { return int(mChoices.size()); }
    Mnu_MenuID getCurrentItemID() const { return mCurrentItemID; }

protected:
    bool parseSubElement(QDomElement* element) override;
    // Reads one <RadioItem>; reports what is wrong with it.
    void parseDerivedSubElement(QDomElement* element);

private:
    struct Choice
    {
        int id;
        QString text;
    };

    std::vector<std::unique_ptr<Choice>> mChoices;
    Mnu_MenuID mCurrentItemID;
    long mCurrentValue;
    std::map<Mnu_MenuID, int> mChoiceIDMap;
    std::vector<Mnu_MenuID> mIDs;
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mCurrentItemModel{this, Kel_BoundPropertyBase::kConnectAlways};
};

#endif
