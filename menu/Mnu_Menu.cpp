#include "Mnu_Menu.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Segment.h"
#include "Mnu_SubmenuSegment.h"
#include "Mnu_Writer_p.h"
#include "Mv_MessageDispatcher.h"
#include "Mvt_Root_Notifications.h"

#include <QDomElement>
#include <QStringList>
#include <algorithm>
#include <ostream>

namespace {

const Mv_MessageDispatcher<Mnu_Menu>& titleDispatcher()
{
    static const Mv_MessageDispatcher<Mnu_Menu> dispatcher = [] {
        Mv_MessageDispatcher<Mnu_Menu> d;
        d.addRoute<Mvt_SimpleValue_Notifications::MsgValueChanged>(&Mnu_Menu::menuTextNotifyCallback);
        return d;
    }();
    return dispatcher;
}

const Mv_MessageDispatcher<Mnu_Menu>& visibilityDispatcher()
{
    static const Mv_MessageDispatcher<Mnu_Menu> dispatcher = [] {
        Mv_MessageDispatcher<Mnu_Menu> d;
        d.addRoute<Mvt_SimpleValue_Notifications::MsgValueChanged>(&Mnu_Menu::menuVisibleNotifyCallback);
        return d;
    }();
    return dispatcher;
}

} // namespace

