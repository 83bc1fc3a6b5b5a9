#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr int64_t kMin = std::numeric_limits<int64_t>::min();

struct Search {
    const char* name;
    std::vector<int64_t> times;
    int64_t time;
    int tolerance;
    int index;
};

void PrintTo(const Search& row, std::ostream* os) { *os << row.name; }

class FindIndex : public testing::TestWithParam<Search> {};

TEST_P(FindIndex, FindsTheSampleAtATime)
{
    TAV::Markers track;
    for (int64_t t : GetParam().times)
        track.append(marker(0, t));
    const TAV::Markers shared = track;

    EXPECT_EQ(TAV::findIndex(track, GetParam().time, GetParam().tolerance), GetParam().index);
    EXPECT_TRUE(track.isSharedWith(shared)) << "a search never detaches the track";
}

INSTANTIATE_TEST_SUITE_P(
    Store, FindIndex,
    testing::Values(Search{"WithinTolerance", {0, 10, 20, 30}, 14, 5, 1},
                    Search{"NoneWithinGivesLastProbe", {0, 10, 20, 30}, 14, 2, 2},
                    Search{"AfterTheLast", {0, 10, 20, 30}, 31, 100, -1},
                    Search{"BeforeTheFirst", {0, 10, 20, 30}, -1, 100, -1}, Search{"EmptyTrack", {}, 0, 0, -1},
                    Search{"ExtremeTimes", {kMin, 0, kMax}, kMax, 1000, 2}),
    [](const testing::TestParamInfo<Search>& i) { return std::string(i.param.name); });

// Equal, or strictly within the tolerance, without overflow at the ends of the range.
TEST(FuzzyCmp, StrictlyWithinToleranceBothWays)
{
    EXPECT_TRUE(TAV::fuzzyCmp<long>(5, 7, 3) && TAV::fuzzyCmp<long>(7, 5, 3));
    EXPECT_FALSE(TAV::fuzzyCmp<long>(5, 8, 3) || TAV::fuzzyCmp<long>(8, 5, 3));
    EXPECT_FALSE(TAV::fuzzyCmp<long>(5, 6, -3));
    EXPECT_FALSE(TAV::fuzzyCmp<long>(kMin, kMax, 1000) || TAV::fuzzyCmp<long>(kMax, kMin, 1000));
    EXPECT_TRUE(TAV::fuzzyCmp<long>(kMax, kMax - 1, 2) && TAV::fuzzyCmp<long>(kMin + 1, kMin, 2));
}

} // namespace
