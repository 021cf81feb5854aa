#ifndef MV_ANNOUNCEMENT_H
#define MV_ANNOUNCEMENT_H

#include "kelplatform_export.h"

#include <QVarLengthArray>

struct Mv_DictEntry;

// Collects the names whose model changed (published, unpublished, renamed)
// and tells their listeners when run() is called. A model made of several
// published parts (Mve_RecordArray and its fields) commits every part's
// change first and announces them together, so that no listener, whatever
// it does from its callback, ever sees the parts half published. Listeners
// compare what they hear with what they heard before, so announcing a name
// that a nested change has already announced costs a walk and tells nobody
// anything twice.
class KELPLATFORM_EXPORT Mv_Announcement
{
public:
    Mv_Announcement() = default;
    // Names not announced (run() not called, or left by an exception) are
    // released without telling their listeners.
    ~Mv_Announcement();
    Mv_Announcement(const Mv_Announcement&) = delete;
    Mv_Announcement& operator=(const Mv_Announcement&) = delete;

    // Tells the listeners of every collected name, in the order collected.
    // Listeners may destroy anything, the models and their dictionary
    // included; the names stay valid until they have all been told.
    void run();

private:
    friend class Mv_ModelBase;
    friend class Mv_ConnectionDict;

    void add(Mv_DictEntry* entry);
    void release();

    QVarLengthArray<Mv_DictEntry*, 4> mEntries;
};

#endif
