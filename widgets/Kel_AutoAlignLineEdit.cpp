#include "Kel_AutoAlignLineEdit.h"

#include "Kel_TextAlignment.h"

Kel_AutoAlignLineEdit::Kel_AutoAlignLineEdit(QWidget* parent) : QLineEdit(parent)
{
    connect(this, SIGNAL(textChanged(const QString&)), this, SLOT(slotAutoAlign(const QString&)));
}

void Kel_AutoAlignLineEdit::slotAutoAlign(const QString& text)
{
    if (Kel_TextAlignment::rtlAlgorithm() == Kel_TextAlignment::kRTLOff)
        return;
    const Qt::LayoutDirection direction = Kel_TextAlignment::basicDirection(text);
    if (layoutDirection() != direction)
        setLayoutDirection(direction);
}
