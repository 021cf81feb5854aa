#include "Uip_Parser_p.h"

#include "Uip_Assign_ParseNode.h"
#include "Uip_BooleanLiteral_ParseNode.h"
#include "Uip_FunctionCall_ParseNode.h"
#include "Uip_Identifier_ParseNode.h"
#include "Uip_StringLiteral_ParseNode.h"

namespace {

bool fail(Uip_ParseError* error, const char* message, long line, long position)
{
    *error = Uip_ParseError(QString::fromLatin1(message), line, position);
    return false;
}

bool fail(Uip_ParseError* error, const char* message, const Uip_Token& at)
{
    return fail(error, message, at.mLine, at.mPosition);
}

// Characters that may follow the first one of an identifier: what the
// pattern [\w\.\$\[\]:] accepts, \w being a letter, digit, mark or "_".
bool isIdentifierChar(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_') || c == QLatin1Char('.')
        || c == QLatin1Char('$') || c == QLatin1Char('[') || c == QLatin1Char(']') || c == QLatin1Char(':');
}

} // namespace

// --- Scanner -----------------------------------------------------------------

Uip_Scanner::Uip_Scanner(const QString& script)
    : mText(script)
{
}

void Uip_Scanner::advance(int count)
{
    const int end = mPos + count;
    for (; mPos < end; ++mPos) {
        if (mText.at(mPos) == QLatin1Char('\n')) {
            ++mLine;
            mLineStart = mPos + 1;
        }
    }
}

Uip_Token Uip_Scanner::next()
{
    const int size = mText.size();
    int blanks = 0;
    while (mPos + blanks < size && mText.at(mPos + blanks).isSpace())
        ++blanks;
    advance(blanks);

    const long line = mLine;
    const long position = mPos - mLineStart + 1;
    if (mPos >= size)
        return Uip_Token(Uip_Token::End, line, position);

    const QStringView rest = QStringView(mText).mid(mPos);

    // A boolean literal runs to the end of the script: everything after
    // "true" or "false" belongs to it and is dropped, identifiers such as
    // trueColor included. Scripts put a boolean literal last.
    const bool isFalse = rest.startsWith(QLatin1String("false"));
    if (isFalse || rest.startsWith(QLatin1String("true"))) {
        advance(size - mPos);
        return Uip_Token(Uip_Token::Expression, line, position,
                         std::unique_ptr<Uip_ParseNode>(new Uip_BooleanLiteral_ParseNode(!isFalse)));
    }

    const QChar first = rest.at(0);
    if (first.isLetter() || first == QLatin1Char('$')) {
        int length = 1;
        while (length < rest.size() && isIdentifierChar(rest.at(length)))
            ++length;
        const QString text = rest.left(length).toString();
        advance(length);
        return Uip_Token(Uip_Token::Expression, line, position,
                         std::unique_ptr<Uip_ParseNode>(new Uip_Identifier_ParseNode(text)));
    }

    switch (first.unicode()) {
    case '"': {
        // No escapes: the literal ends at the next double quote.
        const int close = rest.indexOf(QLatin1Char('"'), 1);
        if (close < 0)
            return Uip_Token(Uip_Token::Bad, line, position);
        const QString text = rest.mid(1, close - 1).toString();
        advance(close + 1);
        return Uip_Token(Uip_Token::Expression, line, position,
                         std::unique_ptr<Uip_ParseNode>(new Uip_StringLiteral_ParseNode(text)));
    }
    case '(':
        advance(1);
        return Uip_Token(Uip_Token::OpenParen, line, position);
    case ')':
        advance(1);
        return Uip_Token(Uip_Token::CloseParen, line, position);
    case ';':
        advance(1);
        return Uip_Token(Uip_Token::Semicolon, line, position);
    case '=':
        advance(1);
        return Uip_Token(Uip_Token::Equals, line, position);
    default:
        return Uip_Token(Uip_Token::Bad, line, position);
    }
}

// --- Call builder --------------------------------------------------------------

bool Uip_CallCollector::shift(Uip_Token token, Uip_ParseError* error)
{
    switch (token.mKind) {
    case Uip_Token::End:
        return true;
    case Uip_Token::ArgumentList:
        if (mState != Callee)
            return fail(error, "No function before argument list", token);
        mArguments = std::move(token);
        mState = CalleeAndArguments;
        return true;
    default:
        if (mState != Empty)
            return fail(error, "unexpected", token);
        mCallee = std::move(token);
        mState = Callee;
        return true;
    }
}

bool Uip_CallCollector::reduce(Uip_Token* result, Uip_ParseError* error)
{
    switch (mState) {
    case Empty:
        *result = Uip_Token(Uip_Token::Nothing, 0, 0);
        return true;
    case Callee:
        *result = std::move(mCallee);
        return true;
    case CalleeAndArguments:
        break;
    }
    if (mCallee.mKind != Uip_Token::Expression)
        return fail(error, "Not a callable function", mArguments);
    const long line = mCallee.mLine;
    const long position = mCallee.mPosition;
    *result = Uip_Token(Uip_Token::Expression, line, position,
                        std::unique_ptr<Uip_ParseNode>(
                            new Uip_FunctionCall_ParseNode(std::move(mCallee.mNode), std::move(mArguments.mNode))));
    return true;
}

// --- Assignment chain ------------------------------------------------------------

