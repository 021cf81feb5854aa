#ifndef KEL_BOOLTEXTVIEW_H
#define KEL_BOOLTEXTVIEW_H

#include "kelcore_export.h"

#include "Kel_ValueViewBase.h"
#include "Mvt_SimpleValue.h"

#include <memory>

// Shows the value of a bool model as one of two texts ("Yes" and "No"
// unless told otherwise). Unconnected, it shows nothing.
class KELCORE_EXPORT Kel_BoolTextView : public Kel_ValueViewBase
{
public:
    Kel_BoolTextView();
    // Copies the specification and the texts; the copy is unconnected.
    Kel_BoolTextView(const Kel_BoolTextView& other);
    ~Kel_BoolTextView() override;

    // Connection specification of the bool model; takes effect at the next makeConnections.
    void setConnectionName(const QString& spec) { mValue.setSpec(spec); }
    QString getConnectionName() const { return mValue.spec(); }
    // The texts shown for true and for false.
    void setTrueText(const QString& text);
    QString getTrueText() const { return mTrueText; }
    void setFalseText(const QString& text);
    QString getFalseText() const { return mFalseText; }
    // The model's value now (false when unconnected).
    bool currentValue() const;

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;

protected:
    void readValues() override;

private:
    QString mTrueText;
    QString mFalseText;
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mValue{this, Kel_BoundPropertyBase::kConnectAlways};
};

#endif
