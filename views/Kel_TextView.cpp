#include "Kel_TextView.h"

Kel_TextView::Kel_TextView()
    : Kel_ValueViewBase(),
      mNameListenerP(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    setElideMode(Qt::ElideRight);
    refreshOnNotification(*mNameListenerP);
}

Kel_TextView::Kel_TextView(const Kel_TextView& other)
    : Kel_ValueViewBase(other), mNameConnection(other.mNameConnection),
      mNameListenerP(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    refreshOnNotification(*mNameListenerP);
}

Kel_TextView::~Kel_TextView() = default;

void Kel_TextView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    connectValueListener(*mNameListenerP, mNameConnection, environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_TextView::clone()
{
    return new Kel_TextView(*this);
}

void Kel_TextView::readValues()
{
    setText(mNameListenerP->value(QString()));
}