Mnu_Menu::Mnu_Menu(Mnu_Manager* manager) : mManagerP(manager), mForgottenIDs(0), mVisible(false)
{
    mTitle.onMessage([this](const Mv_MessageInterface& m) {
        if (m.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            handleTitleConnectionChanged();
        else
            titleDispatcher().dispatch(this, m);
    });
    mVisibility.onMessage([this](const Mv_MessageInterface& m) {
        if (m.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            handleVisibleConnectionChanged();
        else
            visibilityDispatcher().dispatch(this, m);
    });
}

Mnu_Menu::Mnu_Menu(Mnu_Manager* manager, QDomElement& element) : Mnu_Menu(manager)
{
    parseMenu(element);
}

Mnu_Menu::~Mnu_Menu()
{
    // Before the segments go: the title and visibility models must not call back meanwhile.
    mTitle.onMessage(nullptr);
    mVisibility.onMessage(nullptr);
    clearSegments();
}

Mnu_Segment* Mnu_Menu::getSegmentAt(int index) const
{
    if (index < 0 || index >= int(mSegments.size()))
        return nullptr;
    return mSegments[size_t(index)];
}

void Mnu_Menu::addSegment(Mnu_Segment* segment)
{
    if (!segment)
        return;
    mSegments.push_back(segment);
    afterSegmentsChanged();
}

void Mnu_Menu::insertSegment(Mnu_Segment* segment, Mnu_Segment* anchor, bool after)
{
    if (!segment)
        return;
    if (!anchor) {
        mSegments.insert(mSegments.begin(), segment);
    } else {
        auto it = std::find(mSegments.begin(), mSegments.end(), anchor);
        if (it == mSegments.end())
            mSegments.push_back(segment);
        else
            mSegments.insert(after ? it + 1 : it, segment);
    }
    afterSegmentsChanged();
}

bool Mnu_Menu::removeSegment(Mnu_Segment* segment)
{
    auto it = std::find(mSegments.begin(), mSegments.end(), segment);
    if (it != mSegments.end()) {
        mSegments.erase(it);
        // Its items must no longer reach it, whether or not the menu is rebuilt.
        for (auto entry = mSegmentMap.begin(); entry != mSegmentMap.end();) {
            if (entry->second.mSegmentP == segment) {
                const Mnu_MenuID id = entry->first;
                ++entry;
                forgetID(id);
            } else {
                ++entry;
            }
        }
    }
    afterSegmentsChanged();
    return true;
}

void Mnu_Menu::clearSegments()
{
    std::vector<Mnu_Segment*> segments;
    segments.swap(mSegments);
    clearIDs();
    mItemNames.clear();
    for (Mnu_Segment* segment : segments)
        delete segment;
}

void Mnu_Menu::afterSegmentsChanged()
{
    if (mManagerP && mManagerP->isInstantiated())
        mManagerP->instantiateMenus();
}

bool Mnu_Menu::refreshTitleAndVisibility()
{
    if (mVisibility.isConnected())
        mVisible = mVisibility->value(false);
    else
        // A menu whose visibility model cannot be reached stays hidden.
        mVisible = !mVisibility.isNamed();

    if (mTitle.isNamed()) {
        if (mTitle.isConnected())
            mConnectedText = mTitle->value();
        mDisplayedText = mConnectedText.isEmpty() ? mText : mConnectedText;
    } else {
        mDisplayedText = mText.isEmpty() ? mName : mText;
    }
    return mVisible;
}

bool Mnu_Menu::instantiate()
{
    // Visibility first: a hidden menu builds nothing (its title is still
    // brought up to date).
    const bool visible = refreshTitleAndVisibility();
    clearIDs();
    mItemNames.clear();
    if (!visible || !mManagerP)
        return false;

    bool lastWasSeparator = false;
    // Indexes, not iterators: a segment's models may change the list.
    for (size_t i = 0; i < mSegments.size(); ++i) {
        Mnu_Segment* segment = mSegments[i];
        if (segment->isSeparator()) {
            const bool isLast = i + 1 == mSegments.size();
            if (mSegmentMap.empty() || lastWasSeparator || isLast)
                continue;
        }
        if (segment->instantiate(mManagerP) > 0)
            lastWasSeparator = segment->isSeparator();
        // Segments that made nothing leave the flag alone, so the separators
        // around an empty list collapse into one.
    }
    // The last items made were a separator: the segments after it made none.
    if (lastWasSeparator && !mSegmentMap.empty()) {
        auto last = mIDs.rbegin();
        while (!last->IsValid())
            ++last;
        const Mnu_MenuID id = *last;
        mManagerP->removeItem(id);
        forgetID(id);
    }
    return true;
}

void Mnu_Menu::setIDAssignedToSegment(Mnu_Segment* segment, Mnu_MenuID id)
{
    const auto known = mSegmentMap.find(id);
    if (known != mSegmentMap.end()) {
        // Handed out again: it moves to the end.
        mIDs[known->second.mIndex] = Mnu_MenuID();
        ++mForgottenIDs;
        known->second = IDEntry{segment, mIDs.size()};
    } else {
        mSegmentMap.emplace_hint(known, id, IDEntry{segment, mIDs.size()});
    }
    mIDs.push_back(id);
    compactIDs();
}

void Mnu_Menu::clearIDs()
{
    mIDs.clear();
    mSegmentMap.clear();
    mForgottenIDs = 0;
}

// Once at least half the list is gone, so that each identifier is moved a
// constant number of times on average.
void Mnu_Menu::compactIDs()
{
    if (mForgottenIDs < 32 || mForgottenIDs * 2 < mIDs.size())
        return;
    std::vector<Mnu_MenuID> kept;
    kept.reserve(mIDs.size() - mForgottenIDs);
    for (const Mnu_MenuID& id : mIDs) {
        if (!id.IsValid())
            continue;
        mSegmentMap[id].mIndex = kept.size();
        kept.push_back(id);
    }
    mIDs.swap(kept);
    mForgottenIDs = 0;
}

std::vector<Mnu_MenuID> Mnu_Menu::getIDs() const
{
    std::vector<Mnu_MenuID> ids;
    ids.reserve(mSegmentMap.size());
    for (const Mnu_MenuID& id : mIDs) {
        if (id.IsValid())
            ids.push_back(id);
    }
    return ids;
}

void Mnu_Menu::itemActivated(Mnu_MenuID id)
{
    auto it = mSegmentMap.find(id);
    if (it != mSegmentMap.end())
        it->second.mSegmentP->itemActivated(id);
}

void Mnu_Menu::setItemEnabled(Mnu_Segment* segment, bool enabled)
{
    if (!mManagerP)
        return;
    for (const Mnu_MenuID& id : mIDs) {
        if (!id.IsValid())
            continue;
        auto it = mSegmentMap.find(id);
        if (it != mSegmentMap.end() && it->second.mSegmentP == segment)
            mManagerP->setItemEnabled(id, enabled);
    }
}

Mnu_Segment* Mnu_Menu::getSegmentForID(Mnu_MenuID id) const
{
    auto it = mSegmentMap.find(id);
    return it == mSegmentMap.end() ? nullptr : it->second.mSegmentP;
}

void Mnu_Menu::setItemName(Mnu_MenuID id, const QString& name)
{
    if (id.IsValid())
        mItemNames.insert(id, name);
}

void Mnu_Menu::forgetID(Mnu_MenuID id)
{
    const auto it = mSegmentMap.find(id);
    if (it != mSegmentMap.end()) {
        mIDs[it->second.mIndex] = Mnu_MenuID();
        ++mForgottenIDs;
        mSegmentMap.erase(it);
        compactIDs();
    }
    mItemNames.remove(id);
}

void Mnu_Menu::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mTitle, &mVisibility});
    for (size_t i = 0; i < mSegments.size(); ++i)
        mSegments[i]->makeConnections(environment);
}

