// Assertions and folders.
#include "Ost_Assert.h"
#include "Ost_DirPaths.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(ServicesAssert, FailedCheckReachesHandlerAndLogWithoutAborting)
{
    QStringList seen;
    int calls = 0, evaluations = 0;
    Ost_Assert::Handler previous = Ost_Assert::setHandler([&](const QString& c, const QString& f, int l) {
        seen = QStringList{c, f, QString::number(l)};
        ++calls;
        OST_ASSERT(calls < 0); // logged, but must not re-enter the handler
    });
    DebugMessageCollector log;
    const int expectedLine = __LINE__ + 1;
    OST_ASSERT(++evaluations == 5);

    EXPECT_EQ(evaluations, 1);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(seen, QStringList({"++evaluations == 5", __FILE__, QString::number(expectedLine)}));
    EXPECT_TRUE(log.contains(QStringLiteral("ASSERT failure: ++evaluations == 5, file %1, line %2")
                                 .arg(QStringLiteral(__FILE__))
                                 .arg(expectedLine)));

    // A passing check is evaluated once and reports nothing; the macro is one
    // statement, so it fits an unbraced if/else.
    if (evaluations > 0)
        OST_ASSERT(++evaluations == 2);
    else
        ADD_FAILURE();
    EXPECT_EQ(evaluations, 2);
    Ost_Assert::handleFailedAssert(nullptr, nullptr, -1);
    EXPECT_TRUE(log.contains(QStringLiteral("ASSERT failure: , file , line -1")));
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(static_cast<bool>(Ost_Assert::setHandler(previous)));
}

TEST(ServicesDirPaths, ProductExecutableAndPerProductFolders)
{
    Ost_DirPaths::Initialize("KelFirst");
    Ost_DirPaths::Initialize("KelSecond");
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QStringLiteral("KelSecond"));
    Ost_DirPaths::Initialize(nullptr);
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QCoreApplication::applicationName());
    EXPECT_EQ(Ost_DirPaths::GetApplicationExeName(), QFileInfo(QCoreApplication::applicationFilePath()).fileName());
    EXPECT_EQ(Ost_DirPaths::GetPath(Ost_DirPaths::kExecutableDir, false),
              QCoreApplication::applicationDirPath() + QLatin1Char('/'));
    EXPECT_TRUE(Ost_DirPaths::GetPath(Ost_DirPaths::DirPath_t(42), true).isEmpty());

    const QString product = QStringLiteral("KelServicesTest%1").arg(QCoreApplication::applicationPid());
    Ost_DirPaths::Initialize(product.toLatin1().constData());
    const QString tempDir = Ost_DirPaths::GetPath(Ost_DirPaths::kTempDir, true);
    EXPECT_EQ(tempDir, QDir::tempPath() + QLatin1Char('/') + product + QLatin1Char('/'));
    EXPECT_TRUE(QFileInfo(tempDir).isDir());
    QDir(tempDir).removeRecursively();
    EXPECT_TRUE(Ost_DirPaths::GetPath(Ost_DirPaths::kUserDataDir, false)
                    .endsWith(QLatin1Char('/') + product + QLatin1Char('/')));

    // The name is Latin-1: an accented product keeps its accent in folder names.
    const QString accented = QStringLiteral("Montage \u00e9 %1").arg(QCoreApplication::applicationPid());
    Ost_DirPaths::Initialize(accented.toLatin1().constData());
    EXPECT_EQ(Ost_DirPaths::GetProductName(), accented);
    const QString accentedDir = Ost_DirPaths::GetPath(Ost_DirPaths::kTempDir, true);
    EXPECT_EQ(accentedDir, QDir::tempPath() + QLatin1Char('/') + accented + QLatin1Char('/'));
    EXPECT_TRUE(QFileInfo(QDir::tempPath() + QLatin1Char('/') + accented).isDir());
    QDir(accentedDir).removeRecursively();
    Ost_DirPaths::Initialize(nullptr);
}

TEST(ServicesDirPaths, ResourceDirFollowsEnvironmentAndCreateFlag)
{
    const QByteArray saved = qgetenv("KELCORE_RESOURCE_DIR");
    QTemporaryDir temp;
    ASSERT_TRUE(temp.isValid());
    const QString target = temp.path() + QStringLiteral("/res/deeper");

    qputenv("KELCORE_RESOURCE_DIR", target.toLocal8Bit());
    EXPECT_EQ(Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, false), target + QLatin1Char('/'));
    EXPECT_FALSE(QFileInfo::exists(target));
    Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, true);
    EXPECT_TRUE(QFileInfo(target).isDir());
    qputenv("KELCORE_RESOURCE_DIR", (target + QLatin1Char('/')).toLocal8Bit());
    EXPECT_EQ(Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, false), target + QLatin1Char('/'));
    qputenv("KELCORE_RESOURCE_DIR", QByteArray());
    EXPECT_EQ(Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, false),
              QCoreApplication::applicationDirPath() + QStringLiteral("/resources/"));
    qputenv("KELCORE_RESOURCE_DIR", saved);
}
