#include "Mnu_QtMenuBarManager.h"

#include "Dak_EditMenu.h"
#include "Kel_Logging_p.h"
#include "Kel_MenuBar.h"
#include "Kel_PopupMenu.h"
#include "Mnu_Menu.h"
#include "Mnu_QtManager.h"
#include "Mnu_QtMenuBarEventFilter.h"
#include "Mnu_SubmenuSegment.h"
#include "Mnu_Writer_p.h"

#include <QAction>
#include <QDomDocument>
#include <QDomElement>
#include <QMenu>
#include <QMap>
#include <QStringList>

namespace {

// Created on the first registration.
QMap<QString, Mnu_QtMenuBarManager::MenuBarFactory>* gMenuBarFactories = nullptr;

// Submenus nest as deep as the file says; a search stops at this depth so
// that a menu that (through its managers) contains itself cannot loop.
const int kMaxSubmenuDepth = 64;

} // namespace

Mnu_QtMenuBarManager::Mnu_QtMenuBarManager(Kel_MenuBar* menuBar) : mMenuBarP(menuBar)
{
    init();
}

Mnu_QtMenuBarManager::Mnu_QtMenuBarManager(Kel_MenuBar* menuBar, char* fileName) : mMenuBarP(menuBar)
{
    QString name = QString::fromLatin1(fileName ? fileName : "");
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString key = name.mid(name.lastIndexOf(QLatin1Char('/')) + 1);
    if (MenuBarFactory factory = getMenuBarFactory(key.toLatin1().constData())) {
        factory(this);
    } else if (!name.isEmpty()) {
        // Without generated code the bar is read from its menu file.
        QByteArray path = name.toLocal8Bit();
        setMenus(path.data());
    }
    init();
}

void Mnu_QtMenuBarManager::init()
{
    mEventFilterP.reset(new Mnu_QtMenuBarEventFilter(this));
    if (mMenuBarP)
        mMenuBarP->installEventFilter(mEventFilterP.get());
}

Mnu_QtMenuBarManager::~Mnu_QtMenuBarManager()
{
    if (mMenuBarP && mEventFilterP)
        mMenuBarP->removeEventFilter(mEventFilterP.get());
    clearMenus();
}

void Mnu_QtMenuBarManager::registerMenuBarFactory(const char* name, MenuBarFactory factory)
{
    if (!gMenuBarFactories)
        gMenuBarFactories = new QMap<QString, MenuBarFactory>();
    gMenuBarFactories->insert(QString::fromLatin1(name ? name : ""), factory);
}

void Mnu_QtMenuBarManager::unregisterMenuBarFactory(const char* name)
{
    if (gMenuBarFactories)
        gMenuBarFactories->remove(QString::fromLatin1(name ? name : ""));
}

Mnu_QtMenuBarManager::MenuBarFactory Mnu_QtMenuBarManager::getMenuBarFactory(const char* name)
{
    if (!gMenuBarFactories)
        return nullptr;
    return gMenuBarFactories->value(QString::fromLatin1(name ? name : ""), nullptr);
}

Mnu_Manager* Mnu_QtMenuBarManager::managerFactory(QDomElement* element)
{
    Mnu_QtManager* manager = createManager();
    manager->setMenus(element);
    return manager;
}

Mnu_Manager* Mnu_QtMenuBarManager::managerFactory(char* name)
{
    Mnu_QtManager* manager = createManager();
    manager->setMenus(name);
    return manager;
}

Mnu_Manager* Mnu_QtMenuBarManager::managerFactory()
{
    return createManager();
}

void Mnu_QtMenuBarManager::addMenu(Mnu_Menu* menu)
{
    if (!menu)
        return;
    Mnu_QtManager* manager = createManager();
    manager->addMenu(menu);
    addManager(manager);
}

bool Mnu_QtMenuBarManager::instantiateMenus()
{
    removeBarItems();
    for (int i = 0; i < mManagers.size(); ++i) {
        if (i == mEditMenuIndex)
            insertEditMenuItem(nullptr);
        Mnu_QtManager* manager = mManagers.at(i);
        manager->instantiateMenus();
        mItemIDs.append(makeBarItem(manager, nullptr));
    }
    if (mEditMenuIndex >= mManagers.size())
        insertEditMenuItem(nullptr);
    mInstantiated = true;
    return true;
}

