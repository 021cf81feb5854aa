// Random publishing, unpublishing, renaming, destruction, connection and
// value changes, many of them made by listeners from inside their
// notifications, checked after every step against a small shadow of what
// should be published and what every listener's owner should be showing.
//
// KEL_STRESS_OPS (default 20000) sets the steps per seed and KEL_STRESS_SEEDS
// (default "1,2,3") the seeds; the sanitizer run uses a million steps.
#include "ModelTestSupport.h"

#include "Mve_Array.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <deque>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

typedef Mvt_SimpleValue<long>::Listener LongListener;

const long kNothing = -999; // what an owner shows when there is no value

enum class Kind { Value, Array, Record };

const QStringList kValueNames{"a", "b", "Row"};
const QStringList kArrayNames{"A", "B"};
const QStringList kRecordNames{"R", "S"};
const QStringList kSpecs{"a",      "b",      "Row",     "A",        "R",           "A[1]",       "B[0]",
                         "A[$I]", "B[$I]", "R.v[$I]", "S.w[1]", "A[B[$I]]", "R.w[A[Row]]", "a[$I]"};
// Values of $I; the empty text leaves it undefined.
const QStringList kIndexVariables{"Row", "a", "B[Row]", "Nowhere", ""};

struct Model
{
    Kind kind;
    QString name;
    int dict = -1; // published in this dictionary, or -1
    long value = 0;
    std::vector<long> elements;   // arrays
    std::vector<long> fields[2];  // records: "v" and "w"
    std::unique_ptr<Mv_ModelBase> real;
};

struct Listener
{
    QString spec; // empty once cleared
    QString indexVariable;
    int dict = 0;
    long shown = kNothing; // what the owner read at its last notification
    std::unique_ptr<LongListener> real;
};

// Where a name leads in the shadow.
struct Target
{
    bool connected = false;
    long* slot = nullptr; // the value a listener of the name reads and sets
};

int openingBracketOfIndex(const QString& name)
{
    if (!name.endsWith(QLatin1Char(']')))
        return -1;
    int depth = 0;
    for (int i = name.size() - 1; i >= 0; --i) {
        if (name.at(i) == QLatin1Char(']'))
            ++depth;
        else if (name.at(i) == QLatin1Char('[') && --depth == 0)
            return i;
    }
    return -1;
}

long readEnvironment(const char* name, long fallback)
{
    bool ok = false;
    const long value = qEnvironmentVariable(name).toLong(&ok);
    return ok ? value : fallback;
}

// The shadow's list operations, with the arrays' own rules for indexes out
// of range (insertions clamp, the rest do nothing).
void shadowInsert(std::vector<long>& v, long at, long count, long value)
{
    at = std::max(0L, std::min(at, long(v.size())));
    v.insert(v.begin() + at, size_t(count), value);
}

void shadowRemove(std::vector<long>& v, long at, long count)
{
    if (at >= 0 && at < long(v.size()) && count >= 1)
        v.erase(v.begin() + at, v.begin() + std::min(long(v.size()), at + count));
}

void shadowMove(std::vector<long>& v, long from, long to)
{
    const long size = long(v.size());
    if (from < 0 || from >= size || to < 0 || to >= size || from == to)
        return;
    const long moved = v[size_t(from)];
    v.erase(v.begin() + from);
    v.insert(v.begin() + to, moved);
}

// Takes an object out of its table before destroying it: whatever its
// destruction makes listeners do must not find it.
template <class Map>
void destroyEntry(Map& map, int id)
{
    auto owned = std::move(map[id]);
    map.erase(id);
    owned.reset();
}

class Harness
{
public:
    explicit Harness(unsigned seed) : mRandom(seed)
    {
        mDicts[0] = std::make_unique<Mv_ConnectionDict>();
    }

    ~Harness()
    {
        // Quietly: the owners are gone.
        for (auto& l : mListeners)
            l.second->real->setReceiveMessageCB({});
        mListeners.clear();
        mModels.clear();
        mDicts.clear();
    }

    void topLevelStep()
    {
        mNested = 0;
        randomOperation(false);
    }

