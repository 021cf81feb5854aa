#include "Mnu_BooleanSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"

#include <QDomElement>

Mnu_BooleanSegment::Mnu_BooleanSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu), mChecked(false)
{
    if (element)
        xmlParser(element);
}

Mnu_BooleanSegment::~Mnu_BooleanSegment() = default;

int Mnu_BooleanSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mItemID = Mnu_MenuID();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager)
        return 0;
    mItemID = manager->insertItem(mName, mDisplayedText);
    if (!mItemID.IsValid())
        return 0;
    mMenuP->setIDAssignedToSegment(this, mItemID);
    if (!mEffectiveAccelerator.isEmpty())
        manager->setItemAccelerator(mItemID, mEffectiveAccelerator);
    manager->setItemEnabled(mItemID, mEnabled);
    manager->setItemCheckable(mItemID, true);
    manager->setItemChecked(mItemID, mChecked);
    if (!mEffectiveWhatsThisText.isEmpty())
        manager->setWhatsThis(mItemID, mEffectiveWhatsThisText);
    return 1;
}

int Mnu_BooleanSegment::getVisibleItemCount()
{
    return mVisible ? 1 : 0;
}

int Mnu_BooleanSegment::getItemCount()
{
    return 1;
}

void Mnu_BooleanSegment::itemActivated(Mnu_MenuID id)
{
    if (!mBooleanModel.isConnected())
        return;
    mChecked = !mChecked;
    if (mManagerP)
        mManagerP->setItemChecked(id, mChecked);
    mBooleanModel.set(mChecked);
}

void Mnu_BooleanSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        if (mBooleanModel.isConnected())
            mChecked = mBooleanModel->value(false);
        else
            mEnabled = false;
    }
}

Mnu_MenuID Mnu_BooleanSegment::getIndexedID(int)
{
    return mItemID;
}

void Mnu_BooleanSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    mBooleanModel.connect(environment);
}

void Mnu_BooleanSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_BooleanSegment");
    qCDebug(lcKelMenu, "%s   booleanConnectionName: [%s], checked[%d]", qPrintable(prefix),
            qPrintable(mBooleanModel.spec()), int(mChecked));
}

bool Mnu_BooleanSegment::parseSubElement(QDomElement* element)
{
    if (element->tagName() == QLatin1String("BooleanConnectionName")) {
        mBooleanModel.setSpec(element->text());
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

bool Mnu_BooleanSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    return saveFramedSegment(out, indent, format, "BooleanSegment", "Mnu_BooleanSegment", [&](const QString& inner) {
        Mnu_Writer::emitField(out, inner, format == kSaveXml, QStringLiteral("BooleanConnectionName"),
                              QStringLiteral("segment"), QStringLiteral("setBooleanConnectionName"),
                              getBooleanConnectionName());
    });
}
