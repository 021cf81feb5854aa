#ifndef KEL_DATETIMEVIEW_H
#define KEL_DATETIMEVIEW_H

#include "kelcore_export.h"

#include "Kel_ValueViewBase.h"
#include "Mvt_SimpleValue.h"

#include <QDateTime>

// Shows the value of a date/time model (QDateTime; a QDate model is shown
// as a date) as one line of text: in the user's locale, short form, unless
// a format is given. Unconnected, or with an invalid value, it shows the
// empty text (nothing by default).
class KELCORE_EXPORT Kel_DateTimeView : public Kel_ValueViewBase
{
public:
    Kel_DateTimeView();
    // Copies the specification and the format; the copy is unconnected.
    Kel_DateTimeView(const Kel_DateTimeView& other);
    ~Kel_DateTimeView() override;

    // Connection specification of the date/time model; takes effect at the next makeConnections.
    void setConnectionSpec(const QString& spec) { mValue.setSpec(spec); }
    QString getConnectionSpec() const { return mValue.spec(); }
    // A QDateTime::toString format ("yyyy-MM-dd hh:mm"); empty means the
    // locale's short format.
    void setFormat(const QString& format) { mFormat = format; }
    QString getFormat() const { return mFormat; }
    // What is shown while there is no valid value ("--", "never").
    void setEmptyText(const QString& text) { mEmptyText = text; }
    QString getEmptyText() const { return mEmptyText; }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;

    // The text for value in this view's format (the empty text when invalid).
    QString format(const QDateTime& value) const;

protected:
    void readValues() override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<QDateTime>::Listener> mValue{this, Kel_BoundPropertyBase::kConnectAlways};
    QString mFormat;
    QString mEmptyText;
};

#endif
