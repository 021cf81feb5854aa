#ifndef KEL_STANDARDRADIOBUTTON_H
#define KEL_STANDARDRADIOBUTTON_H

#include "kelcore_export.h"

#include "Kel_StandardBistateButton.h"

// One choice of a group of image buttons sharing a string model: it is on
// while the model's value equals its state name, and clicking it while it
// is off runs its on script (typically assigning the state name to the
// model). A click on the chosen button runs nothing. A non-empty string
// model named by the state specification + ".disabled" greys it out.
class KELCORE_EXPORT Kel_StandardRadioButton : public Kel_StandardBistateButton
{
    Q_OBJECT
    Q_PROPERTY(QString stateName READ GetStateName WRITE SetStateName)

public:
    explicit Kel_StandardRadioButton(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_StandardRadioButton() override;

    // The model value for which this button is on.
    void SetStateName(const QString& name);
    QString GetStateName() const { return mStateName; }

    // Connects the string state model and its ".disabled" model (when the
    // specification is not empty), then the scripts, and shows the state.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Disabled while the disabled model holds any text, else on when the
    // state model equals the state name; disabled without a state model.
    void handleStateChangeMsgDefault() override;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> StringProperty;

    StringProperty mRadioState{this};
    StringProperty mRadioDisabled{this};
    QString mStateName;
};

#endif
