#ifndef SCRIPTREFERENCESCANNER_H
#define SCRIPTREFERENCESCANNER_H

// A deliberately literal scanner for action scripts, written with the
// regular expressions that define the token syntax (anchored at the start,
// trimming the
// remaining text before each token). The library's scanner walks the text
// by hand for speed; the parser fuzzer and the unit tests compare the two.

#include <QRegularExpression>
#include <QString>

struct ScriptReferenceToken
{
    enum Kind { End = 0, Bad = 1, Boolean, Identifier, String, Equals, OpenParen, CloseParen, Semicolon };
    Kind kind = End;
    QString text; // identifier or string text; "true"/"false" for booleans
};

class ScriptReferenceScanner
{
public:
    explicit ScriptReferenceScanner(const QString& script) : mRest(script) {}

    // The text not consumed yet.
    const QString& rest() const { return mRest; }

    ScriptReferenceToken next()
    {
        ScriptReferenceToken token;
        mRest = mRest.trimmed();
        if (mRest.isEmpty())
            return token;
        if (mRest.startsWith(QLatin1String("false")) || mRest.startsWith(QLatin1String("true"))) {
            const QRegularExpressionMatch m = match(QStringLiteral("(false|true).*"));
            if (m.hasMatch()) {
                token.kind = ScriptReferenceToken::Boolean;
                token.text = m.captured(1) == QLatin1String("false") ? QStringLiteral("false") : QStringLiteral("true");
                mRest.remove(0, m.capturedLength());
                return token;
            }
        }
        const QChar first = mRest.at(0);
        if (first.isLetter() || first == QLatin1Char('$')) {
            const QRegularExpressionMatch m = match(QStringLiteral("[\\w\\p{M}\\.\\$\\[\\]:]+"));
            if (m.hasMatch()) {
                token.kind = ScriptReferenceToken::Identifier;
                token.text = m.captured(0);
                mRest.remove(0, m.capturedLength());
                return token;
            }
        }
        if (first == QLatin1Char('"')) {
            const QRegularExpressionMatch m = match(QStringLiteral("\"([^\"]*)\""));
            if (m.hasMatch()) {
                token.kind = ScriptReferenceToken::String;
                token.text = m.captured(1);
                mRest.remove(0, m.capturedLength());
            } else {
                token.kind = ScriptReferenceToken::Bad;
            }
            return token;
        }
        switch (first.unicode()) {
        case '(': token.kind = ScriptReferenceToken::OpenParen; break;
        case ')': token.kind = ScriptReferenceToken::CloseParen; break;
        case ';': token.kind = ScriptReferenceToken::Semicolon; break;
        case '=': token.kind = ScriptReferenceToken::Equals; break;
        default: return ScriptReferenceToken{ScriptReferenceToken::Bad, QString()};
        }
        mRest.remove(0, 1);
        return token;
    }

private:
    // The match of pattern at the start of the rest; "." spans lines and
    // \w takes every Unicode letter and digit (marks are named apart).
    QRegularExpressionMatch match(const QString& pattern) const
    {
        const QRegularExpression rx(QLatin1Char('^') + pattern,
                                    QRegularExpression::DotMatchesEverythingOption
                                        | QRegularExpression::UseUnicodePropertiesOption);
        return rx.match(mRest);
    }

    QString mRest;
};

#endif
