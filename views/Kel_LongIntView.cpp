#include "Kel_LongIntView.h"

Kel_LongIntView::Kel_LongIntView()
    : Kel_ValueViewBase()
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    refreshOnNotification(mValue);
}

Kel_LongIntView::Kel_LongIntView(const Kel_LongIntView& other)
    : Kel_ValueViewBase(other)
{
    mValue.setSpec(other.mValue.spec());
    refreshOnNotification(mValue);
}

Kel_LongIntView::~Kel_LongIntView() = default;

void Kel_LongIntView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValue.connect(environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_LongIntView::clone()
{
    return new Kel_LongIntView(*this);
}

void Kel_LongIntView::readValues()
{
    long value = 0;
    setText(mValue->get(value) ? QString::number(value) : QString());
}
