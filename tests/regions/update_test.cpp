#include "tests/regions/runs.h"

#include "tav/tavframe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

struct Condition {
    const char* name;
    float cond;
    int type;
};

void PrintTo(const Condition& row, std::ostream* os) { *os << row.name; }

class ConditionType : public testing::TestWithParam<Condition> {};

TEST_P(ConditionType, ClassifiesBySinglePrecisionThresholds)
{
    EXPECT_EQ(condition_type(GetParam().cond), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    Runs, ConditionType,
    testing::Values(Condition{"Zero", 0.0f, 2}, Condition{"Negative", -1.0f, 2},
                    Condition{"NaN", std::numeric_limits<float>::quiet_NaN(), 2},
                    Condition{"TinyPositive", std::numeric_limits<float>::denorm_min(), 8},
                    Condition{"Half", 0.5f, 8}, Condition{"JustBelowFairThreshold", 0.501f, 8},
                    Condition{"Fair", 0.502f, 4}, Condition{"One", 1.0f, 4},
                    Condition{"JustAboveGoodThreshold", 1.001f, 1}, Condition{"Good", 1.5f, 1},
                    Condition{"Infinity", std::numeric_limits<float>::infinity(), 1}),
    [](const testing::TestParamInfo<Condition>& i) { return std::string(i.param.name); });

struct TypeTrack {
    const char* name;
    std::vector<int> types;
    std::vector<Span> runs;
};

void PrintTo(const TypeTrack& row, std::ostream* os) { *os << row.name; }

class UpdateFromTypes : public testing::TestWithParam<TypeTrack> {};

TEST_P(UpdateFromTypes, LastElementJoinsTheLastRun)
{
    EXPECT_EQ(runsOf(Regions(GetParam().types)), GetParam().runs);
}

INSTANTIATE_TEST_SUITE_P(
    Runs, UpdateFromTypes,
    testing::Values(TypeTrack{"Empty", {}, {}}, TypeTrack{"One", {5}, {{0, 0, 5}}},
                    TypeTrack{"TwoDifferent", {0, 1}, {{0, 1, 0}}}, TypeTrack{"LastDiffers", {0, 0, 1}, {{0, 2, 0}}},
                    TypeTrack{"LastDiffersAgain", {1, 1, 2}, {{0, 2, 1}}},
                    TypeTrack{"TwoRuns", {0, 1, 1, 2}, {{0, 0, 0}, {1, 3, 1}}},
                    TypeTrack{"WholeIntsCompared", {3, 1, 3, 3}, {{0, 0, 3}, {1, 1, 1}, {2, 3, 3}}}),
    [](const testing::TestParamInfo<TypeTrack>& i) { return std::string(i.param.name); });

TEST(RegionsUpdate, AppendsBehindExistingRuns)
{
    Regions r = regionsOf({{0, 3, 8}});
    r.Update(std::vector<int>{1, 1, 2, 2, 2});
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 3, 8}, {0, 1, 1}, {2, 4, 2}}));
}

QVector<TAV::Marker> markerTrack(const std::vector<float>& conds)
{
    QVector<TAV::Marker> track;
    for (float c : conds)
        track.append(TAV::Marker{0, 0, track.size(), 0, 0, 0, c});
    return track;
}

TEST(RegionsUpdate, SampleTrackComparesEverySampleIncludingTheLast)
{
    EXPECT_EQ(runsOf(Regions(markerTrack({1.5f, 1.5f, 0, 0, 1.5f}))),
              (std::vector<Span>{{0, 1, 1}, {2, 3, 2}, {4, 4, 1}}));
    EXPECT_TRUE(Regions(markerTrack({})).empty());
}

TEST(RegionsUpdate, OneSampleTrackEndsOnePastItsSample)
{
    EXPECT_EQ(runsOf(Regions(markerTrack({0.3f}))), (std::vector<Span>{{0, 1, 8}}));

    QVector<TAV::Rigid> rigid(1);
    rigid[0].cond = 2.0f;
    EXPECT_EQ(runsOf(Regions(rigid)), (std::vector<Span>{{0, 1, 1}}));
}

TEST(Pair, SizeCountsClosedBoundsAndNeverOverflows)
{
    EXPECT_EQ(Pair(3, 3, 1).size(), 1);
    EXPECT_EQ(Pair(2, 5, 1).size(), 4);
    EXPECT_EQ(Pair(-1, 5, 1).size(), 0);
    EXPECT_EQ(Pair(5, -1, 1).size(), 0);
    EXPECT_EQ(Pair(0, std::numeric_limits<int>::max(), 1).size(), std::numeric_limits<int>::max());
}

} // namespace