void Mnu_QtMenuBarManager::clearMenus()
{
    removeBarItems();
    mEditMenuIndex = -1;
    const QList<Mnu_QtManager*> managers = mManagers;
    mManagers.clear();
    qDeleteAll(managers);
    mInstantiated = false;
}

Mnu_Menu* Mnu_QtMenuBarManager::getMenu()
{
    return nullptr;
}

Mnu_QtManager* Mnu_QtMenuBarManager::managerNamed(const QString& name) const
{
    for (Mnu_QtManager* manager : mManagers) {
        if (manager->getMenu() && manager->getMenu()->getName() == name)
            return manager;
    }
    return nullptr;
}

bool Mnu_QtMenuBarManager::tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment,
                                             int* index)
{
    QStringList parts = path.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return false;
    Mnu_QtManager* dropDown = managerNamed(parts.takeFirst());
    if (!dropDown)
        return false;
    if (parts.isEmpty()) {
        if (manager)
            *manager = dropDown;
        if (segment)
            *segment = nullptr;
        if (index)
            *index = -1;
        return true;
    }
    return dropDown->tstFindItemByPath(parts.join(QLatin1Char('.')), manager, segment, index);
}

namespace {

// Splits off the first part of a dotted path.
bool splitFirst(const QString& path, QString* first, QString* rest)
{
    QStringList parts = path.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return false;
    *first = parts.takeFirst();
    *rest = parts.join(QLatin1Char('.'));
    return true;
}

} // namespace

bool Mnu_QtMenuBarManager::tstGetItemEnabled(const QString& path)
{
    QString first, rest;
    Mnu_QtManager* dropDown = splitFirst(path, &first, &rest) ? managerNamed(first) : nullptr;
    if (!dropDown)
        return false;
    if (rest.isEmpty()) {
        const int i = mManagers.indexOf(dropDown);
        QAction* item = i < mItemIDs.size() ? mItemIDs.at(i).data() : nullptr;
        return item && item->isEnabled();
    }
    return dropDown->tstGetItemEnabled(rest);
}

bool Mnu_QtMenuBarManager::tstGetItemChecked(const QString& path)
{
    QString first, rest;
    Mnu_QtManager* dropDown = splitFirst(path, &first, &rest) ? managerNamed(first) : nullptr;
    return dropDown && !rest.isEmpty() && dropDown->tstGetItemChecked(rest);
}

bool Mnu_QtMenuBarManager::tstGetItemVisible(const QString& path)
{
    QString first, rest;
    Mnu_QtManager* dropDown = splitFirst(path, &first, &rest) ? managerNamed(first) : nullptr;
    if (!dropDown)
        return false;
    if (rest.isEmpty()) {
        const int i = mManagers.indexOf(dropDown);
        QAction* item = i < mItemIDs.size() ? mItemIDs.at(i).data() : nullptr;
        return item && item->isVisible();
    }
    return dropDown->tstGetItemVisible(rest);
}

QString Mnu_QtMenuBarManager::tstGetItemText(const QString& path)
{
    QString first, rest;
    Mnu_QtManager* dropDown = splitFirst(path, &first, &rest) ? managerNamed(first) : nullptr;
    if (!dropDown)
        return QString();
    return rest.isEmpty() ? dropDown->getText() : dropDown->tstGetItemText(rest);
}

bool Mnu_QtMenuBarManager::tstActivateItem(const QString& path)
{
    QString first, rest;
    Mnu_QtManager* dropDown = splitFirst(path, &first, &rest) ? managerNamed(first) : nullptr;
    return dropDown && !rest.isEmpty() && dropDown->tstActivateItem(rest);
}

void Mnu_QtMenuBarManager::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    for (Mnu_QtManager* manager : mManagers)
        manager->makeConnections(environment);
}