Uip_AssignmentCollector::Uip_AssignmentCollector()
    : mSides(1)
{
}

bool Uip_AssignmentCollector::shift(Uip_Token token, Uip_ParseError* error)
{
    if (token.mKind == Uip_Token::Equals) {
        mSides.emplace_back();
        mSides.back().equalsLine = token.mLine;
        mSides.back().equalsPosition = token.mPosition;
        return true;
    }
    return mSides.back().call.shift(std::move(token), error);
}

bool Uip_AssignmentCollector::reduce(Uip_Token* result, Uip_ParseError* error)
{
    // Every side is reduced, left to right, before any is checked.
    std::vector<Uip_Token> terms(mSides.size());
    for (size_t i = 0; i < mSides.size(); ++i) {
        if (!mSides[i].call.reduce(&terms[i], error))
            return false;
    }
    // Then the assignments are built from the innermost (rightmost) out,
    // each checking its left side, and the innermost also its right side.
    Uip_Token right = std::move(terms.back());
    for (size_t i = terms.size() - 1; i > 0; --i) {
        const Side& equals = mSides[i];
        Uip_Token& left = terms[i - 1];
        if (left.mKind != Uip_Token::Expression)
            return fail(error, "No expression on left side of assignment", equals.equalsLine, equals.equalsPosition);
        if (right.mKind != Uip_Token::Expression)
            return fail(error, "No expression on right side of assignment", equals.equalsLine, equals.equalsPosition);
        const long line = left.mLine;
        const long position = left.mPosition;
        right = Uip_Token(Uip_Token::Expression, line, position,
                          std::unique_ptr<Uip_ParseNode>(
                              new Uip_Assign_ParseNode(std::move(left.mNode), std::move(right.mNode))));
    }
    *result = std::move(right);
    return true;
}

// --- Argument slot -------------------------------------------------------------

bool Uip_ArgumentCollector::shift(Uip_Token token, Uip_ParseError* error)
{
    switch (token.mKind) {
    case Uip_Token::End:
        return true;
    case Uip_Token::Expression:
        if (mHasArgument)
            return fail(error, "Multiple arguments not supported yet", token);
        mArgument = std::move(token);
        mHasArgument = true;
        return true;
    default:
        return fail(error, "Unknown token in parenthesis", token);
    }
}

Uip_Token Uip_ArgumentCollector::reduce(long line, long position)
{
    return Uip_Token(Uip_Token::ArgumentList, line, position, std::move(mArgument.mNode));
}

// --- Statement -------------------------------------------------------------------

bool Uip_StatementCollector::shift(Uip_Token token, Uip_ParseError* error)
{
    switch (token.mKind) {
    case Uip_Token::OpenParen:
        if (mDepth == 0) {
            mOpenLine = token.mLine;
            mOpenPosition = token.mPosition;
            mArgumentP.reset(new Uip_ArgumentCollector());
        }
        ++mDepth; // inner parentheses only group
        return true;
    case Uip_Token::CloseParen:
        if (mDepth == 0)
            return fail(error, "Unmatched close paren", token);
        if (--mDepth > 0)
            return true;
        {
            Uip_Token arguments = mArgumentP->reduce(mOpenLine, mOpenPosition);
            mArgumentP.reset();
            return mChain.shift(std::move(arguments), error);
        }
    case Uip_Token::End:
        if (mDepth > 0)
            return fail(error, "Unmatched open paren", mOpenLine, mOpenPosition);
        return mChain.shift(std::move(token), error);
    default:
        if (mDepth > 0)
            return mArgumentP->shift(std::move(token), error);
        return mChain.shift(std::move(token), error);
    }
}

bool Uip_StatementCollector::reduce(Uip_Token* result, Uip_ParseError* error)
{
    return mChain.reduce(result, error);
}

// --- Statement list ----------------------------------------------------------------

Uip_StatementListCollector::Uip_StatementListCollector()
    : mBlockP(new Uip_StatementBlock_ParseNode())
{
}

Uip_StatementListCollector::~Uip_StatementListCollector() = default;

bool Uip_StatementListCollector::shift(Uip_Token token, Uip_ParseError* error)
{
    if (token.mKind != Uip_Token::Semicolon && token.mKind != Uip_Token::End) {
        if (!mStatementP) {
            mStatementP.reset(new Uip_StatementCollector());
            mStatementLine = token.mLine;
            mStatementPosition = token.mPosition;
        }
        return mStatementP->shift(std::move(token), error);
    }
    if (!mStatementP)
        return true; // an empty statement
    std::unique_ptr<Uip_StatementCollector> statement = std::move(mStatementP);
    Uip_Token statementResult;
    if (!statement->shift(Uip_Token(Uip_Token::End, token.mLine, token.mPosition), error)
        || !statement->reduce(&statementResult, error))
        return false;
    if (statementResult.mKind != Uip_Token::Expression)
        return fail(error, "Not a statement", mStatementLine, mStatementPosition);
    mBlockP->append(std::move(statementResult.mNode));
    return true;
}

bool Uip_StatementListCollector::reduce(Uip_Token* result, Uip_ParseError*)
{
    *result = Uip_Token(Uip_Token::Expression, 1, 1, std::move(mBlockP));
    mBlockP.reset(new Uip_StatementBlock_ParseNode());
    return true;
}
