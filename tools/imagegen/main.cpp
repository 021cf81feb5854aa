// kel_imagegen: draws the images of the demo's image buttons, slider and
// monitor, each at 1x ("name.png") and 2x ("name@2x.png", which Qt's
// image loaders take on high-density screens).
//
//   kel_imagegen OUTPUT_DIR   writes the images below OUTPUT_DIR (the demo's Images/ folder)
//   kel_imagegen --list       prints the relative names it would write, one per line
#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>
#include <functional>
#include <vector>

namespace {

// One image: its name below Images/, its size at 1x and how to draw it.
struct Drawing
{
    QString name;
    QSize size;
    std::function<void(QPainter&, const QRectF&)> draw;
};

enum ButtonState
{
    kOff,
    kOn,
    kOffTracking,
    kOnTracking,
    kDisabled
};
const char* const kStateSuffixes[] = {"_off", "_on", "_offtracking", "_ontracking", "_disabled"};

// The face of a round-cornered button; "on" is lit in accent, a pressed
// (tracking) button is darker and sunk by a pixel, a disabled one flat.
void drawFace(QPainter& p, const QRectF& r, ButtonState state, const QColor& accent)
{
    const bool on = state == kOn || state == kOnTracking;
    const bool pressed = state == kOffTracking || state == kOnTracking;
    QColor top = on ? accent.lighter(120) : QColor(0x4a, 0x50, 0x59);
    QColor bottom = on ? accent.darker(130) : QColor(0x2a, 0x2e, 0x34);
    if (pressed) {
        top = top.darker(135);
        bottom = bottom.darker(120);
    }
    if (state == kDisabled)
        top = bottom = QColor(0x3c, 0x3e, 0x42);
    const QRectF face = r.adjusted(1.5, 1.5, -1.5, -1.5);
    QLinearGradient gradient(face.topLeft(), face.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    p.setPen(QPen(state == kDisabled ? QColor(0x50, 0x52, 0x56) : QColor(0x14, 0x16, 0x19), 1.0));
    p.setBrush(gradient);
    p.drawRoundedRect(face, 6, 6);
    if (state != kDisabled && !pressed) { // a highlight along the top edge
        p.setPen(QPen(QColor(255, 255, 255, 60), 1.0));
        p.drawLine(QPointF(face.left() + 5, face.top() + 1.5), QPointF(face.right() - 5, face.top() + 1.5));
    }
}

QColor glyphColor(ButtonState state)
{
    if (state == kDisabled)
        return QColor(0x74, 0x77, 0x7c);
    return state == kOn || state == kOnTracking ? Qt::white : QColor(0xd8, 0xdc, 0xe2);
}

// Glyphs are drawn in a 40 x 40 box; pressed ones sit a pixel lower.
typedef std::function<void(QPainter&, ButtonState)> Glyph;

void speaker(QPainter& p, ButtonState state, bool muted)
{
    p.setPen(Qt::NoPen);
    p.setBrush(glyphColor(state));
    QPainterPath body;
    body.moveTo(9, 16);
    body.lineTo(14, 16);
    body.lineTo(20, 10);
    body.lineTo(20, 30);
    body.lineTo(14, 24);
    body.lineTo(9, 24);
    body.closeSubpath();
    p.drawPath(body);
    QPen pen(glyphColor(state), 2.2, Qt::SolidLine, Qt::RoundCap);
    p.setBrush(Qt::NoBrush);
    p.setPen(pen);
    if (muted) {
        p.drawLine(QPointF(24, 15), QPointF(32, 25));
        p.drawLine(QPointF(32, 15), QPointF(24, 25));
    } else {
        p.drawArc(QRectF(18, 14, 8, 12), -60 * 16, 120 * 16);
        p.drawArc(QRectF(18, 10, 14, 20), -60 * 16, 120 * 16);
    }
}

void triangle(QPainter& p, const QColor& color, qreal x, qreal width, bool pointsLeft)
{
    QPolygonF shape;
    if (pointsLeft)
        shape << QPointF(x + width, 12) << QPointF(x + width, 28) << QPointF(x, 20);
    else
        shape << QPointF(x, 12) << QPointF(x, 28) << QPointF(x + width, 20);
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawPolygon(shape);
}

void text(QPainter& p, ButtonState state, const QString& label)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    font.setBold(true);
    p.setFont(font);
    p.setPen(glyphColor(state));
    p.drawText(QRectF(0, 0, 40, 40), Qt::AlignCenter, label);
}

// The five states of one image button ("Demo/Mute" gives Demo/Mute_off.png ...).
void addButton(std::vector<Drawing>& drawings, const QString& base, const QColor& accent, const Glyph& glyph)
{
    for (int s = kOff; s <= kDisabled; ++s) {
        const ButtonState state = ButtonState(s);
        drawings.push_back({base + QLatin1String(kStateSuffixes[s]) + QStringLiteral(".png"), QSize(40, 40),
                            [state, accent, glyph](QPainter& p, const QRectF& r) {
                                drawFace(p, r, state, accent);
                                if (state == kOffTracking || state == kOnTracking)
                                    p.translate(0, 1);
                                glyph(p, state);
                            }});
    }
}

// The ramp: a wedge rising from left to right, with ticks.
void drawRamp(QPainter& p, const QRectF& r)
{
    QPolygonF wedge;
    wedge << QPointF(6, r.height() - 6) << QPointF(r.width() - 6, 5) << QPointF(r.width() - 6, r.height() - 6);
    QLinearGradient gradient(0, 0, r.width(), 0);
    gradient.setColorAt(0, QColor(0x3d, 0x6b, 0x5a));
    gradient.setColorAt(0.75, QColor(0x5f, 0xc2, 0x8c));
    gradient.setColorAt(1, QColor(0xe0, 0xb0, 0x3c));
    p.setPen(QPen(QColor(0x1c, 0x1f, 0x23), 1));
    p.setBrush(gradient);
    p.drawPolygon(wedge);
    p.setPen(QPen(QColor(0x9a, 0xa0, 0xa8), 1));
    for (int i = 0; i <= 10; ++i) {
        const qreal x = 6 + i * (r.width() - 12) / 10;
        p.drawLine(QPointF(x, r.height() - 4), QPointF(x, r.height() - (i % 5 == 0 ? 0.5 : 2)));
    }
}

// The handle: a small upright knob with a grip line.
void drawHandle(QPainter& p, const QRectF& r)
{
    const QRectF knob = r.adjusted(1, 1, -1, -1);
    QLinearGradient gradient(knob.topLeft(), knob.topRight());
    gradient.setColorAt(0, QColor(0xf2, 0xf3, 0xf5));
    gradient.setColorAt(1, QColor(0xa9, 0xae, 0xb6));
    p.setPen(QPen(QColor(0x22, 0x25, 0x29), 1));
    p.setBrush(gradient);
    p.drawRoundedRect(knob, 3, 3);
    p.setPen(QPen(QColor(0x33, 0x36, 0x3b), 1.5));
    p.drawLine(QPointF(r.center().x(), 5), QPointF(r.center().x(), r.height() - 5));
}

// What an unconnected monitor shows.
void drawSlug(QPainter& p, const QRectF& r, const QString& caption)
{
    QLinearGradient gradient(r.topLeft(), r.bottomLeft());
    gradient.setColorAt(0, QColor(0x22, 0x2a, 0x36));
    gradient.setColorAt(1, QColor(0x0c, 0x0f, 0x14));
    p.fillRect(r, gradient);
    p.setPen(QPen(QColor(0x46, 0x52, 0x63), 2));
    p.setBrush(Qt::NoBrush);
    const QRectF frame(r.center().x() - 30, r.center().y() - 40, 60, 44);
    p.drawRoundedRect(frame, 5, 5);
    for (int i = 0; i < 4; ++i) { // film holes
        p.drawRect(QRectF(frame.left() + 6 + i * 13, frame.top() + 5, 7, 5));
        p.drawRect(QRectF(frame.left() + 6 + i * 13, frame.bottom() - 10, 7, 5));
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(16);
    p.setFont(font);
    p.setPen(QColor(0x9d, 0xa9, 0xb8));
    p.drawText(QRectF(r.left(), r.center().y() + 12, r.width(), 30), Qt::AlignCenter, caption);
}

std::vector<Drawing> drawings()
{
    std::vector<Drawing> all;
    const QColor green(0x2f, 0x9e, 0x6e);
    const QColor red(0xc0, 0x45, 0x35);
    const QColor blue(0x3a, 0x7b, 0xd5);
    addButton(all, QStringLiteral("Demo/Mute"), red, [](QPainter& p, ButtonState s) {
        speaker(p, s, s == kOn || s == kOnTracking);
    });
    addButton(all, QStringLiteral("Demo/Play"), green,
              [](QPainter& p, ButtonState s) { triangle(p, glyphColor(s), 15, 13, false); });
    addButton(all, QStringLiteral("Demo/Stop"), blue, [](QPainter& p, ButtonState s) {
        p.setPen(Qt::NoPen);
        p.setBrush(glyphColor(s));
        p.drawRect(QRectF(13, 13, 14, 14));
    });
    addButton(all, QStringLiteral("Demo/Rewind"), blue, [](QPainter& p, ButtonState s) {
        triangle(p, glyphColor(s), 8, 12, true);
        triangle(p, glyphColor(s), 19, 12, true);
    });
    addButton(all, QStringLiteral("Demo/FastForward"), blue, [](QPainter& p, ButtonState s) {
        triangle(p, glyphColor(s), 9, 12, false);
        triangle(p, glyphColor(s), 20, 12, false);
    });
    addButton(all, QStringLiteral("Demo/SpeedHalf"), green,
              [](QPainter& p, ButtonState s) { text(p, s, QStringLiteral(".5x")); });
    addButton(all, QStringLiteral("Demo/SpeedOne"), green,
              [](QPainter& p, ButtonState s) { text(p, s, QStringLiteral("1x")); });
    addButton(all, QStringLiteral("Demo/SpeedTwo"), green,
              [](QPainter& p, ButtonState s) { text(p, s, QStringLiteral("2x")); });
    all.push_back({QStringLiteral("Horiz_Slider_Ramp.png"), QSize(160, 24), &drawRamp});
    all.push_back({QStringLiteral("slider_handle_horiz_slider.png"), QSize(12, 24), &drawHandle});
    all.push_back({QStringLiteral("Monitor/VideoMonitorSlug.png"), QSize(320, 180),
                   [](QPainter& p, const QRectF& r) { drawSlug(p, r, QStringLiteral("No picture")); }});
    all.push_back({QStringLiteral("Monitor/Video2ndMonitorSlug4x3.png"), QSize(240, 180),
                   [](QPainter& p, const QRectF& r) { drawSlug(p, r, QStringLiteral("No picture (4:3)")); }});
    return all;
}

QString atScale(const QString& name, int scale)
{
    if (scale == 1)
        return name;
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return name.left(dot) + QStringLiteral("@%1x").arg(scale) + name.mid(dot);
}

bool write(const Drawing& drawing, const QDir& out, int scale)
{
    QImage image(drawing.size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.scale(scale, scale);
        drawing.draw(painter, QRectF(QPointF(0, 0), QSizeF(drawing.size)));
    }
    const QString path = out.filePath(atScale(drawing.name, scale));
    QDir().mkpath(QFileInfo(path).absolutePath());
    return image.save(path, "PNG");
}

} // namespace

int main(int argc, char** argv)
{
    // Text needs a font database, hence the GUI application; no window is shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (args.size() != 2) {
        err << "usage: kel_imagegen OUTPUT_DIR | --list\n";
        return 2;
    }
    if (args[1] == QLatin1String("--list")) {
        for (const Drawing& d : drawings())
            out << d.name << '\n' << atScale(d.name, 2) << '\n';
        return 0;
    }
    const QDir dir(args[1]);
    int failures = 0;
    for (const Drawing& d : drawings()) {
        for (int scale : {1, 2}) {
            if (!write(d, dir, scale)) {
                err << "kel_imagegen: cannot write " << dir.filePath(atScale(d.name, scale)) << '\n';
                ++failures;
            }
        }
    }
    return failures == 0 ? 0 : 1;
}
