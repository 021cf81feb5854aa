#ifndef KEL_TEST_SUPPORT_H
#define KEL_TEST_SUPPORT_H

#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <functional>
#include <initializer_list>
#include <ostream>

class Mv_ModelBase;

// Collects the debug and warning messages written while it lives, so tests
// can check the exact texts that parsers and services report.
class DebugMessageCollector
{
public:
    // One message with its level and logging category.
    struct Record
    {
        QtMsgType type;
        QString category;
        QString text;
    };

    DebugMessageCollector();
    ~DebugMessageCollector();
    DebugMessageCollector(const DebugMessageCollector&) = delete;
    DebugMessageCollector& operator=(const DebugMessageCollector&) = delete;

    const QStringList& messages() const { return mMessages; }
    const QList<Record>& records() const { return mRecords; }
    bool contains(const QString& text) const { return mMessages.contains(text); }
    void clear()
    {
        mMessages.clear();
        mRecords.clear();
    }

private:
    static void handler(QtMsgType type, const QMessageLogContext& context, const QString& message);
    static DebugMessageCollector* sCurrent;
    QStringList mMessages;
    QList<Record> mRecords;
    QtMessageHandler mPrevious;
};

// Chooses the Qt platform before the application object exists: ctest sets
// the offscreen one on every test, and KELCORE_TEST_QPA_PLATFORM (e.g. xcb
// under xvfb-run) overrides it without reconfiguring the build.
void selectTestPlatform();

// Qt's texts for the XML errors of the fixtures, which the libraries pass on:
// Qt 6 reads documents with QXmlStreamReader, which words them otherwise and
// places an empty document's end at column 0.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
constexpr char kXmlTagMismatch[] = "Opening and ending tag mismatch.";
constexpr char kXmlEmptyDocumentAt[] = "Premature end of document. at line 1 column 0";
#else
constexpr char kXmlTagMismatch[] = "tag mismatch";
constexpr char kXmlEmptyDocumentAt[] = "unexpected end of file at line 1 column 1";
#endif

// Runs the event loop until condition holds or timeoutMs pass; answers the
// condition's last value.
bool waitFor(const std::function<bool()>& condition, int timeoutMs = 2000);

// Readable QString values in GoogleTest failure messages.
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& l, std::ostream* os)
{
    *os << '[' << l.join(QStringLiteral(", ")).toStdString() << ']';
}

// Publishes each model in dict (null: the process-wide dictionary).
void publishAll(std::initializer_list<Mv_ModelBase*> models, Mv_ConnectionDict* dict = nullptr);

// A child of the blank environment with the one variable name set to value.
Mv_ConnectionEnvironment::Ptr environmentWith(const QString& name, const QString& value);

// The folder that holds the test fixtures (tests/data).
QString testDataDir();

#endif
