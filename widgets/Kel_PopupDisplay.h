#ifndef KEL_POPUPDISPLAY_H
#define KEL_POPUPDISPLAY_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QComboBox>

// A combo box that shows, and lets the user choose, the name held by a string
// model. The choices are the combo box's own items (as a form lists them);
// a name that is not among them shows as no choice. Without a connected
// model it is disabled.
class KELCORE_EXPORT Kel_PopupDisplay : public QComboBox, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray currentNameConnection READ getCurrentNameConnectionSpec WRITE setCurrentNameConnectionSpec)

public:
    explicit Kel_PopupDisplay(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_PopupDisplay() override;

    // The name model's specification; it takes effect at the next makeConnections.
    void setCurrentNameConnectionSpec(const QByteArray& spec) { mName.setSpec(QString::fromUtf8(spec)); }
    QByteArray getCurrentNameConnectionSpec() const { return mName.spec().toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows its name.
    void updateAppearance();

private slots:
    void userActivated(int index);

private:
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mName{this, Kel_BoundPropertyBase::kConnectAlways};
};

#endif
