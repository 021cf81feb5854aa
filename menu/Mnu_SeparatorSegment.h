#ifndef MNU_SEPARATORSEGMENT_H
#define MNU_SEPARATORSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"

// A separator line; its menu decides whether it is made at all.
class KELCORE_EXPORT Mnu_SeparatorSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_SeparatorSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_SeparatorSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    bool isSeparator() override;
    // A separator has no state to refresh.
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    void dump(const QString& prefix) const override;

private:
    Mnu_MenuID mItemID;
};

#endif
