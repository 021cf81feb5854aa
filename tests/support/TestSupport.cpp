#include "TestSupport.h"

#include "Mv_ModelBase.h"

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

void publishAll(std::initializer_list<Mv_ModelBase*> models, Mv_ConnectionDict* dict)
{
    for (Mv_ModelBase* model : models)
        model->Publish(dict);
}

Mv_ConnectionEnvironment::Ptr environmentWith(const QString& name, const QString& value)
{
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(name, value);
    return env;
}

QString testDataDir()
{
    return QStringLiteral(KEL_TEST_DATA_DIR) + QLatin1Char('/');
}

void selectTestPlatform()
{
    QByteArray platform = qgetenv("KELCORE_TEST_QPA_PLATFORM");
    if (platform.isEmpty())
        platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
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
