#ifndef SCRIPTSCANNERCOMPARISON_H
#define SCRIPTSCANNERCOMPARISON_H

#include "ScriptReferenceScanner.h"
#include "Uip_BooleanLiteral_ParseNode.h"
#include "Uip_Identifier_ParseNode.h"
#include "Uip_Parser_p.h"
#include "Uip_StringLiteral_ParseNode.h"

// The library token in the reference's terms.
inline ScriptReferenceToken toReferenceToken(const Uip_Token& token)
{
    ScriptReferenceToken out;
    switch (token.mKind) {
    case Uip_Token::End: out.kind = ScriptReferenceToken::End; break;
    case Uip_Token::Bad: out.kind = ScriptReferenceToken::Bad; break;
    case Uip_Token::Equals: out.kind = ScriptReferenceToken::Equals; break;
    case Uip_Token::OpenParen: out.kind = ScriptReferenceToken::OpenParen; break;
    case Uip_Token::CloseParen: out.kind = ScriptReferenceToken::CloseParen; break;
    case Uip_Token::Semicolon: out.kind = ScriptReferenceToken::Semicolon; break;
    case Uip_Token::Expression:
        if (const auto* b = dynamic_cast<const Uip_BooleanLiteral_ParseNode*>(token.mNode.get())) {
            out.kind = ScriptReferenceToken::Boolean;
            out.text = b->value() ? QStringLiteral("true") : QStringLiteral("false");
        } else if (const auto* i = dynamic_cast<const Uip_Identifier_ParseNode*>(token.mNode.get())) {
            out.kind = ScriptReferenceToken::Identifier;
            out.text = i->text();
        } else if (const auto* s = dynamic_cast<const Uip_StringLiteral_ParseNode*>(token.mNode.get())) {
            out.kind = ScriptReferenceToken::String;
            out.text = s->text();
        } else {
            out.kind = ScriptReferenceToken::Bad;
            out.text = QStringLiteral("<unknown node>");
        }
        break;
    default:
        out.kind = ScriptReferenceToken::Bad;
        out.text = QStringLiteral("<kind %1>").arg(int(token.mKind));
        break;
    }
    return out;
}

// Scans script with both scanners, token by token, until the end or the
// second bad token; answers an empty string when they agree on every token
// and on the text left after it, else a description of the first difference.
inline QString compareWithReferenceScanner(const QString& script)
{
    // The reference's regular expressions match nothing in ill-formed text
    // (an unpaired surrogate): there is nothing to compare with.
    if (!script.isValidUtf16())
        return QString();
    Uip_Scanner scanner(script);
    ScriptReferenceScanner reference(script);
    int bad = 0;
    for (int n = 0;; ++n) {
        const ScriptReferenceToken ours = toReferenceToken(scanner.next());
        const ScriptReferenceToken theirs = reference.next();
        const QString oursRest = script.mid(scanner.consumed()).trimmed();
        const QString theirsRest = reference.rest().trimmed();
        if (ours.kind != theirs.kind || ours.text != theirs.text || oursRest != theirsRest) {
            return QStringLiteral("token %1: kind %2/%3, text \"%4\"/\"%5\", rest \"%6\"/\"%7\"")
                .arg(n).arg(int(ours.kind)).arg(int(theirs.kind)).arg(ours.text, theirs.text, oursRest, theirsRest);
        }
        if (ours.kind == ScriptReferenceToken::End || (ours.kind == ScriptReferenceToken::Bad && ++bad == 2))
            return QString();
    }
}

#endif
