#ifndef KEL_CHECKBOX_H
#define KEL_CHECKBOX_H

#include "kelcore_export.h"

#include "Kel_BoundFont.h"
#include "Kel_BoundProperty.h"
#include "Kel_DeletionGuard.h"
#include "Kel_IPointOfInterestFinder.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QCheckBox>

// A check box bound to a bool model (its checked state), optionally to bool
// models for its visible and enabled states, and to a named font. Without a
// connected checked-state model it is disabled: it cannot be operated.
class KELCORE_EXPORT Kel_CheckBox : public QCheckBox, public Kel_WidgetConnectInterface, public Kel_IPointOfInterestFinder
{
    Q_OBJECT
    Q_PROPERTY(QByteArray checkedStateConnection READ getCheckedStateConnectionSpec WRITE setCheckedStateConnectionSpec)
    Q_PROPERTY(QByteArray enabledStateConnection READ getEnabledStateConnectionSpec WRITE setEnabledStateConnectionSpec)
    Q_PROPERTY(QByteArray visibleStateConnection READ getVisibleStateConnectionSpec WRITE setVisibleStateConnectionSpec)
    Q_PROPERTY(QByteArray fontConnection READ getFontConnectionSpec WRITE setFontConnectionSpec)

public:
    explicit Kel_CheckBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_CheckBox() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setVisibleStateConnectionSpec(const QByteArray& spec);
    QByteArray getVisibleStateConnectionSpec() const { return mVisibleState.spec().toUtf8(); }
    void setEnabledStateConnectionSpec(const QByteArray& spec);
    QByteArray getEnabledStateConnectionSpec() const { return mEnabledState.spec().toUtf8(); }
    void setCheckedStateConnectionSpec(const QByteArray& spec);
    QByteArray getCheckedStateConnectionSpec() const { return mCheckedState.spec().toUtf8(); }
    // A Kel_FontManager key (not a model); a non-empty key sets the font at once.
    void setFontConnectionSpec(const QByteArray& key) { mFont.setKey(key); }
    QByteArray getFontConnectionSpec() const { return mFont.key(); }

    // Connects the visible and enabled listeners when they are named, and
    // the checked-state listener always.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads all three models and shows their values.
    void updateAppearance();

    // Matches the box's object name (or an empty name).
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

protected slots:
    // Sends the user's change to the checked-state model and puts the box
    // back when the model refuses it.
    void userChangedCheckedState(bool checked);

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

    BoolProperty mVisibleState{this};
    BoolProperty mEnabledState{this};
    // Connected always, so that a box whose main model is missing shows as disabled.
    BoolProperty mCheckedState{this, BoolProperty::kConnectAlways};
    // Next to the checked state's listener, which every notification reads:
    // tells a re-read that what it called deleted the box.
    Kel_DeletionGuard mGuard;
    // Set while the box shows a model's value or undoes a refused change, so
    // that the resulting toggled signal is not taken for a user change.
    bool mApplyingModelState;
    // Whether the visible-state and enabled-state listeners are connected,
    // as their last notification (every change of it sends one) left them:
    // a re-read skips the requests that an unconnected listener would not
    // send anyway, without touching those listeners' memory.
    bool mVisibleConnected = false;
    bool mEnabledConnected = false;
    Kel_BoundFont mFont{this};
};

#endif
