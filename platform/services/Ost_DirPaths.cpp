#include "Ost_DirPaths.h"

#include "Mv_Logging_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QStandardPaths>
#include <QtDebug>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

QMutex& nameMutex()
{
    static QMutex mutex;
    return mutex;
}

QString& storedProductName()
{
    static QString name;
    return name;
}

// The full path of the executable, also when no QCoreApplication exists yet.
QString executableFilePath()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationFilePath();
#if defined(Q_OS_WIN)
    wchar_t buffer[MAX_PATH * 4];
    const DWORD length = GetModuleFileNameW(nullptr, buffer, DWORD(sizeof(buffer) / sizeof(buffer[0])));
    if (length == 0 || length >= DWORD(sizeof(buffer) / sizeof(buffer[0])))
        return QString();
    return QDir::fromNativeSeparators(QString::fromWCharArray(buffer, int(length)));
#else
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
#endif
}

QString withTrailingSeparator(const QString& path)
{
    if (path.isEmpty() || path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\')))
        return path;
    return path + QLatin1Char('/');
}

QString executableDir()
{
    const QString file = executableFilePath();
    if (file.isEmpty())
        return QString();
    return withTrailingSeparator(QFileInfo(file).absolutePath());
}

} // namespace

void Ost_DirPaths::Initialize(const char* productName)
{
    QMutexLocker lock(&nameMutex());
    // One encoding for every caller: Latin-1, one byte per character.
    storedProductName() = QString::fromLatin1(productName ? productName : "");
}

QString Ost_DirPaths::GetProductName()
{
    {
        QMutexLocker lock(&nameMutex());
        if (!storedProductName().isEmpty())
            return storedProductName();
    }
    const QString appName = QCoreApplication::applicationName();
    return appName.isEmpty() ? QStringLiteral("KelCore") : appName;
}

QString Ost_DirPaths::GetApplicationExeName()
{
    return QFileInfo(executableFilePath()).fileName();
}

QString Ost_DirPaths::GetPath(DirPath_t kind, bool create)
{
    QString path;
    switch (kind) {
    case kExecutableDir:
        path = executableDir();
        break;
    case kUserDataDir: {
        QString base = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        if (base.isEmpty())
            base = QDir::homePath();
        path = withTrailingSeparator(base) + GetProductName() + QLatin1Char('/');
        break;
    }
    case kTempDir:
        path = withTrailingSeparator(QDir::tempPath()) + GetProductName() + QLatin1Char('/');
        break;
    case kResourceDir: {
        const QString fromEnvironment = qEnvironmentVariable("KELCORE_RESOURCE_DIR");
        if (!fromEnvironment.isEmpty())
            path = withTrailingSeparator(fromEnvironment);
        else if (!executableDir().isEmpty())
            path = executableDir() + QStringLiteral("resources/");
        break;
    }
    }
    if (path.isEmpty()) {
        qCWarning(lcKelPlatform, "Ost_DirPaths::GetPath: no folder for kind %d", int(kind));
        return path;
    }
    if (create && !QDir().mkpath(path))
        qCWarning(lcKelPlatform).noquote() << QStringLiteral("Ost_DirPaths::GetPath: cannot create %1").arg(path);
    return path;
}
