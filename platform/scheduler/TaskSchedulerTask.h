#ifndef TASKSCHEDULERTASK_H
#define TASKSCHEDULERTASK_H

#include "kelplatform_export.h"

#include <QString>
#include <boost/function.hpp>

// A callback that TaskScheduler runs on the GUI thread after a delay, once or
// repeatedly. Deleting a task takes it out of the scheduler.
class KELPLATFORM_EXPORT TaskSchedulerTask
{
public:
    typedef boost::function<void()> Callback;

    // schedulerOwned: the scheduler deletes a one-shot task after running it.
    // timerMs: delay before the first run and, when repeating, between runs.
    TaskSchedulerTask(const QString& name, int priority, Callback callback, bool schedulerOwned, int timerMs,
                      bool repeating);
    TaskSchedulerTask(const QString& name, int priority, Callback callback, bool schedulerOwned, bool repeating);
    virtual ~TaskSchedulerTask();
    TaskSchedulerTask(const TaskSchedulerTask&) = delete;
    TaskSchedulerTask& operator=(const TaskSchedulerTask&) = delete;

    const QString& name() const { return mName; }
    int priority() const { return mPriority; }
    int timer() const { return mTimer; }
    // Changes the delay; a pending run moves to (last run, or addTask when the
    // task has not run since) + ms, but never into the past.
    void setTimer(int ms);
    bool isReady() const { return mReady; }
    // A task that is not ready when its run comes up is skipped and unscheduled.
    void setReady(bool ready) { mReady = ready; }
    bool isRepeating() const { return mRepeating; }
    bool isSchedulerOwned() const { return mSchedulerOwned; }

private:
    friend class TaskScheduler;

    QString mName;
    int mPriority;
    Callback mCallback;
    bool mSchedulerOwned;
    int mTimer;
    bool mRepeating;
    bool mReady;
};

#endif
