#include "Uip_ParseNode.h"

#include "Mv_Variant.h"

Uip_ParseNode::~Uip_ParseNode() = default;

bool Uip_ParseNode::ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment>, QWidget*)
{
    return true;
}

bool Uip_ParseNode::Evaluate(Mv_Variant* result)
{
    if (result)
        *result = Mv_Variant();
    return true;
}

bool Uip_ParseNode::Assign(Mv_Variant)
{
    return false;
}

bool Uip_ParseNode::EvaluateFunctionRef(Mv_ListenerBase**)
{
    return false;
}

bool Uip_ParseNode::isConnected()
{
    return true;
}
