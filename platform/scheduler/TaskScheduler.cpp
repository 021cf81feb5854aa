#include "TaskScheduler.h"

#include "Mv_Logging_p.h"
#include "Ost_Assert.h"
#include "TaskSchedulerTask.h"

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <climits>
#include <exception>
#include <limits>

namespace {

std::atomic<TaskScheduler*> sInstance{nullptr};

// With the manual clock a task that keeps rescheduling itself with no delay
// would never let time move on; past this many runs at one instant
// advanceClock gives up on that instant.
const int kMaxRunsPerInstant = 100000;

} // namespace

TaskScheduler* TaskScheduler::instance()
{
    // Deliberately never deleted: tasks destroyed during static destruction
    // must still find it.
    static TaskScheduler* const scheduler = new TaskScheduler;
    return scheduler;
}

TaskScheduler* TaskScheduler::existingInstance()
{
    return sInstance.load();
}

TaskScheduler::TaskScheduler()
    : mStamp(0)
    , mOffset(0)
    , mManualNow(0)
    , mManualClock(false)
    , mAdvancing(false)
    , mTimer(this)
{
    mElapsed.start();
    mTimer.setSingleShot(true);
    mTimer.setTimerType(Qt::PreciseTimer);
    connect(&mTimer, &QTimer::timeout, this, &TaskScheduler::onTimer);
    // Callbacks belong on the GUI thread, wherever instance() was first asked for.
    if (QCoreApplication* app = QCoreApplication::instance()) {
        if (thread() != app->thread())
            moveToThread(app->thread());
    }
    sInstance.store(this);
}

TaskScheduler::~TaskScheduler() = default;

qint64 TaskScheduler::now() const
{
    return mManualClock ? mManualNow : mOffset + mElapsed.elapsed();
}

bool TaskScheduler::onGuiThread() const
{
    return QThread::currentThread() == thread();
}

bool TaskScheduler::runsBefore(const Entry& a, const Entry& b)
{
    if (a.mDue != b.mDue)
        return a.mDue < b.mDue;
    if (a.mRunFirst != b.mRunFirst)
        return a.mRunFirst;
    if (a.mRunFirst)
        return a.mStamp > b.mStamp; // the latest run-first request goes ahead
    if (a.mPriority != b.mPriority)
        return a.mPriority > b.mPriority;
    return a.mStamp < b.mStamp;
}

bool TaskScheduler::isRunning(const TaskSchedulerTask* task) const
{
    for (const RunFrame* frame : mRunning) {
        if (frame->mTask == task && !frame->mDeleted)
            return true;
    }
    return false;
}

int TaskScheduler::findEntry(const TaskSchedulerTask* task) const
{
    for (size_t i = 0; i < mEntries.size(); ++i) {
        if (mEntries[i].mTask == task)
            return int(i);
    }
    return -1;
}

bool TaskScheduler::isScheduled(const TaskSchedulerTask* task) const
{
    return task && findEntry(task) >= 0;
}

void TaskScheduler::schedule(TaskSchedulerTask* task, qint64 anchor, bool runFirst)
{
    Entry entry;
    entry.mTask = task;
    entry.mAnchor = anchor;
    entry.mDue = qMax(anchor + qMax(0, task->timer()), now());
    entry.mPriority = task->priority();
    entry.mRunFirst = runFirst;
    entry.mStamp = ++mStamp;
    mEntries.push_back(entry);
}

bool TaskScheduler::removeEntry(const TaskSchedulerTask* task)
{
    const int index = findEntry(task);
    if (index < 0)
        return false;
    mEntries.erase(mEntries.begin() + index);
    return true;
}

void TaskScheduler::addTask(TaskSchedulerTask* task, bool runFirst)
{
    OST_ASSERT(task != nullptr);
    OST_ASSERT(onGuiThread());
    if (!task || !onGuiThread())
        return;
    removeEntry(task);
    schedule(task, now(), runFirst);
    armTimer();
}

void TaskScheduler::removeTask(TaskSchedulerTask* task)
{
    OST_ASSERT(onGuiThread());
    if (!task || !onGuiThread())
        return;
    if (removeEntry(task))
        armTimer();
}

void TaskScheduler::taskDestroyed(TaskSchedulerTask* task)
{
    if (!onGuiThread())
        return;
    for (RunFrame* frame : mRunning) {
        if (frame->mTask == task)
            frame->mDeleted = true;
    }
    if (removeEntry(task))
        armTimer();
}

void TaskScheduler::taskTimerChanged(TaskSchedulerTask* task)
{
    if (!onGuiThread())
        return;
    const int index = findEntry(task);
    if (index < 0)
        return;
    Entry& entry = mEntries[size_t(index)];
    entry.mDue = qMax(entry.mAnchor + qMax(0, task->timer()), now());
    armTimer();
}

