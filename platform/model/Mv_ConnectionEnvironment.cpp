#include "Mv_ConnectionEnvironment.h"

#include "Mv_ConnectionDict.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

bool isNameStart(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_');
}

bool isNameChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

} // namespace

Mv_ConnectionEnvironment::Mv_ConnectionEnvironment(ConstPtr parent, Mv_ConnectionDict* dict)
    : mParent(parent),
      mDictP(dict ? dict : (parent ? parent->getDictionary() : Mv_ConnectionDict::Singleton()))
{
}

Mv_ConnectionEnvironment::ConstPtr Mv_ConnectionEnvironment::blankEnvironment()
{
    static const ConstPtr blank(new Mv_ConnectionEnvironment());
    return blank;
}

Mv_ConnectionEnvironment::Ptr Mv_ConnectionEnvironment::create(ConstPtr parent, Mv_ConnectionDict* dict)
{
    return Ptr(new Mv_ConnectionEnvironment(parent, dict));
}

QString Mv_ConnectionEnvironment::get(const QString& name) const
{
    for (const Mv_ConnectionEnvironment* env = this; env; env = env->mParent.get()) {
        auto it = env->mVariables.constFind(name);
        if (it != env->mVariables.constEnd())
            return it.value();
    }
    return QString();
}

bool Mv_ConnectionEnvironment::has(const QString& name) const
{
    for (const Mv_ConnectionEnvironment* env = this; env; env = env->mParent.get()) {
        if (env->mVariables.contains(name))
            return true;
    }
    return false;
}

void Mv_ConnectionEnvironment::set(const QString& name, const QString& value)
{
    mVariables.insert(name, value.isNull() ? QStringLiteral("") : value);
}

int Mv_ConnectionEnvironment::set(const QString& assignments)
{
    static const QRegularExpression separators(QStringLiteral("[;\\n\\r]"));
    int taken = 0;
    const QStringList parts = assignments.split(separators, Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const int eq = part.indexOf(QLatin1Char('='));
        if (eq < 0)
            continue;
        const QString name = part.left(eq).trimmed();
        if (!isValidVariableName(name))
            continue;
        set(name, part.mid(eq + 1).trimmed());
        ++taken;
    }
    return taken;
}

QString Mv_ConnectionEnvironment::replaceVariableNames(const QString& text) const
{
    // Most names have no variable: an inline scan is half the cost of
    // QString::indexOf's call and dispatch on names of a few dozen characters.
    const QChar* begin = text.constData();
    const QChar* end = begin + text.size();
    const QChar* found = std::find(begin, end, QChar(QLatin1Char('$')));
    if (found == end)
        return text;
    const int dollar = int(found - begin);
    QString out = text.left(dollar);
    out.reserve(text.size() + 16);
    const int n = text.size();
    int i = dollar;
    while (i < n) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('$')) {
            out.append(c);
            ++i;
            continue;
        }
        if (i + 1 < n && text.at(i + 1) == QLatin1Char('$')) {
            out.append(QLatin1Char('$'));
            i += 2;
            continue;
        }
        if (i + 1 >= n || !isNameStart(text.at(i + 1))) {
            out.append(c);
            ++i;
            continue;
        }
        int end = i + 2;
        while (end < n && isNameChar(text.at(end)))
            ++end;
        const QString name = text.mid(i + 1, end - i - 1);
        const QString value = get(name);
        if (value.isNull())
            out.append(text.constData() + i, end - i);
        else
            out.append(value);
        i = end;
    }
    return out;
}

bool Mv_ConnectionEnvironment::isValidVariableName(const QString& name)
{
    if (name.isEmpty() || !isNameStart(name.at(0)))
        return false;
    for (const QChar c : name) {
        if (!isNameChar(c))
            return false;
    }
    return true;
}
