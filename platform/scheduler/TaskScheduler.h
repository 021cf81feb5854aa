#ifndef TASKSCHEDULER_H
#define TASKSCHEDULER_H

#include "kelplatform_export.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <vector>

class TaskSchedulerTask;

// Runs TaskSchedulerTask callbacks on the GUI thread from the event loop,
// each when its timer expires. Tasks due at the same time run by descending
// priority. A callback may add, remove or delete any task, its own included.
//
// For tests the clock can be switched to manual: time then moves only with
// advanceClock, which runs synchronously, in time order, every run that falls
// inside the advanced span.
class KELPLATFORM_EXPORT TaskScheduler : public QObject
{
    Q_OBJECT

public:
    // The process-wide scheduler, created on first use and never destroyed.
    static TaskScheduler* instance();

    // Schedules task to run timer() ms from now (restarting it if it was
    // scheduled already). The callback never runs inside addTask. runFirst
    // puts it ahead of every other task due at the same time.
    void addTask(TaskSchedulerTask* task, bool runFirst = false);
    // Unschedules task without deleting it.
    void removeTask(TaskSchedulerTask* task);
    bool isScheduled(const TaskSchedulerTask* task) const;

    // Manual clock on: time stands still except for advanceClock, and tasks
    // run only inside advanceClock. The clock stays continuous across switches.
    void setManualClock(bool on);
    bool isManualClock() const { return mManualClock; }
    // Moves the manual clock by ms, running every task that becomes due.
    void advanceClock(int ms);
    // The scheduler's time in milliseconds.
    qint64 now() const;

private:
    friend class TaskSchedulerTask;

    struct Entry
    {
        TaskSchedulerTask* mTask;
        qint64 mDue;
        qint64 mAnchor; // when the task was added or last ran
        int mPriority;
        bool mRunFirst;
        quint64 mStamp; // order of scheduling
    };
    struct RunFrame
    {
        TaskSchedulerTask* mTask;
        bool mDeleted;
    };

    TaskScheduler();
    ~TaskScheduler() override;

    static TaskScheduler* existingInstance();
    void taskDestroyed(TaskSchedulerTask* task);
    void taskTimerChanged(TaskSchedulerTask* task);

    static bool runsBefore(const Entry& a, const Entry& b);
    bool onGuiThread() const;
    bool isRunning(const TaskSchedulerTask* task) const;
    int findEntry(const TaskSchedulerTask* task) const;
    void schedule(TaskSchedulerTask* task, qint64 anchor, bool runFirst);
    bool removeEntry(const TaskSchedulerTask* task);
    // The entry to run next among those scheduled up to maxStamp, or -1.
    int nextEntry(quint64 maxStamp) const;
    void runEntry(int index);
    void armTimer();
    void onTimer();

    std::vector<Entry> mEntries;
    std::vector<RunFrame*> mRunning;
    quint64 mStamp;
    QElapsedTimer mElapsed;
    qint64 mOffset; // keeps the real clock continuous after manual periods
    qint64 mManualNow;
    bool mManualClock;
    bool mAdvancing;
    QTimer mTimer;
};

#endif
