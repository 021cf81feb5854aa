#include "Kel_Double.h"

#include "Kel_WhatsThis.h"

#include <QPointer>

namespace {

// Wide enough for the values models hold; a form narrows it with minimum and maximum.
const double kRangeLimit = 1e9;

} // namespace

Kel_Double::Kel_Double(QWidget* parent, const char* name) : QDoubleSpinBox(parent), mApplyingModelState(false)
{
    setObjectName(QString::fromLatin1(name));
    setRange(-kRangeLimit, kRangeLimit);
    setValue(0.0);
    // A typed value is sent once, when the user is done with it.
    setKeyboardTracking(false);
    mValue.onNotify([this] { updateAppearance(); });
    connect(this, SIGNAL(valueChanged(double)), this, SLOT(userChangedValue(double)));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Double");
}

Kel_Double::~Kel_Double() = default;

void Kel_Double::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValue.connect(environment);
}

void Kel_Double::updateAppearance()
{
    QPointer<Kel_Double> self(this);
    double value = 0.0;
    mValue->get(value);
    mApplyingModelState = true;
    setValue(value);
    if (!self)
        return;
    mApplyingModelState = false;
    setEnabled(mValue.isConnected());
}

void Kel_Double::userChangedValue(double value)
{
    if (mApplyingModelState || !mValue.isConnected())
        return;
    if (mValue.set(value) == Mvt_SimpleValue_BaseAPI::kSetRefused)
        updateAppearance(); // show the model's value again
}
