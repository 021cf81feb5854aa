#include "Mv_Diagnostics.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"
#include "Mv_ListenerBase.h"
#include "Mv_Logging_p.h"
#include "Mv_ModelBase.h"
#include "Mv_Variant.h"
#include "Mvt_SimpleValue_BaseAPI.h"

#include <QMutex>
#include <QSet>

#include <algorithm>
#include <typeinfo>
#include <vector>

#if defined(__GNUG__)
#include <cxxabi.h>
#include <cstdlib>
#include <memory>
#endif

namespace {

const Mv_ConnectionDict* orSingleton(const Mv_ConnectionDict* dict)
{
    return dict ? dict : Mv_ConnectionDict::Singleton();
}

// Edit distance with a swap of two neighbours counting as one edit (the
// commonest slip when typing a name), case ignored.
int distance(const QString& a0, const QString& b0)
{
    const QString a = a0.toCaseFolded(), b = b0.toCaseFolded();
    const int n = a.size(), m = b.size();
    std::vector<int> before(size_t(m + 1)), previous(size_t(m + 1)), current(size_t(m + 1));
    for (int j = 0; j <= m; ++j)
        previous[size_t(j)] = j;
    for (int i = 1; i <= n; ++i) {
        current[0] = i;
        for (int j = 1; j <= m; ++j) {
            const int cost = a[i - 1] == b[j - 1] ? 0 : 1;
            int d = std::min({previous[size_t(j)] + 1, current[size_t(j - 1)] + 1, previous[size_t(j - 1)] + cost});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                d = std::min(d, before[size_t(j - 2)] + 1);
            current[size_t(j)] = d;
        }
        std::swap(before, previous);
        std::swap(previous, current);
    }
    return previous[size_t(m)];
}

// The name that keeps listener from connecting, following element
// addresses down to the index model that is missing.
QString missingName(const Mv_ListenerBase& listener, const Mv_DictEntry* entry,
                    const Mv_ListenerBase* indexListener, bool connected)
{
    if (connected)
        return QString();
    if (!entry || !entry->model)
        return entry ? entry->name : listener.GetResolvedName();
    if (indexListener)
        return Mv_Diagnostics::describe(*indexListener).missingName;
    return QString();
}

} // namespace

Mv_Diagnostics::ListenerInfo Mv_Diagnostics::describe(const Mv_ListenerBase& listener)
{
    ListenerInfo info;
    info.specification = listener.GetConnectionName();
    info.resolvedName = listener.GetResolvedName();
    info.connected = listener.isConnectedToModel();
    info.listener = &listener;
    // An index follower is never told it is connected (its element
    // listener is); its own attachment is what counts for it.
    const bool attached = listener.mElementListenerP ? listener.mEntryP && listener.mEntryP->model : info.connected;
    info.missingName = missingName(listener, listener.mEntryP, listener.mIndexListenerP.get(), attached);
    return info;
}

QVector<Mv_Diagnostics::ModelInfo> Mv_Diagnostics::models(const Mv_ConnectionDict* dict)
{
    dict = orSingleton(dict);
    QVector<ModelInfo> result;
    for (auto it = dict->mEntriesP->entries.constBegin(); it != dict->mEntriesP->entries.constEnd(); ++it) {
        const Mv_DictEntry* entry = it.value();
        if (!entry->model)
            continue;
        ModelInfo info;
        info.name = entry->name;
        info.kind = kindName(*entry->model);
        info.hasValue = valueText(*entry->model, &info.value);
        info.listenerCount = entry->listenerCount;
        result.append(info);
    }
    std::sort(result.begin(), result.end(), [](const ModelInfo& a, const ModelInfo& b) { return a.name < b.name; });
    return result;
}

QVector<Mv_Diagnostics::ListenerInfo> Mv_Diagnostics::listeners(const Mv_ConnectionDict* dict)
{
    dict = orSingleton(dict);
    QVector<ListenerInfo> result;
    if (dict->mDying) // what is left are orphans
        return result;
    for (auto it = dict->mEntriesP->entries.constBegin(); it != dict->mEntriesP->entries.constEnd(); ++it) {
        for (const Mv_ListenerBase* l = it.value()->first; l; l = l->mNextP) {
            if (!l->mElementListenerP) // index followers belong to their element listener
                result.append(describe(*l));
        }
    }
    std::sort(result.begin(), result.end(), [](const ListenerInfo& a, const ListenerInfo& b) {
        return a.resolvedName != b.resolvedName ? a.resolvedName < b.resolvedName : a.specification < b.specification;
    });
    return result;
}

