#include "Kel_Busy.h"

#include "Kel_WhatsThis.h"

#include <QPainter>
#include <QTimerEvent>

namespace {

const int kSpokes = 12;
const int kDefaultInterval = 80;

} // namespace

Kel_Busy::Kel_Busy(QWidget* parent, const char* name)
    : QWidget(parent), mIsBusy(false), mInterval(kDefaultInterval), mFrame(0)
{
    setObjectName(QString::fromLatin1(name));
    mBusy.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Busy");
}

Kel_Busy::~Kel_Busy() = default;

void Kel_Busy::setInterval(int ms)
{
    mInterval = qMax(10, ms);
    if (mTimer.isActive())
        mTimer.start(mInterval, this);
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
    updateTimer();
    update();
}

void Kel_Busy::updateTimer()
{
    if (mIsBusy && isVisible())
        mTimer.start(mInterval, this);
    else
        mTimer.stop();
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

void Kel_Busy::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != mTimer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    mFrame = (mFrame + 1) % kSpokes;
    update();
}

void Kel_Busy::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateTimer();
}

void Kel_Busy::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    updateTimer();
}
