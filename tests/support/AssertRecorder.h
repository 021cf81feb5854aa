#ifndef KEL_ASSERT_RECORDER_H
#define KEL_ASSERT_RECORDER_H

#include "Ost_Assert.h"

#include <QFileInfo>
#include <QStringList>

// Takes the reports of failed assertions while it lives, in place of the
// handler before it: each condition, and as "condition @ File" (the file's
// base name) for tests that check where it failed.
class AssertRecorder
{
public:
    AssertRecorder()
        : mPrevious(Ost_Assert::setHandler([this](const QString& condition, const QString& file, int) {
              conditions << condition;
              places << condition + QStringLiteral(" @ ") + QFileInfo(file).completeBaseName();
          }))
    {
    }
    ~AssertRecorder() { Ost_Assert::setHandler(mPrevious); }
    AssertRecorder(const AssertRecorder&) = delete;
    AssertRecorder& operator=(const AssertRecorder&) = delete;

    QStringList conditions;
    QStringList places;

private:
    Ost_Assert::Handler mPrevious;
};

#endif
