#include "Uip_ParseScript.h"

#include "Uip_Parser_p.h"

Uip_ParseNode* Uip_ParseScript(QString script, Uip_ParseError* error)
{
    Uip_ParseError discarded;
    Uip_ParseError* const out = error ? error : &discarded;

    Uip_Scanner scanner(script);
    Uip_StatementListCollector statements;
    for (;;) {
        Uip_Token token = scanner.next();
        const bool atEnd = token.mKind == Uip_Token::End;
        if (!statements.shift(std::move(token), out))
            return nullptr;
        if (atEnd)
            break;
    }

    Uip_Token root;
    if (!statements.reduce(&root, out))
        return nullptr;
    if (root.mKind != Uip_Token::Expression || !root.mNode) {
        *out = Uip_ParseError(QStringLiteral("Script is not an expression"), 1, 1);
        return nullptr;
    }
    *out = Uip_ParseError();
    return root.mNode.release();
}
