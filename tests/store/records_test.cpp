#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

// A frame never turns into a number by accident, and QVector copies frames
// (their strings must not be moved as raw bytes).
static_assert(!std::is_convertible<TAV::Frame, int64_t>::value, "explicit 64-bit conversion");
static_assert(std::is_constructible<int64_t, TAV::Frame>::value, "the conversion exists");
static_assert(!QTypeInfoQuery<TAV::Frame>::isRelocatable, "frames are copied, not memmoved");

struct Lookup {
    const char* name;
    std::vector<uint32_t> ids;
    uint32_t wanted;
    int index; // where the sample sits, -1 when absent
};

void PrintTo(const Lookup& row, std::ostream* os) { *os << row.name; }

class SampleLookup : public testing::TestWithParam<Lookup> {};

// set and add find the id at its index when it sits there, else by binary search.
TEST_P(SampleLookup, SetAndAddFindOnlyThatId)
{
    TAV::Frame f;
    f.markers = markers(GetParam().ids);
    TAV::Markers added = markers({99});

    EXPECT_EQ(TAV::set(f, marker(GetParam().wanted, 42, 7.0f)), GetParam().index >= 0);
    EXPECT_EQ(TAV::add(added, f.markers, GetParam().wanted), GetParam().index >= 0);

    for (int i = 0; i < f.markers.size(); ++i)
        EXPECT_EQ(f.markers.at(i).x, i == GetParam().index ? 7.0f : 0.0f) << "index " << i;
    EXPECT_EQ(added.size(), GetParam().index >= 0 ? 2 : 1);
    if (GetParam().index >= 0) {
        EXPECT_EQ(added.at(1).id, GetParam().wanted);
    }
}

INSTANTIATE_TEST_SUITE_P(Store, SampleLookup,
                         testing::Values(Lookup{"EmptyVector", {}, 0, -1},
                                         Lookup{"AtIndexDespiteGapsBeyond", {0, 1, 2, 9}, 2, 2},
                                         Lookup{"SparseFoundByBinarySearch", {2, 5, 9}, 5, 1},
                                         Lookup{"SparseMissing", {2, 5, 9}, 4, -1},
                                         Lookup{"FastPathMissesThenSearchFinds", {1, 3, 4}, 1, 0},
                                         Lookup{"BeyondTheLastId", {2, 5, 9}, 10, -1}),
                         [](const testing::TestParamInfo<Lookup>& i) { return std::string(i.param.name); });

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
