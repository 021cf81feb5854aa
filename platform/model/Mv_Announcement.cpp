#include "Mv_Announcement.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"


Mv_Announcement::~Mv_Announcement()
{
    release();
}

void Mv_Announcement::add(Mv_DictEntry* entry)
{
    // Nobody to tell: listeners that come later learn the state as they
    // connect. A name left without model or listener goes at once.
    if (!entry->first) {
        Mv_ConnectionDict::releaseIfUnused(entry);
        return;
    }
    ++entry->busy;
    mEntries.append(entry);
}

void Mv_Announcement::run()
{
    if (mEntries.isEmpty())
        return;
    // Entries are released only at the end: one named twice (left and
    // taken again by a rename) must survive its first announcement.
    for (Mv_DictEntry* entry : qAsConst(mEntries))
        Mv_ConnectionDict::announce(entry);
    release();
}

void Mv_Announcement::release()
{
    // Releasing calls nobody back, so the list can be walked in place and
    // emptied after (QVarLengthArray has no cheap move: taking it out cost a
    // copy on every publish).
    if (mEntries.isEmpty())
        return;
    for (Mv_DictEntry* entry : qAsConst(mEntries)) {
        --entry->busy;
        Mv_ConnectionDict::releaseIfUnused(entry);
    }
    mEntries.clear();
}
