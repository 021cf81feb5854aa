#include "Kel_TransparentOverlay.h"

#include "Kel_ResourceImage.h"

#include <QPainter>
#include <QVariantAnimation>

namespace {

const int kDefaultFadeMs = 200;
const unsigned short kOpaque = 255;

} // namespace

Kel_TransparentOverlay::Kel_TransparentOverlay(QWidget* owner)
    : QWidget(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus
                         | Qt::WindowTransparentForInput),
      mAlpha(kOpaque), mFadeDuration(kDefaultFadeMs), mFadeP(new QVariantAnimation(this))
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    connect(mFadeP, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setWindowOpacity(value.toReal()); });
}

Kel_TransparentOverlay::~Kel_TransparentOverlay() = default;

void Kel_TransparentOverlay::setPixmap(const QPixmap& pixmap)
{
    mPixmap = pixmap;
    update();
}

void Kel_TransparentOverlay::setAlpha(unsigned short alpha, bool immediately)
{
    mAlpha = qMin(alpha, kOpaque);
    const qreal target = mAlpha / qreal(kOpaque);
    mFadeP->stop();
    if (immediately || mFadeDuration <= 0 || qFuzzyCompare(windowOpacity() + 1, target + 1)) {
        setWindowOpacity(target);
        return;
    }
    mFadeP->setStartValue(windowOpacity());
    mFadeP->setEndValue(target);
    mFadeP->setDuration(mFadeDuration);
    mFadeP->start();
}

QSize Kel_TransparentOverlay::sizeHint() const
{
    return mPixmap.isNull() ? QSize(0, 0) : Kel_ResourceImage::logicalSize(mPixmap);
}

void Kel_TransparentOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawPixmap(0, 0, mPixmap);
}
