#ifndef MV_CONNECTIONDICT_P_H
#define MV_CONNECTIONDICT_P_H

// Internal to the model library; not installed.

#include <QString>
#include <QtGlobal>

class Mv_ConnectionDict;
class Mv_ListenerBase;
class Mv_ModelBase;

// One name of the dictionary: the model published under it (if any) and an
// intrusive list of the listeners that use the name. Deliveries walk the
// list with a cursor that unlinking keeps valid, so a listener or model may
// be destroyed while a notification is on its way.
struct Mv_DictEntry
{
    struct Cursor
    {
        Mv_ListenerBase* next;
        Cursor* outer;
    };

    Mv_DictEntry(Mv_ConnectionDict* d, const QString& n) : dict(d), name(n) {}

    Mv_ConnectionDict* dict;
    QString name;
    Mv_ModelBase* model = nullptr;
    Mv_ListenerBase* first = nullptr;
    Mv_ListenerBase* last = nullptr;
    int listenerCount = 0;
    Cursor* cursors = nullptr; // innermost active delivery first
    int busy = 0;              // active deliveries; the entry is not freed meanwhile
    quint64 generation = 0;    // bumped whenever the model attaches or detaches
};

#endif
