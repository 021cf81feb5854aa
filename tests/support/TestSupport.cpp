#include "TestSupport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

DebugMessageCollector* DebugMessageCollector::sCurrent = nullptr;

DebugMessageCollector::DebugMessageCollector()
    : mPrevious(qInstallMessageHandler(&DebugMessageCollector::handler))
{
    sCurrent = this;
}

DebugMessageCollector::~DebugMessageCollector()
{
    qInstallMessageHandler(mPrevious);
    sCurrent = nullptr;
}

void DebugMessageCollector::handler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!sCurrent)
        return;
    sCurrent->mMessages.append(message);
    sCurrent->mRecords.append({type, QString::fromLatin1(context.category), message});
}

QString testDataDir()
{
    return QStringLiteral(KEL_TEST_DATA_DIR) + QLatin1Char('/');
}

bool waitFor(const std::function<bool()>& condition, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return true;
}
