#include "Kel_MenuBar.h"

#include "Mnu_CommandSegment.h"

#include "Kel_PopupMenu.h"
#include "Kel_WhatsThis.h"
#include "Mnu_QtManager.h"
#include "Mnu_QtMenuBarManager.h"
#include "Ost_Assert.h"

#include <QAction>
#include <QMenu>
#include <QStringList>

namespace {

// Reports a bar that is used before it was given a menu bar name.
bool checkManager(const void* manager, const char* file, int line)
{
    if (!manager)
        Ost_Assert::handleFailedAssert("mMenuBarManagerP", file, line);
    return manager != nullptr;
}

// Every action of menu and its submenus with a shortcut of sequence.
QAction* findShortcutIn(QMenu* menu, const QKeySequence& sequence, int depth)
{
    if (!menu || depth > 64)
        return nullptr;
    for (QAction* action : menu->actions()) {
        if (!action->shortcut().isEmpty() && action->shortcut() == sequence)
            return action;
        if (QAction* found = findShortcutIn(action->menu(), sequence, depth + 1))
            return found;
    }
    return nullptr;
}

} // namespace

Kel_MenuBar::Kel_MenuBar(QWidget* parent, const char* name) : QMenuBar(parent), mConnected(false)
{
    if (name && *name) {
        setObjectName(QString::fromLatin1(name));
        setMenuBarFileName(QByteArray(name));
    }
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_MenuBar");
}

Kel_MenuBar::~Kel_MenuBar()
{
    // The managers delete their pop-ups, which are children of this bar.
    mMenuBarManagerP.reset();
}

void Kel_MenuBar::setMenuBarFileName(const QByteArray& name)
{
    if (name == mMenuBarFileName && mMenuBarManagerP)
        return;
    mMenuBarFileName = name;
    mMenuBarManagerP.reset();
    QByteArray fileName = name;
    mMenuBarManagerP.reset(new Mnu_QtMenuBarManager(this, fileName.data()));
    if (mConnected)
        makeConnections(mEnvironment);
}

void Kel_MenuBar::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    mConnected = true;
    if (!checkManager(mMenuBarManagerP.get(), __FILE__, __LINE__))
        return;
    mMenuBarManagerP->makeConnections(mEnvironment);
    // Built at once, so that the bar shows its menus and their shortcuts
    // work before any menu was opened.
    mMenuBarManagerP->instantiateMenus();
}

Mnu_Segment* Kel_MenuBar::getSegmentByAccelerator(const QKeySequence& sequence)
{
    if (!checkManager(mMenuBarManagerP.get(), __FILE__, __LINE__))
        return nullptr;
    return mMenuBarManagerP->getSegmentByAccelerator(sequence);
}

bool Kel_MenuBar::triggerMenuCommand(const QKeySequence& accelerator)
{
    auto* command = dynamic_cast<Mnu_CommandSegment*>(getSegmentByAccelerator(accelerator));
    if (!command || !command->isEnabled(true))
        return false;
    command->itemActivatedTimer();
    return true;
}

QString Kel_MenuBar::menuCommandText(const QKeySequence& accelerator)
{
    auto* command = dynamic_cast<Mnu_CommandSegment*>(getSegmentByAccelerator(accelerator));
    return command ? command->getDisplayedText() : QString();
}

bool Kel_MenuBar::isDefinedAccelerator(const QKeySequence& sequence) const
{
    return Mnu_QtManager::isDefinedAccelerator(sequence.toString(QKeySequence::PortableText));
}

void Kel_MenuBar::deleteAccelerator(const QKeySequence& sequence)
{
    if (sequence.isEmpty())
        return;
    Mnu_QtManager::deleteAccelerator(sequence.toString(QKeySequence::PortableText));
    while (QAction* action = findAccel(sequence))
        action->setShortcut(QKeySequence());
}

QAction* Kel_MenuBar::findAccel(const QKeySequence& sequence) const
{
    if (sequence.isEmpty())
        return nullptr;
    for (QAction* action : actions()) {
        if (QAction* found = findShortcutIn(action->menu(), sequence, 0))
            return found;
    }
    return nullptr;
}

QAction* Kel_MenuBar::findAction(QVariant data) const
{
    for (QAction* action : actions()) {
        if (!action->isSeparator() && action->data() == data)
            return action;
    }
    return nullptr;
}

QAction* Kel_MenuBar::getItemByPath(const QString& path) const
{
    QList<QVariant> parts = Kel_PopupMenu::splitPath(path);
    if (parts.isEmpty())
        return nullptr;
    QAction* item = findAction(parts.takeFirst());
    if (!item || parts.isEmpty())
        return item;
    auto* popup = qobject_cast<Kel_PopupMenu*>(item->menu());
    return popup ? popup->findAction(parts) : nullptr;
}

bool Kel_MenuBar::tstFindItemByPath(const QString& path, Mnu_Manager** manager, Mnu_Segment** segment, int* index)
{
    if (!checkManager(mMenuBarManagerP.get(), __FILE__, __LINE__))
        return false;
    return mMenuBarManagerP->tstFindItemByPath(path, manager, segment, index);
}

bool Kel_MenuBar::findPoi(const QString& dottedName, QRect* globalRect)
{
    if (dottedName.isEmpty() || dottedName == objectName()) {
        if (globalRect)
            *globalRect = QRect(mapToGlobal(QPoint(0, 0)), size());
        return true;
    }
    QList<QVariant> parts = Kel_PopupMenu::splitPath(dottedName);
    if (parts.isEmpty())
        return false;
    QAction* item = findAction(parts.takeFirst());
    if (!item || !item->isVisible())
        return false;
    if (parts.isEmpty()) {
        const QRect local = actionGeometry(item);
        if (globalRect)
            *globalRect = QRect(mapToGlobal(local.topLeft()), local.size());
        return true;
    }
    // Items of a menu have a place on the screen only while it is open.
    auto* popup = qobject_cast<Kel_PopupMenu*>(item->menu());
    if (!popup)
        return false;
    QStringList rest;
    for (const QVariant& part : parts)
        rest.append(part.toString());
    return popup->findPoi(rest.join(QLatin1Char('.')), globalRect);
}
