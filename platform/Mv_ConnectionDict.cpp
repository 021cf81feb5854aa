#include "Mv_ConnectionDict.h"

#include "Mv_ConnectionDict_p.h"
#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"

Mv_ConnectionDict::Mv_ConnectionDict()
    : mModelCount(0)
{
}

Mv_ConnectionDict::~Mv_ConnectionDict()
{
    // Entries vanish as they empty, so restart from the first one each time.
    while (!mEntries.isEmpty()) {
        Mv_DictEntry* entry = mEntries.begin().value();
        if (entry->model) {
            entry->model->UnPublish();
            continue;
        }
        if (entry->first) {
            Mv_ListenerBase* top = entry->first;
            while (top->mElementListenerP)
                top = top->mElementListenerP;
            top->detach();
            top->refreshConnected(false);
            continue;
        }
        mEntries.erase(mEntries.begin());
        delete entry;
    }
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
    Mv_DictEntry*& slot = mEntries[name];
    if (!slot)
        slot = new Mv_DictEntry(this, name);
    return slot;
}

void Mv_ConnectionDict::releaseIfUnused(Mv_DictEntry* entry)
{
    if (entry->model || entry->first || entry->busy > 0)
        return;
    mEntries.remove(entry->name);
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
// visit moves the cursor on instead of leaving it dangling.
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

bool Mv_ConnectionDict::attachModel(Mv_DictEntry* entry, Mv_ModelBase* model)
{
    if (entry->model)
        return false;
    entry->model = model;
    ++entry->generation;
    ++mModelCount;
    walkListeners(entry, [](Mv_ListenerBase* l) { l->modelAttachmentChanged(); }, false);
    return true;
}

void Mv_ConnectionDict::detachModel(Mv_DictEntry* entry)
{
    if (!entry->model)
        return;
    entry->model = nullptr;
    ++entry->generation;
    --mModelCount;
    ++entry->busy; // keep the entry while its listeners hear of it
    walkListeners(entry, [](Mv_ListenerBase* l) { l->modelAttachmentChanged(); }, false);
    --entry->busy;
    releaseIfUnused(entry);
}

void Mv_ConnectionDict::deliver(Mv_DictEntry* entry, const Mv_MessageInterface& message)
{
    walkListeners(entry, [&message](Mv_ListenerBase* l) { l->receiveFromModel(message); }, true);
}
