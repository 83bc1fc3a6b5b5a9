// The residual rule: which samples count as filled, and how residuals grade.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"
#include "utils/regions.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

// Good below g = max(2 m, m + 3 robust standard deviations), fair below 2 g, poor
// beyond; a filled sample (0) is fair. Residual 0 takes no part in m.
TEST(ResidualRule, GradesAgainstTheTakesSpread)
{
    const struct {
        const char* name;
        std::vector<int> take;
        std::vector<std::pair<int, int>> steps; // steps, type
    } rows[] = {
        // Median 10, deviation 1: the spread is narrow, twice the median decides.
        {"narrow", {8, 9, 10, 10, 12, 30, 0, 0, 0},
         {{1, RegionGood}, {19, RegionGood}, {20, RegionFair}, {39, RegionFair}, {40, RegionPoor},
          {255, RegionPoor}, {0, RegionFair}}},
        // Median 10, deviation 5: good below 32.2, fair below 64.4.
        {"wide", {3, 5, 8, 10, 10, 14, 15, 20, 25},
         {{25, RegionGood}, {32, RegionGood}, {33, RegionFair}, {64, RegionFair}, {65, RegionPoor}}},
        // An even count: the lower of the middle two is the median (10, deviation 0).
        {"even", {10, 10, 20, 20}, {{19, RegionGood}, {20, RegionFair}, {40, RegionPoor}}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        C3D::ResidualRule rule;
        for (int s : r.take)
            rule.count(s);
        rule.settle();
        for (const auto& s : r.steps)
            EXPECT_EQ(condition_type(rule.condition(s.first)), s.second) << s.first << " steps";
    }
}

// Some writers store residual 0 for every valid sample: in such a take nothing is
// filled and every valid sample is good; a missing one stays missing.
TEST(ResidualTakes, AllZeroResidualsAreUngraded)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("r.c3d");
    ASSERT_TRUE(writeTestTake(file, testSetup(2, 3), [](int64_t n, float* v) {
        for (int k = 0; k < 8; ++k)
            v[k] = k % 4 == 3 ? C3D::fourthWord(5, 0) : 1.0f;
        if (n == 2)
            v[7] = C3D::MissingFourthWord;
    }));
    TAV::Frames take;
    QString error;
    ASSERT_TRUE(C3D::loadTake(file, take, &error)) << error.toStdString();
    for (const TAV::Frame& f : take)
        for (const TAV::Marker& m : f.markers) {
            EXPECT_EQ(m.flags, 0u);
            EXPECT_EQ(condition_type(m.cond), f.time == 2 && m.id == 1 ? RegionMissing : RegionGood);
        }
}

} // namespace
