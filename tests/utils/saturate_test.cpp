#include "utils/saturate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct FloatToInt {
    const char* name;
    double in;
    int expected;
};

void PrintTo(const FloatToInt& row, std::ostream* os) { *os << row.name; }

class SaturateFloatToInt : public testing::TestWithParam<FloatToInt> {};

TEST_P(SaturateFloatToInt, ConvertsOrClamps)
{
    EXPECT_EQ(saturate_cast<int>(GetParam().in), GetParam().expected);
    EXPECT_EQ(saturate_cast<int>(float(GetParam().in)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, SaturateFloatToInt,
                         testing::Values(FloatToInt{"InRangeTruncatesTowardZero", 41.99, 41},
                                         FloatToInt{"NegativeTruncatesTowardZero", -3.7, -3},
                                         FloatToInt{"NaNIsZero", std::nan(""), 0},
                                         FloatToInt{"PlusInfinityIsMax", INFINITY, std::numeric_limits<int>::max()},
                                         FloatToInt{"MinusInfinityIsMin", -INFINITY, std::numeric_limits<int>::min()},
                                         FloatToInt{"HugeIsMax", 1e20, std::numeric_limits<int>::max()},
                                         FloatToInt{"HugeNegativeIsMin", -1e20, std::numeric_limits<int>::min()}),
                         [](const testing::TestParamInfo<FloatToInt>& i) { return std::string(i.param.name); });

TEST(Saturate, SixtyFourBitLimitsAreExact)
{
    EXPECT_EQ(saturate_cast<int64_t>(1e30), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(saturate_cast<int64_t>(-1e30), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(saturate_cast<int64_t>(9007199254740993.0), int64_t(9007199254740992)); // nearest double
}

TEST(Saturate, IntegerNarrowingClamps)
{
    EXPECT_EQ(saturate_cast<int>(int64_t(1) << 40), std::numeric_limits<int>::max());
    EXPECT_EQ(saturate_cast<int>(-(int64_t(1) << 40)), std::numeric_limits<int>::min());
    EXPECT_EQ(saturate_cast<unsigned>(-5), 0u);
    EXPECT_EQ(saturate_cast<int>(uint64_t(7)), 7);
}

TEST(Diff32, MatchesThirtyTwoBitDifferenceWithoutOverflow)
{
    EXPECT_EQ(diff32(1042, 1000), 42);
    EXPECT_EQ(diff32(5, 100), -95);
    // Past 2^31 the 64-bit difference is narrowed, as a 32-bit subtraction of the
    // narrowed operands would wrap.
    EXPECT_EQ(diff32((int64_t(1) << 33) + 5, int64_t(1) << 33), 5);
    EXPECT_EQ(diff32(std::numeric_limits<int32_t>::min(), 1), std::numeric_limits<int32_t>::max());
}

TEST(Saturate, DoubleToFloatClampsToTheFiniteRange)
{
    EXPECT_EQ(saturate_cast<float>(1.5), 1.5f);
    EXPECT_EQ(saturate_cast<float>(1e300), std::numeric_limits<float>::max());
    EXPECT_EQ(saturate_cast<float>(-INFINITY), std::numeric_limits<float>::lowest());
    EXPECT_EQ(saturate_cast<float>(std::nan("")), 0.0f);
}

TEST(Add64Sub64, ExactInRangeAndClampedBeyond)
{
    const int64_t max = std::numeric_limits<int64_t>::max(), min = std::numeric_limits<int64_t>::min();
    EXPECT_EQ(add64(1000, 42), 1042);
    EXPECT_EQ(sub64(-5, 1000), -1005);
    EXPECT_EQ(add64(max, 1), max);
    EXPECT_EQ(add64(min, -1), min);
    EXPECT_EQ(sub64(min, 1), min);
    EXPECT_EQ(sub64(0, min), max);
}

} // namespace
