#ifndef MV_CONNECTIONDICT_H
#define MV_CONNECTIONDICT_H

#include "kelplatform_export.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>

class Mv_Announcement;
class Mv_ListenerBase;
class Mv_MessageInterface;
class Mv_ModelBase;
struct Mv_DictCursor;
struct Mv_DictEntry;
struct Mv_DictTable;

// The table of published models by name, and of the listeners that wait for
// or are attached to each name. Models publish themselves here
// (Mv_ModelBase::Publish); listeners find them through connect(). A
// listener may connect before its model is published: it attaches when the
// model appears and detaches when the model is unpublished or destroyed,
// with a connected-changed notification each time.
//
// Names are plain texts; ".", ":", "[" and "]" are ordinary characters of
// names, except that a name ending in "[index]" addresses one element of the
// array model published under the part before the brackets (see
// Mv_ListenerBase).
class KELPLATFORM_EXPORT Mv_ConnectionDict
{
public:
    Mv_ConnectionDict();
    // Unpublishes every model still here; their listeners are told and keep
    // waiting for a name that can no longer be published (connect them in
    // another dictionary to use them again). Safe from inside a notification
    // of one of its models. Meanwhile publishing and connecting here fail.
    ~Mv_ConnectionDict();
    Mv_ConnectionDict(const Mv_ConnectionDict&) = delete;
    Mv_ConnectionDict& operator=(const Mv_ConnectionDict&) = delete;

    // The process-wide dictionary. It is never destroyed, so models and
    // listeners that outlive main() stay safe.
    static Mv_ConnectionDict* Singleton();

    // The model published under name, or null.
    Mv_ModelBase* lookup(const QString& name) const;
    bool isPublished(const QString& name) const { return lookup(name) != nullptr; }
    QStringList publishedNames() const;
    int modelCount() const { return mModelCount; }
    // Listeners waiting for, or attached to, name.
    int listenerCount(const QString& name) const;

private:
    friend class Mv_Announcement;
    friend class Mv_Diagnostics;
    friend class Mv_ListenerBase;
    friend class Mv_ModelBase;

    // Null while the dictionary is being destroyed.
    Mv_DictEntry* acquire(const QString& name);
    // Puts model under name without telling anyone; null when the name is
    // taken or the dictionary is being destroyed.
    Mv_DictEntry* commitAttach(const QString& name, Mv_ModelBase* model);
    static void commitDetach(Mv_DictEntry* entry);
    static void releaseIfUnused(Mv_DictEntry* entry);
    static void link(Mv_DictEntry* entry, Mv_ListenerBase* listener);
    static void unlink(Mv_ListenerBase* listener);
    static void chainLink(Mv_DictEntry* entry, Mv_ListenerBase* listener);
    static void makeChains(Mv_DictEntry* entry);
    static void chainUnlink(Mv_ListenerBase* listener);
    // Moves an element listener to the chain of its current index.
    static void rechain(Mv_ListenerBase* listener);
    static void announce(Mv_DictEntry* entry);
    static void deliver(Mv_DictEntry* entry, const Mv_MessageInterface& message);
    static bool deliverToChains(Mv_DictEntry* entry, const Mv_MessageInterface& message, long low, long high);
    template <class Visit>
    static bool walk(Mv_DictEntry* entry, Mv_ListenerBase* start, bool inChain, Visit&& visit,
                     const quint64* stopUnlessGeneration);

    std::unique_ptr<Mv_DictTable> mEntriesP;
    int mModelCount;
    bool mDying = false;
};

#endif
