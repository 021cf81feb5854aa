#include "Kel_LineEditPopup.h"

#include "Kel_EditMenuCommands.h"
#include "Kel_WhatsThis.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>

Kel_LineEditPopup::Kel_LineEditPopup(QWidget* parent, const char* name)
    : Kel_LineEdit(parent, QString::fromLatin1(name)), mOpen(false)
{
    hide();
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_LineEditPopup");
}

void Kel_LineEditPopup::popup(const QRect& rect, const QString& text)
{
    setGeometry(rect);
    setText(text);
    selectAll();
    mOpen = true;
    show();
    raise();
    setFocus(Qt::OtherFocusReason);
}

void Kel_LineEditPopup::keyPressEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (mOpen && (modifiers == Qt::NoModifier || modifiers == Qt::KeypadModifier)) {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            finish(true);
            return;
        case Qt::Key_Escape:
            finish(false);
            return;
        default:
            break;
        }
    }
    Kel_LineEdit::keyPressEvent(event);
}

void Kel_LineEditPopup::focusOutEvent(QFocusEvent* event)
{
    // The Edit menu opening over the field is not the end of the edit.
    const bool keptByEditMenu = Kel_EditMenuCommands::swallowsFocusOut(this, event);
    QPointer<Kel_LineEditPopup> self(this);
    Kel_LineEdit::focusOutEvent(event);
    if (self && !keptByEditMenu)
        finish(true);
}

void Kel_LineEditPopup::finish(bool accept)
{
    if (!mOpen)
        return;
    mOpen = false;
    const QString result = text();
    QPointer<Kel_LineEditPopup> self(this);
    hide();
    if (!self)
        return;
    if (accept)
        emit accepted(result);
    else
        emit rejected();
}
