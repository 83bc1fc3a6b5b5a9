#include "utils/framesinfo.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>

namespace {

constexpr int64_t lo = std::numeric_limits<int64_t>::min(), hi = std::numeric_limits<int64_t>::max();

// Every field takes part in the comparison: the host redraws on any change.
TEST(FramesInfo, EveryFieldTakesPartInEquality)
{
    const FramesInfo base(0, 100, 10, 20, 15, 50);
    FramesInfo looping = base;
    looping.loop = true;
    const FramesInfo changed[] = {FramesInfo(1, 100, 10, 20, 15, 50), FramesInfo(0, 99, 10, 20, 15, 50),
                                  FramesInfo(0, 100, 11, 20, 15, 50), FramesInfo(0, 100, 10, 21, 15, 50),
                                  FramesInfo(0, 100, 10, 20, 16, 50), FramesInfo(0, 100, 10, 20, 15, 60), looping};
    EXPECT_TRUE(base == FramesInfo(0, 100, 10, 20, 15, 50));
    for (size_t k = 0; k < std::size(changed); ++k)
        EXPECT_FALSE(base == changed[k]) << "field " << k;
}

// The cursor moves inside the selected range (the whole range without one),
// wrapping only in a loop. Hosts send ranges unchecked: at the ends of int64 a
// step saturates or wraps within the range instead of overflowing.
TEST(FramesInfo, StepsStayInsideTheRange)
{
    const struct {
        const char* name;
        int64_t start, finish, head, tail, current, step;
        bool loop;
        int64_t expected;
    } rows[] = {{"InSelection", 0, 100, 10, 20, 15, 3, false, 18},
                {"StopsAtTheEnd", 0, 100, 10, 20, 15, 30, false, 19},
                {"StopsAtTheStart", 0, 100, 10, 20, 15, -30, false, 10},
                {"WrapsForward", 0, 100, 10, 20, 18, 3, true, 11},
                {"WrapsBackward", 0, 100, 10, 20, 11, -3, true, 18},
                {"WholeRangeWithoutSelection", 0, 100, 5, 5, 98, 5, false, 99},
                {"EmptyRangeHoldsTheCursor", 0, 0, 0, 0, 0, 1, true, 0},
                {"SaturatesAtTheLargest", lo, hi, 0, 0, hi - 2, hi, false, hi - 1},
                {"WrapsPastTheLargest", lo, hi, 0, 0, hi - 1, 3, true, lo + 2},
                {"WrapsBackPastTheSmallest", lo, hi, 0, 0, lo + 2, -3, true, hi - 1}};
    for (const auto& r : rows) {
        FramesInfo i(r.start, r.finish, r.head, r.tail, r.current);
        i.loop = r.loop;
        i.Step(r.step);
        EXPECT_EQ(i.current, r.expected) << r.name;
    }
}

// Ranges and seeks are clipped to the data, without overflow at the ends of int64.
TEST(FramesInfo, RangesAndSeeksStayInsideTheData)
{
    FramesInfo i(0, 100, 0, 0, 50);
    i.Region(-5, 120);
    EXPECT_EQ(std::make_pair(i.head, i.tail), std::make_pair(int64_t(0), int64_t(100)));
    i.Region(60, 40);
    EXPECT_EQ(std::make_pair(i.head, i.tail), std::make_pair(int64_t(60), int64_t(60)));
    i.Seek(95, 10);
    EXPECT_EQ(i.current, 99);
    i.Size(0, 50);
    EXPECT_EQ(std::make_pair(i.head, i.current), std::make_pair(int64_t(50), int64_t(49)));
    i.Reset(0, 0, 25);
    i.Seek(7, 0);
    EXPECT_EQ(i.current, 0) << "an empty range holds the cursor at its start";

    EXPECT_EQ(FramesInfo(lo, hi).size(), hi);
    EXPECT_EQ(FramesInfo(hi, lo).size(), lo);
    FramesInfo wide(lo, hi);
    wide.Seek(hi, hi);
    EXPECT_EQ(wide.current, hi - 1);
    wide.Seek(lo, -1);
    EXPECT_EQ(wide.current, lo);
}

} // namespace
