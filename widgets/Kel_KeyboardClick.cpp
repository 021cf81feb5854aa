#include "Kel_KeyboardClick_p.h"

#include "Kel_ViewAccessibility.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWidget>

namespace {

// The focus frame: drawn over the button, letting every click through.
class FocusFrame : public QWidget
{
public:
    explicit FocusFrame(QWidget* parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

} // namespace

void Kel_KeyboardClick::install(QWidget* widget)
{
    // Screen readers see these widgets through the library's factory.
    Kel_ViewAccessibility::install();
    if (widget)
        new Kel_KeyboardClick(widget);
}

// The focus frame is made at the first focus-in: most buttons of a form
// never get the focus, and a child widget for each would cost as much again
// as the button's own construction.
Kel_KeyboardClick::Kel_KeyboardClick(QWidget* widget) : QObject(widget), mWidgetP(widget), mFrameP(nullptr)
{
    if (widget->focusPolicy() == Qt::NoFocus)
        widget->setFocusPolicy(Qt::TabFocus);
    widget->installEventFilter(this);
}

namespace {

void sendMouse(QWidget* widget, QEvent::Type type)
{
    const QPoint centre = widget->rect().center();
    const bool press = type == QEvent::MouseButtonPress;
    QMouseEvent event(type, QPointF(centre), QPointF(widget->mapToGlobal(centre)), Qt::LeftButton,
                      press ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

} // namespace

void Kel_KeyboardClick::send(int type)
{
    sendMouse(mWidgetP, QEvent::Type(type));
}

void Kel_KeyboardClick::click(QWidget* widget)
{
    if (!widget)
        return;
    const QPointer<QWidget> alive(widget);
    sendMouse(widget, QEvent::MouseButtonPress);
    if (alive) // the press may have deleted it
        sendMouse(widget, QEvent::MouseButtonRelease);
}

bool Kel_KeyboardClick::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != mWidgetP)
        return false;
    switch (event->type()) {
    case QEvent::FocusIn:
        if (!mFrameP)
            mFrameP = new FocusFrame(mWidgetP);
        mFrameP->setGeometry(mWidgetP->rect());
        mFrameP->show();
        mFrameP->raise();
        break;
    case QEvent::FocusOut:
        if (mFrameP)
            mFrameP->hide();
        if (mSpaceHeld) { // the press must not outlive the focus
            mSpaceHeld = false;
            send(QEvent::MouseButtonRelease);
        }
        break;
    case QEvent::Resize:
        if (mFrameP)
            mFrameP->setGeometry(mWidgetP->rect());
        break;
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & ~(Qt::KeypadModifier))
            return false;
        if (key->key() == Qt::Key_Space) {
            if (!key->isAutoRepeat() && !mSpaceHeld) {
                mSpaceHeld = true;
                send(QEvent::MouseButtonPress);
            }
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            click(mWidgetP);
            return true;
        }
        return false;
    }
    case QEvent::KeyRelease: {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Space || key->isAutoRepeat())
            return false;
        if (mSpaceHeld) {
            mSpaceHeld = false;
            send(QEvent::MouseButtonRelease);
        }
        return true;
    }
    default:
        break;
    }
    return false;
}
