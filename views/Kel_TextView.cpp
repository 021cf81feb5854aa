#include "Kel_TextView.h"

Kel_TextView::Kel_TextView()
    : Kel_ValueViewBase()
{
    setElideMode(Qt::ElideRight);
    refreshOnNotification(mName);
}

Kel_TextView::Kel_TextView(const Kel_TextView& other)
    : Kel_ValueViewBase(other)
{
    mName.setSpec(other.mName.spec());
    refreshOnNotification(mName);
}

Kel_TextView::~Kel_TextView() = default;

void Kel_TextView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mName.connect(environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_TextView::clone()
{
    return new Kel_TextView(*this);
}

void Kel_TextView::readValues()
{
    setText(mName->value(QString()));
}
