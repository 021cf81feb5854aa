#include "Mnu_SubmenuSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"

#include <QDomElement>

Mnu_SubmenuSegment::Mnu_SubmenuSegment(Mnu_Menu* menu) : Mnu_Segment(menu), mSubmenuManagerP(nullptr)
{
    // Code that builds a submenu asks for its manager right away; it is one
    // of the same realisation as the owning menu's.
    Mnu_Manager* owner = menu ? menu->getManager() : nullptr;
    if (owner)
        setSubmenuManager(owner->managerFactory());
}

Mnu_SubmenuSegment::Mnu_SubmenuSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu), mSubmenuManagerP(nullptr)
{
    if (element)
        xmlParser(element);
}

Mnu_SubmenuSegment::~Mnu_SubmenuSegment()
{
    delete mSubmenuManagerP;
}

int Mnu_SubmenuSegment::instantiate(Mnu_Manager* manager)
{
    Mnu_Segment::instantiate(manager);
    if (!mVisible || !mSubmenuManagerP || !manager)
        return 0;
    mSubmenuManagerP->instantiateMenus();
    Mnu_Menu* submenu = mSubmenuManagerP->getMenu();
    QString title = submenu ? submenu->getDisplayedText() : QString();
    const Mnu_MenuID id = manager->insertItem(title, title, mSubmenuManagerP);
    if (!id.IsValid())
        return 0;
    manager->setItemEnabled(id, mEnabled);
    mMenuP->setIDAssignedToSegment(this, id);
    return 1;
}

int Mnu_SubmenuSegment::getVisibleItemCount()
{
    return mVisible ? 1 : 0;
}

int Mnu_SubmenuSegment::getItemCount()
{
    return 1;
}

void Mnu_SubmenuSegment::refreshState()
{
}

Mnu_MenuID Mnu_SubmenuSegment::getIndexedID(int)
{
    return Mnu_MenuID();
}

void Mnu_SubmenuSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    if (mSubmenuManagerP)
        mSubmenuManagerP->makeConnections(environment);
}

void Mnu_SubmenuSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_SubmenuSegment");
    qCDebug(lcKelMenu, "%s   child manager: [%p] (Mnu_Manager *)", qPrintable(prefix),
            static_cast<const void*>(mSubmenuManagerP));
    if (mSubmenuManagerP)
        mSubmenuManagerP->dump(prefix + QLatin1String("   "));
}

void Mnu_SubmenuSegment::setSubmenuManager(Mnu_Manager* manager)
{
    if (manager == mSubmenuManagerP)
        return;
    delete mSubmenuManagerP;
    mSubmenuManagerP = manager;
    if (mSubmenuManagerP)
        mSubmenuManagerP->setParentSegment(this);
}

bool Mnu_SubmenuSegment::parseSubElement(QDomElement* element)
{
    if (element->tagName() == QLatin1String("Menu")) {
        Mnu_Manager* owner = mMenuP ? mMenuP->getManager() : nullptr;
        if (owner)
            setSubmenuManager(owner->managerFactory(element));
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

bool Mnu_SubmenuSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    // The generated block of the nested menu finds its manager through this
    // segment, which made one at construction.
    const QStringList construction{QStringLiteral("Mnu_SubmenuSegment* segment = new Mnu_SubmenuSegment(menu);"),
                                   QStringLiteral(" ")};
    return saveFramedSegment(
        out, indent, format, "SubMenuSegment", "Mnu_SubmenuSegment",
        [&](const QString& inner) {
            Mnu_Menu* submenu = mSubmenuManagerP ? mSubmenuManagerP->getMenu() : nullptr;
            if (!submenu)
                return;
            submenu->saveMenu(out, inner, format, nullptr, true);
            if (format == kSaveSource)
                Mnu_Writer::emitLine(out, inner, QStringLiteral(" "));
        },
        construction);
}
