#include "Kel_Slider.h"

#include "Kel_ResourceImage.h"
#include "Kel_ViewAccessibility.h"
#include "Kel_WhatsThis.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <cmath>
#include <limits>

namespace {

const QSize kSizeWithoutImage(100, 20);

// Model values are longs; the slider works in 32 bits.
int toInt(double value)
{
    if (!(value == value)) // NaN
        return 0;
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(value);
}

} // namespace

Kel_Slider::Kel_Slider(QWidget* parent, const char* name)
    : QWidget(parent), mSliderType(QStringLiteral("RampUp")), mIsOrientationHorizontal(true), mMin(0), mMax(100),
      mValue(0), mPixelsPerUnit(1.0), mDragging(false), mCorrecting(false), mConnecting(false)
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(QString::fromLatin1(name));
    // Reached by Tab for its keys; a drag leaves the focus where it was.
    setFocusPolicy(Qt::TabFocus);
    Kel_ViewAccessibility::install(); // screen readers see it through the library's factory

    mValueListener.onNotify([this] { handleMsgValueDefault(); });
    mRangeMinListener.onNotify([this] { handleMsgRangeMinDefault(); });
    mRangeMaxListener.onNotify([this] { handleMsgRangeMaxDefault(); });
    mEnabledListener.onNotify([this] { handleMsgEnabledStateDefault(); });

    setIsOrientationHorizontal(true);
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Slider");
}

Kel_Slider::~Kel_Slider() = default;

void Kel_Slider::setEnabledToolTip(const QString& text)
{
    mEnabledToolTip = text;
    if (isModelEnabled())
        applyToolTip(true);
}

void Kel_Slider::setDisabledToolTip(const QString& text)
{
    mDisabledToolTip = text;
    if (!isModelEnabled())
        applyToolTip(false);
}

void Kel_Slider::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mRangeMinListener.setSpec(mRangeConnSpec.isEmpty() ? QString() : mRangeConnSpec + QStringLiteral(".min"));
    mRangeMaxListener.setSpec(mRangeConnSpec.isEmpty() ? QString() : mRangeConnSpec + QStringLiteral(".max"));
    // The range first, so that the value is checked against the new range
    // and not against the previous (or default) one; meanwhile a range
    // change writes nothing to a value model that is about to be replaced.
    mConnecting = true;
    const QPointer<Kel_Slider> self(this);
    const bool alive =
        Kel_BoundPropertyBase::connectAll(environment, {&mRangeMinListener, &mRangeMaxListener, &mEnabledListener});
    if (!alive || !self)
        return; // a notification deleted the slider
    mConnecting = false;
    mValueListener.connect(environment);
}

QSize Kel_Slider::sizeHint() const
{
    return mBackgroundPixmap.isNull() ? kSizeWithoutImage : Kel_ResourceImage::logicalSize(mBackgroundPixmap);
}

void Kel_Slider::setIsOrientationHorizontal(bool horizontal)
{
    mIsOrientationHorizontal = horizontal;
    if (!horizontal)
        return;
    mHandlePixmap = Kel_ResourceImage::load(QStringLiteral("Images/slider_handle_horiz_slider.png"));
    mBackgroundPixmap = Kel_ResourceImage::load(QStringLiteral("Images/Horiz_Slider_Ramp.png"));
    updateGeometry();
    update();
}

void Kel_Slider::drawBackground(QPainter* painter)
{
    if (!mBackgroundPixmap.isNull())
        painter->drawPixmap(rect(), mBackgroundPixmap);
}

void Kel_Slider::drawHandle(QPainter* painter)
{
    if (!mHandlePixmap.isNull())
        painter->drawPixmap(getGainButtonRect(), mHandlePixmap);
}

QRect Kel_Slider::getGainButtonRect()
{
    QRect handle(QPoint(0, 0), Kel_ResourceImage::logicalSize(mHandlePixmap));
    handle.translate(convertValueToPix(mValue), 0);
    return handle;
}

void Kel_Slider::setSliderFromMousePt(QPoint p)
{
    const int value = convertPixToValue(mIsOrientationHorizontal ? p.x() : p.y());
    if (value != mValue)
        mValueListener.set(long(value));
}

int Kel_Slider::convertPixToValue(long p)
{
    double value = mMin;
    if (mPixelsPerUnit > 0 && std::isfinite(mPixelsPerUnit))
        value = std::trunc(double(p) / mPixelsPerUnit) + mMin;
    if (value < mMin)
        value = mMin;
    if (value > mMax)
        value = mMax;
    return toInt(value);
}

