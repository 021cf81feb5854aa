#ifndef UIP_RUNSCRIPT_H
#define UIP_RUNSCRIPT_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <boost/shared_ptr.hpp>

// Runs an action script once in env: parses it, connects it (without an
// owner window) and evaluates it. True when all three succeeded; a script
// whose models are not all present does not run at all.
KELCORE_EXPORT bool Uip_RunScript(boost::shared_ptr<const Mv_ConnectionEnvironment> env, const QString& script);

// Makes Uip_RunScript the runner of the model library's delayed-action
// queue (Mv_Utils::Mv_AddDelayedAction). Called by the library's
// initialisation.
KELCORE_EXPORT void Uip_InstallDelayedActionRunner();

#endif
