#include "Mnu_Menu.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Segment.h"
#include "Mnu_SubmenuSegment.h"
#include "Mnu_Writer_p.h"
#include "Mv_MessageDispatcher.h"
#include "Mvt_Root_Notifications.h"

#include <QDomElement>
#include <QSet>
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

Mnu_Menu::Mnu_Menu(Mnu_Manager* manager) : mManagerP(manager), mIndexed(0), mForgottenIDs(0), mVisible(false)
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
        indexIDs();
        QSet<const void*> forgotten;
        for (IDEntry& entry : mIDs) {
            if (entry.mID.IsValid() && entry.mSegmentP == segment) {
                forgotten.insert(entry.mID.getValue());
                mIndex.remove(entry.mID.getValue());
                entry.mID = Mnu_MenuID();
                ++mForgottenIDs;
            }
        }
        if (!forgotten.isEmpty()) {
            mItemNames.erase(std::remove_if(mItemNames.begin(), mItemNames.end(),
                                            [&](const std::pair<Mnu_MenuID, QString>& name) {
                                                return forgotten.contains(name.first.getValue());
                                            }),
                             mItemNames.end());
            compactIDs();
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
            if (!hasIDs() || lastWasSeparator || isLast)
                continue;
        }
        if (segment->instantiate(mManagerP) > 0)
            lastWasSeparator = segment->isSeparator();
        // Segments that made nothing leave the flag alone, so the separators
        // around an empty list collapse into one.
    }
    // The last items made were a separator: the segments after it made none.
    if (lastWasSeparator && hasIDs()) {
        auto last = mIDs.rbegin();
        while (!last->mID.IsValid())
            ++last;
        const Mnu_MenuID id = last->mID;
        mManagerP->removeItem(id);
        forgetID(id);
    }
    return true;
}

void Mnu_Menu::setIDAssignedToSegment(Mnu_Segment* segment, Mnu_MenuID id)
{
    // Nothing is looked up here: a build hands out hundreds of identifiers
    // and looks none of them up (see indexIDs).
    if (id.IsValid())
        mIDs.push_back(IDEntry{id, segment});
}

void Mnu_Menu::indexIDs() const
{
    for (; mIndexed < mIDs.size(); ++mIndexed) {
        IDEntry& entry = mIDs[mIndexed];
        if (!entry.mID.IsValid())
            continue;
        auto known = mIndex.find(entry.mID.getValue());
        if (known == mIndex.end()) {
            mIndex.insert(entry.mID.getValue(), mIndexed);
        } else {
            // Handed out again: it moves to the end.
            mIDs[*known].mID = Mnu_MenuID();
            ++mForgottenIDs;
            *known = mIndexed;
        }
    }
}

void Mnu_Menu::clearIDs()
{
    mIDs.clear();
    mIndex.clear();
    mIndexed = 0;
    mForgottenIDs = 0;
}

// Once at least half the list is gone, so that each identifier is moved a
// constant number of times on average.
void Mnu_Menu::compactIDs()
{
    if (mForgottenIDs < 32 || mForgottenIDs * 2 < mIDs.size())
        return;
    mIDs.erase(std::remove_if(mIDs.begin(), mIDs.end(), [](const IDEntry& entry) { return !entry.mID.IsValid(); }),
               mIDs.end());
    mForgottenIDs = 0;
    // The positions have moved; the next lookup indexes again.
    mIndex.clear();
    mIndexed = 0;
}

std::vector<Mnu_MenuID> Mnu_Menu::getIDs() const
{
    indexIDs();
    std::vector<Mnu_MenuID> ids;
    ids.reserve(mIDs.size() - mForgottenIDs);
    for (const IDEntry& entry : mIDs) {
        if (entry.mID.IsValid())
            ids.push_back(entry.mID);
    }
    return ids;
}

void Mnu_Menu::itemActivated(Mnu_MenuID id)
{
    if (Mnu_Segment* segment = getSegmentForID(id))
        segment->itemActivated(id);
}

void Mnu_Menu::setItemEnabled(Mnu_Segment* segment, bool enabled)
{
    if (!mManagerP)
        return;
    indexIDs();
    for (const IDEntry& entry : mIDs) {
        if (entry.mID.IsValid() && entry.mSegmentP == segment)
            mManagerP->setItemEnabled(entry.mID, enabled);
    }
}

Mnu_Segment* Mnu_Menu::getSegmentForID(Mnu_MenuID id) const
{
    if (!id.IsValid())
        return nullptr;
    indexIDs();
    auto it = mIndex.constFind(id.getValue());
    return it == mIndex.constEnd() ? nullptr : mIDs[*it].mSegmentP;
}

void Mnu_Menu::setItemName(Mnu_MenuID id, const QString& name)
{
    if (id.IsValid())
        mItemNames.emplace_back(id, name);
}

QString Mnu_Menu::getItemName(Mnu_MenuID id) const
{
    // Latest first: a name given again replaces the earlier one.
    for (auto it = mItemNames.rbegin(); it != mItemNames.rend(); ++it) {
        if (it->first == id)
            return it->second;
    }
    return QString();
}

void Mnu_Menu::forgetID(Mnu_MenuID id)
{
    if (!id.IsValid())
        return;
    if (mIndexed == 0) {
        // Nothing looked up since the build (the usual case: a trailing
        // separator): a scan is cheaper than indexing the whole build.
        for (IDEntry& entry : mIDs) {
            if (entry.mID == id) {
                entry.mID = Mnu_MenuID();
                ++mForgottenIDs;
            }
        }
    } else {
        indexIDs();
        auto it = mIndex.find(id.getValue());
        if (it != mIndex.end()) {
            mIDs[*it].mID = Mnu_MenuID();
            ++mForgottenIDs;
            mIndex.erase(it);
        }
    }
    compactIDs();
    mItemNames.erase(std::remove_if(mItemNames.begin(), mItemNames.end(),
                                    [id](const std::pair<Mnu_MenuID, QString>& name) { return name.first == id; }),
                     mItemNames.end());
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
        if (getItemName(item) != parts.at(depth))
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
    qCDebug(lcKelMenu, "%s   segment map: (%ld)", qPrintable(prefix), long(ids.size()));
    long iteration = 0;
    for (const IDEntry& entry : mIDs) {
        if (!entry.mID.IsValid())
            continue;
        qCDebug(lcKelMenu, "%s      iteration (%ld)", qPrintable(prefix), iteration++);
        entry.mID.dump(deeper);
        entry.mSegmentP->dump(deeper);
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
