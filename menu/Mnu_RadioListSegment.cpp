#include "Mnu_RadioListSegment.h"

#include "Mnu_Manager.h"
#include "Mnu_Menu.h"

#include <QDebug>
#include <QDomElement>
#include <algorithm>

Mnu_RadioListSegment::Mnu_RadioListSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu),
      mCurrentItemListenerP(new StringListener()),
      mNameListenerP(new StringArrayListener()),
      mIDListenerP(new StringArrayListener()),
      mAccelListenerP(new StringArrayListener()),
      mArrayListenerP(new Mvt_ArrayContainer::Listener())
{
    mCurrentItemListenerP->setReceiveMessageCB([this](const Mv_MessageInterface& m) {
        if (m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
            handleMsgSelectionChanged();
    });
    if (element)
        xmlParser(element);
}

Mnu_RadioListSegment::~Mnu_RadioListSegment()
{
    mCurrentItemListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
}

int Mnu_RadioListSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mItemIdentifierMap.clear();
    mIDs.clear();
    mCurrentItemID = Mnu_MenuID();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager || !mArrayListenerP->isConnectedToModel() || !mNameListenerP->isConnectedToModel()
        || !mIDListenerP->isConnectedToModel() || !mCurrentItemListenerP->isConnectedToModel())
        return 0;

    const long size = mArrayListenerP->size();
    for (long i = 0; i < size; ++i) {
        QString name = mNameListenerP->element<QString>(i);
        const Mnu_MenuID id = manager->insertItem(name, name);
        if (!id.IsValid())
            continue;
        manager->setItemCheckable(id, true);
        const QString identifier = mIDListenerP->element<QString>(i);
        mItemIdentifierMap[id] = identifier;
        mMenuP->setIDAssignedToSegment(this, id);
        mIDs.push_back(id);
        if (mAccelListenerP->isConnectedToModel())
            manager->setItemAccelerator(id, mAccelListenerP->element<QString>(i));
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
    return mVisible ? int(mArrayListenerP->size()) : 0;
}

int Mnu_RadioListSegment::getItemCount()
{
    return mArrayListenerP->isConnectedToModel() ? int(mArrayListenerP->size()) : 0;
}

void Mnu_RadioListSegment::itemActivated(Mnu_MenuID id)
{
    if (!mCurrentItemListenerP->isConnectedToModel() || id == mCurrentItemID)
        return;
    if (mManagerP) {
        mManagerP->setItemChecked(mCurrentItemID, false);
        mManagerP->setItemChecked(id, true);
    }
    mCurrentItemID = id;
    auto it = mItemIdentifierMap.find(id);
    mCurrentItemListenerP->set(it == mItemIdentifierMap.end() ? QString() : it->second);
}

void Mnu_RadioListSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        mEnabled = mIDListenerP->isConnectedToModel() && mCurrentItemListenerP->isConnectedToModel()
                   && mArrayListenerP->isConnectedToModel() && mNameListenerP->isConnectedToModel();
        if (mCurrentItemListenerP->isConnectedToModel())
            mCurrentItemText = mCurrentItemListenerP->value();
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
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();
    const QString& items = mItemsConnectionName;
    mNameListenerP->SetConnectionName(items + QLatin1String(".name"));
    mNameListenerP->connect(environment);
    mIDListenerP->SetConnectionName(items + QLatin1String(".id"));
    mIDListenerP->connect(environment);
    mAccelListenerP->SetConnectionName(items + QLatin1String(".accel"));
    mAccelListenerP->connect(environment);
    mArrayListenerP->SetConnectionName(items);
    mArrayListenerP->connect(environment);
    mCurrentItemListenerP->SetConnectionName(mCurrentItemConnectionName);
    mCurrentItemListenerP->connect(environment);
}

void Mnu_RadioListSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_RadioListSegment");
    qDebug("%s   itemConnectionName: [%s], currentItemConnectionName: [%s], current item [%s]", qPrintable(prefix),
           qPrintable(mItemsConnectionName), qPrintable(mCurrentItemConnectionName), qPrintable(mCurrentItemText));
    qDebug("%s   itemIDs total #(%ld)", qPrintable(prefix), long(mIDs.size()));
    for (const Mnu_MenuID& id : mIDs)
        id.dump(prefix + QLatin1String("      "));
}

void Mnu_RadioListSegment::setItemsConnectionName(const QString& name)
{
    // The same name again must not cut the connections already made.
    if (name == mItemsConnectionName)
        return;
    mItemsConnectionName = name;
    const std::pair<Mv_ListenerBase*, const char*> renamed[] = {
        {mNameListenerP.get(), ".name"},
        {mIDListenerP.get(), ".id"},
        {mAccelListenerP.get(), ".accel"},
    };
    for (const auto& entry : renamed) {
        entry.first->ClearConnection();
        entry.first->SetConnectionName(name + QLatin1String(entry.second));
    }
    mArrayListenerP->ClearConnection();
    mArrayListenerP->SetConnectionName(name);
}

void Mnu_RadioListSegment::setSelectedItemConnectionName(const QString& name)
{
    if (name == mCurrentItemConnectionName)
        return;
    mCurrentItemConnectionName = name;
    mCurrentItemListenerP->ClearConnection();
    mCurrentItemListenerP->SetConnectionName(name);
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
    if (!mCurrentItemListenerP->isConnectedToModel())
        return;
    mCurrentItemText = mCurrentItemListenerP->value();
    mCurrentItemID = Mnu_MenuID();
    for (const Mnu_MenuID& id : mIDs) {
        auto it = mItemIdentifierMap.find(id);
        if (it != mItemIdentifierMap.end() && it->second == mCurrentItemText) {
            mCurrentItemID = id;
            break;
        }
    }
}
