#include "Mv_Utils.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <utility>

namespace {

struct DelayedQueue
{
    Mv_Utils::DelayedActionRunner runner;
    std::deque<std::pair<Mv_ConnectionEnvironment::ConstPtr, QString>> pending;
    bool drainScheduled = false;
};

DelayedQueue& queue()
{
    static DelayedQueue* const q = new DelayedQueue();
    return *q;
}

void drain()
{
    DelayedQueue& q = queue();
    q.drainScheduled = false;
    // Scripts queued while draining wait for the next turn, so a script that
    // queues itself cannot starve the event loop.
    auto batch = std::move(q.pending);
    q.pending.clear();
    for (auto& item : batch) {
        if (q.runner.empty())
            break;
        Mv_Utils::DelayedActionRunner runner = q.runner;
        runner(item.first, item.second);
    }
}

} // namespace

namespace Mv_Utils {

bool Mv_AddDelayedAction(Mv_ConnectionEnvironment::ConstPtr env, const QString& script)
{
    DelayedQueue& q = queue();
    if (q.runner.empty() || !QCoreApplication::instance())
        return false;
    q.pending.emplace_back(env ? env : Mv_ConnectionEnvironment::blankEnvironment(), script);
    if (!q.drainScheduled) {
        q.drainScheduled = true;
        QTimer::singleShot(0, QCoreApplication::instance(), &drain);
    }
    return true;
}

DelayedActionRunner Mv_SetDelayedActionRunner(const DelayedActionRunner& runner)
{
    DelayedActionRunner previous = queue().runner;
    queue().runner = runner;
    return previous;
}

int Mv_PendingDelayedActions()
{
    return int(queue().pending.size());
}

QString Mv_MakeStaticConnectionSpec(const QString& name)
{
    QString spec = name;
    spec.replace(QLatin1Char('$'), QLatin1String("$$"));
    return spec;
}

QString Mv_UniqueConnString(QString pattern)
{
    static quint64 counter = 0;
    return pattern.arg(++counter);
}

} // namespace Mv_Utils
