// The identifiers of a menu's items: which segment made each, in what
// order, and forgetting those of a segment taken out of the menu.
#include "Mnu_Menu.h"
#include "Mnu_SeparatorSegment.h"

#include <gtest/gtest.h>

namespace {

Mnu_MenuID id(quintptr value)
{
    return Mnu_MenuID(reinterpret_cast<void*>(value));
}

} // namespace

TEST(MenuIDs, ARemovedSegmentsItemsAreForgottenAndTheRestKeepTheirOrder)
{
    Mnu_Menu menu(nullptr);
    auto* kept = new Mnu_SeparatorSegment(&menu, nullptr);
    auto* removed = new Mnu_SeparatorSegment(&menu, nullptr);
    menu.addSegment(kept);
    menu.addSegment(removed);

    // Interleaved, as list segments rebuilt one after the other leave them.
    const quintptr count = 100; // enough for the list to be compacted on the way
    for (quintptr i = 1; i <= count; ++i)
        menu.setIDAssignedToSegment(i % 2 ? removed : kept, id(i));
    menu.setIDAssignedToSegment(kept, id(1)); // handed out again: moves to the end

    EXPECT_TRUE(menu.removeSegment(removed));
    delete removed;

    const std::vector<Mnu_MenuID> ids = menu.getIDs();
    ASSERT_EQ(ids.size(), size_t(count / 2 + 1));
    EXPECT_EQ(ids.front(), id(2));
    EXPECT_EQ(ids[ids.size() - 2], id(count));
    EXPECT_EQ(ids.back(), id(1));
    EXPECT_EQ(menu.getSegmentForID(id(1)), kept);
    EXPECT_EQ(menu.getSegmentForID(id(3)), nullptr);
    menu.itemActivated(id(3)); // no longer reaches anything
}
