#include "Kel_Time.h"

#include "Kel_WhatsThis.h"

#include <cmath>

Kel_Time::Kel_Time(QWidget* parent, QString connectionSpec, const char*, bool hideWhenZero)
    : Kel_Label(parent), mHideWhenZero(hideWhenZero)
{
    mSeconds.setSpec(connectionSpec);
    mSeconds.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Time");
}

Kel_Time::~Kel_Time() = default;

void Kel_Time::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_Time> self(this);
    Kel_Label::makeConnections(environment);
    if (self)
        mSeconds.connect(environment);
}

void Kel_Time::hideWhenZero(bool hide)
{
    mHideWhenZero = hide;
}

QString Kel_Time::getLabelString()
{
    if (!mSeconds.isConnected())
        return QString();
    return Time2String(mSeconds->value(0.0));
}

QString Kel_Time::Time2String(double value) const
{
    const double a = std::fabs(value);
    const long h = long(a / 3600.0);
    const long m = long((a - h * 3600.0) / 60.0);
    // Rounded half up after the minutes are taken: 59.6 s reads 0:60.
    const long s = long(std::floor(a - h * 3600.0 - m * 60.0 + 0.5));
    if (mHideWhenZero && h + m + s < 1)
        return QString();
    const QString sign = value < 0 ? QStringLiteral("-") : QString();
    if (h < 1)
        return sign + QString::asprintf("%ld:%02ld", m, s);
    return sign + QString::asprintf("%ld:%02ld:%02ld", h, m, s);
}
