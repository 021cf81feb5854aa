#include "Kel_Sprite.h"

#include "Kel_AnimationTimer_p.h"
#include "Kel_ResourceImage.h"
#include "Kel_WhatsThis.h"

#include <QPainter>

#include <algorithm>

namespace {

const int kDefaultInterval = 100;

} // namespace

Kel_Sprite::Kel_Sprite(QWidget* parent, const char* name)
    : QWidget(parent)
    , mFrameCount(1)
    , mFrame(0)
    , mRunning(true)
    , mAnimationP(new Kel_AnimationTimer(this, kDefaultInterval, [this] {
        mFrame = (mFrame + 1) % mFrameCount;
        update();
    }))
{
    setObjectName(QString::fromLatin1(name));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Sprite");
}

Kel_Sprite::~Kel_Sprite() = default;

void Kel_Sprite::setImagePath(const QString& path)
{
    mImagePath = path;
    mStrip = path.isEmpty() ? QPixmap() : Kel_ResourceImage::load(path);
    mFrame = 0;
    // One frame has nothing to animate.
    mAnimationP->setRunning(mRunning && mFrameCount > 1 && !mStrip.isNull());
    updateGeometry();
    update();
}

void Kel_Sprite::setFrameCount(int count)
{
    mFrameCount = std::max(1, count);
    mFrame = 0;
    mAnimationP->setRunning(mRunning && mFrameCount > 1 && !mStrip.isNull());
    updateGeometry();
    update();
}

void Kel_Sprite::setInterval(int ms)
{
    mAnimationP->setInterval(ms);
}

int Kel_Sprite::getInterval() const
{
    return mAnimationP->interval();
}

void Kel_Sprite::setRunning(bool running)
{
    mRunning = running;
    if (!running)
        mFrame = 0;
    mAnimationP->setRunning(running && mFrameCount > 1 && !mStrip.isNull());
    update();
}

bool Kel_Sprite::isAnimating() const
{
    return mAnimationP->isActive();
}

void Kel_Sprite::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment>)
{
}

QSize Kel_Sprite::frameSize() const
{
    const QSize strip = Kel_ResourceImage::logicalSize(mStrip);
    return QSize(strip.width() / mFrameCount, strip.height());
}

QSize Kel_Sprite::sizeHint() const
{
    const QSize frame = frameSize();
    return frame.isEmpty() ? QSize(16, 16) : frame;
}

void Kel_Sprite::paintEvent(QPaintEvent*)
{
    const QSize frame = frameSize();
    if (frame.isEmpty())
        return;
    QPainter painter(this);
    // Source rectangles are in device pixels.
    const qreal ratio = mStrip.devicePixelRatio();
    const QRect source(qRound(frame.width() * mFrame * ratio), 0, qRound(frame.width() * ratio),
                       qRound(frame.height() * ratio));
    QRect target(QPoint(0, 0), frame);
    target.moveCenter(rect().center());
    painter.drawPixmap(target, mStrip, source);
}
