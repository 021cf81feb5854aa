#ifndef KEL_AUTOALIGNTEXTEDIT_H
#define KEL_AUTOALIGNTEXTEDIT_H

#include "kelcore_export.h"

#include <QTextEdit>

// A text edit whose paragraphs align right when its text is right to left
// under the process-wide rule (Kel_TextAlignment), and left otherwise.
class KELCORE_EXPORT Kel_AutoAlignTextEdit : public QTextEdit
{
    Q_OBJECT

public:
    explicit Kel_AutoAlignTextEdit(QWidget* parent = nullptr);

    // A text without a line break is set as plain text; one with line
    // breaks becomes HTML ("<" escaped, each break a <br>), so that the
    // breaks survive in rich-text fields.
    void setPlainText(const QString& text);

public slots:
    // Aligns every paragraph by the direction of the whole text, when the
    // rule is on; the cursor stays where it was.
    void slotAutoAlign();
};

#endif
