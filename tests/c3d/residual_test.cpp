// The residual rule: which samples count as filled, and how residuals grade.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"
#include "utils/regions.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Grade {
    const char* name;
    int steps;
    int type; // condition_type of the graded sample
};

void PrintTo(const Grade& row, std::ostream* os) { *os << row.name; }

class ResidualGrades : public testing::TestWithParam<Grade> {};

// Median 10 steps: good up to about 20, fair up to about 40, poor beyond.
TEST_P(ResidualGrades, AgainstTheTakesMedian)
{
    C3D::ResidualRule rule;
    for (int s : {8, 9, 10, 10, 12, 30, 0, 0, 0})
        rule.count(s);
    rule.settle();
    ASSERT_EQ(rule.medianSteps(), 10) << "residual 0 takes no part in the median";
    EXPECT_EQ(condition_type(rule.condition(GetParam().steps)), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Rows, ResidualGrades,
                         testing::Values(Grade{"SmallIsGood", 1, RegionGood},
                                         Grade{"MedianIsGood", 10, RegionGood},
                                         Grade{"JustUnderTwiceIsGood", 19, RegionGood},
                                         Grade{"TwiceIsFair", 20, RegionFair},
                                         Grade{"JustUnderFourTimesIsFair", 39, RegionFair},
                                         Grade{"FourTimesIsPoor", 40, RegionPoor},
                                         Grade{"LargestIsPoor", 255, RegionPoor},
                                         Grade{"FilledIsFair", 0, RegionFair}),
                         [](const testing::TestParamInfo<Grade>& i) { return std::string(i.param.name); });

TEST(ResidualRule, WithoutPositiveResidualsNothingIsFilledAndAllIsGood)
{
    C3D::ResidualRule rule;
    rule.count(0);
    rule.count(0);
    rule.settle();
    EXPECT_FALSE(rule.gradesResiduals());
    EXPECT_FALSE(rule.isFilled(0));
    EXPECT_EQ(condition_type(rule.condition(0)), RegionGood);
}

class ResidualTakes : public testing::Test {
protected:
    QTemporaryDir dir;

    // Two points over four frames; point 1 has residual 0 in frame 2 and is missing in frame 3.
    TAV::Frames take(int residualSteps)
    {
        const QString file = dir.filePath("r.c3d");
        EXPECT_TRUE(writeTestTake(file, testSetup(2, 4), [&](int64_t n, float* v) {
            for (int k = 0; k < 2; ++k) {
                v[k * 4 + 0] = v[k * 4 + 1] = v[k * 4 + 2] = 1.0f;
                v[k * 4 + 3] = C3D::fourthWord(5, residualSteps);
            }
            if (n == 2)
                v[4 + 3] = C3D::fourthWord(0, 0);
            if (n == 3)
                v[4 + 3] = C3D::MissingFourthWord;
        }));
        TAV::Frames t;
        QString error;
        EXPECT_TRUE(C3D::loadTake(file, t, &error)) << error.toStdString();
        return t;
    }
};

TEST_F(ResidualTakes, AllZeroResidualsAreNotATakeOfFilledSamples)
{
    const TAV::Frames t = take(0);
    for (const TAV::Frame& f : t)
        for (const TAV::Marker& m : f.markers) {
            EXPECT_EQ(m.flags, 0u);
            if (!(f.time == 3 && m.id == 1)) {
                EXPECT_EQ(condition_type(m.cond), RegionGood);
            }
        }
    EXPECT_EQ(t[3].markers[1].cond, 0.0f);
}

TEST_F(ResidualTakes, ZeroResidualAmongRealOnesIsFilled)
{
    const TAV::Frames t = take(7);
    EXPECT_EQ(t[2].markers[1].flags, uint32_t(C3D::FilledFlag));
    EXPECT_EQ(condition_type(t[2].markers[1].cond), RegionFair);
    EXPECT_EQ(t[2].markers[0].flags, 0u);
    EXPECT_EQ(condition_type(t[2].markers[0].cond), RegionGood);
    EXPECT_EQ(t[3].markers[1].flags, 0u) << "a missing sample is not filled";
}

} // namespace
