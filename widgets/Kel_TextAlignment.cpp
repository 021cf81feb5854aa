#include "Kel_TextAlignment.h"

#include <QPainter>
#include <QRect>
#include <QVector>

namespace {

int gAlgorithm = Kel_TextAlignment::kRTLOff;

} // namespace

namespace Kel_TextAlignment {

void setRTLAlgorithm(RTLAlgorithm algorithm)
{
    gAlgorithm = int(algorithm);
}

RTLAlgorithm rtlAlgorithm()
{
    return RTLAlgorithm(gAlgorithm);
}

Qt::LayoutDirection basicDirection(const QString& text)
{
    const bool firstStrongDecides = gAlgorithm == kRTLFirstStrong;
    // By code point, so that letters outside the basic plane count too.
    const QVector<uint> codePoints = text.toUcs4();
    for (uint codePoint : codePoints) {
        switch (QChar::direction(codePoint)) {
        case QChar::DirR:
        case QChar::DirAL:
        case QChar::DirRLE:
        case QChar::DirRLO:
            return Qt::RightToLeft;
        case QChar::DirL:
        case QChar::DirLRE:
        case QChar::DirLRO:
            if (firstStrongDecides)
                return Qt::LeftToRight;
            break;
        default:
            break;
        }
    }
    return Qt::LeftToRight;
}

void drawText(QPainter* painter, const QRect& rect, int flags, const QString& text)
{
    if (!painter)
        return;
    if (gAlgorithm != kRTLOff) {
        const Qt::LayoutDirection direction = basicDirection(text);
        if (painter->layoutDirection() != direction)
            painter->setLayoutDirection(direction);
    }
    painter->drawText(rect, flags, text);
}

} // namespace Kel_TextAlignment
