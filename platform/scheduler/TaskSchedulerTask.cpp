#include "TaskSchedulerTask.h"

#include "TaskScheduler.h"

TaskSchedulerTask::TaskSchedulerTask(const QString& name, int priority, Callback callback, bool schedulerOwned,
                                     int timerMs, bool repeating)
    : mName(name)
    , mPriority(priority)
    , mCallback(callback)
    , mSchedulerOwned(schedulerOwned)
    , mTimer(timerMs)
    , mRepeating(repeating)
    , mReady(true)
{
}

TaskSchedulerTask::TaskSchedulerTask(const QString& name, int priority, Callback callback, bool schedulerOwned,
                                     bool repeating)
    : TaskSchedulerTask(name, priority, callback, schedulerOwned, 0, repeating)
{
}

TaskSchedulerTask::~TaskSchedulerTask()
{
    // Asking for the instance here would create a scheduler during static
    // destruction; a task can only be scheduled if one exists already.
    if (TaskScheduler* scheduler = TaskScheduler::existingInstance())
        scheduler->taskDestroyed(this);
}

void TaskSchedulerTask::setTimer(int ms)
{
    mTimer = ms;
    if (TaskScheduler* scheduler = TaskScheduler::existingInstance())
        scheduler->taskTimerChanged(this);
}
