#include "Dak_EditMenu.h"

#include "Dak_EditMenuCommander.h"
#include "Ost_Assert.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>

namespace {

Dak_EditMenu* sInstance = nullptr;

} // namespace

Dak_EditMenu& Dak_EditMenu::instance()
{
    if (!sInstance) {
        OST_ASSERT(qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr);
        sInstance = new Dak_EditMenu;
        // The menu is a widget and must go before the QApplication does.
        qAddPostRoutine(&Dak_EditMenu::destroyInstance);
    }
    return *sInstance;
}

Dak_EditMenu* Dak_EditMenu::existingInstance()
{
    return sInstance;
}

void Dak_EditMenu::destroyInstance()
{
    Dak_EditMenu* menu = sInstance;
    sInstance = nullptr;
    delete menu;
}

Dak_EditMenu::Dak_EditMenu()
    : mMenuP(new QMenu(tr("&Edit")))
    , mCurrentP(nullptr)
{
    struct Item
    {
        QString text;
        QKeySequence::StandardKey key;
    };
    const Item items[Dak_EditMenuCommander::kCommandCount] = {
        {tr("&Undo"), QKeySequence::Undo},   {tr("&Redo"), QKeySequence::Redo},
        {tr("Cu&t"), QKeySequence::Cut},     {tr("&Copy"), QKeySequence::Copy},
        {tr("&Paste"), QKeySequence::Paste}, {tr("&Delete"), QKeySequence::Delete},
        {tr("Select &All"), QKeySequence::SelectAll},
    };
    for (unsigned int command = 0; command < Dak_EditMenuCommander::kCommandCount; ++command) {
        QAction* action = mMenuP->addAction(items[command].text);
        action->setShortcut(items[command].key);
        // Shown in the menu, but not taken from the window: the text widgets
        // handle these keys themselves, and other widgets (lists, views) must
        // keep theirs rather than have them act on the last text field.
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, command]() { obey(command); });
        mActions.append(action);
        mDefaultTexts.append(items[command].text);
    }
    connect(mMenuP, &QMenu::aboutToShow, this, &Dak_EditMenu::updateActions);
}

Dak_EditMenu::~Dak_EditMenu()
{
    delete mMenuP;
}

QAction* Dak_EditMenu::action(unsigned int command) const
{
    return command < unsigned(mActions.size()) ? mActions[int(command)] : nullptr;
}

void Dak_EditMenu::focusInEvent(Dak_Commander* commander)
{
    mCurrentP = commander;
}

bool Dak_EditMenu::isFocusOutEvent(Dak_Commander* commander, bool toPopup)
{
    if (!toPopup || !commander || commander != mCurrentP)
        return false;
    return QApplication::activePopupWidget() == mMenuP || mMenuP->isVisible();
}

void Dak_EditMenu::forgetCommander(Dak_Commander* commander)
{
    if (!commander || commander != mCurrentP)
        return;
    mCurrentP = nullptr;
    updateActions();
}

void Dak_EditMenu::updateActions()
{
    for (unsigned int command = 0; command < unsigned(mActions.size()); ++command) {
        bool enabled = false;
        QString text;
        // Looked up for every item: a commander may go away while answering.
        Dak_EditMenuCommander* commander = dynamic_cast<Dak_EditMenuCommander*>(mCurrentP);
        const bool known = commander && commander->findCommandStatus(command, enabled, text);
        QAction* action = mActions[int(command)];
        action->setEnabled(known && enabled);
        action->setText(known && !text.isEmpty() ? text : mDefaultTexts[int(command)]);
    }
}

void Dak_EditMenu::obey(unsigned int command)
{
    if (Dak_EditMenuCommander* commander = dynamic_cast<Dak_EditMenuCommander*>(mCurrentP))
        commander->obeyCommand(command);
}
