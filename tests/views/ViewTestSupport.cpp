#include "ViewTestSupport.h"

#include <QPaintEngine>

// Keeps the text items; every other drawing is dropped.
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

TextRecorder::TextRecorder() : mEngine(new Engine(this))
{
}

TextRecorder::~TextRecorder() = default;

QPaintEngine* TextRecorder::paintEngine() const
{
    return mEngine.get();
}

int TextRecorder::metric(PaintDeviceMetric metric) const
{
    // A 400 x 100 screen-like device at 96 dpi.
    switch (metric) {
    case PdmWidth:
        return 400;
    case PdmHeight:
        return 100;
    case PdmWidthMM:
        return 106;
    case PdmHeightMM:
        return 26;
    case PdmNumColors:
        return 0x7fffffff;
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    default: // the resolutions
        return 96;
    }
}
