// The identifiers of a menu's items: which segment made each, in what
// order, and forgetting those of a segment taken out of the menu.
#include "Mnu_Menu.h"
#include "Mnu_SeparatorSegment.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

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

// Identifiers handed out, handed out again, named and forgotten in any
// order, with lookups at any point in between, against a plain shadow: a
// list in hand-out order where an identifier handed out again moves to
// the end, and the latest name of each identifier.
TEST(MenuIDs, AnyOrderOfHandingOutLookingUpAndRemovingMatchesAShadow)
{
    std::mt19937 random(20261126);
    for (int round = 0; round < 40; ++round) {
        Mnu_Menu menu(nullptr);
        std::vector<Mnu_Segment*> segments;
        for (int i = 0; i < 3; ++i) {
            segments.push_back(new Mnu_SeparatorSegment(&menu, nullptr));
            menu.addSegment(segments.back());
        }
        std::vector<std::pair<quintptr, Mnu_Segment*>> shadow;
        std::map<quintptr, QString> names;
        auto position = [&](quintptr value) {
            for (size_t i = 0; i < shadow.size(); ++i) {
                if (shadow[i].first == value)
                    return int(i);
            }
            return -1;
        };
        for (int step = 0; step < 300; ++step) {
            const quintptr value = 1 + random() % 60; // few values: many come again
            const int choice = int(random() % 10);
            if (choice < 6) {
                Mnu_Segment* segment = segments[random() % segments.size()];
                menu.setIDAssignedToSegment(segment, id(value));
                const int at = position(value);
                if (at >= 0)
                    shadow.erase(shadow.begin() + at);
                shadow.emplace_back(value, segment);
                if (choice == 0) {
                    const QString name = QString::number(step);
                    menu.setItemName(id(value), name);
                    names[value] = name;
                }
            } else if (choice < 8) {
                const int at = position(value);
                EXPECT_EQ(menu.getSegmentForID(id(value)), at < 0 ? nullptr : shadow[size_t(at)].second);
                EXPECT_EQ(menu.getItemName(id(value)), names.count(value) ? names[value] : QString());
            } else if (choice < 9) {
                // A segment taken out: its items are forgotten, names included.
                const size_t which = random() % segments.size();
                Mnu_Segment* removed = segments[which];
                menu.removeSegment(removed);
                for (auto it = shadow.begin(); it != shadow.end();) {
                    if (it->second == removed) {
                        names.erase(it->first);
                        it = shadow.erase(it);
                    } else {
                        ++it;
                    }
                }
                delete removed;
                segments[which] = new Mnu_SeparatorSegment(&menu, nullptr);
                menu.addSegment(segments[which]);
            } else {
                std::vector<Mnu_MenuID> expected;
                for (const auto& entry : shadow)
                    expected.push_back(id(entry.first));
                EXPECT_EQ(menu.getIDs(), expected) << "round " << round << ", step " << step;
            }
        }
    }
}
