#include "Kel_StringView.h"

Kel_StringView::Kel_StringView()
    : Kel_ValueViewBase(),
      mTextListenerP(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment())),
      mColorListenerP(new Mvt_SimpleValue<QColor>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    refreshOnNotification(*mTextListenerP);
    refreshOnNotification(*mColorListenerP);
}

Kel_StringView::Kel_StringView(const Kel_StringView& other)
    : Kel_ValueViewBase(other), mConnectionID(other.mConnectionID), mColorConn(other.mColorConn),
      mTextListenerP(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment())),
      mColorListenerP(new Mvt_SimpleValue<QColor>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    refreshOnNotification(*mTextListenerP);
    refreshOnNotification(*mColorListenerP);
}

Kel_StringView::~Kel_StringView() = default;

void Kel_StringView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    connectValueListener(*mTextListenerP, mConnectionID, environment);
    connectListener(*mColorListenerP, mColorConn, environment);
    Kel_ValueViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_StringView::clone()
{
    return new Kel_StringView(*this);
}

void Kel_StringView::readValues()
{
    setText(mTextListenerP->value(QString()));
    setTextColor(mColorListenerP->value(QColor()));
}
