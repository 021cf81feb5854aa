#ifndef KEL_DOUBLE_H
#define KEL_DOUBLE_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QDoubleSpinBox>

// A spin box that shows the value of a double model and sends the user's
// changes back (on Return, focus out or a step, not on every key). Without a
// connected model it is disabled and shows 0; set readOnly for a display only.
class KELCORE_EXPORT Kel_Double : public QDoubleSpinBox, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connection READ getConnectionSpec WRITE setConnectionSpec)

public:
    explicit Kel_Double(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Double() override;

    // The value model's specification; it takes effect at the next makeConnections.
    void setConnectionSpec(const QByteArray& spec) { mValue.setSpec(QString::fromUtf8(spec)); }
    QByteArray getConnectionSpec() const { return mValue.spec().toUtf8(); }

    // Connects the value listener, named or not.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows its value.
    void updateAppearance();

private slots:
    void userChangedValue(double value);

private:
    Kel_BoundProperty<Mvt_SimpleValue<double>::Listener> mValue{this, Kel_BoundPropertyBase::kConnectAlways};
    // Set while the box shows the model's value, so that valueChanged is not a user change.
    bool mApplyingModelState;
};

#endif
