#include "Mv_Variant.h"

#include <cmath>
#include <limits>

namespace Mv_VariantImpl {

namespace {

bool textToBool(const QString& text, bool& out)
{
    const QString t = text.trimmed().toLower();
    if (t == QLatin1String("true") || t == QLatin1String("1")) {
        out = true;
        return true;
    }
    if (t == QLatin1String("false") || t == QLatin1String("0")) {
        out = false;
        return true;
    }
    return false;
}

} // namespace

bool convert(const HolderBase* holder, bool& out)
{
    if (const bool* b = exact<bool>(holder)) {
        out = *b;
        return true;
    }
    if (const long* l = exact<long>(holder)) {
        out = *l != 0;
        return true;
    }
    if (const double* d = exact<double>(holder)) {
        out = *d != 0.0;
        return true;
    }
    if (const QString* s = exact<QString>(holder))
        return textToBool(*s, out);
    return false;
}

bool convert(const HolderBase* holder, long& out)
{
    if (const long* l = exact<long>(holder)) {
        out = *l;
        return true;
    }
    if (const bool* b = exact<bool>(holder)) {
        out = *b ? 1 : 0;
        return true;
    }
    if (const double* d = exact<double>(holder)) {
        if (!std::isfinite(*d) || std::trunc(*d) != *d || std::fabs(*d) > 9.0e18)
            return false;
        out = long(*d);
        return true;
    }
    if (const QString* s = exact<QString>(holder)) {
        bool ok = false;
        const long v = s->trimmed().toLong(&ok, 10);
        if (ok)
            out = v;
        return ok;
    }
    return false;
}

bool convert(const HolderBase* holder, int& out)
{
    long l = 0;
    if (!convert(holder, l) || l < std::numeric_limits<int>::min() || l > std::numeric_limits<int>::max())
        return false;
    out = int(l);
    return true;
}

bool convert(const HolderBase* holder, double& out)
{
    if (const double* d = exact<double>(holder)) {
        out = *d;
        return true;
    }
    if (const long* l = exact<long>(holder)) {
        out = double(*l);
        return true;
    }
    if (const bool* b = exact<bool>(holder)) {
        out = *b ? 1.0 : 0.0;
        return true;
    }
    if (const QString* s = exact<QString>(holder)) {
        bool ok = false;
        const double v = s->trimmed().toDouble(&ok);
        if (ok)
            out = v;
        return ok;
    }
    return false;
}

bool convert(const HolderBase* holder, QString& out)
{
    if (const QString* s = exact<QString>(holder)) {
        out = *s;
        return true;
    }
    if (const bool* b = exact<bool>(holder)) {
        out = *b ? QStringLiteral("true") : QStringLiteral("false");
        return true;
    }
    if (const long* l = exact<long>(holder)) {
        out = QString::number(*l);
        return true;
    }
    if (const double* d = exact<double>(holder)) {
        out = QString::number(*d);
        return true;
    }
    if (const Mv_Timecode* t = exact<Mv_Timecode>(holder)) {
        out = t->toString();
        return true;
    }
    return false;
}

bool convert(const HolderBase* holder, Mv_Timecode& out)
{
    if (const Mv_Timecode* t = exact<Mv_Timecode>(holder)) {
        out = *t;
        return true;
    }
    if (const QString* s = exact<QString>(holder))
        return Mv_Timecode::fromString(*s, &out);
    return false;
}

} // namespace Mv_VariantImpl

const char* Mv_Variant::typeName() const
{
    return mHolderP ? mHolderP->type().name() : "empty";
}

QString Mv_Variant::toDebugString() const
{
    if (!mHolderP)
        return QStringLiteral("<empty>");
    QString text;
    if (Mv_VariantImpl::convert(mHolderP, text))
        return text;
    return QStringLiteral("<%1>").arg(QString::fromLatin1(typeName()));
}
