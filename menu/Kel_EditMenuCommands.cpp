#include "Kel_EditMenuCommands.h"

#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QTextDocument>
#include <QTextEdit>

namespace Kel_EditMenuCommands {

bool lineEditStatus(const QLineEdit* edit, unsigned int command, bool& enabled)
{
    const bool writable = !edit->isReadOnly();
    switch (command) {
    case Dak_EditMenuCommander::kUndo:
        enabled = edit->isUndoAvailable();
        return true;
    case Dak_EditMenuCommander::kRedo:
        enabled = edit->isRedoAvailable();
        return true;
    case Dak_EditMenuCommander::kCut:
    case Dak_EditMenuCommander::kDelete:
        enabled = writable && edit->hasSelectedText();
        return true;
    case Dak_EditMenuCommander::kCopy:
        enabled = edit->hasSelectedText();
        return true;
    case Dak_EditMenuCommander::kPaste:
        enabled = writable;
        return true;
    case Dak_EditMenuCommander::kSelectAll:
        enabled = !edit->text().isEmpty();
        return true;
    default:
        return false;
    }
}

void obeyLineEdit(QLineEdit* edit, unsigned int command)
{
    switch (command) {
    case Dak_EditMenuCommander::kUndo: edit->undo(); break;
    case Dak_EditMenuCommander::kRedo: edit->redo(); break;
    case Dak_EditMenuCommander::kCut: edit->cut(); break;
    case Dak_EditMenuCommander::kCopy: edit->copy(); break;
    case Dak_EditMenuCommander::kPaste: edit->paste(); break;
    case Dak_EditMenuCommander::kDelete: edit->del(); break;
    case Dak_EditMenuCommander::kSelectAll: edit->selectAll(); break;
    default: break;
    }
}

bool textEditStatus(const QTextEdit* edit, unsigned int command, bool& enabled)
{
    const bool writable = !edit->isReadOnly();
    const bool selection = edit->textCursor().hasSelection();
    switch (command) {
    case Dak_EditMenuCommander::kUndo:
        enabled = edit->document()->isUndoAvailable();
        return true;
    case Dak_EditMenuCommander::kRedo:
        enabled = edit->document()->isRedoAvailable();
        return true;
    case Dak_EditMenuCommander::kCut:
    case Dak_EditMenuCommander::kDelete:
        enabled = writable && selection;
        return true;
    case Dak_EditMenuCommander::kCopy:
        enabled = selection;
        return true;
    case Dak_EditMenuCommander::kPaste:
        enabled = writable;
        return true;
    case Dak_EditMenuCommander::kSelectAll:
        enabled = !edit->toPlainText().isEmpty();
        return true;
    default:
        return false;
    }
}

void obeyTextEdit(QTextEdit* edit, unsigned int command, bool deleteSelection)
{
    switch (command) {
    case Dak_EditMenuCommander::kUndo: edit->document()->undo(); break;
    case Dak_EditMenuCommander::kRedo: edit->document()->redo(); break;
    case Dak_EditMenuCommander::kCut: edit->cut(); break;
    case Dak_EditMenuCommander::kCopy: edit->copy(); break;
    case Dak_EditMenuCommander::kPaste: edit->paste(); break;
    case Dak_EditMenuCommander::kDelete:
        if (deleteSelection) {
            QTextCursor cursor = edit->textCursor();
            cursor.removeSelectedText();
            edit->setTextCursor(cursor);
        }
        break;
    case Dak_EditMenuCommander::kSelectAll: edit->selectAll(); break;
    default: break;
    }
}

void focusIn(Dak_Commander* commander)
{
    Dak_EditMenu::instance().focusInEvent(commander);
}

bool swallowsFocusOut(Dak_Commander* commander, const QFocusEvent* event)
{
    return Dak_EditMenu::instance().isFocusOutEvent(commander, event->reason() == Qt::PopupFocusReason);
}

} // namespace Kel_EditMenuCommands
