// Fuzzes the action-script parser alone. Besides the sanitizers' findings
// it checks that a parse gives a tree or an error, never both nor neither;
// that errors carry one of the parser's messages and a place inside the
// script; that the hand-written scanner agrees with the regular expressions
// that define the tokens; and that a tree can be dumped.
#include "ScriptScannerComparison.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"
#include "Uip_StatementBlock_ParseNode.h"

#include <QSet>
#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

void failWith(const char* what, const QString& detail)
{
    std::fprintf(stderr, "fuzz_script_parse: %s: %s\n", what, detail.toUtf8().constData());
    std::abort();
}

const QSet<QString>& knownMessages()
{
    static const QSet<QString> messages{
        QStringLiteral("Not a statement"),
        QStringLiteral("Unmatched close paren"),
        QStringLiteral("Unmatched open paren"),
        QStringLiteral("Multiple arguments not supported yet"),
        QStringLiteral("Unknown token in parenthesis"),
        QStringLiteral("No expression on left side of assignment"),
        QStringLiteral("No expression on right side of assignment"),
        QStringLiteral("No function before argument list"),
        QStringLiteral("unexpected"),
        QStringLiteral("Not a callable function"),
        QStringLiteral("Script is not an expression"),
    };
    return messages;
}

// Inputs are UTF-8 text; one that starts with a UTF-16 byte-order mark is
// read as UTF-16, which reaches characters (lone surrogates) that UTF-8
// decoding never produces.
QString decode(const uint8_t* data, size_t size)
{
    if (size >= 2 && data[0] == 0xff && data[1] == 0xfe)
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(data + 2), int((size - 2) / 2));
    return QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString script = decode(data, size);

    Uip_ParseError error(QStringLiteral("stale"), -1, -1);
    std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(script, &error));
    if (root) {
        if (error.IsError() || !error.mMessage.isEmpty() || error.mLine != 0 || error.mPosition != 0)
            failWith("tree and error", error.mMessage);
        if (!dynamic_cast<Uip_StatementBlock_ParseNode*>(root.get()))
            failWith("root is not a statement block", script);
        if (size < 1024 && !root->toTreeString(QString()).startsWith(QLatin1String("StatementBlock\n")))
            failWith("bad dump", script);
    } else {
        if (!error.IsError() || !knownMessages().contains(error.mMessage))
            failWith("unknown or missing error", error.mMessage);
        const long lines = script.count(QLatin1Char('\n')) + 1;
        if (error.mLine < 1 || error.mLine > lines || error.mPosition < 1 || error.mPosition > script.size() + 1)
            failWith("error outside the script", error.mMessage);
    }

    const QString difference = compareWithReferenceScanner(script);
    if (!difference.isEmpty())
        failWith("scanner differs from the token patterns", difference);
    return 0;
}
