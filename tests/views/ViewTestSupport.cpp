#include "ViewTestSupport.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>

int ProbeView::sDestroyed = 0;

QString rectText(const QRect& r)
{
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

ProbeView::ProbeView(const QString& name, const QRect& rectInParent, long zOrder, QStringList* log) : log(log)
{
    setName(name);
    setRectInParent(rectInParent);
    setZOrder(zOrder);
}

ProbeView::~ProbeView()
{
    ++sDestroyed;
}

void ProbeView::note(const char* what, const QPoint& local)
{
    if (log)
        *log << QStringLiteral("%1 %2 %3,%4").arg(QLatin1String(what), getName()).arg(local.x()).arg(local.y());
}

void ProbeView::drawContents(QPainter* painter, const QRect& rect)
{
    if (log)
        *log << QStringLiteral("paint %1 %2").arg(getName(), rectText(rect));
    if (fill.isValid())
        painter->fillRect(getLocalDrawingRect(), fill);
}

void ProbeView::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    note("press", local);
    event->setAccepted(takesMouse);
}

void ProbeView::mouseReleaseEvent(QMouseEvent* event, const QPoint& local)
{
    note("release", local);
    event->setAccepted(takesMouse);
}

void ProbeView::mouseMoveEvent(QMouseEvent* event, const QPoint& local)
{
    note("move", local);
    event->setAccepted(takesMouse);
}

void ProbeView::mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local)
{
    note("double", local);
    event->setAccepted(takesMouse);
}

void ProbeView::keyPressEvent(QKeyEvent* event)
{
    if (log)
        *log << QStringLiteral("key %1 %2").arg(getName(), event->text());
    event->setAccepted(takesKeys);
}

void ProbeView::dragEnterEvent(QDragEnterEvent* event, const QPoint& local)
{
    note("enter", local);
    event->setAccepted(takesDrags);
}

void ProbeView::dragMoveEvent(QDragMoveEvent* event, const QPoint& local)
{
    note("dragmove", local);
    event->setAccepted(takesDrags);
}

void ProbeView::dragLeaveEvent(QDragLeaveEvent*, const QPoint&)
{
    if (log)
        *log << QStringLiteral("leave %1").arg(getName());
}

void ProbeView::dropEvent(QDropEvent* event, const QPoint& local)
{
    note("drop", local);
    event->setAccepted(takesDrags);
}

bool ProbeView::getToolTip(const QPoint&, QRect* oTipRect, QString* oTipString)
{
    if (tip.isEmpty())
        return false;
    *oTipRect = getLocalDrawingRect();
    *oTipString = tip;
    return true;
}

void RecordingParent::childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize)
{
    log << QStringLiteral("size %1 %2x%3 from %4x%5")
               .arg(child->getName())
               .arg(newSize.width())
               .arg(newSize.height())
               .arg(oldSize.width())
               .arg(oldSize.height());
}

void RecordingParent::childInsertedColumn(Kel_ViewInterface* child)
{
    log << QStringLiteral("column %1").arg(child ? child->getName() : QString());
}

void RecordingParent::childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate)
{
    log << QStringLiteral("bits %1 %2%3").arg(child->getName(), rectText(rect), immediate ? " now" : "");
}

void RecordingParent::overlayChildEditWidget(Kel_ViewInterface* child, QWidget*, int x, int y)
{
    log << QStringLiteral("overlay %1 %2,%3").arg(child->getName()).arg(x).arg(y);
}

AssertLog::AssertLog()
    : mPrevious(Ost_Assert::setHandler([this](const QString& condition, const QString& file, int) {
          reports << condition + QStringLiteral(" @ ") + QFileInfo(file).completeBaseName();
      }))
{
}

AssertLog::~AssertLog()
{
    Ost_Assert::setHandler(mPrevious);
}

// Keeps only text; everything else is dropped.
class TextRecorder::Engine : public QPaintEngine
{
public:
    explicit Engine(TextRecorder* recorder) : QPaintEngine(QPaintEngine::AllFeatures), mRecorder(recorder) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return QPaintEngine::User; }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}
    void drawRects(const QRectF*, int) override {}
    void drawRects(const QRect*, int) override {}
    void drawLines(const QLineF*, int) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF& p, const QTextItem& item) override
    {
        mRecorder->drawn.push_back({item.text(), painter()->transform().map(p), painter()->pen().color(), item.font()});
    }

private:
    TextRecorder* mRecorder;
};

TextRecorder::TextRecorder(const QSize& size) : mEngine(new Engine(this)), mSize(size)
{
}

TextRecorder::~TextRecorder() = default;

QPaintEngine* TextRecorder::paintEngine() const
{
    return mEngine.get();
}

QStringList TextRecorder::texts() const
{
    QStringList result;
    for (const Text& t : drawn)
        result << t.text;
    return result;
}

int TextRecorder::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return mSize.width();
    case PdmHeight:
        return mSize.height();
    case PdmWidthMM:
        return mSize.width() * 254 / 960;
    case PdmHeightMM:
        return mSize.height() * 254 / 960;
    case PdmNumColors:
        return 0x7fffffff;
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return 96;
    case PdmDevicePixelRatio:
        return 1;
    default:
        return QPaintDevice::metric(metric);
    }
}
