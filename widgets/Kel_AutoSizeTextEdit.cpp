#include "Kel_AutoSizeTextEdit.h"

#include "Kel_EditMenuCommands.h"
#include "Kel_WhatsThis.h"

#include <QAbstractTextDocumentLayout>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QTextDocument>

Kel_AutoSizeTextEdit::Kel_AutoSizeTextEdit(QWidget* parent, const char* name)
    : Kel_AutoAlignTextEdit(parent), mClearSelectionOnClick(false)
{
    setObjectName(QString::fromLatin1(name));
    connect(document()->documentLayout(), SIGNAL(documentSizeChanged(const QSizeF&)), this,
            SLOT(docSizeChanged(const QSizeF&)));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_AutoSizeTextEdit");
    setFocusPolicy(Qt::StrongFocus);
}

int Kel_AutoSizeTextEdit::contentsHeight() const
{
    const QTextDocument* doc = document();
    if (!doc || !doc->documentLayout())
        return height();
    return int(doc->documentLayout()->documentSize().height()) + 4;
}

QSize Kel_AutoSizeTextEdit::sizeHint() const
{
    return QSize(QAbstractScrollArea::sizeHint().width(), contentsHeight());
}

QSize Kel_AutoSizeTextEdit::minimumSizeHint() const
{
    return QSize(QAbstractScrollArea::minimumSizeHint().width(), contentsHeight());
}

bool Kel_AutoSizeTextEdit::findCommandStatus(unsigned int command, bool& enabled, QString&)
{
    return Kel_EditMenuCommands::textEditStatus(this, command, enabled);
}

void Kel_AutoSizeTextEdit::obeyCommand(unsigned int command)
{
    Kel_EditMenuCommands::obeyTextEdit(this, command, true);
}

bool Kel_AutoSizeTextEdit::findPoi(const QString& dottedName, QRect* globalRect)
{
    if (!dottedName.isEmpty() && dottedName != objectName())
        return false;
    if (globalRect)
        *globalRect = QRect(mapToGlobal(QPoint(0, 0)), size());
    return true;
}

void Kel_AutoSizeTextEdit::docSizeChanged(const QSizeF&)
{
    updateGeometry();
    emit autoSized();
}

void Kel_AutoSizeTextEdit::resizeEvent(QResizeEvent* event)
{
    Kel_AutoAlignTextEdit::resizeEvent(event);
    updateGeometry();
}

void Kel_AutoSizeTextEdit::mousePressEvent(QMouseEvent* event)
{
    if (mClearSelectionOnClick && event->button() == Qt::LeftButton && !(event->modifiers() & Qt::ShiftModifier)
        && textCursor().hasSelection()) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
    }
    Kel_AutoAlignTextEdit::mousePressEvent(event);
}

void Kel_AutoSizeTextEdit::focusInEvent(QFocusEvent* event)
{
    Kel_AutoAlignTextEdit::focusInEvent(event);
    Kel_EditMenuCommands::focusIn(this);
}

void Kel_AutoSizeTextEdit::focusOutEvent(QFocusEvent* event)
{
    if (!Kel_EditMenuCommands::swallowsFocusOut(this, event))
        Kel_AutoAlignTextEdit::focusOutEvent(event);
}
