#include "Kel_DateTimeView.h"

#include <QDate>
#include <QLocale>

Kel_DateTimeView::Kel_DateTimeView() : Kel_ValueViewBase()
{
    refreshOnNotification(mValue);
}

Kel_DateTimeView::Kel_DateTimeView(const Kel_DateTimeView& other)
    : Kel_ValueViewBase(other), mFormat(other.mFormat), mEmptyText(other.mEmptyText)
{
    mValue.setSpec(other.mValue.spec());
    refreshOnNotification(mValue);
}

Kel_DateTimeView::~Kel_DateTimeView() = default;

void Kel_DateTimeView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValue.connect(environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_DateTimeView::clone()
{
    return new Kel_DateTimeView(*this);
}

QString Kel_DateTimeView::format(const QDateTime& value) const
{
    if (!value.isValid())
        return mEmptyText;
    return mFormat.isEmpty() ? QLocale().toString(value, QLocale::ShortFormat) : value.toString(mFormat);
}

void Kel_DateTimeView::readValues()
{
    QDateTime value;
    if (!mValue->get(value)) {
        // A model of dates alone answers the date request instead.
        QDate date;
        if (mValue->SendMessageToModel(Mvt_SimpleValue_API<QDate>::MsgGet(&date), false) && date.isValid()) {
            setText(mFormat.isEmpty() ? QLocale().toString(date, QLocale::ShortFormat) : date.toString(mFormat));
            return;
        }
    }
    setText(format(value));
}
