#ifndef KEL_QTCOMPAT_H
#define KEL_QTCOMPAT_H

// The few places where Qt 5.15 and Qt 6 spell the same thing differently,
// so that the library, its tests and applications built on it keep one
// source for both. Everything else the library uses is common to both
// versions (QStringView rather than QStringRef, QRegularExpression rather
// than QRegExp, QScreen rather than QDesktopWidget,
// QFontMetrics::horizontalAdvance rather than width).

#include <QDropEvent>
#include <QEnterEvent>
#include <QEvent>
#include <QFont>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QPoint>
#include <QtGlobal>
#include <climits>

namespace Kel_QtCompat {

// The event QWidget::enterEvent receives: a plain QEvent in Qt 5, a
// QEnterEvent in Qt 6. Override `void enterEvent(Kel_QtCompat::EnterEvent*)`.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using EnterEvent = QEnterEvent;
#else
using EnterEvent = QEvent;
#endif

// The QFont::ResolveProperties bits the font sets itself rather than
// inheriting them (QFont::resolve() in Qt 5, QFont::resolveMask() in Qt 6).
inline uint fontResolveMask(const QFont& font)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return font.resolveMask();
#else
    return font.resolve();
#endif
}

// Where a drag or drop event happened, in the receiver's coordinates
// (QDropEvent::pos() in Qt 5, position() in Qt 6).
inline QPoint dropPosition(const QDropEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

// The mouse buttons held during a drag or drop event (mouseButtons() in
// Qt 5, buttons() in Qt 6).
inline Qt::MouseButtons dropButtons(const QDropEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->buttons();
#else
    return event->mouseButtons();
#endif
}

// The keyboard modifiers held during a drag or drop event
// (keyboardModifiers() in Qt 5, modifiers() in Qt 6).
inline Qt::KeyboardModifiers dropModifiers(const QDropEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->modifiers();
#else
    return event->keyboardModifiers();
#endif
}

// Sets a font's weight on Qt 5's scale from 0 to 99 (50 normal, 75 bold),
// which Qt 6 keeps as the "legacy" weight beside its own 100 to 900.
// Qt 6 takes the named weight nearest to the old one, as Qt itself maps them.
inline void setLegacyFontWeight(QFont& font, int weight)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    static const int map[][2] = {{0, QFont::Thin},     {12, QFont::ExtraLight}, {25, QFont::Light},
                                 {50, QFont::Normal},  {57, QFont::Medium},     {63, QFont::DemiBold},
                                 {75, QFont::Bold},    {81, QFont::ExtraBold},  {87, QFont::Black}};
    int nearest = QFont::Normal;
    int distance = INT_MAX;
    for (const auto& pair : map) {
        if (qAbs(pair[0] - weight) >= distance)
            break;
        distance = qAbs(pair[0] - weight);
        nearest = pair[1];
    }
    font.setWeight(QFont::Weight(nearest));
#else
    font.setWeight(weight);
#endif
}

// The pixmap a label shows, by value (null without one): Qt 5.15 answers a
// pointer from pixmap() and a value from pixmap(Qt::ReturnByValue), Qt 6 a
// value from pixmap().
inline QPixmap labelPixmap(const QLabel* label)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return label->pixmap();
#else
    return label->pixmap(Qt::ReturnByValue);
#endif
}

// Where a mouse event happened on the screen (globalPos() in Qt 5,
// globalPosition() in Qt 6).
inline QPoint globalMousePosition(const QMouseEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->globalPosition().toPoint();
#else
    return event->globalPos();
#endif
}

} // namespace Kel_QtCompat

#endif
