// Probes shared by the view and bridge tests.
#ifndef VIEWTESTSUPPORT_H
#define VIEWTESTSUPPORT_H

#include "Kel_BridgeQWidget.h"
#include "Kel_ContainerViewBase.h"
#include "Kel_StackViewBase.h"
#include "RecordingParent.h"
#include "TestSupport.h"

#include <QColor>
#include <QDragEnterEvent>
#include <QFont>
#include <QPainter>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

// A view that logs what reaches it ("press A 3,4") into a shared log and
// takes or leaves events as told. Counts its destructions.
class ProbeView : public Kel_ViewBase
{
public:
    ProbeView(const QString& name, const QRect& rectInParent, long zOrder = 0, QStringList* log = nullptr) : log(log)
    {
        setName(name);
        setRectInParent(rectInParent);
        setZOrder(zOrder);
    }
    ~ProbeView() override { ++sDestroyed; }

    void drawContents(QPainter* painter, const QRect& rect) override
    {
        note(QStringLiteral("paint %1 %2").arg(getName(), rectText(rect)));
        if (fill.isValid())
            painter->fillRect(getLocalDrawingRect(), fill);
    }
    Kel_ViewInterface* clone() override { return new ProbeView(*this); }
    void mousePressEvent(QMouseEvent* e, const QPoint& p) override { take(e, "press", p, takesMouse); }
    void mouseReleaseEvent(QMouseEvent* e, const QPoint& p) override { take(e, "release", p, takesMouse); }
    void mouseMoveEvent(QMouseEvent* e, const QPoint& p) override { take(e, "move", p, takesMouse); }
    void dragEnterEvent(QDragEnterEvent* e, const QPoint& p) override { take(e, "enter", p, takesDrags); }
    void dragMoveEvent(QDragMoveEvent* e, const QPoint& p) override { take(e, "dragmove", p, takesDrags); }
    void dragLeaveEvent(QDragLeaveEvent*, const QPoint&) override { note(QStringLiteral("leave ") + getName()); }
    void keyPressEvent(QKeyEvent* e) override
    {
        note(QStringLiteral("key %1 %2").arg(getName(), e->text()));
        e->setAccepted(takesKeys);
    }
    bool getToolTip(const QPoint&, QRect* oTipRect, QString* oTipString) override
    {
        *oTipRect = getLocalDrawingRect();
        *oTipString = tip;
        return !tip.isEmpty();
    }

    bool takesMouse = true;
    bool takesKeys = true;
    bool takesDrags = true;
    QString tip;      // answered for the whole view when not empty
    QColor fill;      // painted over the whole view when valid
    QStringList* log; // not owned
    static inline int sDestroyed = 0;

private:
    void note(const QString& line)
    {
        if (log)
            *log << line;
    }
    void take(QEvent* e, const char* what, const QPoint& p, bool takes)
    {
        note(QStringLiteral("%1 %2 %3,%4").arg(QLatin1String(what), getName()).arg(p.x()).arg(p.y()));
        e->setAccepted(takes);
    }
};

// A container named "Panel" of the given size in a plain bridge named
// "Bridge" in a shown window of that size.
struct HostedPanel
{
    explicit HostedPanel(const QSize& size = QSize(200, 100))
    {
        bridge = new Kel_BridgeQWidget(&window, "Bridge");
        panel = new Kel_ContainerViewBase;
        panel->setName(QStringLiteral("Panel"));
        panel->setSize(size);
        bridge->setChild(panel);
        window.resize(size);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    ProbeView* add(const QString& name, const QRect& rect, long z = 0)
    {
        auto* view = new ProbeView(name, rect, z, &log);
        panel->AddSubView(view);
        return view;
    }
    QWidget window;
    Kel_BridgeQWidget* bridge;
    Kel_ContainerViewBase* panel;
    QStringList log;
};

// A 400 x 100 paint device at 96 dpi that records the texts drawn on it: where
// (device coordinates, start of the baseline), in which pen colour and font.
class TextRecorder : public QPaintDevice
{
public:
    struct Text
    {
        QString text;
        QPointF position;
        QColor color;
        QFont font;
    };
    TextRecorder();
    ~TextRecorder() override;
    QPaintEngine* paintEngine() const override { return mEngine.get(); }
    std::vector<Text> drawn;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    std::unique_ptr<QPaintEngine> mEngine;
};

// Draws view on a recording device with a blue pen; answers what was drawn.
std::vector<TextRecorder::Text> drawTexts(Kel_ViewInterface& view);

// Each laid-out view of a stack as "Name x,y wxh", in index order.
QStringList stackLayout(const Kel_StackViewBase& stack);
// A blank view of that name and size.
Kel_ViewInterface* namedBlank(const QString& name, int width, int height);

#endif
