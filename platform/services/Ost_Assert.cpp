#include "Ost_Assert.h"

#include "Mv_Logging_p.h"

#include <QMutex>
#include <QMutexLocker>
#include <QtDebug>

namespace {

QMutex& handlerMutex()
{
    static QMutex mutex;
    return mutex;
}

Ost_Assert::Handler& installedHandler()
{
    static Ost_Assert::Handler handler;
    return handler;
}

// A handler that itself fails an assertion must not recurse forever.
thread_local int tHandlerDepth = 0;

} // namespace

void Ost_Assert::handleFailedAssert(const char* condition, const char* file, int line)
{
    const QString conditionText = QString::fromUtf8(condition ? condition : "");
    const QString fileText = QString::fromUtf8(file ? file : "");
    qCWarning(lcKelPlatform).noquote()
        << QStringLiteral("ASSERT failure: %1, file %2, line %3").arg(conditionText, fileText).arg(line);

    if (tHandlerDepth > 0)
        return;
    Handler handler;
    {
        QMutexLocker lock(&handlerMutex());
        handler = installedHandler();
    }
    if (!handler)
        return;
    ++tHandlerDepth;
    try {
        handler(conditionText, fileText, line);
    } catch (...) {
        qCWarning(lcKelPlatform, "Ost_Assert: the assertion handler threw an exception");
    }
    --tHandlerDepth;
}

Ost_Assert::Handler Ost_Assert::setHandler(Handler h)
{
    QMutexLocker lock(&handlerMutex());
    Handler previous = installedHandler();
    installedHandler() = h;
    return previous;
}
