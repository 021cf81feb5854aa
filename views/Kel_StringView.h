#ifndef KEL_STRINGVIEW_H
#define KEL_STRINGVIEW_H

#include "kelcore_export.h"

#include "Kel_ValueViewBase.h"
#include "Mvt_SimpleValue.h"

#include <QColor>
#include <memory>

// Shows the value of a string model as text, optionally in the colour held
// by a colour model. Unconnected, it shows nothing; without a colour model
// it draws in the painter's pen colour (the one its list or bridge chose).
class KELCORE_EXPORT Kel_StringView : public Kel_ValueViewBase
{
public:
    Kel_StringView();
    // Copies the specifications; the copy is unconnected.
    Kel_StringView(const Kel_StringView& other);
    ~Kel_StringView() override;

    // Connection specification of the string model; takes effect at the next makeConnections.
    void SetConnectionID(const QString& spec) { mText.setSpec(spec); }
    QString GetConnectionID() const { return mText.spec(); }
    // Connection specification of the QColor model for the text colour.
    void SetColorConn(const QString& spec) { mColor.setSpec(spec); }
    QString GetColorConn() const { return mColor.spec(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;

protected:
    void readValues() override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mText{this, Kel_BoundPropertyBase::kConnectAlways};
    Kel_BoundProperty<Mvt_SimpleValue<QColor>::Listener> mColor{this};
};

#endif
