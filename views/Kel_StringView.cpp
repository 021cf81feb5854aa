#include "Kel_StringView.h"

Kel_StringView::Kel_StringView()
    : Kel_ValueViewBase()
{
    refreshOnNotification(mText);
    refreshOnNotification(mColor);
}

Kel_StringView::Kel_StringView(const Kel_StringView& other)
    : Kel_ValueViewBase(other)
{
    mText.setSpec(other.mText.spec());
    mColor.setSpec(other.mColor.spec());
    refreshOnNotification(mText);
    refreshOnNotification(mColor);
}

Kel_StringView::~Kel_StringView() = default;

void Kel_StringView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mText.connect(environment);
    mColor.connect(environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_StringView::clone()
{
    return new Kel_StringView(*this);
}

void Kel_StringView::readValues()
{
    setText(mText->value(QString()));
    setTextColor(mColor->value(QColor()));
}
