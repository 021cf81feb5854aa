#include "Mnu_ListSegment.h"

#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Ost_Assert.h"

#include <QDebug>
#include <QDomElement>
#include <algorithm>

Mnu_ListSegment::Mnu_ListSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu),
      mItemIdentifierMapSize(0),
      mNameListenerP(new StringArrayListener()),
      mIDListenerP(new StringArrayListener()),
      mAcceleratorListenerP(new StringArrayListener()),
      mIconNameListenerP(new StringArrayListener()),
      mIconListenerP(new PixmapArrayListener()),
      mSelectedListenerP(new BoolArrayListener()),
      mArrayListenerP(new Mvt_ArrayContainer::Listener())
{
    if (element)
        xmlParser(element);
}

Mnu_ListSegment::~Mnu_ListSegment() = default;

int Mnu_ListSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mItemIdentifierMap.clear();
    mItemIdentifierMapSize = 0;
    mIDs.clear();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager)
        return 0;
    for (const Mv_ListenerBase* listener : std::initializer_list<const Mv_ListenerBase*>{
             mArrayListenerP.get(), mNameListenerP.get(), mAcceleratorListenerP.get(), mIconNameListenerP.get(),
             mIconListenerP.get(), mIDListenerP.get(), mSelectedListenerP.get()}) {
        if (!listener->isConnectedToModel())
            return 0;
    }

    const long size = mArrayListenerP->size();
    for (long i = 0; i < size; ++i) {
        QString name = mNameListenerP->element<QString>(i);
        const Mnu_MenuID id = manager->insertItem(name, name);
        if (!id.IsValid())
            continue;
        mItemIdentifierMap[id] = mIDListenerP->element<QString>(i);
        mItemIdentifierMapSize = int(mItemIdentifierMap.size());
        mMenuP->setIDAssignedToSegment(this, id);
        mIDs.push_back(id);

        const QString accelerator = mAcceleratorListenerP->element<QString>(i);
        if (!accelerator.isEmpty())
            manager->setItemAccelerator(id, accelerator);
        const QString iconName = mIconNameListenerP->element<QString>(i);
        if (!iconName.isEmpty())
            manager->setItemIcon(id, iconName);
        QPixmap icon = mIconListenerP->element<QPixmap>(i);
        if (!icon.isNull())
            manager->setItemIcon(id, static_cast<void*>(&icon));
        if (mSelectedListenerP->element<bool>(i, false)) {
            manager->setItemCheckable(id, true);
            manager->setItemChecked(id, true);
        }
        applyCommonItemSettings(id);
    }
    return int(std::max(0L, size));
}

int Mnu_ListSegment::getVisibleItemCount()
{
    return mVisible ? mItemIdentifierMapSize : 0;
}

int Mnu_ListSegment::getItemCount()
{
    return mArrayListenerP->isConnectedToModel() ? int(mArrayListenerP->size()) : 0;
}

void Mnu_ListSegment::itemActivated(Mnu_MenuID id)
{
    if (!mSelectedListenerP->isConnectedToModel())
        return;
    const int i = getIDIndex(id);
    OST_ASSERT(i!=-1);
    const bool selected = !mSelectedListenerP->element<bool>(i, false);
    mSelectedListenerP->setElement<bool>(i, selected);
    if (mManagerP)
        mManagerP->setItemChecked(id, selected);
}

void Mnu_ListSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        mEnabled = mIDListenerP->isConnectedToModel() && mArrayListenerP->isConnectedToModel()
                   && mNameListenerP->isConnectedToModel() && mSelectedListenerP->isConnectedToModel();
    }
}

Mnu_MenuID Mnu_ListSegment::getIndexedID(int index)
{
    if (index < 0 || index >= int(mIDs.size()))
        return Mnu_MenuID();
    return mIDs[size_t(index)];
}

bool Mnu_ListSegment::activate(Mnu_MenuID id)
{
    itemActivated(id);
    return true;
}

void Mnu_ListSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();
    const QString& items = mItemsConnectionName;
    const std::pair<Mv_ListenerBase*, const char*> elementListeners[] = {
        {mIDListenerP.get(), ".id"},
        {mNameListenerP.get(), ".name"},
        {mAcceleratorListenerP.get(), ".accelerator"},
        {mIconNameListenerP.get(), ".iconName"},
        {mIconListenerP.get(), ".icon"},
        {mSelectedListenerP.get(), ".selected"},
    };
    for (const auto& entry : elementListeners) {
        entry.first->SetConnectionName(items + QLatin1String(entry.second));
        entry.first->connect(environment);
    }
    mArrayListenerP->SetConnectionName(items);
    mArrayListenerP->connect(environment);
}

void Mnu_ListSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_ListSegment");
    qDebug("%s   itemConnectionName: [%s]", qPrintable(prefix), qPrintable(mItemsConnectionName));
    qDebug("%s   itemIDs total #(%ld)", qPrintable(prefix), long(mIDs.size()));
    for (const Mnu_MenuID& id : mIDs)
        id.dump(prefix + QLatin1String("      "));
    qDebug("%s   MenuID to ItemID map", qPrintable(prefix));
    long index = 0;
    for (const auto& entry : mItemIdentifierMap)
        qDebug("%s      map[%ld]: ItemID[%s]", qPrintable(prefix), index++, qPrintable(entry.second));
}

void Mnu_ListSegment::setItemsConnectionName(const QString& name)
{
    // The same name again must not cut the connections already made.
    if (name == mItemsConnectionName)
        return;
    mItemsConnectionName = name;
    // The accelerator and icon listeners are renamed by makeConnections only.
    const std::pair<Mv_ListenerBase*, const char*> renamed[] = {
        {mNameListenerP.get(), ".name"},
        {mIDListenerP.get(), ".id"},
        {mSelectedListenerP.get(), ".selected"},
    };
    for (const auto& entry : renamed) {
        entry.first->ClearConnection();
        entry.first->SetConnectionName(name + QLatin1String(entry.second));
    }
    mArrayListenerP->ClearConnection();
    mArrayListenerP->SetConnectionName(name);
}

QString Mnu_ListSegment::getItemIdentifier(Mnu_MenuID id) const
{
    auto it = mItemIdentifierMap.find(id);
    return it == mItemIdentifierMap.end() ? QString() : it->second;
}

bool Mnu_ListSegment::parseSubElement(QDomElement* element)
{
    if (element->tagName() == QLatin1String("ItemsConnectionName")) {
        setItemsConnectionName(element->text());
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

int Mnu_ListSegment::getIDIndex(Mnu_MenuID id)
{
    auto it = std::find(mIDs.begin(), mIDs.end(), id);
    return it == mIDs.end() ? -1 : int(it - mIDs.begin());
}