void Mnu_QtMenuBarManager::dump(const QString& prefix) const
{
    const QByteArray prefixText = prefix.toLocal8Bit();
    const char* p = prefixText.constData();
    qCDebug(lcKelMenu, "%sMnu_QtMenuBarManager: this[%p]", p, static_cast<const void*>(this));
    qCDebug(lcKelMenu, "%s   menu bar:       [%p] (Kel_MenuBar *)", p, static_cast<const void*>(mMenuBarP.data()));
    qCDebug(lcKelMenu, "%s   popup menus: total #(%ld)", p, long(mManagers.size()));
    for (int i = 0; i < mManagers.size(); ++i)
        qCDebug(lcKelMenu, "%s      popup menu[%ld]: [%p] (Mnu_QtManager *)", p, long(i),
                static_cast<const void*>(mManagers.at(i)));
    qCDebug(lcKelMenu, "%s   item IDs:    total #(%ld)", p, long(mItemIDs.size()));
    for (int i = 0; i < mItemIDs.size(); ++i)
        qCDebug(lcKelMenu, "%s      item ID[%ld]: [%p] (QAction *)", p, long(i),
                static_cast<const void*>(mItemIDs.at(i).data()));
    qCDebug(lcKelMenu, "%s   popup menus: details of (%ld) (Mnu_QtManager *)", p, long(mManagers.size()));
    for (const Mnu_QtManager* manager : mManagers) {
        if (manager)
            manager->dump(prefix + QLatin1String("      "));
        else
            qCDebug(lcKelMenu, "%s      NULL pointer!", p);
    }
}

Mnu_QtManager* Mnu_QtMenuBarManager::addManager(QDomElement* element)
{
    Mnu_QtManager* manager = createManager();
    manager->setMenus(element);
    addManager(manager);
    return manager;
}

void Mnu_QtMenuBarManager::addManager(Mnu_QtManager* manager)
{
    if (!manager)
        return;
    mManagers.append(manager);
    if (mInstantiated) {
        mItemIDs.append(QPointer<QAction>());
        if (mEventFilterP)
            mEventFilterP->scheduleRefresh();
    }
}

Mnu_QtManager* Mnu_QtMenuBarManager::createManager()
{
    auto* manager = new Mnu_QtManager(this, static_cast<Kel_PopupMenu*>(nullptr));
    // Parented to the bar so that the menus follow its window; the manager
    // still deletes it, and the bar may go first.
    manager->createPopupMenu(mMenuBarP.data());
    return manager;
}

Mnu_QtManager* Mnu_QtMenuBarManager::getManagerAt(int index) const
{
    return index >= 0 && index < mManagers.size() ? mManagers.at(index) : nullptr;
}

Kel_MenuBar* Mnu_QtMenuBarManager::getMenuBar() const
{
    return mMenuBarP.data();
}

void Mnu_QtMenuBarManager::refreshMenuBar()
{
    if (!mMenuBarP || !mInstantiated)
        return;
    while (mItemIDs.size() < mManagers.size())
        mItemIDs.append(QPointer<QAction>());
    for (int i = 0; i < mManagers.size(); ++i) {
        Mnu_QtManager* manager = mManagers.at(i);
        if (!mItemIDs.at(i)) {
            // A reserved item: put it before the next item of the bar.
            QAction* before = itemAfter(i);
            if (!manager->isInstantiated())
                manager->instantiateMenus();
            mItemIDs[i] = makeBarItem(manager, before);
            continue;
        }
        Mnu_Menu* menu = manager->getMenu();
        const bool visible = menu && menu->refreshTitleAndVisibility();
        mItemIDs.at(i)->setText(manager->getText());
        mItemIDs.at(i)->setVisible(visible);
    }
}

Mnu_Segment* Mnu_QtMenuBarManager::getSegmentByAccelerator(const QKeySequence& sequence)
{
    if (sequence.isEmpty())
        return nullptr;
    for (Mnu_QtManager* manager : mManagers) {
        if (!manager->isInstantiated())
            manager->instantiateMenus();
        Mnu_Menu* menu = manager->getMenu();
        if (!menu || !menu->refreshTitleAndVisibility())
            continue;
        if (Mnu_Segment* segment = findSegmentByAccelerator(menu, sequence, 0))
            return segment;
    }
    return nullptr;
}

