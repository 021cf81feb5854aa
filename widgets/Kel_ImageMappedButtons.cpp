#include "Kel_ImageMappedButtons.h"

#include "Kel_ViewAccessibility.h"
#include "Kel_WhatsThis.h"
#include "Ost_Resource.h"

#include <QColor>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <QPointer>
#include <QToolTip>

namespace {

QImage loadImage(const QByteArray& path)
{
    if (path.isEmpty())
        return QImage();
    return QImage(Ost_Resource::getResourcePath() + QString::fromLocal8Bit(path))
        .convertToFormat(QImage::Format_ARGB32);
}

} // namespace

Kel_ImageMappedButtons::Kel_ImageMappedButtons(QWidget* parent, const char* name) : QWidget(parent), mPressed(-1)
{
    setObjectName(QString::fromLatin1(name));
    // Reached by Tab for its keys; a click leaves the focus where it was.
    setFocusPolicy(Qt::TabFocus);
    Kel_ViewAccessibility::install(); // screen readers see it through the library's factory
    mActions.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ImageMappedButtons");
}

Kel_ImageMappedButtons::~Kel_ImageMappedButtons() = default;

void Kel_ImageMappedButtons::setBaseConnectionSpec(const QByteArray& spec)
{
    const QString base = QString::fromUtf8(spec);
    mActions.setSpec(base);
    mToolTips.setSpec(base.isEmpty() ? QString() : base + QStringLiteral(".toolTip"));
}

void Kel_ImageMappedButtons::setImage(const QByteArray& path)
{
    mImageName = path;
    mImage = loadImage(path);
    updateGeometry();
    refresh();
}

void Kel_ImageMappedButtons::setTrackingImage(const QByteArray& path)
{
    mTrackingName = path;
    mTracking = loadImage(path);
    refresh();
}

void Kel_ImageMappedButtons::setMapImage(const QByteArray& path)
{
    mMapName = path;
    mMap = loadImage(path);
    refresh();
}

void Kel_ImageMappedButtons::setButtonColors(const QStringList& colors)
{
    mColorNames = colors;
    mColors.clear();
    for (const QString& name : colors) {
        const QColor colour(name);
        // An unreadable colour keeps its place but matches no pixel.
        mColors.append(colour.isValid() ? colour.rgb() : qRgba(0, 0, 0, 0));
    }
    updateAppearance();
}

void Kel_ImageMappedButtons::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mToolTips, &mActions});
}

void Kel_ImageMappedButtons::updateAppearance()
{
    const long size = mActions->size();
    mEnabled.fill(false, mColors.size());
    for (int i = 0; i < mColors.size() && i < size; ++i)
        mEnabled[i] = mActions->isElementEnabled(i);
    if (!isButtonEnabled(mPressed))
        mPressed = -1;
    // The keys move on from a button that became disabled.
    if (hasFocus() && !isButtonEnabled(mKeyButton))
        mKeyButton = nextEnabledButton(1);
    refresh();
}

int Kel_ImageMappedButtons::buttonAt(const QPoint& point) const
{
    if (!mMap.valid(point))
        return -1;
    const QRgb pixel = mMap.pixel(point);
    if (qAlpha(pixel) == 0)
        return -1;
    return mColors.indexOf(pixel);
}

QSize Kel_ImageMappedButtons::sizeHint() const
{
    return mImage.isNull() ? QSize(32, 32) : mImage.size();
}

bool Kel_ImageMappedButtons::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int button = buttonAt(help->pos());
        const QString tip = button >= 0 ? mToolTips->element<QString>(button) : QString();
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, this);
        return true;
    }
    return QWidget::event(event);
}

void Kel_ImageMappedButtons::setPressed(int button)
{
    if (button == mPressed)
        return;
    mPressed = button;
    refresh();
}

void Kel_ImageMappedButtons::mousePressEvent(QMouseEvent* event)
{
    const int button = event->button() == Qt::LeftButton ? buttonAt(event->pos()) : -1;
    if (!isButtonEnabled(button)) {
        event->ignore();
        return;
    }
    setPressed(button);
}

void Kel_ImageMappedButtons::mouseReleaseEvent(QMouseEvent* event)
{
    const int pressed = mPressed;
    setPressed(-1);
    // Like any button: released elsewhere, it does nothing.
    if (pressed < 0 || event->button() != Qt::LeftButton || buttonAt(event->pos()) != pressed)
        return;
    mActions->triggerElement(pressed);
}

void Kel_ImageMappedButtons::refresh()
{
    // The picture as shown, made once per change rather than at every paint.
    mShown = mImage;
    const bool track = mPressed >= 0 && mTracking.size() == mImage.size();
    const bool anyDisabled = mEnabled.contains(false);
    if ((track || anyDisabled) && !mImage.isNull() && mMap.size() == mImage.size()) {
        for (int y = 0; y < mShown.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(mShown.scanLine(y));
            for (int x = 0; x < mShown.width(); ++x) {
                const int button = mColors.indexOf(mMap.pixel(x, y));
                if (button < 0)
                    continue;
                if (track && button == mPressed)
                    line[x] = mTracking.pixel(x, y);
                else if (!mEnabled.value(button))
                    line[x] = qRgba(qRed(line[x]), qGreen(line[x]), qBlue(line[x]), qAlpha(line[x]) / 3);
            }
        }
    }
    update();
}

int Kel_ImageMappedButtons::nextEnabledButton(int step) const
{
    const int count = mColors.size();
    if (count == 0)
        return -1;
    int button = mKeyButton < 0 ? (step > 0 ? count - 1 : 0) : mKeyButton;
    for (int i = 0; i < count; ++i) {
        button = (button + step + count) % count;
        if (isButtonEnabled(button))
            return button;
    }
    return -1;
}

QRect Kel_ImageMappedButtons::buttonRect(int button) const
{
    QRect rect;
    if (button < 0 || button >= mColors.size())
        return rect;
    const QRgb color = mColors.at(button);
    for (int y = 0; y < mMap.height(); ++y) {
        for (int x = 0; x < mMap.width(); ++x) {
            if (mMap.pixel(x, y) == color)
                rect |= QRect(x, y, 1, 1);
        }
    }
    return rect;
}

void Kel_ImageMappedButtons::focusInEvent(QFocusEvent* event)
{
    if (!isButtonEnabled(mKeyButton))
        mKeyButton = nextEnabledButton(1);
    QWidget::focusInEvent(event);
}

void Kel_ImageMappedButtons::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
        mKeyButton = nextEnabledButton(event->key() == Qt::Key_Left || event->key() == Qt::Key_Up ? -1 : 1);
        update();
        return;
    case Qt::Key_Space:
        if (!event->isAutoRepeat() && isButtonEnabled(mKeyButton))
            setPressed(mKeyButton);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isButtonEnabled(mKeyButton))
            mActions->triggerElement(mKeyButton);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Kel_ImageMappedButtons::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space || event->isAutoRepeat()) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    const int pressed = mPressed;
    setPressed(-1);
    if (pressed >= 0 && pressed == mKeyButton)
        mActions->triggerElement(pressed);
}

void Kel_ImageMappedButtons::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawImage(0, 0, mShown);
    if (hasFocus() && isButtonEnabled(mKeyButton)) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(buttonRect(mKeyButton).adjusted(0, 0, -1, -1));
    }
}
