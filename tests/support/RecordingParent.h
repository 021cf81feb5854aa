// A view parent that records what its children ask of it; for the tests of
// the view library (they link KelCore, the model library's tests do not).
#ifndef RECORDINGPARENT_H
#define RECORDINGPARENT_H

#include "Kel_ViewContainerInterface.h"
#include "Kel_ViewInterface.h"

#include <QRect>
#include <QStringList>

inline QString rectText(const QRect& r)
{
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// Logs "size Name WxH from wxh", "bits Name x,y wxh[ now]", "column Name" and
// "overlay Name x,y"; answers bridge as its bridge widget.
class RecordingParent : public Kel_ViewContainerInterface
{
public:
    void childSizeChanged(Kel_ViewInterface* child, QSize n, QSize o) override
    {
        log << QStringLiteral("size %1 %2x%3 from %4x%5").arg(child->getName()).arg(n.width()).arg(n.height())
                   .arg(o.width()).arg(o.height());
    }
    void childInsertedRow(Kel_ViewInterface*, int, int) override {}
    void childDeletedRow(Kel_ViewInterface*, int, int) override {}
    void childInsertedColumn(Kel_ViewInterface* child) override { log << QStringLiteral("column ") + child->getName(); }
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool now) override
    {
        log << QStringLiteral("bits %1 %2%3").arg(child->getName(), rectText(rect), now ? " now" : "");
    }
    QWidget* getBridgeWidget() override { return bridge; }
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget*, int x, int y) override
    {
        log << QStringLiteral("overlay %1 %2,%3").arg(child->getName()).arg(x).arg(y);
    }
    void removeView(Kel_ViewInterface*) override {}
    QStringList log;
    QWidget* bridge = nullptr; // not owned
};

#endif
