#ifndef KEL_KEYBOARDCLICK_P_H
#define KEL_KEYBOARDCLICK_P_H

// Internal to the library; not installed.

#include <QObject>

class QWidget;

// Lets the keyboard work a painted button that only knows the mouse: the
// widget is reached by Tab (a click still leaves the focus where it was),
// Space held or Return pressed sends it a left press and release at its
// centre, exactly what a click does (auto-repeat included while Space is
// held), and a dotted frame shows while it has the focus. Owned by the widget.
class Kel_KeyboardClick : public QObject
{
public:
    // Installs itself on widget, as its child.
    static void install(QWidget* widget);
    // A left press and release at the widget's centre: what a click does.
    static void click(QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit Kel_KeyboardClick(QWidget* widget);
    void send(int type);

    QWidget* mWidgetP; // the parent
    QWidget* mFrameP;  // a child of the widget, owned by it; made at the first focus-in
    bool mSpaceHeld = false;
};

#endif