    // Compares everything with the shadow; false (with the differences
    // reported as test failures) when something differs.
    bool check()
    {
        for (const auto& d : mDicts)
            EXPECT_EQ(d.second->publishedNames(), shadowPublishedNames(d.first)) << "dictionary " << d.first;
        for (const auto& m : mModels) {
            const Model& model = *m.second;
            EXPECT_EQ(model.real->isPublished(), model.dict >= 0) << "model " << m.first;
            if (model.dict >= 0 && model.real->isPublished()) {
                EXPECT_EQ(model.real->dictionary(), mDicts.at(model.dict).get()) << "model " << m.first;
            }
            EXPECT_EQ(model.real->GetConnectionName(), model.name) << "model " << m.first;
        }
        std::map<std::pair<int, QString>, int> expectedCounts;
        for (const auto& l : mListeners) {
            const Listener& listener = *l.second;
            const Target target = expected(listener);
            const long value = target.connected && target.slot ? *target.slot : kNothing;
            EXPECT_EQ(listener.real->isConnectedToModel(), target.connected)
                << "listener " << l.first << " on " << qPrintable(expandedName(listener));
            EXPECT_EQ(listener.shown, value) << "listener " << l.first << " on " << qPrintable(expandedName(listener));
            EXPECT_EQ(listener.real->value(kNothing), value) << "listener " << l.first;
            if (!listener.spec.isEmpty() && mDicts.count(listener.dict)) {
                for (const QString& name : entryNames(expandedName(listener), 0))
                    ++expectedCounts[{listener.dict, name}];
            }
        }
        for (const auto& d : mDicts) {
            for (const QString& name : countedNames()) {
                const auto it = expectedCounts.find({d.first, name});
                EXPECT_EQ(d.second->listenerCount(name), it == expectedCounts.end() ? 0 : it->second)
                    << "listeners of " << qPrintable(name) << " in dictionary " << d.first;
            }
        }
        for (const QString& name : countedNames())
            EXPECT_FALSE(Mv_ConnectionDict::Singleton()->isPublished(name)) << qPrintable(name);
        return !::testing::Test::HasFailure();
    }

    QString recentOperations() const { return QStringList(mLog.begin(), mLog.end()).join(QLatin1Char('\n')); }

private:
    // ---- the shadow --------------------------------------------------------

    // The model (and field: 0 "v", 1 "w", -1 none) under name in dict.
    std::pair<Model*, int> find(int dict, const QString& name) const
    {
        for (const auto& m : mModels) {
            Model& model = *m.second;
            if (model.dict != dict)
                continue;
            if (model.name == name)
                return {&model, -1};
            if (model.kind == Kind::Record) {
                if (name == model.name + ".v")
                    return {&model, 0};
                if (name == model.name + ".w")
                    return {&model, 1};
            }
        }
        return {nullptr, -1};
    }

    QStringList shadowPublishedNames(int dict) const
    {
        QStringList names;
        for (const auto& m : mModels) {
            if (m.second->dict != dict)
                continue;
            names.append(m.second->name);
            if (m.second->kind == Kind::Record)
                names << m.second->name + ".v" << m.second->name + ".w";
        }
        names.sort();
        return names;
    }

    Target resolve(int dict, const QString& name, int depth) const
    {
        Target target;
        const int open = depth < 8 ? openingBracketOfIndex(name) : -1;
        const QString index = open > 0 ? name.mid(open + 1, name.size() - open - 2).trimmed() : QString();
        if (index.isEmpty()) {
            const auto found = find(dict, name);
            target.connected = found.first != nullptr;
            if (found.first && found.first->kind == Kind::Value)
                target.slot = &found.first->value;
            return target;
        }
        const auto array = find(dict, name.left(open));
        bool fixed = false;
        long at = index.toLong(&fixed, 10);
        bool haveIndex = fixed;
        if (fixed) {
            target.connected = array.first != nullptr;
        } else {
            const Target indexTarget = resolve(dict, index, depth + 1);
            target.connected = array.first && indexTarget.connected;
            haveIndex = indexTarget.slot != nullptr;
            at = haveIndex ? *indexTarget.slot : 0;
        }
        std::vector<long>* elements = nullptr;
        if (array.first && array.first->kind == Kind::Array)
            elements = &array.first->elements;
        else if (array.first && array.second >= 0)
            elements = &array.first->fields[array.second];
        if (target.connected && haveIndex && elements && at >= 0 && at < long(elements->size()))
            target.slot = &(*elements)[size_t(at)];
        return target;
    }

    QString expandedName(const Listener& l) const
    {
        QString name = l.spec;
        if (!l.indexVariable.isEmpty())
            name.replace(QLatin1String("$I"), l.indexVariable);
        return name;
    }

    Target expected(const Listener& l) const
    {
        if (l.spec.isEmpty() || !mDicts.count(l.dict))
            return Target();
        return resolve(l.dict, expandedName(l), 0);
    }

