#include "Uip_StringLiteral_ParseNode.h"

#include "Mv_Variant.h"

Uip_StringLiteral_ParseNode::Uip_StringLiteral_ParseNode(const QString& text)
    : mText(text)
{
}

bool Uip_StringLiteral_ParseNode::Evaluate(Mv_Variant* result)
{
    if (result)
        *result = Mv_Variant::fromValue<QString>(mText);
    return true;
}

QString Uip_StringLiteral_ParseNode::toTreeString(const QString& prefix) const
{
    // Literals may span lines; escape them so that the dump keeps one node
    // per line.
    QString shown = mText;
    shown.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    shown.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    shown.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    shown.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return prefix + QLatin1String("StringLiteral \"") + shown + QLatin1String("\"\n");
}