int Kel_Slider::convertValueToPix(long v)
{
    return toInt(std::trunc((double(v) - mMin) * mPixelsPerUnit));
}

void Kel_Slider::recomputePixelsPerUnit()
{
    const int handleWidth = Kel_ResourceImage::logicalSize(mHandlePixmap).width();
    mPixelsPerUnit = double(width() - handleWidth) / (double(mMax) - double(mMin));
}

void Kel_Slider::handleMsgValueDefault()
{
    if (!mValueListener.isConnected())
        return;
    long value = mValue;
    mValueListener->get(value);
    mValue = toInt(value);
    if (mMin >= mMax)
        return;
    if (mValue > mMax) {
        mValue = mMax;
        sendCorrection(mValue);
    } else if (mValue < mMin) {
        mValue = mMin;
        sendCorrection(mValue);
    } else {
        update();
    }
}

void Kel_Slider::handleMsgRangeMinDefault()
{
    readRangeBound(mRangeMinListener, mMin);
}

void Kel_Slider::handleMsgRangeMaxDefault()
{
    readRangeBound(mRangeMaxListener, mMax);
}

void Kel_Slider::readRangeBound(const LongProperty& model, int& bound)
{
    if (!model.isConnected())
        return;
    long value = bound;
    model->get(value);
    bound = toInt(value);
    rangeChanged();
}

void Kel_Slider::rangeChanged()
{
    // An empty or inverted range is taken for a step between two ranges
    // (the minimum moved before the maximum): the value waits for the next.
    if (mMin < mMax) {
        recomputePixelsPerUnit();
        const int bounded = qBound(mMin, mValue, mMax);
        if (bounded != mValue) {
            mValue = bounded;
            if (mValueListener.isConnected() && !mConnecting) {
                sendCorrection(mValue);
                return;
            }
        }
    }
    update();
}

void Kel_Slider::sendCorrection(int value)
{
    update();
    if (mCorrecting)
        return; // the model answered a correction with another bad value: leave it
    mCorrecting = true;
    if (mValueListener.set(long(value)) == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    mCorrecting = false;
}

void Kel_Slider::handleMsgEnabledStateDefault()
{
    if (!mEnabledListener.isConnected())
        return;
    bool enabled = true;
    mEnabledListener->get(enabled);
    if (!enabled)
        mDragging = false;
    applyToolTip(enabled);
    update();
}

void Kel_Slider::applyToolTip(bool enabled)
{
    setToolTip(QString());
    const QString& text = enabled ? mEnabledToolTip : mDisabledToolTip;
    if (!text.isEmpty())
        setToolTip(text);
}

bool Kel_Slider::isModelEnabled() const
{
    bool enabled = true;
    if (mEnabledListener.isConnected())
        mEnabledListener->get(enabled);
    return enabled;
}

void Kel_Slider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && isModelEnabled() && getGainButtonRect().contains(event->pos())) {
        mDragging = true;
        event->accept();
        return;
    }
    QWidget::mousePressEvent(event);
}

void Kel_Slider::mouseMoveEvent(QMouseEvent* event)
{
    if (mDragging && isModelEnabled()) {
        event->accept();
        setSliderFromMousePt(event->pos());
        return;
    }
    QWidget::mouseMoveEvent(event);
}

void Kel_Slider::mouseReleaseEvent(QMouseEvent* event)
{
    const bool wasDragging = mDragging;
    mDragging = false;
    if (wasDragging && isModelEnabled()) {
        event->accept();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void Kel_Slider::keyPressEvent(QKeyEvent* event)
{
    if (!isModelEnabled() || !mValueListener.isConnected() || mMin >= mMax || event->modifiers() != Qt::NoModifier) {
        QWidget::keyPressEvent(event);
        return;
    }
    const long page = qMax(1L, (long(mMax) - long(mMin)) / 10);
    long target = mValue;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        target = long(mValue) - 1;
        break;
    case Qt::Key_Right:
    case Qt::Key_Up:
        target = long(mValue) + 1;
        break;
    case Qt::Key_PageDown:
        target = long(mValue) - page;
        break;
    case Qt::Key_PageUp:
        target = long(mValue) + page;
        break;
    case Qt::Key_Home:
        target = mMin;
        break;
    case Qt::Key_End:
        target = mMax;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    target = qBound(long(mMin), target, long(mMax));
    if (target != mValue)
        mValueListener.set(target);
}

void Kel_Slider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawBackground(&painter);
    if (isModelEnabled())
        drawHandle(&painter);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}
