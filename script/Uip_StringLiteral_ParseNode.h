#ifndef UIP_STRINGLITERAL_PARSENODE_H
#define UIP_STRINGLITERAL_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

// A string literal of a script: evaluates to its text (a QString variant).
class KELCORE_EXPORT Uip_StringLiteral_ParseNode : public Uip_ParseNode
{
public:
    explicit Uip_StringLiteral_ParseNode(const QString& text);

    bool Evaluate(Mv_Variant* result) override;
    QString toTreeString(const QString& prefix) const override;

    const QString& text() const { return mText; }

private:
    QString mText;
};

#endif
