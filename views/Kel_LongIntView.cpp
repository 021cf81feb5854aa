#include "Kel_LongIntView.h"

Kel_LongIntView::Kel_LongIntView()
    : Kel_ValueViewBase(),
      mValueListenerP(new Mvt_SimpleValue<long>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    refreshOnNotification(*mValueListenerP);
}

Kel_LongIntView::Kel_LongIntView(const Kel_LongIntView& other)
    : Kel_ValueViewBase(other), mConnectionName(other.mConnectionName),
      mValueListenerP(new Mvt_SimpleValue<long>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    refreshOnNotification(*mValueListenerP);
}

Kel_LongIntView::~Kel_LongIntView() = default;

void Kel_LongIntView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    connectValueListener(*mValueListenerP, mConnectionName, environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_LongIntView::clone()
{
    return new Kel_LongIntView(*this);
}

void Kel_LongIntView::readValues()
{
    long value = 0;
    setText(mValueListenerP->get(value) ? QString::number(value) : QString());
}