Mnu_Segment* Mnu_QtMenuBarManager::findSegmentByAccelerator(Mnu_Menu* menu, const QKeySequence& sequence, int depth)
{
    if (depth > kMaxSubmenuDepth)
        return nullptr;
    for (int i = 0; i < menu->getSegmentCount(); ++i) {
        Mnu_Segment* segment = menu->getSegmentAt(i);
        if (auto* submenu = dynamic_cast<Mnu_SubmenuSegment*>(segment)) {
            submenu->refreshCommonState();
            Mnu_Manager* child = submenu->getSubmenuManager();
            Mnu_Menu* childMenu = child ? child->getMenu() : nullptr;
            if (!submenu->isVisible() || !childMenu || !childMenu->refreshTitleAndVisibility())
                continue;
            if (Mnu_Segment* found = findSegmentByAccelerator(childMenu, sequence, depth + 1))
                return found;
            continue;
        }
        if (segment->isSeparator())
            continue;
        segment->refreshState();
        if (!segment->isVisible())
            continue;
        const QString accelerator = segment->getEffectiveAccelerator();
        if (!accelerator.isEmpty()
            && QKeySequence::fromString(accelerator, QKeySequence::PortableText) == sequence)
            return segment;
    }
    return nullptr;
}

namespace {

// The <Menu> element of a text, or a null element (with a debug message).
QDomElement menuElementOf(const QString& xml, QDomDocument& document)
{
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(xml, false, &message, &line, &column)) {
        qCDebug(lcKelMenu, "Mnu_QtMenuBarManager: parse error %s at line %d column %d in inserted menu",
                qPrintable(message), line, column);
        return QDomElement();
    }
    return document.documentElement();
}

bool isMenuElement(const QDomElement* element)
{
    return element && element->tagName() == QLatin1String("Menu");
}

} // namespace

Mnu_Menu* Mnu_QtMenuBarManager::getMenuByPath(const QString& path) const
{
    QStringList parts = path.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return nullptr;
    Mnu_QtManager* dropDown = managerNamed(parts.takeFirst());
    Mnu_Menu* menu = dropDown ? dropDown->getMenu() : nullptr;
    for (const QString& part : parts) {
        if (!menu)
            return nullptr;
        Mnu_Menu* found = nullptr;
        for (int i = 0; i < menu->getSegmentCount() && !found; ++i) {
            auto* submenu = dynamic_cast<Mnu_SubmenuSegment*>(menu->getSegmentAt(i));
            Mnu_Manager* child = submenu ? submenu->getSubmenuManager() : nullptr;
            Mnu_Menu* childMenu = child ? child->getMenu() : nullptr;
            if (childMenu && (submenu->getName() == part || childMenu->getName() == part))
                found = childMenu;
        }
        menu = found;
    }
    return menu;
}

bool Mnu_QtMenuBarManager::insertItems(const QString& path, QDomElement* menuElement, InsertPosition position)
{
    if (!isMenuElement(menuElement))
        return false;
    QString menuPath = path;
    QString anchorName;
    if (position != kAppend) {
        const int dot = path.lastIndexOf(QLatin1Char('.'));
        if (dot < 0)
            return false;
        menuPath = path.left(dot);
        anchorName = path.mid(dot + 1);
    }
    Mnu_Menu* menu = getMenuByPath(menuPath);
    if (!menu)
        return false;
    Mnu_Segment* anchor = nullptr;
    if (position != kAppend) {
        for (int i = 0; i < menu->getSegmentCount() && !anchor; ++i) {
            if (menu->getSegmentAt(i)->getName() == anchorName)
                anchor = menu->getSegmentAt(i);
        }
        if (!anchor)
            return false;
    }
    // Made for the menu they join (a submenu's manager is of its realisation).
    std::vector<Mnu_Segment*> segments;
    for (QDomNode node = menuElement->firstChild(); !node.isNull(); node = node.nextSibling()) {
        QDomElement child = node.toElement();
        const QString tag = child.tagName();
        if (tag == QLatin1String("Name") || tag == QLatin1String("Text")
            || tag == QLatin1String("VisibleConnectionName") || tag == QLatin1String("TextConnectionName"))
            continue;
        if (Mnu_Segment* segment = Mnu_Segment::SegmentFactory(menu, &child))
            segments.push_back(segment);
    }
    for (Mnu_Segment* segment : segments) {
        if (mEnvironment)
            segment->makeConnections(mEnvironment);
        if (position == kAppend) {
            menu->addSegment(segment);
        } else {
            menu->insertSegment(segment, anchor, position == kInsertAfter);
            // The next one follows this one.
            if (position == kInsertAfter)
                anchor = segment;
        }
    }
    return true;
}

