// Task scheduling, mostly on the manual clock so that timelines are exact.
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"

#include <QElapsedTimer>
#include <QTest>
#include <QVector>
#include <gtest/gtest.h>
#include <memory>

namespace {

// Counts destructions, to see who deletes scheduler-owned tasks.
class CountedTask : public TaskSchedulerTask
{
public:
    CountedTask(TaskSchedulerTask::Callback callback, bool owned, bool repeating)
        : TaskSchedulerTask(QStringLiteral("counted"), 0, callback, owned, 5, repeating)
    {
    }
    ~CountedTask() override { ++sDestroyed; }
    static inline int sDestroyed = 0;
};

class TaskSchedulerManual : public ::testing::Test
{
protected:
    void SetUp() override
    {
        mScheduler->setManualClock(true);
        mStart = mScheduler->now();
    }
    void TearDown() override { mScheduler->setManualClock(false); }
    // Manual time since the test started.
    qint64 t() const { return mScheduler->now() - mStart; }
    void advance(int ms) { mScheduler->advanceClock(ms); }

    TaskScheduler* mScheduler = TaskScheduler::instance();
    qint64 mStart = 0;
};

} // namespace

TEST_F(TaskSchedulerManual, NeverRunsInsideAddTaskEvenWithoutDelay)
{
    bool inAdd = false;
    QStringList order;
    TaskSchedulerTask second(QStringLiteral("second"), 0, [&]() { order << (inAdd ? "early" : "second"); }, false,
                             false);
    TaskSchedulerTask first(QStringLiteral("first"), 0, [&]() {
        order << "first";
        inAdd = true;
        mScheduler->addTask(&second, false); // due now: later in this advance, not in here
        inAdd = false;
    }, false, false);
    inAdd = true;
    mScheduler->addTask(&first, false);
    inAdd = false;
    EXPECT_TRUE(order.isEmpty());
    advance(0);
    EXPECT_EQ(order, QStringList({"first", "second"}));
}

TEST_F(TaskSchedulerManual, RepeatingTimelineAndTimerChanges)
{
    // Auto-repeat style: first run after the delay, then at the interval set
    // from inside the first run.
    QVector<qint64> times;
    TaskSchedulerTask* selfP = nullptr;
    TaskSchedulerTask task(QStringLiteral("repeat"), 0, [&]() {
        times.append(t());
        selfP->setTimer(50);
    }, false, 300, true);
    selfP = &task;
    mScheduler->addTask(&task, false);
    advance(299);
    EXPECT_TRUE(times.isEmpty());
    advance(1);
    advance(120);
    EXPECT_EQ(times, QVector<qint64>({300, 350, 400}));

    // Outside a run the pending run moves relative to the last run...
    advance(10); // t = 430
    task.setTimer(40);
    advance(9);
    EXPECT_EQ(times.size(), 3);
    advance(1);
    EXPECT_EQ(times.last(), 440);
    // ...but never into the past: it lands on now, behind a higher priority
    // task due now as well.
    advance(30); // t = 470; the run at 440 set the interval back to 50
    int runsSeenByOther = -1;
    TaskSchedulerTask other(QStringLiteral("other"), 10, [&]() { runsSeenByOther = times.size(); }, false, 0, false);
    mScheduler->addTask(&other, false);
    task.setTimer(5);
    advance(0);
    EXPECT_EQ(times.last(), 470);
    EXPECT_EQ(runsSeenByOther, 4);

    // Adding it again restarts the delay from now.
    advance(20); // t = 490, next run was due at 520
    mScheduler->addTask(&task, false);
    advance(49);
    EXPECT_EQ(times.last(), 470);
    advance(1);
    EXPECT_EQ(times.last(), 540);
}

