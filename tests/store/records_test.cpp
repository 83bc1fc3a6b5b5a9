#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

struct Lookup {
    const char* name;
    std::vector<uint32_t> ids;
    uint32_t wanted;
    int index; // where the sample sits, -1 when absent
};

void PrintTo(const Lookup& row, std::ostream* os) { *os << row.name; }

class SampleLookup : public testing::TestWithParam<Lookup> {};

TEST_P(SampleLookup, SetOverwritesOnlyTheSampleOfThatId)
{
    TAV::Frame f;
    f.markers = markers(GetParam().ids);
    const TAV::Markers before = f.markers;

    EXPECT_EQ(TAV::set(f, marker(GetParam().wanted, 42, 7.0f)), GetParam().index >= 0);

    for (int i = 0; i < f.markers.size(); ++i) {
        const bool written = i == GetParam().index;
        EXPECT_EQ(f.markers.at(i).id, before.at(i).id);
        EXPECT_EQ(f.markers.at(i).time, written ? 42 : before.at(i).time) << "index " << i;
        EXPECT_EQ(f.markers.at(i).x, written ? 7.0f : before.at(i).x) << "index " << i;
    }
}

TEST_P(SampleLookup, AddAppendsACopyOrNothing)
{
    const TAV::Markers source = markers(GetParam().ids);
    TAV::Markers destination = markers({99});

    EXPECT_EQ(TAV::add(destination, source, GetParam().wanted), GetParam().index >= 0);

    if (GetParam().index >= 0) {
        ASSERT_EQ(destination.size(), 2);
        EXPECT_EQ(destination.at(1).id, GetParam().wanted);
    } else {
        EXPECT_EQ(destination.size(), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Store, SampleLookup,
                         testing::Values(Lookup{"EmptyVector", {}, 0, -1},
                                         Lookup{"DenseAtIndex", {0, 1, 2, 3}, 2, 2},
                                         Lookup{"AtIndexDespiteGapsBeyond", {0, 1, 2, 9}, 2, 2},
                                         Lookup{"SparseFoundByBinarySearch", {2, 5, 9}, 5, 1},
                                         Lookup{"SparseMissing", {2, 5, 9}, 4, -1},
                                         Lookup{"FastPathMissesThenSearchFinds", {1, 3, 4}, 1, 0},
                                         Lookup{"BeyondTheLastId", {2, 5, 9}, 10, -1}),
                         [](const testing::TestParamInfo<Lookup>& i) { return std::string(i.param.name); });

// A frame never turns into a number by accident, and QVector copies frames
// (their strings must not be moved as raw bytes).
static_assert(!std::is_convertible<TAV::Frame, int64_t>::value, "explicit 64-bit conversion");
static_assert(!QTypeInfoQuery<TAV::Frame>::isRelocatable, "frames are copied, not memmoved");

TEST(Frame, DefaultsMarkNoFrame)
{
    const TAV::Frame f;
    EXPECT_EQ(f.id, 0xFFFFFFFFu);
    EXPECT_EQ(f.time, -1);
    EXPECT_TRUE(f.timestamp.empty() && f.markers.isEmpty() && f._properties.isEmpty());
}

TEST(Frame, CopySharesSamplesUntilOneSideWrites)
{
    TAV::Frame a;
    a.markers = markers({0, 1, 2});
    a.rigids.append(rigid(0, 0));
    TAV::Frame b = a;
    EXPECT_TRUE(b.markers.isSharedWith(a.markers));
    EXPECT_TRUE(b.rigids.isSharedWith(a.rigids));

    ASSERT_TRUE(TAV::set(b, marker(1, 5, 3.0f)));

    EXPECT_FALSE(b.markers.isSharedWith(a.markers));
    EXPECT_TRUE(b.rigids.isSharedWith(a.rigids)) << "an untouched kind stays shared";
    EXPECT_EQ(a.markers.at(1).x, 0.0f);
    EXPECT_EQ(b.markers.at(1).x, 3.0f);
}

} // namespace
