#include "Kel_ProgressThermometer.h"

#include "Kel_AnimationTimer_p.h"
#include "Kel_WhatsThis.h"

#include <QPainter>
#include <cmath>

namespace {

const int kSweepInterval = 40;
const int kSweepSteps = 50;

} // namespace

Kel_ProgressThermometer::Kel_ProgressThermometer(QWidget* parent, const char* name)
    : QWidget(parent)
    , mFraction(-1.0)
    , mIndeterminate(false)
    , mSweep(0)
    , mAnimationP(new Kel_AnimationTimer(this, kSweepInterval, [this] {
        mSweep = (mSweep + 1) % (2 * kSweepSteps);
        update();
    }))
{
    setObjectName(QString::fromLatin1(name));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    mProgress.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ProgressThermometer");
}

Kel_ProgressThermometer::~Kel_ProgressThermometer() = default;

void Kel_ProgressThermometer::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mProgress.connect(environment);
}

void Kel_ProgressThermometer::updateAppearance()
{
    double value = -1.0;
    const bool known = mProgress->get(value) && !std::isnan(value);
    mIndeterminate = known && value < 0.0;
    mFraction = known && !mIndeterminate ? qBound(0.0, value, 1.0) : -1.0;
    mAnimationP->setRunning(mIndeterminate);
    update();
}

QString Kel_ProgressThermometer::text() const
{
    return mFraction < 0.0 ? QString() : tr("%1%").arg(int(std::floor(mFraction * 100.0)));
}

QSize Kel_ProgressThermometer::sizeHint() const
{
    return QSize(200, fontMetrics().height() + 8);
}

QSize Kel_ProgressThermometer::minimumSizeHint() const
{
    return QSize(40, fontMetrics().height() + 8);
}

void Kel_ProgressThermometer::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    const QBrush fill = palette().brush(QPalette::Highlight);
    if (mIndeterminate) {
        // A block a quarter of the bar wide, going back and forth.
        const int block = qMax(4, width() / 4);
        const int span = width() - block;
        const int step = mSweep <= kSweepSteps ? mSweep : 2 * kSweepSteps - mSweep;
        painter.fillRect(QRect(span * step / kSweepSteps, 0, block, height()), fill);
    } else if (mFraction > 0.0) {
        painter.fillRect(QRect(0, 0, int(std::lround(width() * mFraction)), height()), fill);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(frame);
    const QString label = text();
    if (!label.isEmpty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect(), Qt::AlignCenter, label);
    }
}