    // The names whose dictionary entries a listener of name joins.
    QStringList entryNames(const QString& name, int depth) const
    {
        const int open = depth < 8 ? openingBracketOfIndex(name) : -1;
        const QString index = open > 0 ? name.mid(open + 1, name.size() - open - 2).trimmed() : QString();
        if (index.isEmpty())
            return {name};
        bool fixed = false;
        index.toLong(&fixed, 10);
        QStringList names{name.left(open)};
        if (!fixed)
            names += entryNames(index, depth + 1);
        return names;
    }

    QStringList countedNames() const
    {
        QStringList names = kValueNames + kArrayNames + kRecordNames;
        for (const QString& r : kRecordNames)
            names << r + ".v" << r + ".w";
        names << "$I" << "Nowhere";
        return names;
    }

    // Where a model of that kind may be published: nobody else holds it.
    bool nameFree(int dict, const QString& name, const Model* self) const
    {
        const auto found = find(dict, name);
        return !found.first || found.first == self;
    }

    // ---- random choices ----------------------------------------------------

    int below(int n) { return n <= 1 ? 0 : int(std::uniform_int_distribution<int>(0, n - 1)(mRandom)); }
    bool percent(int p) { return below(100) < p; }
    template <class Map>
    int pick(const Map& map)
    {
        if (map.empty())
            return -1;
        auto it = map.begin();
        std::advance(it, below(int(map.size())));
        return it->first;
    }
    long smallValue() { return long(below(6)) - 1; } // -1 .. 4: indexes in and out of range
    QString nameFor(Kind kind)
    {
        const QStringList& pool = kind == Kind::Value ? kValueNames : kind == Kind::Array ? kArrayNames : kRecordNames;
        return pool.at(below(pool.size()));
    }

    void log(const QString& text)
    {
        mLog.push_back(QString(mDepth * 2, QLatin1Char(' ')) + text);
        if (mLog.size() > 40)
            mLog.pop_front();
    }

    // ---- operations --------------------------------------------------------

    void randomOperation(bool fromCallback)
    {
        switch (below(16)) {
        case 0: createModel(); break;
        case 1: destroyModel(); break;
        case 2: publishModel(); break;
        case 3: unpublishModel(); break;
        case 4: renameModel(); break;
        case 5:
        case 6: changeValue(); break;
        case 7: editArray(); break;
        case 8: editRecord(); break;
        case 9: createListener(); break;
        case 10: destroyListener(); break;
        case 11: reconnectListener(); break;
        case 12: clearListener(); break;
        case 13:
            // Sets through listeners are checked against the shadow's idea
            // of where they go, which holds only between steps.
            if (!fromCallback)
                setThroughListener();
            break;
        case 14: createDictionary(); break;
        case 15: destroyDictionary(); break;
        }
    }

    void heard(int id)
    {
        const auto it = mListeners.find(id);
        if (it == mListeners.end())
            return;
        it->second->shown = it->second->real->value(kNothing);
        // React by changing something, now and then; the listener (and
        // anything else) may be gone afterwards.
        if (mDepth < 3 && mNested < 24 && percent(30)) {
            ++mDepth;
            ++mNested;
            randomOperation(true);
            --mDepth;
        }
    }

    void createModel()
    {
        if (mModels.size() >= 8)
            return;
        const int id = mNextId++;
        auto model = std::make_unique<Model>();
        model->kind = Kind(below(3));
        model->name = nameFor(model->kind);
        switch (model->kind) {
        case Kind::Value:
            model->value = smallValue();
            model->real = std::make_unique<Mve_SimpleValue<long>>(model->value, model->name);
            break;
        case Kind::Array: {
            model->elements = {smallValue(), smallValue(), smallValue()};
            model->real = std::make_unique<Mve_Array<long>>(model->elements, model->name);
            break;
        }
        case Kind::Record: {
            auto record = std::make_unique<Mve_RecordArray>(model->name);
            record->addField<long>("v");
            record->addField<long>("w");
            record->insertRows(0, 2);
            model->fields[0] = model->fields[1] = {0, 0};
            model->real = std::move(record);
            break;
        }
        }
        log(QStringLiteral("create model %1 %2").arg(id).arg(model->name));
        mModels[id] = std::move(model);
        if (percent(70))
            publish(id, pick(mDicts));
    }

    void publish(int id, int dict)
    {
        Model* model = mModels.at(id).get();
        log(QStringLiteral("publish model %1 (%2) in %3").arg(id).arg(model->name).arg(dict));
        if (model->dict != dict)
            model->dict = nameFree(dict, model->name, model) ? dict : -1;
        model->real->Publish(mDicts.at(dict).get());
    }

