#ifndef MNU_BOOLEANSEGMENT_H
#define MNU_BOOLEANSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"

// A checkable item showing a boolean model; choosing it toggles the model.
class KELCORE_EXPORT Mnu_BooleanSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_BooleanSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_BooleanSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    void itemActivated(Mnu_MenuID id) override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    QString getBooleanConnectionName() const { return mBooleanModel.spec(); }
    void setBooleanConnectionName(const QString& name) { mBooleanModel.setSpec(name); }

protected:
    bool parseSubElement(QDomElement* element) override;

private:
    Mnu_MenuID mItemID;
    bool mChecked;
    BoolProperty mBooleanModel{this, BoolProperty::kConnectAlways};
};

#endif
