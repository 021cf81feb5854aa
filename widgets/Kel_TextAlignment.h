#ifndef KEL_TEXTALIGNMENT_H
#define KEL_TEXTALIGNMENT_H

#include "kelcore_export.h"

#include <QString>
#include <Qt>

class QPainter;
class QRect;

// The process-wide rule that makes right-to-left text (Hebrew, Arabic)
// right-aligned by itself, and the helpers that apply it.
namespace Kel_TextAlignment {

// How a text's direction is found.
enum RTLAlgorithm
{
    kRTLOff = 0,            // never: texts keep the widget's direction
    kRTLFirstStrong = 1,    // the first strongly directed character decides
    kRTLAnyRightToLeft = 2  // any right-to-left character makes the text right to left
};

// Sets the rule for every widget of the process (off until set).
KELCORE_EXPORT void setRTLAlgorithm(RTLAlgorithm algorithm);
KELCORE_EXPORT RTLAlgorithm rtlAlgorithm();

// The direction of text under the current rule; left to right when empty
// or when nothing decides.
KELCORE_EXPORT Qt::LayoutDirection basicDirection(const QString& text);

// Draws text with flags in rect; unless the rule is off, in the painter
// layout direction of the text.
KELCORE_EXPORT void drawText(QPainter* painter, const QRect& rect, int flags, const QString& text);

} // namespace Kel_TextAlignment

#endif
