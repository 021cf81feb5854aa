#ifndef DAK_EDITMENUCOMMANDER_H
#define DAK_EDITMENUCOMMANDER_H

#include "kelplatform_export.h"

#include "Dak_Commander.h"

#include <QString>

// A commander that understands the Edit menu's commands.
class KELPLATFORM_EXPORT Dak_EditMenuCommander : public Dak_Commander
{
public:
    enum { kUndo = 0, kRedo, kCut, kCopy, kPaste, kDelete, kSelectAll, kCommandCount };

    // Says whether command is available now. False: the command is unknown
    // here (its menu item is disabled). A non-empty text replaces the item's
    // text while the menu is shown (e.g. "Undo Typing").
    virtual bool findCommandStatus(unsigned int command, bool& enabled, QString& text) = 0;
    // Carries out command (one of the k... codes).
    virtual void obeyCommand(unsigned int command) = 0;
};

#endif
