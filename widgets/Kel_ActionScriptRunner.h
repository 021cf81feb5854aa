#ifndef KEL_ACTIONSCRIPTRUNNER_H
#define KEL_ACTIONSCRIPTRUNNER_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <memory>

class TaskSchedulerTask;
class Uip_ParseNode;

// The action script of a button and its auto-repeat: parsing, connecting
// (a script whose models are missing waits for them), whether it can run
// now, running it, and the repeat task that runs it again while the button
// is held. Shared by the action buttons; the owner decides when to press,
// release and run.
class KELCORE_EXPORT Kel_ActionScriptRunner
{
public:
    enum RepeatState
    {
        kRepeatIdle = 0,
        kWaitingForFirstRepeat = 1,
        kRepeating = 2
    };

    // owner is the widget the script runs for (it may delete it); the
    // repeat task is named repeatTaskName.
    Kel_ActionScriptRunner(QWidget* owner, const char* repeatTaskName);
    ~Kel_ActionScriptRunner();
    Kel_ActionScriptRunner(const Kel_ActionScriptRunner&) = delete;
    Kel_ActionScriptRunner& operator=(const Kel_ActionScriptRunner&) = delete;

    // Parses a new script (Latin-1); one that does not parse leaves the
    // button with nothing to run. It is connected at the next connect.
    void setScript(const QByteArray& script);
    QByteArray script() const { return mScript; }

    // Connects the script to its models in environment. A model that is
    // missing is waited for: the script becomes ready once it is published.
    // False when a notification meanwhile deleted the owner.
    bool connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    // Whether the button may be operated as far as the script is concerned:
    // true without a script and before the first connection; afterwards
    // while every model it names is present and every action it calls is enabled.
    bool isReady();
    // Called when a notification of the script's models changed isReady().
    void onReadinessChanged(const std::function<void()>& handler) { mReadinessHandler = handler; }

    // Runs the script once, if there is one. False when it deleted the owner.
    bool run();

    void setAutoRepeat(bool on);
    bool autoRepeat() const { return mAutoRepeat; }
    // Takes effect at the next press.
    void setRepeatDelay(int ms) { mRepeatDelay = ms; }
    int repeatDelay() const { return mRepeatDelay; }
    // Takes effect at once, also for a repeat that still waits for its first run.
    void setRepeatInterval(int ms);
    int repeatInterval() const { return mRepeatInterval; }
    // Starts the repeat when auto-repeat is on and none runs.
    void startRepeat();
    void stopRepeat();
    RepeatState repeatState() const { return mRepeatState; }

private:
    void repeat();
    void listenToScriptModels(bool on);
    void scriptModelsChanged();

    QWidget* mOwnerP;
    const char* mRepeatTaskName;
    QByteArray mScript;
    // Shared so that a script that deletes the button while it runs finishes safely.
    std::shared_ptr<Uip_ParseNode> mTreeP;
    bool mTreeConnected;
    bool mLastReady;
    std::function<void()> mReadinessHandler;
    bool mAutoRepeat;
    int mRepeatDelay;
    int mRepeatInterval;
    // Deleted with the button: no repeat outlives it.
    std::unique_ptr<TaskSchedulerTask> mRepeatTaskP;
    RepeatState mRepeatState;
};

#endif
