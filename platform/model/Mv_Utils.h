#ifndef MV_UTILS_H
#define MV_UTILS_H

#include "kelplatform_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <boost/function.hpp>

// Helpers of the model library around connection names and deferred work.
namespace Mv_Utils {

// Runs an action script in an environment; answers whether it ran. The
// script language lives above this library and installs itself here.
typedef boost::function<bool(Mv_ConnectionEnvironment::ConstPtr, const QString&)> DelayedActionRunner;

// Queues script to run in env on a later turn of the event loop, after the
// current event (a menu's activation, say) has finished. False, and nothing
// queued, while no runner is installed or there is no application object.
KELPLATFORM_EXPORT bool Mv_AddDelayedAction(Mv_ConnectionEnvironment::ConstPtr env, const QString& script);

// Installs the runner of queued scripts (an empty one uninstalls it);
// answers the previous one.
KELPLATFORM_EXPORT DelayedActionRunner Mv_SetDelayedActionRunner(const DelayedActionRunner& runner);

// Number of scripts queued and not yet run.
KELPLATFORM_EXPORT int Mv_PendingDelayedActions();

// A specification that names exactly this model name: every "$" is doubled
// so that variable expansion leaves the name as it is.
KELPLATFORM_EXPORT QString Mv_MakeStaticConnectionSpec(const QString& name);

// A process-unique name made from a pattern holding %1, which is replaced by
// a counter: Mv_UniqueConnString("Kel_ListView%1::currentRow").
KELPLATFORM_EXPORT QString Mv_UniqueConnString(QString pattern);

} // namespace Mv_Utils

#endif
