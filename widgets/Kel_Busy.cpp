#include "Kel_Busy.h"

#include "Kel_AnimationTimer_p.h"
#include "Kel_WhatsThis.h"

#include <QPainter>

namespace {

const int kSpokes = 12;
const int kDefaultInterval = 80;

} // namespace

Kel_Busy::Kel_Busy(QWidget* parent, const char* name)
    : QWidget(parent)
    , mIsBusy(false)
    , mFrame(0)
    , mAnimationP(new Kel_AnimationTimer(this, kDefaultInterval, [this] {
        mFrame = (mFrame + 1) % kSpokes;
        update();
    }))
{
    setObjectName(QString::fromLatin1(name));
    mBusy.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Busy");
}

Kel_Busy::~Kel_Busy() = default;

void Kel_Busy::setInterval(int ms)
{
    mAnimationP->setInterval(ms);
}

int Kel_Busy::getInterval() const
{
    return mAnimationP->interval();
}

bool Kel_Busy::isAnimating() const
{
    return mAnimationP->isActive();
}

void Kel_Busy::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (mBusy.connect(environment))
        updateAppearance();
}

void Kel_Busy::updateAppearance()
{
    bool busy = false;
    mBusy->get(busy);
    if (busy == mIsBusy)
        return;
    mIsBusy = busy;
    mAnimationP->setRunning(busy);
    update();
}

QSize Kel_Busy::sizeHint() const
{
    return QSize(24, 24);
}

void Kel_Busy::paintEvent(QPaintEvent*)
{
    if (!mIsBusy)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = qMin(width(), height());
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(side / 24.0, side / 24.0);
    QColor colour = palette().color(QPalette::WindowText);
    for (int i = 0; i < kSpokes; ++i) {
        // The current spoke is opaque; the ones behind it fade out.
        const int age = (mFrame - i + kSpokes) % kSpokes;
        colour.setAlphaF(1.0 - age / double(kSpokes));
        painter.setPen(QPen(colour, 2.0, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(i * 360.0 / kSpokes);
        painter.drawLine(QPointF(0, -5.0), QPointF(0, -10.0));
        painter.restore();
    }
}
