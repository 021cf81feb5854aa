#include "Kel_AutoAlignTextEdit.h"

#include "Kel_TextAlignment.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

// Aligning changes the document, which reports a text change again; one
// alignment at a time in the whole process.
bool gAligning = false;

} // namespace

Kel_AutoAlignTextEdit::Kel_AutoAlignTextEdit(QWidget* parent) : QTextEdit(parent)
{
    connect(this, SIGNAL(textChanged()), this, SLOT(slotAutoAlign()));
}

void Kel_AutoAlignTextEdit::setPlainText(const QString& text)
{
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\n|\r"));
    if (!text.contains(lineBreak)) {
        QTextEdit::setPlainText(text);
        return;
    }
    QString html = text;
    html.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    html.replace(lineBreak, QStringLiteral("<br>"));
    setHtml(html);
}

void Kel_AutoAlignTextEdit::slotAutoAlign()
{
    if (Kel_TextAlignment::rtlAlgorithm() == Kel_TextAlignment::kRTLOff || gAligning)
        return;
    // Absolute: a paragraph of right-to-left letters would otherwise take
    // "right" as its leading side, which is visually the left.
    const Qt::Alignment wanted =
        Qt::AlignAbsolute
        | (Kel_TextAlignment::basicDirection(toPlainText()) == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    gAligning = true;
    const QTextCursor saved = textCursor();
    QTextCursor cursor(document());
    bool editing = false;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if ((block.blockFormat().alignment() & Qt::AlignHorizontal_Mask) == wanted)
            continue;
        if (!editing) {
            // Part of the edit that caused it, so one undo takes both back.
            cursor.joinPreviousEditBlock();
            editing = true;
        }
        cursor.setPosition(block.position());
        QTextBlockFormat format;
        format.setAlignment(wanted);
        cursor.mergeBlockFormat(format);
    }
    if (editing) {
        cursor.endEditBlock();
        if (textCursor() != saved)
            setTextCursor(saved);
    }
    gAligning = false;
}
