#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

constexpr int64_t kMax = std::numeric_limits<int64_t>::max(), kMin = std::numeric_limits<int64_t>::min();

// A frame never turns into a number by accident, and QVector copies frames
// (their strings must not be moved as raw bytes).
static_assert(!std::is_convertible<TAV::Frame, int64_t>::value, "explicit 64-bit conversion");
static_assert(std::is_constructible<int64_t, TAV::Frame>::value, "the conversion exists");
static_assert(!QTypeInfoQuery<TAV::Frame>::isRelocatable, "frames are copied, not memmoved");

// A sample matches when strictly within the tolerance, without overflow at the
// ends of the range.
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
                {"ToleranceIsStrict", {0, 10, 20, 30}, 14, 4, 2},
                {"AfterTheLast", {0, 10, 20, 30}, 31, 100, -1},
                {"BeforeTheFirst", {0, 10, 20, 30}, -1, 100, -1},
                {"EmptyTrack", {}, 0, 0, -1},
                {"ExtremeTimes", {kMin, 0, kMax}, kMax, 1000, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Markers track;
        for (int64_t t : row.times)
            track.append(marker(0, t));
        EXPECT_EQ(TAV::findIndex(track, row.time, row.tolerance), row.index);
    }
}

} // namespace
