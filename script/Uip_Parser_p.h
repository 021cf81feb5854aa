#ifndef UIP_PARSER_P_H
#define UIP_PARSER_P_H

// The machinery behind Uip_ParseScript: a scanner that cuts the script into
// tokens and four nested collectors that are fed tokens one at a time
// (shift) and asked for their result at the end (reduce):
//
//   statement list -> statement (parentheses) -> assignment chain -> call builder
//                                  \-> argument slot (inside parentheses)
//
// Results are tokens too; the first error stops everything. Nothing here is
// exported to applications.

#include "Uip_ParseError.h"
#include "kelcore_export.h"
#include "Uip_ParseNode.h"
#include "Uip_StatementBlock_ParseNode.h"

#include <QString>
#include <memory>
#include <vector>

// One token, or the reduced result of a collector. The node, if any, is
// owned by the token until it is handed on.
struct Uip_Token
{
    enum Kind {
        End = 0,          // no text left; also the end marker of a statement
        Bad = 1,          // a character that starts no token, or an unterminated string
        Expression = 2,   // identifier, literal, or a reduced call or assignment
        ArgumentList = 3, // the contents of one pair of parentheses (node may be null)
        Nothing = 4,      // an empty collector reduced
        Equals = 5,
        OpenParen = 6,
        CloseParen = 7,
        Semicolon = 8
    };

    Uip_Token() = default;
    Uip_Token(Kind kind, long line, long position, std::unique_ptr<Uip_ParseNode> node = nullptr)
        : mKind(kind), mNode(std::move(node)), mLine(line), mPosition(position) {}

    Kind mKind = End;
    std::unique_ptr<Uip_ParseNode> mNode;
    long mLine = 0;     // 1-based line of the token's first character
    long mPosition = 0; // 1-based character within that line
};

// Reads tokens off the front of a script. Blanks between tokens are
// skipped. A bad character is not consumed: asking again returns it again.
// Exported for the library's tests and fuzz targets, which compare it with
// a reference scanner; the header is not installed.
class KELCORE_EXPORT Uip_Scanner
{
public:
    explicit Uip_Scanner(const QString& script);

    Uip_Token next();

    // How many characters of the script have been consumed.
    int consumed() const { return mPos; }

private:
    void advance(int count);

    QString mText;
    int mPos = 0;
    long mLine = 1;
    int mLineStart = 0;
};

// The part of a statement that becomes one term: a callee and at most one
// argument list.
class Uip_CallCollector
{
public:
    bool shift(Uip_Token token, Uip_ParseError* error);
    bool reduce(Uip_Token* result, Uip_ParseError* error);

private:
    enum State { Empty, Callee, CalleeAndArguments };
    State mState = Empty;
    Uip_Token mCallee;
    Uip_Token mArguments;
};

// "a = b = c", read as a = (b = c). Kept flat, one call builder per side,
// so that long chains cost neither stack nor quadratic time.
class Uip_AssignmentCollector
{
public:
    Uip_AssignmentCollector();
    bool shift(Uip_Token token, Uip_ParseError* error);
    bool reduce(Uip_Token* result, Uip_ParseError* error);

private:
    struct Side
    {
        Uip_CallCollector call;
        long equalsLine = 0;     // the "=" in front of this side
        long equalsPosition = 0;
    };
    std::vector<Side> mSides;
};

// What stands between the outermost parentheses of a call: nothing, or a
// single identifier or literal.
class Uip_ArgumentCollector
{
public:
    bool shift(Uip_Token token, Uip_ParseError* error);
    Uip_Token reduce(long line, long position);

private:
    Uip_Token mArgument;
    bool mHasArgument = false;
};

// One statement: tracks parentheses and routes the tokens inside them to
// the argument slot, the others to the assignment chain.
class Uip_StatementCollector
{
public:
    bool shift(Uip_Token token, Uip_ParseError* error);
    bool reduce(Uip_Token* result, Uip_ParseError* error);

private:
    int mDepth = 0;
    long mOpenLine = 0; // the outermost "(" still open
    long mOpenPosition = 0;
    std::unique_ptr<Uip_ArgumentCollector> mArgumentP;
    Uip_AssignmentCollector mChain;
};

// The script: statements separated by ";" (empty statements allowed),
// reduced to one statement block.
class Uip_StatementListCollector
{
public:
    Uip_StatementListCollector();
    ~Uip_StatementListCollector();

    bool shift(Uip_Token token, Uip_ParseError* error);
    bool reduce(Uip_Token* result, Uip_ParseError* error);

private:
    std::unique_ptr<Uip_StatementCollector> mStatementP;
    long mStatementLine = 0;
    long mStatementPosition = 0;
    std::unique_ptr<Uip_StatementBlock_ParseNode> mBlockP;
};

#endif
