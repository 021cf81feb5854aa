#include "Mv_Announcement.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"

#include <utility>

Mv_Announcement::~Mv_Announcement()
{
    release();
}

void Mv_Announcement::add(Mv_DictEntry* entry)
{
    ++entry->busy;
    mEntries.append(entry);
}

void Mv_Announcement::run()
{
    // Entries are released only at the end: one named twice (left and
    // taken again by a rename) must survive its first announcement.
    for (Mv_DictEntry* entry : qAsConst(mEntries))
        Mv_ConnectionDict::announce(entry);
    release();
}

void Mv_Announcement::release()
{
    const auto entries = std::exchange(mEntries, {});
    for (Mv_DictEntry* entry : entries) {
        --entry->busy;
        Mv_ConnectionDict::releaseIfUnused(entry);
    }
}