    void destroyModel()
    {
        const int id = pick(mModels);
        if (id < 0)
            return;
        log(QStringLiteral("destroy model %1").arg(id));
        destroyEntry(mModels, id);
    }

    void publishModel()
    {
        const int id = pick(mModels);
        if (id >= 0)
            publish(id, pick(mDicts));
    }

    void unpublishModel()
    {
        const int id = pick(mModels);
        if (id < 0)
            return;
        log(QStringLiteral("unpublish model %1").arg(id));
        Model* model = mModels.at(id).get();
        model->dict = -1;
        model->real->UnPublish();
    }

    void renameModel()
    {
        const int id = pick(mModels);
        if (id < 0)
            return;
        Model* model = mModels.at(id).get();
        const QString name = nameFor(model->kind);
        log(QStringLiteral("rename model %1 (%2) to %3").arg(id).arg(model->name, name));
        if (name != model->name && model->dict >= 0)
            model->dict = nameFree(model->dict, name, model) ? model->dict : -1;
        model->name = name;
        model->real->SetConnectionName(name);
    }

    Model* pickModel(Kind kind)
    {
        std::vector<int> ids;
        for (const auto& m : mModels) {
            if (m.second->kind == kind)
                ids.push_back(m.first);
        }
        return ids.empty() ? nullptr : mModels.at(ids[size_t(below(int(ids.size())))]).get();
    }

    void changeValue()
    {
        Model* model = pickModel(Kind::Value);
        if (!model)
            return;
        const long value = smallValue();
        log(QStringLiteral("set %1 to %2").arg(model->name).arg(value));
        model->value = value;
        static_cast<Mve_SimpleValue<long>*>(model->real.get())->setValue(value);
    }

    void editArray()
    {
        Model* model = pickModel(Kind::Array);
        if (!model)
            return;
        auto* array = static_cast<Mve_Array<long>*>(model->real.get());
        std::vector<long>& e = model->elements;
        const long size = long(e.size());
        const long a = smallValue(), b = smallValue(), v = smallValue();
        switch (below(5)) {
        case 0: {
            if (size >= 6)
                return;
            log(QStringLiteral("%1: insert %2 at %3").arg(model->name).arg(v).arg(a));
            shadowInsert(e, a, 1, v);
            array->insert(a, v);
            break;
        }
        case 1:
            log(QStringLiteral("%1: remove %2 from %3").arg(model->name).arg(b).arg(a));
            shadowRemove(e, a, b);
            array->removeAt(a, b);
            break;
        case 2:
            log(QStringLiteral("%1: move %2 to %3").arg(model->name).arg(a).arg(b));
            shadowMove(e, a, b);
            array->move(a, b);
            break;
        case 3:
            log(QStringLiteral("%1: element %2 = %3").arg(model->name).arg(a).arg(v));
            if (a >= 0 && a < size)
                e[size_t(a)] = v;
            array->setAt(a, v);
            break;
        case 4: {
            const std::vector<long> values(size_t(below(5)), v);
            log(QStringLiteral("%1: all %2 elements = %3").arg(model->name).arg(values.size()).arg(v));
            e = values;
            array->setValues(values);
            break;
        }
        }
    }

    void editRecord()
    {
        Model* model = pickModel(Kind::Record);
        if (!model)
            return;
        auto* record = static_cast<Mve_RecordArray*>(model->real.get());
        if (percent(20)) {
            // A burst, told once at the end (nobody hears anything before).
            log(QStringLiteral("%1: update").arg(model->name));
            record->beginUpdate();
            for (int i = below(4); i >= 0; --i)
                editRecordOnce(model, record);
            log(QStringLiteral("%1: end of update").arg(model->name));
            record->endUpdate(); // may destroy the record
            return;
        }
        editRecordOnce(model, record);
    }

    void editRecordOnce(Model* model, Mve_RecordArray* record)
    {
        const long rows = long(model->fields[0].size());
        const long a = smallValue(), b = smallValue(), v = smallValue();
        switch (below(4)) {
        case 0:
            if (rows >= 6 || b < 1)
                return;
            log(QStringLiteral("%1: insert %2 rows at %3").arg(model->name).arg(b).arg(a));
            for (auto& f : model->fields)
                shadowInsert(f, a, b, 0);
            record->insertRows(a, b);
            break;
        case 1:
            log(QStringLiteral("%1: remove %2 rows from %3").arg(model->name).arg(b).arg(a));
            for (auto& f : model->fields)
                shadowRemove(f, a, b);
            record->removeRows(a, b);
            break;
        case 2:
            log(QStringLiteral("%1: move row %2 to %3").arg(model->name).arg(a).arg(b));
            for (auto& f : model->fields)
                shadowMove(f, a, b);
            record->moveRow(a, b);
            break;
        case 3: {
            const int field = below(2);
            log(QStringLiteral("%1: row %2 field %3 = %4").arg(model->name).arg(a).arg(field).arg(v));
            if (a >= 0 && a < rows)
                model->fields[field][size_t(a)] = v;
            record->setValue<long>(a, field ? "w" : "v", v);
            break;
        }
        }
    }

