#include "Uip_FunctionCall_ParseNode.h"

#include "Mv_ListenerBase.h"
#include "Mve_DirectAccess.h"
#include "Mvt_Action_API.h"

#include <utility>

Uip_FunctionCall_ParseNode::Uip_FunctionCall_ParseNode(std::unique_ptr<Uip_ParseNode> callee,
                                                       std::unique_ptr<Uip_ParseNode> argument)
    : mCalleeP(std::move(callee)), mArgumentP(std::move(argument))
{
}

Uip_FunctionCall_ParseNode::~Uip_FunctionCall_ParseNode() = default;

bool Uip_FunctionCall_ParseNode::ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                                     QWidget* owner)
{
    if (!mCalleeP || !mCalleeP->ConnectAndTypeCheck(environment, owner))
        return false;
    return mArgumentP ? mArgumentP->ConnectAndTypeCheck(environment, owner) : true;
}

bool Uip_FunctionCall_ParseNode::Evaluate(Mv_Variant* result)
{
    Mv_ListenerBase* listener = nullptr;
    if (!mCalleeP || !mCalleeP->EvaluateFunctionRef(&listener) || !listener)
        return false;

    if (!mArgumentP) {
        // A plain action without parameters is called directly.
        bool answer = false;
        if (Mve_DirectAccess::callAction(listener->directModel(), result, &answer))
            return answer;
    }
    Mvt_Action_API::ArgumentList arguments;
    if (mArgumentP) {
        Mv_Variant value;
        if (!mArgumentP->Evaluate(&value) || value.isEmpty())
            return false;
        arguments.push_back(std::move(value));
    }
    // Checked after the argument, which may have run code of its own.
    if (!listener->isConnectedToModel())
        return false;

    Mv_Variant discarded;
    return listener->SendMessageToModel(Mvt_Action_API::MsgAction(std::move(arguments), result ? result : &discarded), true);
}

bool Uip_FunctionCall_ParseNode::isConnected()
{
    bool calleeReady = mCalleeP && mCalleeP->isConnected();
    if (calleeReady) {
        Mv_ListenerBase* listener = nullptr;
        bool enabled = false;
        calleeReady = mCalleeP->EvaluateFunctionRef(&listener) && listener
            && (Mve_DirectAccess::isActionEnabled(listener->directModel(), &enabled)
                || listener->SendMessageToModel(Mvt_Action_API::MsgIsEnabled(&enabled), true))
            && enabled;
    }
    const bool argumentReady = mArgumentP ? mArgumentP->isConnected() : true;
    return calleeReady && argumentReady;
}

QString Uip_FunctionCall_ParseNode::toTreeString(const QString& prefix) const
{
    const QString inner = prefix + QLatin1String("   ");
    QString tree = prefix + QLatin1String("FunctionCall\n");
    if (mCalleeP)
        tree += mCalleeP->toTreeString(inner);
    if (mArgumentP)
        tree += mArgumentP->toTreeString(inner);
    return tree;
}
