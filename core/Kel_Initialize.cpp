#include "Kel_Initialize.h"
#include "Kel_Initialize_p.h"

#include "Ost_Assert.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"

#include <QCoreApplication>
#include <vector>

namespace {

// Set once, never cleared: there is no shutdown.
bool sInitialized = false;

// The failed-application check is reported with this fixed line so that
// support tooling, which files assertion reports by source file and line,
// keeps recognising it whatever happens to the layout of this file.
const int kMissingApplicationLine = 38;

std::vector<void (*)()>& initializationSteps()
{
    static std::vector<void (*)()> steps;
    return steps;
}

} // namespace

bool Kel_AddInitializationStep(void (*step)())
{
    initializationSteps().push_back(step);
    if (sInitialized)
        step();
    return true;
}

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

    // The subsystems' own steps (the script runner of the delayed-action
    // queue among them).
    for (void (*step)() : initializationSteps())
        step();
}

bool Kel_IsInitialized()
{
    return sInitialized;
}
