#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

// A frame never turns into a number by accident, and QVector copies frames
// (their strings must not be moved as raw bytes).
static_assert(!std::is_convertible<TAV::Frame, int64_t>::value, "explicit 64-bit conversion");
static_assert(std::is_constructible<int64_t, TAV::Frame>::value, "the conversion exists");
static_assert(!QTypeInfoQuery<TAV::Frame>::isRelocatable, "frames are copied, not memmoved");

// set and add find the id at its index when it sits there, else by binary search.
TEST(SampleLookup, SetAndAddFindOnlyThatId)
{
    const struct {
        const char* name;
        std::vector<uint32_t> ids;
        uint32_t wanted;
        int index; // where the sample sits, -1 when absent
    } rows[] = {{"EmptyVector", {}, 0, -1},
                {"AtIndexDespiteGapsBeyond", {0, 1, 2, 9}, 2, 2},
                {"SparseFoundByBinarySearch", {2, 5, 9}, 5, 1},
                {"SparseMissing", {2, 5, 9}, 4, -1},
                {"FastPathMissesThenSearchFinds", {1, 3, 4}, 1, 0},
                {"BeyondTheLastId", {2, 5, 9}, 10, -1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frame f;
        f.markers = markers(row.ids);
        TAV::Markers added = markers({99});

        EXPECT_EQ(TAV::set(f, marker(row.wanted, 42, 7.0f)), row.index >= 0);
        EXPECT_EQ(TAV::add(added, f.markers, row.wanted), row.index >= 0);

        for (int i = 0; i < f.markers.size(); ++i)
            EXPECT_EQ(f.markers.at(i).x, i == row.index ? 7.0f : 0.0f) << "index " << i;
        const std::vector<uint32_t> expected =
            row.index >= 0 ? std::vector<uint32_t>{99, row.wanted} : std::vector<uint32_t>{99};
        EXPECT_EQ(idsOf(added), expected);
    }
}

TEST(Frame, CopySharesSamplesUntilOneSideWrites)
{
    TAV::Frame a;
    a.markers = markers({0, 1, 2});
    TAV::Frame b = a;
    EXPECT_TRUE(b.markers.isSharedWith(a.markers));

    ASSERT_TRUE(TAV::set(b, marker(1, 5, 3.0f)));

    EXPECT_FALSE(b.markers.isSharedWith(a.markers));
    EXPECT_EQ(a.markers.at(1).x, 0.0f);
}

} // namespace
