#include "Mnu_RadioListSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"

#include <QDomElement>
#include <algorithm>

Mnu_RadioListSegment::Mnu_RadioListSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu)
{
    mCurrentItemModel.onMessage([this](const Mv_MessageInterface& m) {
        if (m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
            handleMsgSelectionChanged();
    });
    if (element)
        xmlParser(element);
}

Mnu_RadioListSegment::~Mnu_RadioListSegment() = default;

int Mnu_RadioListSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mItemIdentifierMap.clear();
    mIDs.clear();
    mCurrentItemID = Mnu_MenuID();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager || !mArrayModel.isConnected() || !mNameModel.isConnected() || !mIDModel.isConnected()
        || !mCurrentItemModel.isConnected())
        return 0;

    const long size = mArrayModel->size();
    for (long i = 0; i < size; ++i) {
        QString name = mNameModel->element<QString>(i);
        const Mnu_MenuID id = manager->insertItem(name, name);
        if (!id.IsValid())
            continue;
        manager->setItemCheckable(id, true);
        manager->setItemRadioGroup(id, this);
        const QString identifier = mIDModel->element<QString>(i);
        mItemIdentifierMap[id] = identifier;
        mMenuP->setIDAssignedToSegment(this, id);
        mIDs.push_back(id);
        if (mAccelModel.isConnected())
            manager->setItemAccelerator(id, mAccelModel->element<QString>(i));
        if (identifier == mCurrentItemText) {
            manager->setItemChecked(id, true);
            mCurrentItemID = id;
        }
        applyCommonItemSettings(id);
    }
    return int(std::max(0L, size));
}

int Mnu_RadioListSegment::getVisibleItemCount()
{
    return mVisible ? int(mArrayModel->size()) : 0;
}

int Mnu_RadioListSegment::getItemCount()
{
    return mArrayModel.isConnected() ? int(mArrayModel->size()) : 0;
}

void Mnu_RadioListSegment::itemActivated(Mnu_MenuID id)
{
    if (!mCurrentItemModel.isConnected() || id == mCurrentItemID)
        return;
    if (mManagerP) {
        mManagerP->setItemChecked(mCurrentItemID, false);
        mManagerP->setItemChecked(id, true);
    }
    mCurrentItemID = id;
    auto it = mItemIdentifierMap.find(id);
    mCurrentItemModel.set(it == mItemIdentifierMap.end() ? QString() : it->second);
}

void Mnu_RadioListSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        mEnabled = mIDModel.isConnected() && mCurrentItemModel.isConnected() && mArrayModel.isConnected()
                   && mNameModel.isConnected();
        if (mCurrentItemModel.isConnected())
            mCurrentItemText = mCurrentItemModel->value();
    }
}

Mnu_MenuID Mnu_RadioListSegment::getIndexedID(int index)
{
    if (index < 0 || index >= int(mIDs.size()))
        return Mnu_MenuID();
    return mIDs[size_t(index)];
}

void Mnu_RadioListSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    const QString& items = mItemsConnectionName;
    mNameModel.setSpec(items + QLatin1String(".name"));
    mIDModel.setSpec(items + QLatin1String(".id"));
    mAccelModel.setSpec(items + QLatin1String(".accel"));
    mArrayModel.setSpec(items);
    Kel_BoundPropertyBase::connectAll(environment, {&mNameModel, &mIDModel, &mAccelModel, &mArrayModel, &mCurrentItemModel});
}

void Mnu_RadioListSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_RadioListSegment");
    qCDebug(lcKelMenu, "%s   itemConnectionName: [%s], currentItemConnectionName: [%s], current item [%s]",
            qPrintable(prefix), qPrintable(mItemsConnectionName), qPrintable(mCurrentItemModel.spec()),
            qPrintable(mCurrentItemText));
    qCDebug(lcKelMenu, "%s   itemIDs total #(%ld)", qPrintable(prefix), long(mIDs.size()));
    for (const Mnu_MenuID& id : mIDs)
        id.dump(prefix + QLatin1String("      "));
}

void Mnu_RadioListSegment::setItemsConnectionName(const QString& name)
{
    // The same name again must not cut the connections already made.
    if (name == mItemsConnectionName)
        return;
    mItemsConnectionName = name;
    mNameModel.rename(name + QLatin1String(".name"));
    mIDModel.rename(name + QLatin1String(".id"));
    mAccelModel.rename(name + QLatin1String(".accel"));
    mArrayModel.rename(name);
}

void Mnu_RadioListSegment::setSelectedItemConnectionName(const QString& name)
{
    if (name == mCurrentItemModel.spec())
        return;
    mCurrentItemModel.rename(name);
}

bool Mnu_RadioListSegment::parseSubElement(QDomElement* element)
{
    const QString tag = element->tagName();
    if (tag == QLatin1String("ItemsConnectionName")) {
        setItemsConnectionName(element->text());
        return true;
    }
    if (tag == QLatin1String("CurrentItemConnectionName")) {
        setSelectedItemConnectionName(element->text());
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

void Mnu_RadioListSegment::handleMsgSelectionChanged()
{
    if (!mCurrentItemModel.isConnected())
        return;
    mCurrentItemText = mCurrentItemModel->value();
    mCurrentItemID = Mnu_MenuID();
    for (const Mnu_MenuID& id : mIDs) {
        auto it = mItemIdentifierMap.find(id);
        if (it != mItemIdentifierMap.end() && it->second == mCurrentItemText) {
            mCurrentItemID = id;
            break;
        }
    }
}

bool Mnu_RadioListSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    return saveFramedSegment(
        out, indent, format, "RadioListSegment", "Mnu_RadioListSegment", [&](const QString& inner) {
            const bool xml = format == kSaveXml;
            const QString segment = QStringLiteral("segment");
            Mnu_Writer::emitField(out, inner, xml, QStringLiteral("ItemsConnectionName"), segment,
                                  QStringLiteral("setItemsConnectionName"), mItemsConnectionName);
            Mnu_Writer::emitField(out, inner, xml, QStringLiteral("CurrentItemConnectionName"), segment,
                                  QStringLiteral("setSelectedItemConnectionName"), getSelectedItemConnectionName());
        });
}
