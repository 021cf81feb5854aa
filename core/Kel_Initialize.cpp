#include "Kel_Initialize.h"

#include "Ost_Assert.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"
#include "Uip_RunScript.h"

#include <QCoreApplication>

namespace {

// Set once, never cleared: there is no shutdown.
bool sInitialized = false;

// The failed-application check is reported with this fixed line so that
// support tooling, which files assertion reports by source file and line,
// keeps recognising it whatever happens to the layout of this file.
const int kMissingApplicationLine = 38;

} // namespace

void Kel_Initialize(const char* productName)
{
    if (sInitialized)
        return;

    // The directory service and translations need the application object;
    // initialising without one is a programming error, reported and survived.
    if (!QCoreApplication::instance())
        Ost_Assert::handleFailedAssert("qApp", __FILE__, kMissingApplicationLine);

    // Set before anything else so that a call made again from inside the
    // directory service returns at once.
    sInitialized = true;

    Ost_DirPaths::Initialize(productName);
    Ost_Resource::setResourcePath(Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, true));

    // From now on, scripts queued with Mv_Utils::Mv_AddDelayedAction run.
    Uip_InstallDelayedActionRunner();
}

bool Kel_IsInitialized()
{
    return sInitialized;
}
