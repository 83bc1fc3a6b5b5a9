// The residual rule: which samples count as filled, and how residuals grade.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"
#include "utils/regions.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Median 10 steps (residual 0 takes no part): good below twice the median, fair
// below four times, poor beyond; a filled sample (0) is fair.
TEST(ResidualRule, GradesAgainstTheTakesMedian)
{
    C3D::ResidualRule rule;
    for (int s : {8, 9, 10, 10, 12, 30, 0, 0, 0})
        rule.count(s);
    rule.settle();
    ASSERT_EQ(rule.medianSteps(), 10);
    const struct {
        int steps, type;
    } rows[] = {{1, RegionGood}, {19, RegionGood}, {20, RegionFair}, {39, RegionFair},
                {40, RegionPoor}, {255, RegionPoor}, {0, RegionFair}};
    for (const auto& r : rows)
        EXPECT_EQ(condition_type(rule.condition(r.steps)), r.type) << r.steps << " steps";
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
    EXPECT_EQ(graded[2].markers[1].flags, uint32_t(C3D::FilledFlag));
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