void Mnu_Menu::menuTextNotifyCallback(const Mvt_SimpleValue_Notifications::MsgValueChanged&)
{
    mConnectedText = mTitle->value();
}

void Mnu_Menu::menuVisibleNotifyCallback(const Mvt_SimpleValue_Notifications::MsgValueChanged&)
{
    mVisible = mVisibility->value(false);
}

void Mnu_Menu::handleTitleConnectionChanged()
{
    if (mTitle.isConnected())
        mConnectedText = mTitle->value();
}

void Mnu_Menu::handleVisibleConnectionChanged()
{
    if (mVisibility.isNamed())
        mVisible = mVisibility.isConnected() && mVisibility->value(false);
}

bool Mnu_Menu::saveMenu(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format,
                        Mnu_QtManager* menuMgr, bool isSubmenu)
{
    const QString inner = indent + QLatin1Char('\t');
    const bool xml = format == Mnu_Segment::kSaveXml;
    const QString menu = QStringLiteral("menu");
    auto field = [&](const char* tag, const char* setter, const QString& value) {
        Mnu_Writer::emitField(out, inner, xml, QLatin1String(tag), menu, QLatin1String(setter), value);
    };
    if (xml) {
        emitCode(out, indent, QStringLiteral("<Menu>"));
        field("Name", "setName", mName);
        field("VisibleConnectionName", "setVisibleConnectionName", getVisibleConnectionName());
        field("Text", "setMenuText", Mnu_Writer::escapedText(mText));
        field("TextConnectionName", "setItemTextConnectionName", getItemTextConnectionName());
        for (Mnu_Segment* segment : mSegments)
            segment->saveSegment(out, inner, format);
        emitCode(out, indent, QStringLiteral("</Menu>"));
        return true;
    }
    if (format != Mnu_Segment::kSaveSource)
        return true;

    emitCode(out, indent, QStringLiteral("/* Generate a new Menu */"));
    emitCode(out, indent, QStringLiteral("{"));
    if (isSubmenu && !menuMgr) {
        emitCode(out, inner, QStringLiteral("/* Use existing Segment's Manager */"));
        emitCode(
            out, inner,
            QStringLiteral("Mnu_QtManager* manager = dynamic_cast<Mnu_QtManager*>( segment->getSubmenuManager() );"));
    } else if (!menuMgr) {
        emitCode(out, inner, QStringLiteral("/* Create a new Manager for each Menu */"));
        emitCode(out, inner, QStringLiteral("Mnu_QtManager* manager = menubarMgr->createManager();"));
    }
    emitCode(out, inner, QStringLiteral("/* Manager creates a Menu for us, use it here */"));
    emitCode(out, inner, menuMgr ? QStringLiteral("Mnu_Menu* menu = menuMgr->getMenu();")
                                 : QStringLiteral("Mnu_Menu* menu = manager->getMenu();"));
    field("Name", "setName", mName);
    field("VisibleConnectionName", "setVisibleConnectionName", getVisibleConnectionName());
    if (!mText.isEmpty())
        emitCode(out, inner, QLatin1String("menu->setMenuText( Mnu_QtManager::tr( \"") + mText
                                 + QLatin1String("\", \"this is a menu\" ) );"));
    field("TextConnectionName", "setItemTextConnectionName", getItemTextConnectionName());
    for (Mnu_Segment* segment : mSegments)
        segment->saveSegment(out, inner, format);
    if (!menuMgr && !isSubmenu)
        emitCode(out, inner, QStringLiteral("menubarMgr->addManager( manager );"));
    emitCode(out, indent, QStringLiteral("}"));
    return true;
}

