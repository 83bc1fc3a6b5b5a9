#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr int64_t kMin = std::numeric_limits<int64_t>::min();

TEST(FindIndex, FindsTheSampleAtATime)
{
    const struct {
        const char* name;
        std::vector<int64_t> times;
        int64_t time;
        int tolerance;
        int index;
    } rows[] = {{"WithinTolerance", {0, 10, 20, 30}, 14, 5, 1},
                {"NoneWithinGivesLastProbe", {0, 10, 20, 30}, 14, 2, 2},
                {"AfterTheLast", {0, 10, 20, 30}, 31, 100, -1},
                {"BeforeTheFirst", {0, 10, 20, 30}, -1, 100, -1},
                {"EmptyTrack", {}, 0, 0, -1},
                {"ExtremeTimes", {kMin, 0, kMax}, kMax, 1000, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Markers track;
        for (int64_t t : row.times)
            track.append(marker(0, t));
        const TAV::Markers shared = track;
        EXPECT_EQ(TAV::findIndex(track, row.time, row.tolerance), row.index);
        EXPECT_TRUE(track.isSharedWith(shared)) << "a search never detaches the track";
    }
}

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
