#include "ViewTestSupport.h"

#include "Kel_BlankView.h"

#include <QPaintEngine>

namespace {

// Keeps the text items; every other drawing is dropped.
class Engine : public QPaintEngine
{
public:
    explicit Engine(TextRecorder* recorder) : QPaintEngine(QPaintEngine::AllFeatures), mRecorder(recorder) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return QPaintEngine::User; }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF& p, const QTextItem& item) override
    {
        mRecorder->drawn.push_back({item.text(), painter()->transform().map(p), painter()->pen().color(), item.font()});
    }

private:
    TextRecorder* mRecorder;
};

} // namespace

TextRecorder::TextRecorder() : mEngine(new Engine(this)) {}

TextRecorder::~TextRecorder() = default;

int TextRecorder::metric(PaintDeviceMetric m) const
{
    return m == PdmWidth ? 400 : m == PdmHeight ? 100 : m == PdmDepth ? 32 : m == PdmDevicePixelRatio ? 1
        : m == PdmNumColors ? 0x7fffffff : 96; // the resolutions and the millimetre sizes
}

std::vector<TextRecorder::Text> drawTexts(Kel_ViewInterface& view)
{
    TextRecorder device;
    QPainter painter(&device);
    painter.setPen(Qt::blue);
    view.drawContents(&painter, view.getLocalDrawingRect());
    painter.end();
    return device.drawn;
}

QStringList stackLayout(const Kel_StackViewBase& stack)
{
    QStringList result;
    for (int i = 0; i < stack.count(); ++i)
        result << stack.viewAt(i)->getName() + QLatin1Char(' ') + rectText(stack.viewAt(i)->getRectInParent());
    return result;
}

Kel_ViewInterface* namedBlank(const QString& name, int width, int height)
{
    auto* view = new Kel_BlankView(QSize(width, height));
    view->setName(name);
    return view;
}
