#include "Mnu_QtManager.h"

#include "Kel_Logging_p.h"
#include "Kel_PopupMenu.h"
#include "Mnu_Menu.h"
#include "Mnu_QtMenuBarManager.h"
#include "Mnu_Writer_p.h"
#include "Mvt_SimpleValue.h"
#include "Ost_Resource.h"

#include <QAction>
#include <QActionGroup>
#include <QDomElement>
#include <QHash>
#include <QIcon>
#include <QKeySequence>
#include <QMap>
#include <QPixmap>
#include <QProxyStyle>
#include <algorithm>
#include <utility>

namespace {

struct MenuFactoryEntry
{
    void* owner;
    Mnu_QtManager::MenuFactory factory;
};

// Created on the first registration; lookups before that find nothing.
QMap<QString, QList<MenuFactoryEntry>>* gMenuFactories = nullptr;

QMap<QString, bool>& acceleratorTable()
{
    static QMap<QString, bool> table;
    return table;
}

// An accelerator's keys and their portable spelling. Every build of every
// menu sets the same few accelerators again, so each text is turned into
// keys once; the portable form does not depend on the locale.
struct ParsedAccelerator
{
    QKeySequence keys;
    QString text;
};

ParsedAccelerator parseAccelerator(const QString& accelerator)
{
    static QHash<QString, ParsedAccelerator> parsed;
    auto it = parsed.constFind(accelerator);
    if (it == parsed.constEnd()) {
        // Bounded: texts from models could be anything.
        if (parsed.size() >= 1024)
            parsed.clear();
        const QKeySequence keys = QKeySequence::fromString(accelerator, QKeySequence::PortableText);
        it = parsed.insert(accelerator, ParsedAccelerator{keys, keys.toString(QKeySequence::PortableText)});
    }
    return *it;
}

// The part of a menu name after its last folder separator.
QString factoryKey(const char* name)
{
    QString key = QString::fromLatin1(name ? name : "");
    key.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return key.mid(key.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

Mnu_QtManager::Mnu_QtManager()
{
    init(nullptr, nullptr);
}

Mnu_QtManager::Mnu_QtManager(Kel_PopupMenu* popup, char* name)
{
    init(popup, nullptr);
    if (!name)
        return;
    if (MenuFactory factory = getMenuFactory(factoryKey(name).toLatin1().constData()))
        factory(this);
    else
        setMenus(name);
}

Mnu_QtManager::Mnu_QtManager(Mnu_QtMenuBarManager* menuBar, Kel_PopupMenu* popup)
{
    init(popup, menuBar);
}

Mnu_QtManager::Mnu_QtManager(Mnu_QtMenuBarManager* menuBar, Kel_PopupMenu* popup, QDomElement* element)
{
    init(popup, menuBar);
    setMenus(element);
}

void Mnu_QtManager::init(Kel_PopupMenu* popup, Mnu_QtMenuBarManager* menuBar)
{
    mPopupMenuP = popup;
    mOwnsPopupMenu = false;
    mMenuBarManagerP = menuBar;
    mSystemMessagesConnected = false;
    mAboutToShowFuncP = nullptr;
    mAboutToShowDataP = nullptr;
    mItemSetComplete = true;
    // Generated code fills the menu that a new manager comes with.
    mMenuP = new Mnu_Menu(this);
}

Mnu_QtManager::~Mnu_QtManager()
{
    // The segments (and their submenu managers) go before the pop-up their
    // items live in.
    delete mMenuP;
    mMenuP = nullptr;
    if (mOwnsPopupMenu && mPopupMenuP)
        delete mPopupMenuP.data();
}

// Out of line: the header only declares Kel_PopupMenu, and reading the
// guarded pointer needs the whole class.
Kel_PopupMenu* Mnu_QtManager::getPopupMenu() const
{
    return mPopupMenuP;
}

void Mnu_QtManager::registerMenuFactory(const char* name, void* owner, MenuFactory factory)
{
    if (!gMenuFactories)
        gMenuFactories = new QMap<QString, QList<MenuFactoryEntry>>();
    (*gMenuFactories)[QString::fromLatin1(name ? name : "")].append(MenuFactoryEntry{owner, factory});
}

void Mnu_QtManager::unregisterMenuFactory(const char* name, void* owner)
{
    if (!gMenuFactories)
        return;
    auto it = gMenuFactories->find(QString::fromLatin1(name ? name : ""));
    if (it == gMenuFactories->end())
        return;
    for (int i = 0; i < it->size(); ++i) {
        if (it->at(i).owner == owner) {
            it->removeAt(i);
            break;
        }
    }
}

Mnu_QtManager::MenuFactory Mnu_QtManager::getMenuFactory(const char* name)
{
    if (!gMenuFactories)
        return nullptr;
    auto it = gMenuFactories->constFind(QString::fromLatin1(name ? name : ""));
    if (it == gMenuFactories->constEnd() || it->isEmpty())
        return nullptr;
    return it->first().factory;
}

bool Mnu_QtManager::isDefinedAccelerator(const QString& accelerator)
{
    return acceleratorTable().value(accelerator, false);
}

void Mnu_QtManager::deleteAccelerator(const QString& accelerator)
{
    auto it = acceleratorTable().find(accelerator);
    if (it != acceleratorTable().end())
        *it = false;
}

Mnu_Manager* Mnu_QtManager::managerFactory(QDomElement* element)
{
    return new Mnu_QtManager(static_cast<Mnu_QtMenuBarManager*>(nullptr), nullptr, element);
}

Mnu_Manager* Mnu_QtManager::managerFactory(char* name)
{
    return new Mnu_QtManager(static_cast<Kel_PopupMenu*>(nullptr), name);
}

Mnu_Manager* Mnu_QtManager::managerFactory()
{
    return new Mnu_QtManager();
}

Kel_PopupMenu* Mnu_QtManager::createPopupMenu(QWidget* parent)
{
    if (!mPopupMenuP) {
        const QByteArray name = mMenuP ? mMenuP->getName().toLatin1() : QByteArray();
        mPopupMenuP = new Kel_PopupMenu(parent, name.constData());
        mOwnsPopupMenu = true;
    }
    return mPopupMenuP;
}

bool Mnu_QtManager::instantiateMenus()
{
    const QString name = mMenuP ? mMenuP->getName() : QString();
    qCDebug(lcKelMenu, "]]] Mnu_QtManager::instantiateMenus: menu [%s]", qPrintable(name));

    if (mPopupMenuP && mPopupMenuP->objectName() == QLatin1String("unnamed")) {
        mPopupMenuP->setObjectName(name);
        mPopupMenuP->setWindowTitle(name);
    }
    createPopupMenu();

    Mvt_SimpleValue<QProxyStyle*>::Listener styleOverride(QStringLiteral("PellaTool.StyleOverride"),
                                                          Mv_ConnectionEnvironment::blankEnvironment());
    QProxyStyle* style = nullptr;
    if (styleOverride.get(style) && style && mPopupMenuP->style() != style)
        mPopupMenuP->setStyle(style);

    mPopupMenuP->setTitle(mMenuP ? mMenuP->getText() : QString());
    if (mInstantiated || !mItemIDs.empty())
        clearPopup();
    if (!name.isEmpty())
        mPopupMenuP->setObjectName(name);

    mInstantiated = mMenuP && mMenuP->instantiate();
    doSystemMessageConnect();
    return mInstantiated;
}

void Mnu_QtManager::clearMenus()
{
    qCDebug(lcKelMenu, "]]] Mnu_QtManager::clearMenus:");
    if (mPopupMenuP)
        clearPopup();
    mItemIDs.clear();
    mItemSet.clear();
    mItemSetComplete = true;
    delete mMenuP;
    mMenuP = nullptr;
    mInstantiated = false;
}

void Mnu_QtManager::clearPopup()
{
    // Only the identifiers of the current build are kept: the actions of
    // earlier builds are gone.
    mPopupMenuP->clear();
    // The list keeps its room: the next build is most likely the same size.
    mItemIDs.clear();
    mItemSet.clear();
    mItemSetComplete = true;
    for (const QPointer<QActionGroup>& group : std::as_const(mRadioGroups))
        delete group.data();
    mRadioGroups.clear();
}

bool Mnu_QtManager::doSystemMessageConnect()
{
    if (mSystemMessagesConnected || !mPopupMenuP)
        return false;
    const bool shown = bool(connect(mPopupMenuP.data(), &QMenu::aboutToShow, this, &Mnu_QtManager::aboutToShow));
    const bool chosen = bool(connect(mPopupMenuP.data(), &QMenu::triggered, this, &Mnu_QtManager::triggered));
    mSystemMessagesConnected = true;
    return shown && chosen;
}

Mnu_MenuID Mnu_QtManager::insertSeparator()
{
    if (!mPopupMenuP)
        return Mnu_MenuID();
    QAction* action = mPopupMenuP->addSeparator();
    addItemID(action);
    return Mnu_MenuID(action);
}

Mnu_MenuID Mnu_QtManager::insertItem(const QString& name, QString& text, Mnu_Manager* submenu)
{
    if (!mPopupMenuP)
        return Mnu_MenuID();
    auto* qtSubmenu = dynamic_cast<Mnu_QtManager*>(submenu);
    QMenu* submenuPopup = qtSubmenu ? qtSubmenu->getPopupMenu() : nullptr;
    QAction* action = submenuPopup ? mPopupMenuP->insertItem(text, submenuPopup, QVariant(name))
                                   : mPopupMenuP->insertItem(text, QVariant(name));
    addItemID(action);
    const Mnu_MenuID id(action);
    if (mMenuP)
        mMenuP->setItemName(id, name);
    return id;
}

Mnu_MenuID Mnu_QtManager::insertItem(const QString& name, QString& text)
{
    return insertItem(name, text, nullptr);
}

void Mnu_QtManager::addItemID(QAction* action)
{
    mItemIDs.push_back(action);
    if (mItemSetComplete && !mItemSet.isEmpty())
        mItemSet.insert(action);
    else
        mItemSetComplete = false;
}

QAction* Mnu_QtManager::actionForID(Mnu_MenuID id) const
{
    if (!id.IsValid() || !mPopupMenuP || mItemIDs.empty())
        return nullptr;
    // Compared by value only: an identifier of an earlier build may point
    // to an action that no longer exists.
    if (id.getValue() == mItemIDs.back())
        return mItemIDs.back();
    if (!mItemSetComplete) {
        mItemSet.clear();
        mItemSet.reserve(int(mItemIDs.size()));
        for (QAction* action : mItemIDs)
            mItemSet.insert(action);
        mItemSetComplete = true;
    }
    return mItemSet.contains(id.getValue()) ? static_cast<QAction*>(id.getValue()) : nullptr;
}

void Mnu_QtManager::setItemAccelerator(Mnu_MenuID id, const QString& accelerator)
{
    QAction* action = actionForID(id);
    if (!action)
        return;
    const ParsedAccelerator parsed = parseAccelerator(accelerator);
    const QKeySequence& sequence = parsed.keys;
    action->setShortcut(sequence);
    action->setShortcutVisibleInContextMenu(true);
    const QString& text = parsed.text;
    // An empty accelerator (an element without one) takes no key.
    if (!sequence.isEmpty())
        acceleratorTable()[text] = true;
    // The traces written for every item of every opening cost nothing
    // unless kel.menu debug output is on: qCDebug evaluates its arguments
    // only then.
    qCDebug(lcKelMenu, "Mnu_QtManager::setItemAccelerator: set [%s], item [%p]", qPrintable(text),
            static_cast<void*>(action));
}

void Mnu_QtManager::setItemEnabled(Mnu_MenuID id, bool enabled)
{
    QAction* action = actionForID(id);
    if (!action)
        return;
    qCDebug(lcKelMenu, "Mnu_QtManager::setItemEnabled: (%p) shortcut[%s] to (%d)", static_cast<void*>(action),
            qPrintable(action->shortcut().toString(QKeySequence::PortableText)), int(enabled));
    action->setEnabled(enabled);
}

void Mnu_QtManager::setItemCheckable(Mnu_MenuID id, bool checkable)
{
    if (QAction* action = actionForID(id))
        action->setCheckable(checkable);
}

void Mnu_QtManager::setItemChecked(Mnu_MenuID id, bool checked)
{
    if (QAction* action = actionForID(id))
        action->setChecked(checked);
}

bool Mnu_QtManager::getItemChecked(Mnu_MenuID id)
{
    QAction* action = actionForID(id);
    return action && action->isChecked();
}

bool Mnu_QtManager::removeItem(Mnu_MenuID id)
{
    qCDebug(lcKelMenu, "Mnu_QtManager::removeItem: remove item [%p]", id.getValue());
    if (!mPopupMenuP || !id.IsValid())
        return false;
    if (QAction* action = actionForID(id)) {
        mPopupMenuP->removeAction(action);
        mItemIDs.erase(std::remove(mItemIDs.begin(), mItemIDs.end(), action), mItemIDs.end());
        mItemSet.remove(action);
        if (action->parent() == mPopupMenuP)
            delete action;
    }
    return true;
}

void Mnu_QtManager::setItemIcon(Mnu_MenuID id, void* pixmap)
{
    QAction* action = actionForID(id);
    if (action && pixmap)
        action->setIcon(QIcon(*static_cast<QPixmap*>(pixmap)));
}

void Mnu_QtManager::setItemIcon(Mnu_MenuID id, const QString& fileName)
{
    QAction* action = actionForID(id);
    if (!action)
        return;
    QPixmap pixmap;
    // Names relative to the resource path are the usual case for models.
    if (pixmap.load(fileName) || pixmap.load(Ost_Resource::getResourcePath() + fileName))
        action->setIcon(QIcon(pixmap));
}

void Mnu_QtManager::setItemIcon(Mnu_MenuID id, unsigned char* data, int length)
{
    QAction* action = actionForID(id);
    if (!action || !data || length <= 0)
        return;
    QPixmap pixmap;
    if (pixmap.loadFromData(data, uint(length)))
        action->setIcon(QIcon(pixmap));
}

void Mnu_QtManager::setWhatsThis(Mnu_MenuID id, const QString& text)
{
    if (QAction* action = actionForID(id))
        action->setWhatsThis(text);
}

void Mnu_QtManager::setItemRadioGroup(Mnu_MenuID id, const void* group)
{
    QAction* action = actionForID(id);
    if (!action || !group)
        return;
    QPointer<QActionGroup>& actions = mRadioGroups[group];
    if (!actions) {
        actions = new QActionGroup(mPopupMenuP.data());
        // Exclusive, so that the menu draws radio indicators, but optional:
        // Qt then toggles a chosen item like any checkable one, and the
        // segment alone decides what stays checked (triggered undoes Qt's toggle).
        actions->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    }
    actions->addAction(action);
}

QAction* Mnu_QtManager::findItemAction(const QString& path)
{
    if (!mInstantiated)
        instantiateMenus();
    Mnu_MenuID id;
    Mnu_Manager* owner = nullptr;
    if (!mMenuP || !mMenuP->tstFindItemByPath(path, 0, nullptr, &id, &owner))
        return nullptr;
    auto* qtOwner = dynamic_cast<Mnu_QtManager*>(owner);
    return qtOwner ? qtOwner->actionForID(id) : nullptr;
}

bool Mnu_QtManager::tstGetItemEnabled(const QString& path)
{
    QAction* action = findItemAction(path);
    return action && action->isEnabled();
}

bool Mnu_QtManager::tstGetItemChecked(const QString& path)
{
    QAction* action = findItemAction(path);
    return action && action->isChecked();
}

bool Mnu_QtManager::tstGetItemVisible(const QString& path)
{
    QAction* action = findItemAction(path);
    return action && action->isVisible();
}

QString Mnu_QtManager::tstGetItemText(const QString& path)
{
    QAction* action = findItemAction(path);
    return action ? action->text() : QString();
}

bool Mnu_QtManager::tstActivateItem(const QString& path)
{
    QAction* action = findItemAction(path);
    if (!action || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}

bool Mnu_QtManager::tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index)
{
    if (!mInstantiated)
        instantiateMenus();
    Mnu_Segment* found = nullptr;
    Mnu_MenuID id;
    Mnu_Manager* owner = nullptr;
    if (!mMenuP || !mMenuP->tstFindItemByPath(path, 0, &found, &id, &owner))
        return false;
    if (manager)
        *manager = owner;
    if (segment)
        *segment = found;
    if (index) {
        *index = 0;
        for (int i = 0; found && i < found->getItemCount(); ++i) {
            if (found->getIndexedID(i) == id) {
                *index = i;
                break;
            }
        }
    }
    return true;
}

void Mnu_QtManager::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    if (mMenuP)
        mMenuP->makeConnections(mEnvironment);
}

void Mnu_QtManager::dump(const QString& prefix) const
{
    qCDebug(lcKelMenu, "%sMnu_QtManager: this   [%p]", qPrintable(prefix), static_cast<const void*>(this));
    qCDebug(lcKelMenu, "%s   parent menu bar: [%p] (Mnu_QtMenuBarManager *)", qPrintable(prefix),
            static_cast<const void*>(mMenuBarManagerP));
    qCDebug(lcKelMenu, "%s   popup menu:      [%p] (Kel_PopupMenu *)", qPrintable(prefix),
            static_cast<const void*>(mPopupMenuP.data()));
    qCDebug(lcKelMenu, "%s   item IDs: total #(%ld) (QAction *)", qPrintable(prefix), long(mItemIDs.size()));
    for (size_t i = 0; i < mItemIDs.size(); ++i)
        qCDebug(lcKelMenu, "%s      itemID[%ld]: [%p] (QAction *)", qPrintable(prefix), long(i),
                static_cast<const void*>(mItemIDs[i]));
    dumpManagerInformation(prefix);
}

QString Mnu_QtManager::getText() const
{
    return mMenuP ? mMenuP->getDisplayedText() : QString();
}

bool Mnu_QtManager::isEmpty() const
{
    return !mMenuP || mMenuP->getSegmentCount() == 0;
}

bool Mnu_QtManager::isVisible() const
{
    return mMenuP && mMenuP->isVisible();
}

void Mnu_QtManager::setAboutToShowFunc(AboutToShowFunc func, void* data)
{
    mAboutToShowFuncP = func;
    mAboutToShowDataP = data;
}

void Mnu_QtManager::popup(QPoint& point, boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if ((environment && environment != mEnvironment) || !mEnvironment)
        makeConnections(environment);
    instantiateMenus();
    mPopupMenuP->popup(point);
}

bool Mnu_QtManager::savePopupMenu(std::ostream& out, const QString& name, Mnu_Segment::saveFormat format)
{
    if (format == Mnu_Segment::kSaveXml) {
        if (mMenuP)
            mMenuP->saveMenu(out, QString(), format, this, false);
        return true;
    }
    if (format != Mnu_Segment::kSaveSource)
        return true;
    Mnu_Writer::GeneratedFile file;
    file.name = name;
    // No radio-items header here: generated pop-ups reach it through the radio-list header.
    file.includes = QStringList{"Mnu_BooleanSegment.h", "Mnu_CommandSegment.h",  "Mnu_SeparatorSegment.h",
                                "Mnu_RadioListSegment.h", "Mnu_ListSegment.h", "Mnu_SubmenuSegment.h",
                                "Mnu_QtManager.h"};
    file.factoryDeclaration = QStringLiteral("\tstatic Mnu_QtManager* createMenuManager( Mnu_QtManager* menuMgr);");
    file.registration = QLatin1String("\tMnu_QtManager::registerMenuFactory( \"") + name
                        + QLatin1String("\", (void *)this, createMenuManager );");
    file.unregistration =
        QLatin1String("\tMnu_QtManager::unregisterMenuFactory( \"") + name + QLatin1String("\", (void *)this );");
    file.factoryDefinition =
        QLatin1String("Mnu_QtManager* ") + name + QLatin1String("::createMenuManager( Mnu_QtManager* menuMgr )");
    file.body = [&](const QString& indent) {
        if (mMenuP)
            mMenuP->saveMenu(out, indent, format, this, false);
    };
    file.returnLine = QStringLiteral("    return menuMgr;");
    Mnu_Writer::emitGeneratedFile(out, file);
    return true;
}

void Mnu_QtManager::aboutToShow()
{
    qCDebug(lcKelMenu, "]]] Mnu_QtManager::aboutToShow:");
    if ((mInstantiated || !mItemIDs.empty()) && mPopupMenuP)
        clearPopup();
    if (mMenuP)
        mMenuP->instantiate();
    mInstantiated = true;
    if (mAboutToShowFuncP)
        mAboutToShowFuncP(this, mAboutToShowDataP);
}

void Mnu_QtManager::triggered(QAction* action)
{
    // Qt reports an item of a submenu to the parent menus as well; only the
    // manager that made it finds it.
    const Mnu_MenuID id(action);
    if (!action || !mMenuP || !mMenuP->getSegmentForID(id))
        return;
    // Qt has already toggled a checkable item; the segment decides its state.
    if (action->isCheckable())
        action->setChecked(!action->isChecked());
    mMenuP->itemActivated(id);
}

bool Mnu_QtManager::xmlDerivedParser(QDomElement& root)
{
    if (root.tagName() != QLatin1String("Menu")) {
        qCDebug(lcKelMenu, "Mnu_QtManager::xmlDerivedParser unexpected root tag <%s>", qPrintable(root.tagName()));
        return false;
    }
    // The items of the menu being replaced go with it.
    if (mPopupMenuP)
        clearPopup();
    delete mMenuP;
    mMenuP = nullptr;
    mInstantiated = false;
    mMenuP = new Mnu_Menu(this, root);
    return true;
}
