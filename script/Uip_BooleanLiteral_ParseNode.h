#ifndef UIP_BOOLEANLITERAL_PARSENODE_H
#define UIP_BOOLEANLITERAL_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

// A boolean literal (true or false) of a script: evaluates to a bool variant.
class KELCORE_EXPORT Uip_BooleanLiteral_ParseNode : public Uip_ParseNode
{
public:
    explicit Uip_BooleanLiteral_ParseNode(bool value);

    bool Evaluate(Mv_Variant* result) override;
    QString toTreeString(const QString& prefix) const override;

    bool value() const { return mValue; }

private:
    bool mValue;
};

#endif
