#ifndef KEL_ACTIONBUTTON_H
#define KEL_ACTIONBUTTON_H

#include "kelcore_export.h"

#include "Kel_ActionScriptRunner.h"
#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QPushButton>
#include <QString>

// A push button that runs an action script when clicked (or on Return and
// Enter while it has the focus). A bool model can enable it, and it is
// greyed out while its script cannot run (a model it names is missing or an
// action it calls says it is disabled). With quorAutoRepeat on, holding it
// down runs the script again after repeatDelay ms and then every
// repeatInterval ms until release.
class KELCORE_EXPORT Kel_ActionButton : public QPushButton, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray actionScript READ GetActionScript WRITE SetActionScript)
    Q_PROPERTY(bool quorAutoRepeat READ GetQuorAutoRepeat WRITE SetQuorAutoRepeat)
    Q_PROPERTY(int repeatDelay READ GetRepeatDelay WRITE SetRepeatDelay)
    Q_PROPERTY(int repeatInterval READ GetRepeatInterval WRITE SetRepeatInterval)
    Q_PROPERTY(QByteArray enabledStateConnection READ getEnabledStateConnectionSpec WRITE setEnabledStateConnectionSpec)
    Q_PROPERTY(bool defaultEnabledState READ GetDefaultEnabledState WRITE SetDefaultEnabledState)

public:
    // actionScript is taken as Latin-1; ignoredText is accepted for
    // compatibility and not used. defaultEnabledState applies while no
    // enabled-state model is connected.
    explicit Kel_ActionButton(QWidget* parent = nullptr, const char* name = nullptr, QString text = QString(),
                              QString actionScript = QString(), QString ignoredText = QString(),
                              bool defaultEnabledState = true);
    ~Kel_ActionButton() override;

    // Parses the script at once; one that does not parse leaves the button
    // inert. It is connected to its models at the next makeConnections.
    void SetActionScript(const QByteArray& script);
    QByteArray GetActionScript() const { return mScript.script(); }

    // Switching auto-repeat off stops a running repeat.
    void SetQuorAutoRepeat(bool on) { mScript.setAutoRepeat(on); }
    bool GetQuorAutoRepeat() const { return mScript.autoRepeat(); }
    // Takes effect at the next press.
    void SetRepeatDelay(int ms) { mScript.setRepeatDelay(ms); }
    int GetRepeatDelay() const { return mScript.repeatDelay(); }
    // Takes effect at once, also while the button is held (then also for a
    // first repeat still to come).
    void SetRepeatInterval(int ms) { mScript.setRepeatInterval(ms); }
    int GetRepeatInterval() const { return mScript.repeatInterval(); }

    // Connection specification of the bool model that enables the button;
    // takes effect at the next makeConnections.
    void setEnabledStateConnectionSpec(const QByteArray& spec) { mEnabledState.setSpec(QString::fromUtf8(spec)); }
    QByteArray getEnabledStateConnectionSpec() const { return mEnabledState.spec().toUtf8(); }
    void SetDefaultEnabledState(bool enabled);
    bool GetDefaultEnabledState() const { return mDefaultEnabledState; }

    // Connects the script and the enabled-state model. A script whose models
    // are missing keeps the button greyed out until they are published.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Enabled as the enabled-state model says, or by default while none is
    // connected, and only while the script can run.
    void updateEnabledAppearance();

signals:
    // After every click, once the script (if any) has run.
    void afterClickAction();

public slots:
    // Runs the script and emits afterClickAction.
    void slotClicked();
    // Starts the auto-repeat when it is on.
    void slotPressed();
    // Stops the auto-repeat.
    void slotReleased();

protected:
    // Return and Enter click the button without pressing it visibly.
    void keyPressEvent(QKeyEvent* event) override;
    // A hidden button never sees its release: the repeat stops here.
    void hideEvent(QHideEvent* event) override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mEnabledState{this};
    Kel_ActionScriptRunner mScript{this, "ActionButtonAutoRepeatTask"};
    bool mDefaultEnabledState;
};

#endif
