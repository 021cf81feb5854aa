#include "Mnu_ListSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"
#include "Ost_Assert.h"

#include <QDomElement>
#include <algorithm>

Mnu_ListSegment::Mnu_ListSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu)
{
    if (element)
        xmlParser(element);
}

Mnu_ListSegment::~Mnu_ListSegment() = default;

int Mnu_ListSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mIDs.clear();
    mItemIdentifiers.clear();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager)
        return 0;
    for (const Kel_BoundPropertyBase* field : std::initializer_list<const Kel_BoundPropertyBase*>{
             &mArrayModel, &mNameModel, &mItemAcceleratorModel, &mIconNameModel, &mIconModel, &mIDModel,
             &mSelectedModel}) {
        if (!field->isConnected())
            return 0;
    }

    const long size = mArrayModel->size();
    for (long i = 0; i < size; ++i) {
        QString name = mNameModel->element<QString>(i);
        const Mnu_MenuID id = manager->insertItem(name, name);
        if (!id.IsValid())
            continue;
        mItemIdentifiers.push_back(mIDModel->element<QString>(i));
        mMenuP->setIDAssignedToSegment(this, id);
        mIDs.push_back(id);

        const QString accelerator = mItemAcceleratorModel->element<QString>(i);
        if (!accelerator.isEmpty())
            manager->setItemAccelerator(id, accelerator);
        const QString iconName = mIconNameModel->element<QString>(i);
        if (!iconName.isEmpty())
            manager->setItemIcon(id, iconName);
        QPixmap icon = mIconModel->element<QPixmap>(i);
        if (!icon.isNull())
            manager->setItemIcon(id, static_cast<void*>(&icon));
        if (mSelectedModel->element<bool>(i, false)) {
            manager->setItemCheckable(id, true);
            manager->setItemChecked(id, true);
        }
        applyCommonItemSettings(id);
    }
    return int(std::max(0L, size));
}

int Mnu_ListSegment::getVisibleItemCount()
{
    return mVisible ? int(mIDs.size()) : 0;
}

int Mnu_ListSegment::getItemCount()
{
    return mArrayModel.isConnected() ? int(mArrayModel->size()) : 0;
}

void Mnu_ListSegment::itemActivated(Mnu_MenuID id)
{
    if (!mSelectedModel.isConnected())
        return;
    const int i = getIDIndex(id);
    OST_ASSERT(i!=-1);
    const bool selected = !mSelectedModel->element<bool>(i, false);
    mSelectedModel->setElement<bool>(i, selected);
    if (mManagerP)
        mManagerP->setItemChecked(id, selected);
}

void Mnu_ListSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        mEnabled = mIDModel.isConnected() && mArrayModel.isConnected() && mNameModel.isConnected()
                   && mSelectedModel.isConnected();
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
    const QString& items = mItemsConnectionName;
    const std::pair<Kel_BoundPropertyBase*, const char*> fields[] = {
        {&mIDModel, ".id"},           {&mNameModel, ".name"}, {&mItemAcceleratorModel, ".accelerator"},
        {&mIconNameModel, ".iconName"}, {&mIconModel, ".icon"}, {&mSelectedModel, ".selected"},
    };
    for (const auto& field : fields)
        field.first->setSpec(items + QLatin1String(field.second));
    mArrayModel.setSpec(items);
    Kel_BoundPropertyBase::connectAll(environment, {&mIDModel, &mNameModel, &mItemAcceleratorModel, &mIconNameModel,
                                                    &mIconModel, &mSelectedModel, &mArrayModel});
}

void Mnu_ListSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_ListSegment");
    qCDebug(lcKelMenu, "%s   itemConnectionName: [%s]", qPrintable(prefix), qPrintable(mItemsConnectionName));
    qCDebug(lcKelMenu, "%s   itemIDs total #(%ld)", qPrintable(prefix), long(mIDs.size()));
    for (const Mnu_MenuID& id : mIDs)
        id.dump(prefix + QLatin1String("      "));
    qCDebug(lcKelMenu, "%s   MenuID to ItemID map", qPrintable(prefix));
    long index = 0;
    for (const QString& identifier : mItemIdentifiers)
        qCDebug(lcKelMenu, "%s      map[%ld]: ItemID[%s]", qPrintable(prefix), index++, qPrintable(identifier));
}

void Mnu_ListSegment::setItemsConnectionName(const QString& name)
{
    // The same name again must not cut the connections already made.
    if (name == mItemsConnectionName)
        return;
    mItemsConnectionName = name;
    // The accelerator and icon listeners are renamed by makeConnections only.
    mNameModel.rename(name + QLatin1String(".name"));
    mIDModel.rename(name + QLatin1String(".id"));
    mSelectedModel.rename(name + QLatin1String(".selected"));
    mArrayModel.rename(name);
}

QString Mnu_ListSegment::getItemIdentifier(Mnu_MenuID id) const
{
    const int i = getIDIndex(id);
    return i < 0 ? QString() : mItemIdentifiers[size_t(i)];
}

bool Mnu_ListSegment::parseSubElement(QDomElement* element)
{
    if (element->tagName() == QLatin1String("ItemsConnectionName")) {
        setItemsConnectionName(element->text());
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

int Mnu_ListSegment::getIDIndex(Mnu_MenuID id) const
{
    auto it = std::find(mIDs.begin(), mIDs.end(), id);
    return it == mIDs.end() ? -1 : int(it - mIDs.begin());
}

bool Mnu_ListSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    return saveFramedSegment(out, indent, format, "ListSegment", "Mnu_ListSegment", [&](const QString& inner) {
        Mnu_Writer::emitField(out, inner, format == kSaveXml, QStringLiteral("ItemsConnectionName"),
                              QStringLiteral("segment"), QStringLiteral("setItemsConnectionName"),
                              mItemsConnectionName);
    });
}
