// The residual rule: which samples count as filled, and how residuals grade.
#include "host/c3d/c3dtake.h"
#include "utils/regions.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

// Good below g = max(2 m, m + 3 robust standard deviations), fair below 2 g, poor
// beyond; residual 0 takes no part in m. It marks a filled sample (fair) only in a
// take with positive residuals: some writers store 0 for every valid sample, and
// then no sample is graded and every one is good.
TEST(ResidualRule, GradesAgainstTheTakesSpread)
{
    const struct {
        const char* name;
        std::vector<int> take;
        bool zeroIsFilled;
        std::vector<std::pair<int, int>> steps; // steps, type
    } rows[] = {
        // Median 10, deviation 1: the spread is narrow, twice the median decides.
        {"narrow", {8, 9, 10, 10, 12, 30, 0, 0, 0}, true,
         {{1, RegionGood}, {19, RegionGood}, {20, RegionFair}, {39, RegionFair}, {40, RegionPoor},
          {255, RegionPoor}, {0, RegionFair}}},
        // Median 10, deviation 5: good below 32.2, fair below 64.4.
        {"wide", {3, 5, 8, 10, 10, 14, 15, 20, 25}, true,
         {{25, RegionGood}, {32, RegionGood}, {33, RegionFair}, {64, RegionFair}, {65, RegionPoor}}},
        // An even count: the lower of the middle two is the median (10, deviation 0).
        {"even", {10, 10, 20, 20}, true, {{19, RegionGood}, {20, RegionFair}, {40, RegionPoor}}},
        {"allZero", {0, 0, 0}, false, {{0, RegionGood}, {200, RegionGood}}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        C3D::ResidualRule rule;
        for (int s : r.take)
            rule.count(s);
        rule.settle();
        EXPECT_EQ(rule.isFilled(0), r.zeroIsFilled);
        EXPECT_FALSE(rule.isFilled(1));
        for (const auto& s : r.steps)
            EXPECT_EQ(condition_type(rule.condition(s.first)), s.second) << s.first << " steps";
    }
}

} // namespace
