#ifndef KEL_EDITMENUCOMMANDS_H
#define KEL_EDITMENUCOMMANDS_H

#include "kelcore_export.h"

class Dak_Commander;
class QFocusEvent;
class QLineEdit;
class QTextEdit;

// What the application's Edit menu (Dak_EditMenu) asks of the library's text
// widgets, written once for line edits and text edits: whether a command
// (a Dak_EditMenuCommander code) is available now, carrying it out, and the
// focus hooks that make a widget the menu's target.
namespace Kel_EditMenuCommands {

// The status of command on edit; false for an unknown code (enabled untouched).
KELCORE_EXPORT bool lineEditStatus(const QLineEdit* edit, unsigned int command, bool& enabled);
// Carries out command on edit; unknown codes do nothing.
KELCORE_EXPORT void obeyLineEdit(QLineEdit* edit, unsigned int command);

// The same for a multi-line edit; undo and redo are its document's.
KELCORE_EXPORT bool textEditStatus(const QTextEdit* edit, unsigned int command, bool& enabled);
// Carries out command on edit; delete removes the selection only when
// deleteSelection is set (Kel_TextEdit reports delete but leaves it undone).
KELCORE_EXPORT void obeyTextEdit(QTextEdit* edit, unsigned int command, bool deleteSelection);

// After the base focus-in handling: commander becomes the Edit menu's target.
KELCORE_EXPORT void focusIn(Dak_Commander* commander);
// Whether the Edit menu swallows this focus loss of commander (it is the
// menu opening over it): the base focus-out handling must then not run.
KELCORE_EXPORT bool swallowsFocusOut(Dak_Commander* commander, const QFocusEvent* event);

} // namespace Kel_EditMenuCommands

#endif
