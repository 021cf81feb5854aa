#ifndef MV_CONNECTIONDICT_P_H
#define MV_CONNECTIONDICT_P_H

// Internal to the model library; not installed.

#include <QHash>
#include <QString>
#include <QtGlobal>
#include <map>
#include <memory>
#include <unordered_map>

class Mv_ConnectionDict;
class Mv_ListenerBase;
class Mv_ModelBase;

// One name of a dictionary: the model published under it (if any) and an
// intrusive list of the listeners that use the name. Deliveries walk the
// list with a cursor that unlinking keeps valid, so a listener or model may
// be destroyed while a notification is on its way. An entry outlives its
// dictionary while it is busy or still has listeners (an orphan, dict null):
// a dictionary may be destroyed from inside a delivery, and listeners that
// still name it must be able to leave.
//
// Entries live in the nodes of their dictionary's table (one allocation per
// name, and nodes never move); an orphan's node moves to a process-wide
// table of orphans until it is released.
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

    const QString* name = nullptr; // the key of the entry's node
    Mv_ConnectionDict* dict = nullptr; // null once the dictionary is gone
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

// Hashes names for the tables of entries. Deliberately not noexcept: the
// standard library then keeps each node's hash beside it, so that lookups
// and growth do not hash other names again. With a seed of 0 Qt 5 hashes
// one character at a time instead of using the processor's CRC32
// instruction (three times the instructions on typical names).
struct Mv_DictNameHash
{
    size_t operator()(const QString& name) const { return size_t(qHash(name, 0x9e3779b9U)); }
};

struct Mv_DictTable : std::unordered_map<QString, Mv_DictEntry, Mv_DictNameHash>
{
};
typedef std::unordered_multimap<QString, Mv_DictEntry, Mv_DictNameHash> Mv_DictOrphans;

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
