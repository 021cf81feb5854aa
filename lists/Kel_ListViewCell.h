#ifndef KEL_LISTVIEWCELL_H
#define KEL_LISTVIEWCELL_H

#include "kelcore_export.h"

// An empty polymorphic base that applications may give their row-view
// cells; the list view itself depends on nothing in it.
class KELCORE_EXPORT Kel_ListViewCell
{
public:
    Kel_ListViewCell() = default;
    Kel_ListViewCell(const Kel_ListViewCell&) = default;
    Kel_ListViewCell& operator=(const Kel_ListViewCell&) = default;
    virtual ~Kel_ListViewCell();
};

#endif
