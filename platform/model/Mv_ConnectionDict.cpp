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

// The deliveries in progress, innermost first. The model library is used
// from one thread, as the generation counter above assumes.
Mv_DictCursor* gCursors = nullptr;

void append(Mv_DictEntry::Chain& chain, Mv_ListenerBase* listener, Mv_ListenerBase* Mv_ListenerBase::*prev,
            Mv_ListenerBase* Mv_ListenerBase::*next)
{
    listener->*prev = chain.last;
    listener->*next = nullptr;
    if (chain.last)
        chain.last->*next = listener;
    else
        chain.first = listener;
    chain.last = listener;
}

} // namespace

Mv_ConnectionDict::Mv_ConnectionDict()
    : mEntriesP(new Mv_DictTable(this)), mModelCount(0)
{
}

Mv_ConnectionDict::~Mv_ConnectionDict()
{
    // Everything leaves first, then the listeners hear of it: whatever they
    // do from their callbacks (destroy models, this dictionary's owner,
    // publish here again) meets a consistent, empty dictionary. Entries
    // that someone still uses become orphans; the others go now.
    mDying = true;
    Mv_DictTable* table = mEntriesP.get();
    Mv_Announcement announcement;
    for (auto it = table->entries.begin(); it != table->entries.end();) {
        Mv_DictEntry* entry = it.value();
        if (Mv_ModelBase* model = entry->model) {
            model->mEntryP = nullptr;
            commitDetach(entry);
        }
        if (!entry->first && entry->busy == 0) {
            it = table->entries.erase(it);
            table->destroy(entry);
            continue;
        }
        announcement.add(entry);
        ++it;
    }
    table->dict = nullptr;
    mModelCount = 0;
    announcement.run();
    if (!table->entries.isEmpty()) {
        table->abandoned = true;
        mEntriesP.release();
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
    if (mDying)
        return nullptr;
    const Mv_DictEntry* entry = mEntriesP->entries.value(name, nullptr);
    return entry ? entry->model : nullptr;
}

QStringList Mv_ConnectionDict::publishedNames() const
{
    QStringList names;
    if (mDying)
        return names;
    for (auto it = mEntriesP->entries.constBegin(); it != mEntriesP->entries.constEnd(); ++it) {
        if (it.value()->model)
            names.append(it.key());
    }
    names.sort();
    return names;
}

int Mv_ConnectionDict::listenerCount(const QString& name) const
{
    if (mDying)
        return 0;
    const Mv_DictEntry* entry = mEntriesP->entries.value(name, nullptr);
    return entry ? entry->listenerCount : 0;
}

Mv_DictEntry* Mv_ConnectionDict::acquire(const QString& name)
{
    if (mDying)
        return nullptr;
    Mv_DictEntry*& slot = mEntriesP->entries[name];
    if (!slot)
        slot = mEntriesP->make(name);
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
    if (Mv_ConnectionDict* dict = entry->dict())
        --dict->mModelCount;
}

void Mv_ConnectionDict::releaseIfUnused(Mv_DictEntry* entry)
{
    if (entry->model || entry->first || entry->busy > 0)
        return;
    Mv_DictTable* table = entry->table;
    table->entries.remove(entry->name);
    table->destroy(entry);
    if (table->abandoned && table->entries.isEmpty())
        delete table;
}

void Mv_ConnectionDict::link(Mv_DictEntry* entry, Mv_ListenerBase* listener)
{
    listener->mEntryP = entry;
    listener->mNextP = nullptr;
    if (Mv_ListenerBase* first = entry->first) {
        Mv_ListenerBase* last = first->mPrevP;
        last->mNextP = listener;
        listener->mPrevP = last;
        first->mPrevP = listener;
    } else {
        entry->first = listener;
        listener->mPrevP = listener;
    }
    ++entry->listenerCount;
    chainLink(entry, listener);
}

void Mv_ConnectionDict::unlink(Mv_ListenerBase* listener)
{
    Mv_DictEntry* entry = listener->mEntryP;
    if (!entry)
        return;
    chainUnlink(listener);
    // A cursor about to visit the listener is over its entry's list.
    for (Mv_DictCursor* c = gCursors; c; c = c->outer) {
        if (!c->inChain && c->next == listener)
            c->next = listener->mNextP;
    }
    Mv_ListenerBase* next = listener->mNextP;
    if (listener == entry->first) {
        entry->first = next;
        if (next)
            next->mPrevP = listener->mPrevP;
    } else {
        listener->mPrevP->mNextP = next;
        (next ? next : entry->first)->mPrevP = listener->mPrevP;
    }
    listener->mEntryP = nullptr;
    listener->mPrevP = nullptr;
    listener->mNextP = nullptr;
    --entry->listenerCount;
    releaseIfUnused(entry);
}

void Mv_ConnectionDict::makeChains(Mv_DictEntry* entry)
{
    if (entry->extras)
        return;
    // No walk follows a chain of this entry yet: deliveries in progress
    // follow its list.
    entry->extras.reset(new Mv_DictEntry::Extras());
    for (Mv_ListenerBase* l = entry->first; l; l = l->mNextP) {
        if (l->mChain == Mv_ListenerBase::kPlainChain)
            append(entry->extras->plain, l, &Mv_ListenerBase::mChainPrevP, &Mv_ListenerBase::mChainNextP);
    }
}

void Mv_ConnectionDict::chainLink(Mv_DictEntry* entry, Mv_ListenerBase* listener)
{
    Mv_DictEntry::Chain* chain = nullptr;
    listener->mChain = Mv_ListenerBase::kNoChain;
    if (listener->mIndexMode == Mv_ListenerBase::kNoIndex) {
        listener->mChain = Mv_ListenerBase::kPlainChain;
        if (!entry->extras)
            return; // the list is the chain
        chain = &entry->extras->plain;
    } else {
        makeChains(entry);
        long index = 0;
        if (!listener->currentIndex(&index))
            return;
        chain = &entry->extras->byIndex[index];
        listener->mChainIndex = index;
        listener->mChain = Mv_ListenerBase::kIndexChain;
    }
    append(*chain, listener, &Mv_ListenerBase::mChainPrevP, &Mv_ListenerBase::mChainNextP);
}

void Mv_ConnectionDict::chainUnlink(Mv_ListenerBase* listener)
{
    if (listener->mChain == Mv_ListenerBase::kNoChain)
        return;
    Mv_DictEntry::Extras* extras = listener->mEntryP->extras.get();
    if (!extras) {
        listener->mChain = Mv_ListenerBase::kNoChain; // a plain listener of an entry whose list is its chain
        return;
    }
    for (Mv_DictCursor* c = gCursors; c; c = c->outer) {
        if (c->inChain && c->next == listener)
            c->next = listener->mChainNextP;
    }
    const bool plain = listener->mChain == Mv_ListenerBase::kPlainChain;
    std::map<long, Mv_DictEntry::Chain>::iterator bucket;
    if (!plain)
        bucket = extras->byIndex.find(listener->mChainIndex);
    Mv_DictEntry::Chain& chain = plain ? extras->plain : bucket->second;
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
        extras->byIndex.erase(bucket);
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
    // The cursor leaves the stack however the walk ends: a callback that
    // throws must not leave later unlinks a cursor on a dead stack frame.
    struct Scope
    {
        Mv_DictCursor cursor;
        Scope(Mv_ListenerBase* first, bool chain) : cursor{first, gCursors, chain} { gCursors = &cursor; }
        ~Scope() { gCursors = cursor.outer; }
    };
    bool completed = true;
    ++entry->busy;
    {
        Scope scope(start, inChain);
        Mv_DictCursor& cursor = scope.cursor;
        while (cursor.next) {
            Mv_ListenerBase* listener = cursor.next;
            cursor.next = inChain ? listener->mChainNextP : listener->mNextP;
            visit(listener);
            if (stopUnlessGeneration && entry->generation != *stopUnlessGeneration) {
                completed = false;
                break;
            }
        }
    }
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
    bool completed;
    if (entry->extras) {
        completed = walk(entry, entry->extras->plain.first, true, visit, &generation);
    } else {
        // The list is the whole model's chain, but element listeners that
        // arrive on the way join it too; they hear through their own chains.
        completed = walk(entry, entry->first, false,
                         [&visit](Mv_ListenerBase* l) {
                             if (l->mChain == Mv_ListenerBase::kPlainChain)
                                 visit(l);
                         },
                         &generation);
    }
    // Chains come and go while listeners react, so the next one is looked
    // up afresh after each.
    if (entry->extras) {
        const auto& byIndex = entry->extras->byIndex; // emptied, never freed, while the entry lives
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