QStringList Mv_Diagnostics::waitingNames(const Mv_ConnectionDict* dict)
{
    dict = orSingleton(dict);
    QStringList names;
    if (dict->mDying)
        return names;
    for (auto it = dict->mEntriesP->entries.constBegin(); it != dict->mEntriesP->entries.constEnd(); ++it) {
        if (!it.value()->model && it.value()->listenerCount > 0)
            names.append(it.key());
    }
    names.sort();
    return names;
}

QStringList Mv_Diagnostics::suggestions(const QString& name, const Mv_ConnectionDict* dict, int max)
{
    dict = orSingleton(dict);
    const int bracket = name.endsWith(QLatin1Char(']')) ? name.indexOf(QLatin1Char('[')) : -1;
    const QString base = bracket > 0 ? name.left(bracket) : name;
    const QString suffix = bracket > 0 ? name.mid(bracket) : QString();
    // A slip of the keyboard: one edit in six characters, one to three.
    const int limit = std::max(1, std::min(3, int(base.size()) / 6));
    std::vector<std::pair<int, QString>> near;
    for (auto it = dict->mEntriesP->entries.constBegin(); it != dict->mEntriesP->entries.constEnd(); ++it) {
        if (!it.value()->model || std::abs(it.key().size() - base.size()) > limit || it.key() == base)
            continue;
        const int d = distance(base, it.key());
        if (d <= limit)
            near.emplace_back(d, it.key());
    }
    std::sort(near.begin(), near.end());
    // Only the best and those one edit behind them: a list of everything
    // within reach hides the likely intent.
    QStringList result;
    for (size_t i = 0; i < near.size() && result.size() < max && near[i].first <= near[0].first + 1; ++i)
        result.append(near[i].second + suffix);
    return result;
}

QString Mv_Diagnostics::kindName(const Mv_ModelBase& model)
{
    const char* raw = typeid(model).name();
#if defined(__GNUG__)
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> demangled(abi::__cxa_demangle(raw, nullptr, nullptr, &status), std::free);
    QString name = QString::fromLatin1(status == 0 && demangled ? demangled.get() : raw);
#else
    QString name = QString::fromLatin1(raw);
#endif
    // MSVC spells "class X"; and Qt's types need no namespace in a tool.
    name.remove(QStringLiteral("class ")).remove(QStringLiteral("struct "));
    return name;
}

bool Mv_Diagnostics::valueText(const Mv_ModelBase& model, QString* text)
{
    Mv_Variant value;
    // Gets do not change the model; answering one is not a modification.
    auto& m = const_cast<Mv_ModelBase&>(model);
    if (!m.ReceiveMessage(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&value)) || value.isEmpty())
        return false;
    QString out;
    if (!value.get(out))
        out = value.toDebugString();
    if (text)
        *text = out;
    return true;
}

int Mv_Diagnostics::setValueText(Mv_ModelBase& model, const QString& text)
{
    int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
    model.ReceiveMessage(Mvt_SimpleValue_BaseAPI::MsgSetVariant(Mv_Variant(text), &status));
    return status == Mvt_SimpleValue_BaseAPI::kSetNotAnswered ? int(Mvt_SimpleValue_BaseAPI::kSetRefused) : status;
}

int Mv_Diagnostics::reportUnconnected(const Mv_ConnectionDict* dict)
{
    static QMutex mutex;
    static QSet<QString> reported;
    int count = 0;
    for (const ListenerInfo& info : listeners(dict)) {
        if (info.connected)
            continue;
        {
            QMutexLocker lock(&mutex);
            if (reported.contains(info.resolvedName))
                continue;
            reported.insert(info.resolvedName);
        }
        const QStringList near = suggestions(info.missingName, dict);
        if (near.isEmpty()) {
            qCWarning(lcKelPlatform, "unconnected: \"%s\" waits for \"%s\", which nobody publishes",
                      qUtf8Printable(info.specification), qUtf8Printable(info.missingName));
        } else {
            qCWarning(lcKelPlatform, "unconnected: \"%s\" waits for \"%s\", which nobody publishes; did you mean \"%s\"?",
                      qUtf8Printable(info.specification), qUtf8Printable(info.missingName),
                      qUtf8Printable(near.join(QStringLiteral("\", \""))));
        }
        ++count;
    }
    return count;
}