bool Mnu_QtMenuBarManager::insertItems(const QString& path, const QString& menuXml, InsertPosition position)
{
    QDomDocument document;
    QDomElement element = menuElementOf(menuXml, document);
    return insertItems(path, &element, position);
}

Mnu_QtManager* Mnu_QtMenuBarManager::insertMenu(const QString& before, QDomElement* menuElement)
{
    if (!isMenuElement(menuElement))
        return nullptr;
    int index = mManagers.size();
    if (!before.isEmpty()) {
        index = mManagers.indexOf(managerNamed(before));
        if (index < 0)
            return nullptr;
    }
    Mnu_QtManager* manager = createManager();
    manager->setMenus(menuElement);
    if (mEnvironment)
        manager->makeConnections(mEnvironment);
    mManagers.insert(index, manager);
    if (mInstantiated) {
        // A reserved item, made at once before the next menu's.
        while (mItemIDs.size() < index)
            mItemIDs.append(QPointer<QAction>());
        mItemIDs.insert(index, QPointer<QAction>());
        refreshMenuBar();
    }
    return manager;
}

Mnu_QtManager* Mnu_QtMenuBarManager::insertMenu(const QString& before, const QString& menuXml)
{
    QDomDocument document;
    QDomElement element = menuElementOf(menuXml, document);
    return insertMenu(before, &element);
}

bool Mnu_QtMenuBarManager::saveMenuBar(std::ostream& out, const QString& name, Mnu_Segment::saveFormat format)
{
    // The Edit menu is the application's, not the file's: only its place
    // is written, as the reader takes it.
    auto saveEditMenu = [&](const QString& indent) {
        Mnu_Writer::emitLine(out, indent,
                             format == Mnu_Segment::kSaveXml ? QStringLiteral("<EditMenu/>")
                                                             : QStringLiteral("menubarMgr->addEditMenu();"));
    };
    auto saveMenus = [&](const QString& indent) {
        for (int i = 0; i < mManagers.size(); ++i) {
            if (i == mEditMenuIndex)
                saveEditMenu(indent);
            if (Mnu_Menu* menu = mManagers.at(i)->getMenu())
                menu->saveMenu(out, indent, format, nullptr, false);
        }
        if (mEditMenuIndex >= mManagers.size())
            saveEditMenu(indent);
    };
    if (format == Mnu_Segment::kSaveXml) {
        Mnu_Writer::emitLine(out, QString(), QStringLiteral("<MenuBar>"));
        saveMenus(QStringLiteral("\t"));
        Mnu_Writer::emitLine(out, QString(), QStringLiteral("</MenuBar>"));
        return true;
    }
    if (format != Mnu_Segment::kSaveSource)
        return true;
    Mnu_Writer::GeneratedFile file;
    file.name = name;
    file.includes = QStringList{"Mnu_BooleanSegment.h",   "Mnu_CommandSegment.h", "Mnu_SeparatorSegment.h",
                                "Mnu_RadioItemsSegment.h", "Mnu_RadioListSegment.h", "Mnu_ListSegment.h",
                                "Mnu_SubmenuSegment.h",    "Mnu_QtManager.h",        "Mnu_QtMenuBarManager.h"};
    file.factoryDeclaration = QStringLiteral(
        "\tstatic Mnu_QtMenuBarManager* createMenuBarManager( Mnu_QtMenuBarManager* menubarMgr );");
    file.registration = QLatin1String("\tMnu_QtMenuBarManager::registerMenuBarFactory( \"") + name
                        + QLatin1String("\", createMenuBarManager );");
    file.unregistration =
        QLatin1String("\tMnu_QtMenuBarManager::unregisterMenuBarFactory( \"") + name + QLatin1String("\" );");
    file.factoryDefinition = QLatin1String("Mnu_QtMenuBarManager* ") + name
                             + QLatin1String("::createMenuBarManager( Mnu_QtMenuBarManager* menubarMgr )");
    file.body = saveMenus;
    file.returnLine = QStringLiteral("    return menubarMgr;");
    Mnu_Writer::emitGeneratedFile(out, file);
    return true;
}

