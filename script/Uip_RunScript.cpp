#include "Uip_RunScript.h"

#include "Kel_Initialize_p.h"

#include "Mv_Utils.h"
#include "Mv_Variant.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <memory>

bool Uip_RunScript(boost::shared_ptr<const Mv_ConnectionEnvironment> env, const QString& script)
{
    std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(script, nullptr));
    if (!root || !root->ConnectAndTypeCheck(env, nullptr))
        return false;
    Mv_Variant result;
    return root->Evaluate(&result);
}

void Uip_InstallDelayedActionRunner()
{
    Mv_Utils::Mv_SetDelayedActionRunner(&Uip_RunScript);
}

namespace {

// From initialisation on, scripts queued with Mv_Utils::Mv_AddDelayedAction run.
const bool sRunnerInstalledAtInitialization = Kel_AddInitializationStep(&Uip_InstallDelayedActionRunner);

} // namespace
