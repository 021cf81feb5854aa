#ifndef KEL_TEXTVIEW_H
#define KEL_TEXTVIEW_H

#include "kelcore_export.h"

#include "Kel_ValueViewBase.h"
#include "Mvt_SimpleValue.h"

#include <memory>

// Shows the value of a string model (typically a name) as text, cut short
// with an ellipsis at the right when it is wider than the view. Unconnected,
// it shows nothing.
class KELCORE_EXPORT Kel_TextView : public Kel_ValueViewBase
{
public:
    Kel_TextView();
    // Copies the specification; the copy is unconnected.
    Kel_TextView(const Kel_TextView& other);
    ~Kel_TextView() override;

    // Connection specification of the string model; takes effect at the next makeConnections.
    void SetNameConnection(const QString& spec) { mName.setSpec(spec); }
    QString GetNameConnection() const { return mName.spec(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;

protected:
    void readValues() override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mName{this, Kel_BoundPropertyBase::kConnectAlways};
};

#endif
