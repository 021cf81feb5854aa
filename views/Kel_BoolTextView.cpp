#include "Kel_BoolTextView.h"

#include <QCoreApplication>

Kel_BoolTextView::Kel_BoolTextView()
    : Kel_ValueViewBase(), mTrueText(QCoreApplication::translate("Kel_BoolTextView", "Yes")),
      mFalseText(QCoreApplication::translate("Kel_BoolTextView", "No"))
{
    refreshOnNotification(mValue);
}

Kel_BoolTextView::Kel_BoolTextView(const Kel_BoolTextView& other)
    : Kel_ValueViewBase(other), mTrueText(other.mTrueText), mFalseText(other.mFalseText)
{
    mValue.setSpec(other.mValue.spec());
    refreshOnNotification(mValue);
}

Kel_BoolTextView::~Kel_BoolTextView() = default;

void Kel_BoolTextView::setTrueText(const QString& text)
{
    if (text == mTrueText)
        return;
    mTrueText = text;
    updateAppearance();
}

void Kel_BoolTextView::setFalseText(const QString& text)
{
    if (text == mFalseText)
        return;
    mFalseText = text;
    updateAppearance();
}

void Kel_BoolTextView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValue.connect(environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_BoolTextView::clone()
{
    return new Kel_BoolTextView(*this);
}

void Kel_BoolTextView::readValues()
{
    bool value = false;
    if (!mValue->get(value))
        setText(QString());
    else
        setText(value ? mTrueText : mFalseText);
}

bool Kel_BoolTextView::currentValue() const
{
    bool value = false;
    mValue->get(value);
    return value;
}
