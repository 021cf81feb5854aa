#include "Mnu_SeparatorSegment.h"

#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"

#include <QDomElement>

Mnu_SeparatorSegment::Mnu_SeparatorSegment(Mnu_Menu* menu, QDomElement* element) : Mnu_Segment(menu)
{
    if (element)
        xmlParser(element);
}

Mnu_SeparatorSegment::~Mnu_SeparatorSegment() = default;

int Mnu_SeparatorSegment::instantiate(Mnu_Manager* manager)
{
    // Visibility does not apply: the menu decides which separators are made.
    mManagerP = manager;
    mItemID = manager ? manager->insertSeparator() : Mnu_MenuID();
    if (!mItemID.IsValid())
        return 0;
    mMenuP->setIDAssignedToSegment(this, mItemID);
    return 1;
}

int Mnu_SeparatorSegment::getVisibleItemCount()
{
    return mVisible ? 1 : 0;
}

int Mnu_SeparatorSegment::getItemCount()
{
    return 1;
}

bool Mnu_SeparatorSegment::isSeparator()
{
    return true;
}

void Mnu_SeparatorSegment::refreshState()
{
}

Mnu_MenuID Mnu_SeparatorSegment::getIndexedID(int)
{
    return mItemID;
}

void Mnu_SeparatorSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_SeparatorSegment");
}

bool Mnu_SeparatorSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    return saveFramedSegment(out, indent, format, "Separator", "Mnu_SeparatorSegment", [](const QString&) {});
}
