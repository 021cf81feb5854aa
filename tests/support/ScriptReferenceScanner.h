#ifndef SCRIPTREFERENCESCANNER_H
#define SCRIPTREFERENCESCANNER_H

// A deliberately literal scanner for action scripts, written with the
// regular expressions that define the token syntax (QRegExp, trimming the
// remaining text before each token). The library's scanner walks the text
// by hand for speed; the parser fuzzer and the unit tests compare the two.

#include <QRegExp>
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
            QRegExp rx(QStringLiteral("(false|true).*"));
            if (rx.indexIn(mRest) == 0) {
                token.kind = ScriptReferenceToken::Boolean;
                token.text = rx.cap(1) == QLatin1String("false") ? QStringLiteral("false") : QStringLiteral("true");
                mRest.remove(0, rx.matchedLength());
                return token;
            }
        }
        const QChar first = mRest.at(0);
        if (first.isLetter() || first == QLatin1Char('$')) {
            QRegExp rx(QStringLiteral("[\\w\\.\\$\\[\\]:]+"));
            if (rx.indexIn(mRest) == 0) {
                token.kind = ScriptReferenceToken::Identifier;
                token.text = rx.cap(0);
                mRest.remove(0, rx.matchedLength());
                return token;
            }
        }
        if (first == QLatin1Char('"')) {
            QRegExp rx(QStringLiteral("\"([^\"]*)\""));
            if (rx.indexIn(mRest) == 0) {
                token.kind = ScriptReferenceToken::String;
                token.text = rx.cap(1);
                mRest.remove(0, rx.matchedLength());
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
    QString mRest;
};

#endif
