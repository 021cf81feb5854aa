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
            // [\w\p{M}.$\[\]:]+ taken one UTF-16 unit at a time with Qt's
            // character tables, as the token syntax was written: PCRE reads
            // code points with Unicode tables of its own version, which
            // disagree with Qt's about letters outside the basic plane and
            // letters newer than Qt's tables.
            int length = 0;
            while (length < mRest.size() && isWordUnit(mRest.at(length)))
                ++length;
            token.kind = ScriptReferenceToken::Identifier;
            token.text = mRest.left(length);
            mRest.remove(0, length);
            return token;
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
    static bool isWordUnit(QChar c)
    {
        return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_') || c == QLatin1Char('.')
            || c == QLatin1Char('$') || c == QLatin1Char('[') || c == QLatin1Char(']') || c == QLatin1Char(':');
    }

    // The match of pattern at the start of the rest; "." spans lines.
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
