// Library initialisation without an application object.
#include "Kel_Initialize.h"
#include "Ost_Assert.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Report
{
    QString condition;
    QString file;
    int line;
};

} // namespace

TEST(Initialize, BeforeTheApplicationReportsAndStillInitialisesOnce)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    ASSERT_FALSE(Kel_IsInitialized());

    QTemporaryDir resources;
    ASSERT_TRUE(resources.isValid());
    qputenv("KELCORE_RESOURCE_DIR", QFile::encodeName(resources.path()));

    QVector<Report> reports;
    const Ost_Assert::Handler previous = Ost_Assert::setHandler(
        [&](const QString& condition, const QString& file, int line) { reports.append({condition, file, line}); });
    {
        DebugMessageCollector log;
        Kel_Initialize("KelInitTest");
    }

    ASSERT_EQ(reports.size(), 1);
    EXPECT_EQ(reports[0].condition, QStringLiteral("qApp"));
    EXPECT_EQ(QFileInfo(reports[0].file).completeBaseName(), QStringLiteral("Kel_Initialize"));
    EXPECT_EQ(reports[0].line, 38);

    // The assertion does not stop the initialisation.
    EXPECT_TRUE(Kel_IsInitialized());
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QStringLiteral("KelInitTest"));
    EXPECT_EQ(QDir(Ost_Resource::getResourcePath()).canonicalPath(), QDir(resources.path()).canonicalPath());
    EXPECT_TRUE(Ost_Resource::getResourcePath().endsWith(QLatin1Char('/')));

    // Later calls do nothing at all: no report, no new name.
    reports.clear();
    Kel_Initialize("SomethingElse");
    Kel_Initialize(nullptr);
    EXPECT_TRUE(reports.isEmpty());
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QStringLiteral("KelInitTest"));

    Ost_Assert::setHandler(previous);
    qunsetenv("KELCORE_RESOURCE_DIR");
}
