// The action-script grammar: accepted shapes as tree dumps, every error
// message with a script that triggers it and where, and the scanner's
// agreement with the regular expressions that define the tokens.
#include "ScriptScannerComparison.h"
#include "TestSupport.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"
#include "Uip_Parser_p.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

// The dump of the parsed script, or "error: <message> @line:position".
QString parsed(const QString& script)
{
    Uip_ParseError error(QStringLiteral("stale"), 9, 9);
    std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(script, &error));
    if (!root) {
        EXPECT_TRUE(error.IsError());
        return QStringLiteral("error: %1 @%2:%3").arg(error.mMessage).arg(error.mLine).arg(error.mPosition);
    }
    EXPECT_FALSE(error.IsError());
    EXPECT_TRUE(error.mMessage.isEmpty());
    EXPECT_EQ(0, error.mLine);
    EXPECT_EQ(0, error.mPosition);
    return root->toTreeString(QString());
}

struct Shape
{
    const char* script;
    const char* tree;
};

const Shape kAccepted[] = {
    {"", "StatementBlock\n"},
    {";;", "StatementBlock\n"},
    {"Play()", "StatementBlock\n   FunctionCall\n      Identifier Play\n"},
    {"Select( (Row) )", "StatementBlock\n   FunctionCall\n      Identifier Select\n      Identifier Row\n"},
    {"Rename(\"a b;c=(d)\")",
     "StatementBlock\n   FunctionCall\n      Identifier Rename\n      StringLiteral \"a b;c=(d)\"\n"},
    {"Value = \"abc\"", "StatementBlock\n   Assign\n      Identifier Value\n      StringLiteral \"abc\"\n"},
    {"a = b = c",
     "StatementBlock\n   Assign\n      Identifier a\n      Assign\n         Identifier b\n         Identifier c\n"},
    {"Result = Compute(Input)",
     "StatementBlock\n   Assign\n      Identifier Result\n      FunctionCall\n         Identifier Compute\n"
     "         Identifier Input\n"},
    {"a; ;b;\n c;", "StatementBlock\n   Identifier a\n   Identifier b\n   Identifier c\n"},
    {"Player.Transport:Play(); List[2].Name = $Window.Sel_1",
     "StatementBlock\n   FunctionCall\n      Identifier Player.Transport:Play\n   Assign\n"
     "      Identifier List[2].Name\n      Identifier $Window.Sel_1\n"},
    {"\"x\" = y", "StatementBlock\n   Assign\n      StringLiteral \"x\"\n      Identifier y\n"},
    {"Note = \"two\nlines\"", "StatementBlock\n   Assign\n      Identifier Note\n      StringLiteral \"two\\nlines\"\n"},
    // A boolean literal swallows the rest of the script, line breaks,
    // statements and unbalanced parentheses included.
    {"Mute = true; Play()", "StatementBlock\n   Assign\n      Identifier Mute\n      BooleanLiteral true\n"},
    {"a = false)\n(b = c", "StatementBlock\n   Assign\n      Identifier a\n      BooleanLiteral false\n"},
    {"trueColor = x", "StatementBlock\n   BooleanLiteral true\n"},
};

TEST(ScriptParser, AcceptedShapes)
{
    for (const Shape& shape : kAccepted)
        EXPECT_EQ(QString::fromUtf8(shape.tree), parsed(QString::fromUtf8(shape.script))) << shape.script;
}

struct Failure
{
    const char* script;
    const char* message;
    long line;
    long position;
};

const Failure kRejected[] = {
    {")", "Unmatched close paren", 1, 1},
    {"f(x) )", "Unmatched close paren", 1, 6},
    {"f(x", "Unmatched open paren", 1, 2},
    {"f(x; g()", "Unmatched open paren", 1, 2},
    {"f(true)", "Unmatched open paren", 1, 2}, // the literal ate the ")"
    {"f(a b)", "Multiple arguments not supported yet", 1, 5},
    {"Select(2)", "Unknown token in parenthesis", 1, 8},
    {"f(a, b)", "Unknown token in parenthesis", 1, 4},
    {"f(\"open)", "Unknown token in parenthesis", 1, 3},
    {"= a", "No expression on left side of assignment", 1, 1},
    {"a = = b", "No expression on left side of assignment", 1, 5},
    {"a =", "No expression on right side of assignment", 1, 3},
    {"(x)", "No function before argument list", 1, 1},
    {"f(x)(y)", "No function before argument list", 1, 5},
    {"a b", "unexpected", 1, 3},
    {"a #", "unexpected", 1, 3},
    {"Value = \"abc", "unexpected", 1, 9},
    {"a = b;\n  Play() 7", "unexpected", 2, 10},
};

TEST(ScriptParser, ErrorsWithTheirPlace)
{
    for (const Failure& f : kRejected) {
        const QString expected = QStringLiteral("error: %1 @%2:%3").arg(QLatin1String(f.message)).arg(f.line).arg(f.position);
        EXPECT_EQ(expected, parsed(QString::fromUtf8(f.script))) << f.script;
    }
}

TEST(ScriptParser, NullErrorIsAllowed)
{
    EXPECT_EQ(nullptr, Uip_ParseScript(QStringLiteral("f(x"), nullptr));
    EXPECT_NE(nullptr, std::unique_ptr<Uip_ParseNode>(Uip_ParseScript(QStringLiteral("f(x)"), nullptr)));
}

TEST(ScriptScanner, AgreesWithTheTokenPatterns)
{
    const char* const scripts[] = {
        "a = b; c(d)",
        "x1_y.$z[0]:w = \"q\"",
        "true",
        "falsetto; x",
        "a\n=\ttrue\n;b",
        "Ta\xcc\x81g9 = \xc3\xa9t\xc3\xa9", // combining mark inside, letter first
        "\xd9\xa3x", // an Arabic-Indic digit starts no identifier
        "x\xd9\xa3 = y", // but may follow a letter
        "\"open",
        "f(-1)",
        "\xf0\x9d\x90\x80 = b", // a letter outside the basic plane
        "tru = e",
    };
    for (const char* s : scripts)
        EXPECT_EQ(QString(), compareWithReferenceScanner(QString::fromUtf8(s))) << s;
}

} // namespace
