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
        C3D::ResidualRule rule;
        for (int s : r.take)
            rule.count(s);
        rule.settle();
        for (const auto& s : r.steps)
            EXPECT_EQ(condition_type(rule.condition(s.first)), s.second) << r.name << ", " << s.first << " steps";
    }
}

// Two points over four frames, both with the given residual; point 1 has
// residual 0 in frame 2 and is missing in frame 3.
TAV::Frames residualTake(const QTemporaryDir& dir, int residualSteps)
{
    const QString file = dir.filePath("r.c3d");
    EXPECT_TRUE(writeTestTake(file, testSetup(2, 4), [&](int64_t n, float* v) {
        for (int k = 0; k < 8; ++k)
            v[k] = k % 4 == 3 ? C3D::fourthWord(5, residualSteps) : 1.0f;
        if (n == 2)
            v[7] = C3D::fourthWord(0, 0);
        if (n == 3)
            v[7] = C3D::MissingFourthWord;
    }));
    TAV::Frames t;
    QString error;
    EXPECT_TRUE(C3D::loadTake(file, t, &error)) << error.toStdString();
    return t;
}

TEST(ResidualTakes, ZeroIsFilledOnlyAmongPositiveResiduals)
{
    QTemporaryDir dir;
    const TAV::Frames graded = residualTake(dir, 7);
    EXPECT_EQ(graded[2].markers[1].flags, FilledFlag);
    EXPECT_EQ(condition_type(graded[2].markers[1].cond), RegionFair);
    EXPECT_EQ(graded[2].markers[0].flags, 0u);
    EXPECT_EQ(condition_type(graded[2].markers[0].cond), RegionGood);
    EXPECT_EQ(graded[3].markers[1].flags, 0u) << "a missing sample is not filled";

    const TAV::Frames allZero = residualTake(dir, 0);
    for (const TAV::Frame& f : allZero)
        for (const TAV::Marker& m : f.markers) {
            EXPECT_EQ(m.flags, 0u);
            EXPECT_EQ(condition_type(m.cond), f.time == 3 && m.id == 1 ? RegionMissing : RegionGood);
        }
}

} // namespace
