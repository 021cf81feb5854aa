#include "Mv_ConnectionDict.h"

#include "Mv_Announcement.h"
#include "Mv_ConnectionDict_p.h"
#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mvt_ArrayContainer_Notifications.h"

#include <algorithm>
#include <limits>

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
    chainLink(entry, listener);
}

void Mv_ConnectionDict::unlink(Mv_ListenerBase* listener)
{
    Mv_DictEntry* entry = listener->mEntryP;
    if (!entry)
        return;
    chainUnlink(listener);
    for (Mv_DictEntry::Cursor* c = entry->cursors; c; c = c->outer) {
        if (!c->inChain && c->next == listener)
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

void Mv_ConnectionDict::chainLink(Mv_DictEntry* entry, Mv_ListenerBase* listener)
{
    Mv_DictEntry::Chain* chain = &entry->plain;
    listener->mChain = Mv_ListenerBase::kPlainChain;
    if (listener->mIndexMode != Mv_ListenerBase::kNoIndex) {
        long index = 0;
        if (!listener->currentIndex(&index)) {
            listener->mChain = Mv_ListenerBase::kNoChain;
            return;
        }
        if (!entry->byIndex)
            entry->byIndex.reset(new std::map<long, Mv_DictEntry::Chain>());
        chain = &(*entry->byIndex)[index];
        listener->mChainIndex = index;
        listener->mChain = Mv_ListenerBase::kIndexChain;
    }
    listener->mChainPrevP = chain->last;
    listener->mChainNextP = nullptr;
    if (chain->last)
        chain->last->mChainNextP = listener;
    else
        chain->first = listener;
    chain->last = listener;
}

void Mv_ConnectionDict::chainUnlink(Mv_ListenerBase* listener)
{
    if (listener->mChain == Mv_ListenerBase::kNoChain)
        return;
    Mv_DictEntry* entry = listener->mEntryP;
    for (Mv_DictEntry::Cursor* c = entry->cursors; c; c = c->outer) {
        if (c->inChain && c->next == listener)
            c->next = listener->mChainNextP;
    }
    const bool plain = listener->mChain == Mv_ListenerBase::kPlainChain;
    std::map<long, Mv_DictEntry::Chain>::iterator bucket;
    if (!plain)
        bucket = entry->byIndex->find(listener->mChainIndex);
    Mv_DictEntry::Chain& chain = plain ? entry->plain : bucket->second;
    if (listener->mChainPrevP)
        listener->mChainPrevP->mChainNextP = listener->mChainNextP;
    else
        chain.first = listener->mChainNextP;
    if (listener->mChainNextP)
        listener->mChainNextP->mChainPrevP = listener->mChainPrevP;
    else
        chain.last = listener->mChainPrevP;
    // Walks look chains up by index each time, so an empty one can go.
    if (!plain && !chain.first)
        entry->byIndex->erase(bucket);
    listener->mChain = Mv_ListenerBase::kNoChain;
    listener->mChainPrevP = nullptr;
    listener->mChainNextP = nullptr;
}

void Mv_ConnectionDict::rechain(Mv_ListenerBase* listener)
{
    Mv_DictEntry* entry = listener->mEntryP;
    if (!entry || listener->mIndexMode == Mv_ListenerBase::kNoIndex)
        return;
    long index = 0;
    const bool known = listener->currentIndex(&index);
    if (listener->mChain == Mv_ListenerBase::kIndexChain && known && index == listener->mChainIndex)
        return;
    chainUnlink(listener);
    if (known)
        chainLink(entry, listener);
}

// Visits the listeners from start along the list (or a chain). The cursor
// is registered with the entry so that unlinking the next listener (even
// destroying it) during a visit moves the cursor on instead of leaving it
// dangling; the entry itself is held until the walk ends, whatever happens
// to its dictionary. False when the walk stopped because the model changed.
template <class Visit>
bool Mv_ConnectionDict::walk(Mv_DictEntry* entry, Mv_ListenerBase* start, bool inChain, Visit&& visit,
                             const quint64* stopUnlessGeneration)
{
    Mv_DictEntry::Cursor cursor{start, entry->cursors, inChain};
    entry->cursors = &cursor;
    ++entry->busy;
    bool completed = true;
    while (cursor.next) {
        Mv_ListenerBase* listener = cursor.next;
        cursor.next = inChain ? listener->mChainNextP : listener->mNextP;
        visit(listener);
        if (stopUnlessGeneration && entry->generation != *stopUnlessGeneration) {
            completed = false;
            break;
        }
    }
    entry->cursors = cursor.outer;
    --entry->busy;
    releaseIfUnused(entry);
    return completed;
}

void Mv_ConnectionDict::announce(Mv_DictEntry* entry)
{
    walk(entry, entry->first, false, [](Mv_ListenerBase* l) { l->modelAttachmentChanged(); }, nullptr);
}

// A delivery stops when the model leaves or is replaced on the way: the
// listeners not reached yet hear of that instead (see Mv_Announcement), and
// a replacement's listeners must not hear the old model's news. Element
// notifications go to the listeners of the whole model and to the element
// listeners whose index they may concern.
void Mv_ConnectionDict::deliver(Mv_DictEntry* entry, const Mv_MessageInterface& message)
{
    typedef Mvt_ArrayContainer_Notifications N;
    if (const auto* changed = message.as<N::MsgElementValueChanged>()) {
        deliverToChains(entry, message, changed->index(), changed->index());
    } else if (const auto* replaced = message.as<N::MsgElementsReplaced>()) {
        deliverToChains(entry, message, replaced->first(), std::numeric_limits<long>::max());
    } else if (const auto* moved = message.as<N::MsgElementsMoved>()) {
        deliverToChains(entry, message, std::min(moved->from(), moved->to()), std::max(moved->from(), moved->to()));
    } else {
        const quint64 generation = entry->generation;
        walk(entry, entry->first, false, [&message](Mv_ListenerBase* l) { l->receiveFromModel(message); },
             &generation);
    }
}

bool Mv_ConnectionDict::deliverToChains(Mv_DictEntry* entry, const Mv_MessageInterface& message, long low,
                                        long high)
{
    const auto visit = [&message](Mv_ListenerBase* l) { l->receiveFromModel(message); };
    const quint64 generation = entry->generation;
    ++entry->busy;
    bool completed = walk(entry, entry->plain.first, true, visit, &generation);
    // Chains come and go while listeners react, so the next one is looked
    // up afresh after each.
    if (entry->byIndex) {
        const auto& byIndex = *entry->byIndex; // emptied, never freed, while the entry lives
        for (auto it = byIndex.lower_bound(low); completed && it != byIndex.end() && it->first <= high;) {
            const long index = it->first;
            completed = walk(entry, it->second.first, true, visit, &generation);
            if (index == high)
                break;
            it = byIndex.upper_bound(index);
        }
    }
    --entry->busy;
    releaseIfUnused(entry);
    return completed;
}
