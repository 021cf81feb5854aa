#ifndef MV_CONNECTIONDICT_P_H
#define MV_CONNECTIONDICT_P_H

// Internal to the model library; not installed.

#include <QHash>
#include <QString>
#include <QtGlobal>
#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <new>
#include <vector>

class Mv_ConnectionDict;
class Mv_ListenerBase;
class Mv_ModelBase;
struct Mv_DictTable;

// One name of a dictionary: the model published under it (if any) and an
// intrusive list of the listeners that use the name. Deliveries walk the
// list with a cursor that unlinking keeps valid, so a listener or model may
// be destroyed while a notification is on its way. An entry outlives its
// dictionary while it is busy or still has listeners (an orphan, dict()
// null): a dictionary may be destroyed from inside a delivery, and
// listeners that still name it must be able to leave.
//
// Entries come from a pool of their dictionary's table; a table left with
// orphans outlives its dictionary until the last of them goes.
//
// Besides that list, every listener is in one chain: the listeners of the
// whole model, or the element listeners of one current index (a listener
// whose index is unknown is in none). Element notifications walk only the
// chains they concern, so a change of one element of an array with
// thousands of row listeners reaches a handful of them. Most names never
// have element listeners: their chains are made (in the entry's extras)
// for the first one, and until then the list itself is the whole model's
// chain.
struct Mv_DictEntry
{
    struct Chain
    {
        Mv_ListenerBase* first = nullptr;
        Mv_ListenerBase* last = nullptr;
    };
    struct Extras
    {
        Chain plain;                      // listeners of the whole model
        std::map<long, Chain> byIndex;    // element listeners by current index
    };

    inline Mv_ConnectionDict* dict() const; // null once the dictionary is gone

    Mv_DictEntry(Mv_DictTable* t, const QString& n) : table(t), name(n) {}

    Mv_DictTable* table;
    QString name; // shares its text with the table's key
    Mv_ModelBase* model = nullptr;
    // The list: the first listener's mPrevP is the last one, whose mNextP
    // is null.
    Mv_ListenerBase* first = nullptr;
    // Set, from one process-wide counter, whenever a model attaches or
    // detaches: a listener tells a replaced model from the one it knew by
    // this stamp, even when the connected flag ends where it began.
    quint64 generation = 0;
    std::unique_ptr<Extras> extras; // once an element listener came
    int listenerCount = 0;
    int busy = 0; // walks and announcements holding the entry
};

// The entries of one table: blocks of one size carved from chunks and
// recycled through a free list, about ten instructions where the general
// allocator takes one to two hundred on a heap that has seen many names
// come and go, and without the allocator's header in front of every entry.
// (The standard library's pool resource spends as much as the heap, and
// rounds chunks up generously.) Freed blocks stay with the table until it
// goes, which a table's entries cannot outlive.
class Mv_DictNodePool
{
public:
    Mv_DictNodePool() = default;
    ~Mv_DictNodePool()
    {
        for (void* chunk : mChunks)
            ::operator delete(chunk);
    }
    Mv_DictNodePool(const Mv_DictNodePool&) = delete;
    Mv_DictNodePool& operator=(const Mv_DictNodePool&) = delete;

    // Whether blocks of size come from here: the size first asked for, and
    // only that one.
    bool serves(size_t size)
    {
        if (mBlockSize == 0 && size >= sizeof(FreeBlock))
            mBlockSize = size;
        return size == mBlockSize;
    }
    void* allocate()
    {
        if (FreeBlock* block = mFree) {
            mFree = block->next;
            return block;
        }
        if (mLeft == 0)
            grow();
        void* block = mNext;
        mNext += mBlockSize;
        --mLeft;
        return block;
    }
    void deallocate(void* block)
    {
        mFree = new (block) FreeBlock{mFree};
    }

private:
    struct FreeBlock
    {
        FreeBlock* next;
    };

    void grow()
    {
        // Small tables stay small; large ones take 256 entries at a time.
        const size_t blocks = mChunks.size() < 5 ? size_t(8) << mChunks.size() : 256;
        mChunks.reserve(mChunks.size() + 1);
        mNext = static_cast<char*>(::operator new(blocks * mBlockSize));
        mChunks.push_back(mNext);
        mLeft = blocks;
    }

    FreeBlock* mFree = nullptr;
    char* mNext = nullptr;
    size_t mLeft = 0;
    size_t mBlockSize = 0;
    std::vector<void*> mChunks;
};


// A dictionary's entries by name, the entries from the table's own pool.
// (A table holding the entries in its nodes, such as std::unordered_map,
// saves an allocation but reaches a name through more scattered memory,
// which costs more once the names no longer fit in the caches.)
struct Mv_DictTable
{
    explicit Mv_DictTable(Mv_ConnectionDict* d) : dict(d) {}
    ~Mv_DictTable()
    {
        for (Mv_DictEntry* entry : qAsConst(entries))
            entry->~Mv_DictEntry(); // the pool frees the memory
    }
    Mv_DictTable(const Mv_DictTable&) = delete;
    Mv_DictTable& operator=(const Mv_DictTable&) = delete;

    Mv_DictEntry* make(const QString& name)
    {
        pool.serves(sizeof(Mv_DictEntry));
        return new (pool.allocate()) Mv_DictEntry(this, name);
    }
    void destroy(Mv_DictEntry* entry)
    {
        entry->~Mv_DictEntry();
        pool.deallocate(entry);
    }

    Mv_ConnectionDict* dict;  // null once the dictionary is being destroyed
    bool abandoned = false;   // the dictionary is gone: the last orphan frees the table
    Mv_DictNodePool pool;
    QHash<QString, Mv_DictEntry*> entries;
};

Mv_ConnectionDict* Mv_DictEntry::dict() const
{
    return table->dict;
}

// A delivery in progress over one entry's list (or one of its chains).
// Active cursors form one stack, innermost first: unlinking a listener moves
// on every cursor about to visit it.
struct Mv_DictCursor
{
    Mv_ListenerBase* next;
    Mv_DictCursor* outer;
    bool inChain; // follows a chain rather than the list
};

#endif
