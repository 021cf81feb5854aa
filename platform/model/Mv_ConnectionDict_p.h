#ifndef MV_CONNECTIONDICT_P_H
#define MV_CONNECTIONDICT_P_H

// Internal to the model library; not installed.

#include <QString>
#include <QtGlobal>
#include <map>
#include <memory>

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
// Besides that list, every listener is in one chain: the listeners of the
// whole model, or the element listeners of one current index (a listener
// whose index is unknown is in none). Element notifications walk only the
// chains they concern, so a change of one element of an array with
// thousands of row listeners reaches a handful of them.
struct Mv_DictEntry
{
    struct Cursor
    {
        Mv_ListenerBase* next;
        Cursor* outer;
        bool inChain; // follows a chain rather than the list
    };
    struct Chain
    {
        Mv_ListenerBase* first = nullptr;
        Mv_ListenerBase* last = nullptr;
    };

    Mv_DictEntry(Mv_ConnectionDict* d, const QString& n) : dict(d), name(n) {}

    Mv_ConnectionDict* dict; // null once the dictionary is gone
    QString name;
    Mv_ModelBase* model = nullptr;
    Mv_ListenerBase* first = nullptr;
    Mv_ListenerBase* last = nullptr;
    int listenerCount = 0;
    int busy = 0;                 // walks and announcements holding the entry
    Chain plain;                  // listeners of the whole model
    // Element listeners by current index; made for the first one (most
    // names never have any).
    std::unique_ptr<std::map<long, Chain>> byIndex;
    Cursor* cursors = nullptr; // innermost active delivery first
    // Set, from one process-wide counter, whenever a model attaches or
    // detaches: a listener tells a replaced model from the one it knew by
    // this stamp, even when the connected flag ends where it began.
    quint64 generation = 0;
};

#endif
