#ifndef OST_ASSERT_H
#define OST_ASSERT_H

#include "kelplatform_export.h"

#include <QString>
#include <boost/function.hpp>

// Reports broken invariants without stopping the program: a failed check is
// logged and handed to an optional handler (tests use it to observe them).
class KELPLATFORM_EXPORT Ost_Assert
{
public:
    typedef boost::function<void(const QString& condition, const QString& file, int line)> Handler;

    // Logs "ASSERT failure: <condition>, file <file>, line <line>" as a warning
    // and calls the installed handler. Never aborts. Null texts are allowed.
    static void handleFailedAssert(const char* condition, const char* file, int line);

    // Installs h (an empty function removes the handler); returns the previous one.
    static Handler setHandler(Handler h);
};

// Checks cond (evaluated exactly once) and reports it through Ost_Assert when false.
#define OST_ASSERT(cond)                                                       \
    do {                                                                       \
        if (!(cond))                                                           \
            ::Ost_Assert::handleFailedAssert(#cond, __FILE__, __LINE__);       \
    } while (false)

#endif