    void connectListener(int id)
    {
        Listener* l = mListeners.at(id).get();
        log(QStringLiteral("connect listener %1 to %2 in %3").arg(id).arg(expandedName(*l)).arg(l->dict));
        auto env = Mv_ConnectionEnvironment::create({}, mDicts.at(l->dict).get());
        if (!l->indexVariable.isEmpty())
            env->set("I", l->indexVariable);
        l->real->SetConnectionName(l->spec);
        l->real->connect(env); // may destroy l
    }

    void chooseConnection(Listener& l)
    {
        l.spec = kSpecs.at(below(kSpecs.size()));
        l.indexVariable = kIndexVariables.at(below(kIndexVariables.size()));
        l.dict = pick(mDicts);
    }

    void createListener()
    {
        if (mListeners.size() >= 10)
            return;
        const int id = mNextId++;
        auto l = std::make_unique<Listener>();
        chooseConnection(*l);
        l->real = std::make_unique<LongListener>();
        l->real->setReceiveMessageCB([this, id](const Mv_MessageInterface&) { heard(id); });
        mListeners[id] = std::move(l);
        connectListener(id);
    }

    void destroyListener()
    {
        const int id = pick(mListeners);
        if (id < 0)
            return;
        log(QStringLiteral("destroy listener %1").arg(id));
        destroyEntry(mListeners, id);
    }

    void reconnectListener()
    {
        const int id = pick(mListeners);
        if (id < 0)
            return;
        chooseConnection(*mListeners.at(id));
        connectListener(id);
    }

    void clearListener()
    {
        const int id = pick(mListeners);
        if (id < 0)
            return;
        log(QStringLiteral("clear listener %1").arg(id));
        Listener* l = mListeners.at(id).get();
        l->spec.clear();
        l->real->ClearConnection();
    }

    void setThroughListener()
    {
        const int id = pick(mListeners);
        if (id < 0)
            return;
        Listener* l = mListeners.at(id).get();
        const long value = smallValue();
        log(QStringLiteral("set %1 through listener %2 to %3").arg(expandedName(*l)).arg(id).arg(value));
        const Target target = expected(*l);
        if (target.connected && target.slot)
            *target.slot = value;
        l->real->set(value);
    }

    void createDictionary()
    {
        if (mDicts.size() >= 3)
            return;
        const int id = mNextId++;
        log(QStringLiteral("create dictionary %1").arg(id));
        mDicts[id] = std::make_unique<Mv_ConnectionDict>();
    }

    void destroyDictionary()
    {
        const int id = pick(mDicts);
        if (id <= 0) // the first one stays
            return;
        log(QStringLiteral("destroy dictionary %1").arg(id));
        for (auto& m : mModels) {
            if (m.second->dict == id)
                m.second->dict = -1;
        }
        destroyEntry(mDicts, id);
    }

    std::mt19937 mRandom;
    std::map<int, std::unique_ptr<Mv_ConnectionDict>> mDicts;
    std::map<int, std::unique_ptr<Model>> mModels;
    std::map<int, std::unique_ptr<Listener>> mListeners;
    int mNextId = 1;
    int mDepth = 0;
    int mNested = 0;
    std::deque<QString> mLog;
};

TEST(LifecycleStress, RandomReentrantChangesAgreeWithTheShadow)
{
    const long steps = readEnvironment("KEL_STRESS_OPS", 20000);
    QStringList seeds = qEnvironmentVariable("KEL_STRESS_SEEDS", "1,2,3").split(QLatin1Char(','), Qt::SkipEmptyParts);
    DebugMessageCollector quiet; // taken names are refused with a message, often
    for (const QString& seed : seeds) {
        Harness harness(seed.toUInt());
        for (long step = 0; step < steps; ++step) {
            harness.topLevelStep();
            quiet.clear();
            if (!harness.check()) {
                ADD_FAILURE() << "seed " << qPrintable(seed) << ", step " << step << ", last operations:\n"
                              << qPrintable(harness.recentOperations());
                return;
            }
        }
    }
}

} // namespace
