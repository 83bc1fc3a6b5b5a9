#include "utils/saturate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr int kIntMax = std::numeric_limits<int>::max(), kIntMin = std::numeric_limits<int>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max(), kMin = std::numeric_limits<int64_t>::min();

// NaN is 0, values beyond the target range clamp to its ends, in-range values
// truncate as a plain cast.
TEST(Saturate, FloatToIntegerConvertsOrClamps)
{
    const struct {
        double in;
        int expected;
    } rows[] = {{41.99, 41}, {-3.7, -3}, {NAN, 0}, {INFINITY, kIntMax}, {-INFINITY, kIntMin}, {1e20, kIntMax},
                {-1e20, kIntMin}};
    for (const auto& r : rows) {
        EXPECT_EQ(saturate_cast<int>(r.in), r.expected) << r.in;
        EXPECT_EQ(saturate_cast<int>(float(r.in)), r.expected) << r.in;
    }
    EXPECT_EQ(saturate_cast<int64_t>(1e30), kMax) << "the 64-bit limit is not exact in double";
    EXPECT_EQ(saturate_cast<int64_t>(-1e30), kMin);
    EXPECT_EQ(saturate_cast<int>(int64_t(1) << 40), kIntMax);
    EXPECT_EQ(saturate_cast<unsigned>(-5), 0u);
    EXPECT_EQ(saturate_cast<float>(1e300), std::numeric_limits<float>::max());
}

TEST(Saturate, SixtyFourBitDifferencesNeverOverflow)
{
    EXPECT_EQ(diff32(5, 100), -95);
    // Past 2^31 the 64-bit difference is narrowed, as a 32-bit subtraction of the
    // narrowed operands would wrap.
    EXPECT_EQ(diff32((int64_t(1) << 33) + 5, int64_t(1) << 33), 5);
    EXPECT_EQ(diff32(kIntMin, 1), kIntMax);
    EXPECT_EQ(add64(1000, 42), 1042);
    EXPECT_EQ(add64(kMax, 1), kMax);
    EXPECT_EQ(sub64(kMin, 1), kMin);
    EXPECT_EQ(sub64(0, kMin), kMax);
}

} // namespace