TEST_F(TaskSchedulerManual, NotReadyRemovedAndDeletedTasksStopRunning)
{
    QVector<qint64> times;
    auto record = [&]() { times.append(t()); };
    TaskSchedulerTask task(QStringLiteral("t"), 0, record, false, 10, true);
    mScheduler->addTask(&task, false);
    advance(10);
    task.setReady(false);
    advance(50);
    EXPECT_FALSE(mScheduler->isScheduled(&task));
    task.setReady(true);
    advance(50);
    mScheduler->addTask(&task, false);
    advance(10);
    EXPECT_EQ(times, QVector<qint64>({10, 120}));

    mScheduler->removeTask(&task);
    advance(100);
    auto* heapTask = new TaskSchedulerTask(QStringLiteral("heap"), 0, record, false, 10, true);
    mScheduler->addTask(heapTask, false);
    advance(10);
    delete heapTask;
    advance(100);
    EXPECT_EQ(times, QVector<qint64>({10, 120, 230}));
}

TEST_F(TaskSchedulerManual, DeletionByCallbacksAndByTheScheduler)
{
    QStringList ran;
    TaskSchedulerTask* victimP = new TaskSchedulerTask(QStringLiteral("victim"), 1, [&]() { ran << "victim"; }, false,
                                                       10, true);
    TaskSchedulerTask* selfP = nullptr;
    selfP = new TaskSchedulerTask(QStringLiteral("killer"), 5, [&]() {
        ran << "killer";
        delete victimP; // due at the same instant, but must not run any more
        delete selfP;
    }, false, 10, true);
    mScheduler->addTask(victimP, false);
    mScheduler->addTask(selfP, false);
    advance(100);
    EXPECT_EQ(ran, QStringList("killer"));

    // Only an owned one-shot task is deleted after its run.
    CountedTask::sDestroyed = 0;
    int runs = 0;
    auto count = [&]() { ++runs; };
    mScheduler->addTask(new CountedTask(count, true, false), false);
    std::unique_ptr<CountedTask> kept(new CountedTask(count, false, false));
    std::unique_ptr<CountedTask> ownedRepeating(new CountedTask(count, true, true));
    mScheduler->addTask(kept.get(), false);
    mScheduler->addTask(ownedRepeating.get(), false);
    advance(5);
    EXPECT_EQ(runs, 3);
    EXPECT_EQ(CountedTask::sDestroyed, 1);
    EXPECT_TRUE(mScheduler->isScheduled(ownedRepeating.get()));
    advance(5);
    EXPECT_EQ(runs, 4);
}

TEST_F(TaskSchedulerManual, OrderByTimeThenRunFirstThenPriority)
{
    QStringList order;
    std::vector<std::unique_ptr<TaskSchedulerTask>> tasks;
    auto add = [&](const QString& name, int priority, int timer, bool runFirst) {
        tasks.emplace_back(new TaskSchedulerTask(name, priority, [&order, name]() { order << name; }, false, timer,
                                                 false));
        mScheduler->addTask(tasks.back().get(), runFirst);
    };
    add("low", 1, 20, false);
    add("high", 9, 20, false);
    add("mid-a", 5, 20, false);
    add("mid-b", 5, 20, false);
    add("urgent", -3, 20, true);
    add("earlier", -9, 19, false);
    advance(100);
    EXPECT_EQ(order, QStringList({"earlier", "urgent", "high", "mid-a", "mid-b", "low"}));
    EXPECT_EQ(t(), 100);
}

TEST(TaskSchedulerRealClock, RunsFromTheEventLoop)
{
    TaskScheduler* scheduler = TaskScheduler::instance();
    ASSERT_FALSE(scheduler->isManualClock());
    QElapsedTimer clock;
    qint64 ranAfter = -1;
    int spins = 0;
    TaskSchedulerTask once(QStringLiteral("once"), 0, [&]() { ranAfter = clock.elapsed(); }, false, 20, false);
    // A zero-delay repeating task must not starve the timer of the other one.
    TaskSchedulerTask spinner(QStringLiteral("spin"), 0, [&]() { ++spins; }, false, 0, true);
    clock.start();
    scheduler->addTask(&once, false);
    scheduler->addTask(&spinner, false);
    EXPECT_EQ(spins, 0);
    EXPECT_TRUE(QTest::qWaitFor([&]() { return ranAfter >= 0; }, 2000));
    EXPECT_GE(ranAfter, 19);
    EXPECT_GT(spins, 1);
}
