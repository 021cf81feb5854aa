#ifndef KEL_MENUCOMMANDINTERFACE_H
#define KEL_MENUCOMMANDINTERFACE_H

#include "kelcore_export.h"

#include <QKeySequence>
#include <QString>

class QObject;

// The menu commands of a menu bar, reached by their accelerators. The menu
// bar answers it and the keymap manager asks it, so that keymaps and menus
// know nothing of each other.
class KELCORE_EXPORT Kel_MenuCommandInterface
{
public:
    virtual ~Kel_MenuCommandInterface();

    // The object that answers; a user holds the interface only while it lives.
    virtual QObject* menuCommandOwner() = 0;
    // Runs (after the current event) the enabled command whose accelerator
    // is accelerator; false when there is none or it is disabled.
    virtual bool triggerMenuCommand(const QKeySequence& accelerator) = 0;
    // The text the menu shows for that command; empty when there is none.
    virtual QString menuCommandText(const QKeySequence& accelerator) = 0;
};

#endif
