#ifndef KEL_QTCOMPAT_H
#define KEL_QTCOMPAT_H

// The few places where Qt 5.15 and Qt 6 spell the same thing differently,
// so that the library, its tests and applications built on it keep one
// source for both. Everything else the library uses is common to both
// versions (QStringView rather than QStringRef, QRegularExpression rather
// than QRegExp, QScreen rather than QDesktopWidget,
// QFontMetrics::horizontalAdvance rather than width).

#include <QEnterEvent>
#include <QEvent>
#include <QFont>
#include <QtGlobal>

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

} // namespace Kel_QtCompat

#endif