void Mnu_Menu::emitCode(std::ostream& out, const QString& indent, const QString& line)
{
    Mnu_Writer::emitLine(out, indent, line);
}

bool Mnu_Menu::tstFindItemByPath(const QString& path, int depth, Mnu_Segment** segment, Mnu_MenuID* id,
                                 Mnu_Manager** manager)
{
    const QStringList parts = path.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (depth < 0 || depth >= parts.size())
        return false;
    for (const Mnu_MenuID& item : getIDs()) {
        if (mItemNames.value(item) != parts.at(depth))
            continue;
        Mnu_Segment* found = getSegmentForID(item);
        if (depth + 1 < parts.size()) {
            auto* submenu = dynamic_cast<Mnu_SubmenuSegment*>(found);
            Mnu_Manager* child = submenu ? submenu->getSubmenuManager() : nullptr;
            Mnu_Menu* childMenu = child ? child->getMenu() : nullptr;
            if (childMenu && childMenu->tstFindItemByPath(path, depth + 1, segment, id, manager))
                return true;
            continue;
        }
        if (segment)
            *segment = found;
        if (id)
            *id = item;
        if (manager)
            *manager = mManagerP;
        return true;
    }
    return false;
}

void Mnu_Menu::dump(const QString& prefix) const
{
    const QString nested = prefix + QLatin1String("      ");
    const QString deeper = prefix + QLatin1String("         ");
    qCDebug(lcKelMenu, "%sMnu_Menu: this[%p]", qPrintable(prefix), static_cast<const void*>(this));
    qCDebug(lcKelMenu, "%s   manager:    [%p] (Mnu_Manager *)", qPrintable(prefix),
            static_cast<const void*>(mManagerP));
    qCDebug(lcKelMenu, "%s   segments:  (%ld) (Mnu_Segment *)", qPrintable(prefix), long(mSegments.size()));
    for (const Mnu_Segment* segment : mSegments)
        segment->dump(nested);
    const std::vector<Mnu_MenuID> ids = getIDs();
    qCDebug(lcKelMenu, "%s   id vector: (%ld) (Mnu_MenuID)", qPrintable(prefix), long(ids.size()));
    for (const Mnu_MenuID& id : ids)
        id.dump(nested);
    qCDebug(lcKelMenu, "%s   segment map: (%ld)", qPrintable(prefix), long(mSegmentMap.size()));
    long iteration = 0;
    for (const auto& entry : mSegmentMap) {
        qCDebug(lcKelMenu, "%s      iteration (%ld)", qPrintable(prefix), iteration++);
        entry.first.dump(deeper);
        entry.second.mSegmentP->dump(deeper);
    }
}

void Mnu_Menu::parseMenu(QDomElement& element)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        QDomElement child = node.toElement();
        const QString tag = child.tagName();
        if (tag == QLatin1String("Name"))
            mName = child.text();
        else if (tag == QLatin1String("Text"))
            mText = child.text();
        else if (tag == QLatin1String("VisibleConnectionName"))
            mVisibility.setSpec(child.text());
        else if (tag == QLatin1String("TextConnectionName"))
            mTitle.setSpec(child.text());
        else if (Mnu_Segment* segment = Mnu_Segment::SegmentFactory(this, &child))
            mSegments.push_back(segment);
    }
}
