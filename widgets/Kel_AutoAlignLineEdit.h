#ifndef KEL_AUTOALIGNLINEEDIT_H
#define KEL_AUTOALIGNLINEEDIT_H

#include "kelcore_export.h"

#include <QLineEdit>

// A line edit whose layout direction follows its text under the process-wide
// right-to-left rule (Kel_TextAlignment), so Hebrew or Arabic text sits on
// the right by itself.
class KELCORE_EXPORT Kel_AutoAlignLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit Kel_AutoAlignLineEdit(QWidget* parent = nullptr);

public slots:
    // Sets the layout direction of text when the rule is on and it differs.
    void slotAutoAlign(const QString& text);
};

#endif