int TaskScheduler::nextEntry(quint64 maxStamp) const
{
    int best = -1;
    for (size_t i = 0; i < mEntries.size(); ++i) {
        const Entry& entry = mEntries[i];
        // A task whose callback is still on the stack (it opened a nested
        // event loop) waits until that callback returns.
        if (entry.mStamp > maxStamp || isRunning(entry.mTask))
            continue;
        if (best < 0 || runsBefore(entry, mEntries[size_t(best)]))
            best = int(i);
    }
    return best;
}

void TaskScheduler::runEntry(int index)
{
    const Entry entry = mEntries[size_t(index)];
    mEntries.erase(mEntries.begin() + index);
    TaskSchedulerTask* task = entry.mTask;
    if (!task->isReady())
        return;

    // Rescheduling before the callback lets the callback itself change the
    // next run (setTimer, removeTask, addTask) with the usual meaning.
    if (task->isRepeating())
        schedule(task, now(), entry.mRunFirst);

    // The callback may delete its task, and with it the stored function.
    const TaskSchedulerTask::Callback callback = task->mCallback;
    const QString name = task->name();
    RunFrame frame = {task, false};
    mRunning.push_back(&frame);
    try {
        if (callback)
            callback();
    } catch (const std::exception& e) {
        qCWarning(lcKelPlatform, "TaskScheduler: task \"%s\" threw: %s", qPrintable(name), e.what());
    } catch (...) {
        qCWarning(lcKelPlatform, "TaskScheduler: task \"%s\" threw an exception", qPrintable(name));
    }
    mRunning.pop_back();

    if (!frame.mDeleted && task->isSchedulerOwned() && !task->isRepeating() && findEntry(task) < 0)
        delete task;
}

void TaskScheduler::armTimer()
{
    if (!onGuiThread())
        return;
    // Without an application (a task deleted during static destruction) there
    // is no event loop to aim at.
    if (mManualClock || !QCoreApplication::instance()) {
        mTimer.stop();
        return;
    }
    bool found = false;
    qint64 due = 0;
    for (const Entry& entry : mEntries) {
        if (isRunning(entry.mTask))
            continue;
        if (!found || entry.mDue < due)
            due = entry.mDue;
        found = true;
    }
    if (!found) {
        mTimer.stop();
        return;
    }
    mTimer.start(int(qBound(qint64(0), qint64(due - now()), qint64(INT_MAX))));
}

void TaskScheduler::onTimer()
{
    if (mManualClock)
        return;
    // Only what was scheduled before this pass runs in it: a task that
    // reschedules itself with no delay runs again on the next event loop
    // round instead of starving it.
    const quint64 passStamp = mStamp;
    for (;;) {
        const int index = nextEntry(passStamp);
        if (index < 0 || mEntries[size_t(index)].mDue > now())
            break;
        runEntry(index);
        if (mManualClock)
            return;
    }
    armTimer();
}

void TaskScheduler::setManualClock(bool on)
{
    if (on == mManualClock)
        return;
    if (mAdvancing) {
        qCWarning(lcKelPlatform, "TaskScheduler::setManualClock: ignored while advanceClock runs");
        return;
    }
    if (on) {
        mManualNow = mOffset + mElapsed.elapsed();
        mManualClock = true;
        mTimer.stop();
    } else {
        mOffset = mManualNow - mElapsed.elapsed();
        mManualClock = false;
        armTimer();
    }
}

void TaskScheduler::advanceClock(int ms)
{
    if (!mManualClock) {
        qCWarning(lcKelPlatform, "TaskScheduler::advanceClock: the manual clock is off");
        return;
    }
    if (mAdvancing) {
        qCWarning(lcKelPlatform, "TaskScheduler::advanceClock: ignored inside a task run by advanceClock");
        return;
    }
    if (ms < 0) {
        qCWarning(lcKelPlatform, "TaskScheduler::advanceClock: time cannot go back (%d ms)", ms);
        return;
    }
    mAdvancing = true;
    const qint64 target = mManualNow + ms;
    qint64 instant = mManualNow;
    int runsAtInstant = 0;
    for (;;) {
        const int index = nextEntry(std::numeric_limits<quint64>::max());
        if (index < 0 || mEntries[size_t(index)].mDue > target)
            break;
        mManualNow = qMax(mManualNow, mEntries[size_t(index)].mDue);
        if (mManualNow != instant) {
            instant = mManualNow;
            runsAtInstant = 0;
        }
        if (++runsAtInstant > kMaxRunsPerInstant) {
            qCWarning(lcKelPlatform,
                      "TaskScheduler::advanceClock: tasks keep rescheduling themselves at %lld ms; moving on",
                      static_cast<long long>(instant));
            break;
        }
        runEntry(index);
    }
    mManualNow = target;
    mAdvancing = false;
}
