#ifndef KEL_LINEEDITPOPUP_H
#define KEL_LINEEDITPOPUP_H

#include "kelcore_export.h"

#include "Kel_LineEdit.h"

#include <QRect>
#include <QString>

// An in-place editor: a Kel_LineEdit shown over a rectangle of its parent
// (a list row, a label) to change one text. Enter, Return or leaving the
// field accept the text; Escape throws it away. Either way it hides itself.
// The Edit menu works on it while it is open, without closing it.
class KELCORE_EXPORT Kel_LineEditPopup : public Kel_LineEdit
{
    Q_OBJECT

public:
    explicit Kel_LineEditPopup(QWidget* parent = nullptr, const char* name = nullptr);

    // Shows the field over rect (parent coordinates) holding text, all of
    // it selected, and gives it the focus.
    void popup(const QRect& rect, const QString& text);
    bool isOpen() const { return mOpen; }

signals:
    // The edit ended with text accepted.
    void accepted(const QString& text);
    // The edit was cancelled.
    void rejected();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void finish(bool accept);

    bool mOpen;
};

#endif
