#include "Uip_BooleanLiteral_ParseNode.h"

#include "Mv_Variant.h"

Uip_BooleanLiteral_ParseNode::Uip_BooleanLiteral_ParseNode(bool value)
    : mValue(value)
{
}

bool Uip_BooleanLiteral_ParseNode::Evaluate(Mv_Variant* result)
{
    if (result)
        *result = Mv_Variant::fromValue<bool>(mValue);
    return true;
}

QString Uip_BooleanLiteral_ParseNode::toTreeString(const QString& prefix) const
{
    return prefix + (mValue ? QLatin1String("BooleanLiteral true\n") : QLatin1String("BooleanLiteral false\n"));
}