bool Mnu_QtMenuBarManager::xmlDerivedParser(QDomElement& root)
{
    if (root.tagName() != QLatin1String("MenuBar")) {
        qCDebug(lcKelMenu, "Mnu_QtMenuBarManager::xmlDerivedParser unexpected root tag <%s>",
                qPrintable(root.tagName()));
        return false;
    }
    for (QDomNode node = root.firstChild(); !node.isNull(); node = node.nextSibling()) {
        QDomElement child = node.toElement();
        if (child.tagName() == QLatin1String("Menu"))
            addManager(&child);
        else if (child.tagName() == QLatin1String("EditMenu"))
            addEditMenu();
        else
            qCDebug(lcKelMenu, "Mnu_Manager::xmlParser - unexpected tag <%s> parsing <MenuBar>, continuing",
                    qPrintable(child.tagName()));
    }
    return true;
}

void Mnu_QtMenuBarManager::addEditMenu()
{
    if (mEditMenuItem && mMenuBarP)
        mMenuBarP->removeAction(mEditMenuItem);
    mEditMenuItem = nullptr;
    mEditMenuIndex = mManagers.size();
    if (mInstantiated)
        insertEditMenuItem(nullptr);
}

QAction* Mnu_QtMenuBarManager::itemAfter(int index) const
{
    for (int j = index + 1; j <= mItemIDs.size(); ++j) {
        if (j == mEditMenuIndex && mEditMenuItem)
            return mEditMenuItem;
        if (j < mItemIDs.size() && mItemIDs.at(j))
            return mItemIDs.at(j);
    }
    return nullptr;
}

void Mnu_QtMenuBarManager::insertEditMenuItem(QAction* before)
{
    if (!mMenuBarP)
        return;
    // The one Edit menu may stand in several bars; each bar only shows its item.
    mEditMenuItem = Dak_EditMenu::instance().menu()->menuAction();
    mMenuBarP->insertAction(before, mEditMenuItem);
}

void Mnu_QtMenuBarManager::removeBarItems()
{
    if (mEditMenuItem && mMenuBarP)
        mMenuBarP->removeAction(mEditMenuItem);
    mEditMenuItem = nullptr;
    for (const QPointer<QAction>& item : mItemIDs) {
        if (!item)
            continue;
        if (mMenuBarP)
            mMenuBarP->removeAction(item);
        delete item.data();
    }
    mItemIDs.clear();
}

QAction* Mnu_QtMenuBarManager::makeBarItem(Mnu_QtManager* manager, QAction* before)
{
    Kel_PopupMenu* popup = manager ? manager->getPopupMenu() : nullptr;
    if (!mMenuBarP || !popup)
        return nullptr;
    // An action of the bar's own, so that the pop-up's title (the static
    // text) does not overwrite the title shown in the bar.
    auto* item = new QAction(manager->getText(), mMenuBarP.data());
    item->setMenu(popup);
    Mnu_Menu* menu = manager->getMenu();
    item->setData(QVariant(menu ? menu->getName() : QString()));
    item->setVisible(manager->isVisible());
    mMenuBarP->insertAction(before, item);
    return item;
}
