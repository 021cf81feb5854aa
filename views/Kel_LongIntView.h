#ifndef KEL_LONGINTVIEW_H
#define KEL_LONGINTVIEW_H

#include "kelcore_export.h"

#include "Kel_ValueViewBase.h"
#include "Mvt_SimpleValue.h"

#include <memory>

// Shows the value of a long model as decimal text, right-aligned so that
// numbers line up in a column. Unconnected, it shows nothing.
class KELCORE_EXPORT Kel_LongIntView : public Kel_ValueViewBase
{
public:
    Kel_LongIntView();
    // Copies the specification; the copy is unconnected.
    Kel_LongIntView(const Kel_LongIntView& other);
    ~Kel_LongIntView() override;

    // Connection specification of the long model; takes effect at the next makeConnections.
    void setConnectionName(const QString& spec) { mValue.setSpec(spec); }
    QString getConnectionName() const { return mValue.spec(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;

protected:
    void readValues() override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mValue{this, Kel_BoundPropertyBase::kConnectAlways};
};

#endif
