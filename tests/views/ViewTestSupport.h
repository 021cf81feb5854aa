// Probes shared by the view and bridge tests.
#ifndef VIEWTESTSUPPORT_H
#define VIEWTESTSUPPORT_H

#include "Kel_ViewBase.h"
#include "Kel_ViewContainerInterface.h"
#include "Ost_Assert.h"
#include "TestSupport.h"

#include <QColor>
#include <QFont>
#include <QPaintDevice>
#include <QStringList>
#include <memory>
#include <vector>

// A view that logs what reaches it ("press A 3,4") into a shared log and
// takes or leaves events as told. Counts its destructions.
class ProbeView : public Kel_ViewBase
{
public:
    ProbeView(const QString& name, const QRect& rectInParent, long zOrder = 0, QStringList* log = nullptr);
    ~ProbeView() override;

    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override { return new ProbeView(*this); }
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseMoveEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event, const QPoint& local) override;
    void dragMoveEvent(QDragMoveEvent* event, const QPoint& local) override;
    void dragLeaveEvent(QDragLeaveEvent* event, const QPoint& local) override;
    void dropEvent(QDropEvent* event, const QPoint& local) override;
    bool getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString) override;

    bool takesMouse = true;
    bool takesKeys = true;
    bool takesDrags = true;
    QString tip;        // answered for the whole view when not empty
    QColor fill;        // painted over the whole view when valid
    QStringList* log;   // not owned
    static int sDestroyed;

private:
    void note(const char* what, const QPoint& local);
};

// A parent that records what its children ask of it.
class RecordingParent : public Kel_ViewContainerInterface
{
public:
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void childInsertedRow(Kel_ViewInterface*, int, int) override {}
    void childDeletedRow(Kel_ViewInterface*, int, int) override {}
    void childInsertedColumn(Kel_ViewInterface* child) override;
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override;
    QWidget* getBridgeWidget() override { return nullptr; }
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) override;
    void removeView(Kel_ViewInterface*) override {}
    QStringList log;
};

// Records the failed assertions' conditions with their file's base name.
class AssertLog
{
public:
    AssertLog();
    ~AssertLog();
    QStringList reports;

private:
    Ost_Assert::Handler mPrevious;
    DebugMessageCollector mQuiet;
};

// A paint device that records the texts drawn on it, where (device
// coordinates, baseline start), in which pen colour and font.
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

    explicit TextRecorder(const QSize& size = QSize(400, 100));
    ~TextRecorder() override;
    QPaintEngine* paintEngine() const override;
    QStringList texts() const;

    std::vector<Text> drawn;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    std::unique_ptr<Engine> mEngine;
    QSize mSize;
};

QString rectText(const QRect& r);

#endif
