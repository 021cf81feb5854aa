#include "Mv_ConnectionDict.h"

#include "Mv_Announcement.h"
#include "Mv_ConnectionDict_p.h"
#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"

namespace {

quint64 nextGeneration()
{
    static quint64 generation = 0;
    return ++generation;
}

} // namespace

Mv_ConnectionDict::Mv_ConnectionDict()
    : mModelCount(0)
{
}

Mv_ConnectionDict::~Mv_ConnectionDict()
{
    // Everything leaves first, then the listeners hear of it: whatever they
    // do from their callbacks (destroy models, this dictionary's owner,
    // publish here again) meets a consistent, empty dictionary.
    mDying = true;
    Mv_Announcement announcement;
    for (Mv_DictEntry* entry : qAsConst(mEntries)) {
        if (Mv_ModelBase* model = entry->model) {
            model->mEntryP = nullptr;
            model->mDictP = nullptr;
            commitDetach(entry);
        }
        entry->dict = nullptr;
        announcement.add(entry);
    }
    mEntries.clear();
    mModelCount = 0;
    announcement.run();
}

Mv_ConnectionDict* Mv_ConnectionDict::Singleton()
{
    // Deliberately never destroyed: statics elsewhere may still hold
    // listeners and models while the process exits.
    static Mv_ConnectionDict* const dict = new Mv_ConnectionDict();
    return dict;
}

Mv_ModelBase* Mv_ConnectionDict::lookup(const QString& name) const
{
    const Mv_DictEntry* entry = mEntries.value(name, nullptr);
    return entry ? entry->model : nullptr;
}

QStringList Mv_ConnectionDict::publishedNames() const
{
    QStringList names;
    for (auto it = mEntries.constBegin(); it != mEntries.constEnd(); ++it) {
        if (it.value()->model)
            names.append(it.key());
    }
    names.sort();
    return names;
}

int Mv_ConnectionDict::listenerCount(const QString& name) const
{
    const Mv_DictEntry* entry = mEntries.value(name, nullptr);
    return entry ? entry->listenerCount : 0;
}

Mv_DictEntry* Mv_ConnectionDict::acquire(const QString& name)
{
    if (mDying)
        return nullptr;
    Mv_DictEntry*& slot = mEntries[name];
    if (!slot)
        slot = new Mv_DictEntry(this, name);
    return slot;
}

Mv_DictEntry* Mv_ConnectionDict::commitAttach(const QString& name, Mv_ModelBase* model)
{
    Mv_DictEntry* entry = acquire(name);
    if (!entry)
        return nullptr;
    if (entry->model) {
        releaseIfUnused(entry);
        return nullptr;
    }
    entry->model = model;
    entry->generation = nextGeneration();
    ++mModelCount;
    return entry;
}

void Mv_ConnectionDict::commitDetach(Mv_DictEntry* entry)
{
    entry->model = nullptr;
    entry->generation = nextGeneration();
    if (entry->dict)
        --entry->dict->mModelCount;
}

void Mv_ConnectionDict::releaseIfUnused(Mv_DictEntry* entry)
{
    if (entry->model || entry->first || entry->busy > 0)
        return;
    if (entry->dict)
        entry->dict->mEntries.remove(entry->name);
    delete entry;
}

void Mv_ConnectionDict::link(Mv_DictEntry* entry, Mv_ListenerBase* listener)
{
    listener->mEntryP = entry;
    listener->mPrevP = entry->last;
    listener->mNextP = nullptr;
    if (entry->last)
        entry->last->mNextP = listener;
    else
        entry->first = listener;
    entry->last = listener;
    ++entry->listenerCount;
}

void Mv_ConnectionDict::unlink(Mv_ListenerBase* listener)
{
    Mv_DictEntry* entry = listener->mEntryP;
    if (!entry)
        return;
    for (Mv_DictEntry::Cursor* c = entry->cursors; c; c = c->outer) {
        if (c->next == listener)
            c->next = listener->mNextP;
    }
    if (listener->mPrevP)
        listener->mPrevP->mNextP = listener->mNextP;
    else
        entry->first = listener->mNextP;
    if (listener->mNextP)
        listener->mNextP->mPrevP = listener->mPrevP;
    else
        entry->last = listener->mPrevP;
    listener->mEntryP = nullptr;
    listener->mPrevP = nullptr;
    listener->mNextP = nullptr;
    --entry->listenerCount;
    releaseIfUnused(entry);
}

// Visits every listener of the entry. The cursor is registered with the
// entry so that unlinking the next listener (even destroying it) during a
// visit moves the cursor on instead of leaving it dangling; the entry itself
// is held until the walk ends, whatever happens to its dictionary.
template <class Visit>
void Mv_ConnectionDict::walkListeners(Mv_DictEntry* entry, Visit&& visit, bool stopOnNewGeneration)
{
    Mv_DictEntry::Cursor cursor{entry->first, entry->cursors};
    entry->cursors = &cursor;
    ++entry->busy;
    const quint64 generation = entry->generation;
    while (cursor.next) {
        Mv_ListenerBase* listener = cursor.next;
        cursor.next = listener->mNextP;
        visit(listener);
        if (stopOnNewGeneration && entry->generation != generation)
            break;
    }
    entry->cursors = cursor.outer;
    --entry->busy;
    releaseIfUnused(entry);
}

void Mv_ConnectionDict::announce(Mv_DictEntry* entry)
{
    walkListeners(entry, [](Mv_ListenerBase* l) { l->modelAttachmentChanged(); }, false);
}

// A delivery stops when the model leaves or is replaced on the way: the
// listeners not reached yet hear of that instead (see Mv_Announcement), and
// a replacement's listeners must not hear the old model's news.
void Mv_ConnectionDict::deliver(Mv_DictEntry* entry, const Mv_MessageInterface& message)
{
    walkListeners(entry, [&message](Mv_ListenerBase* l) { l->receiveFromModel(message); }, true);
}
