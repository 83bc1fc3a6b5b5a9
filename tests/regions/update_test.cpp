#include "tests/regions/runs.h"

#include "tav/tavframe.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Single-precision offsets added in double precision: 0.501f is still poor.
TEST(ConditionType, ClassifiesByThresholds)
{
    const struct {
        float cond;
        int type;
    } rows[] = {{0.0f, RegionMissing},  {std::numeric_limits<float>::quiet_NaN(), RegionMissing},
                {-1.0f, RegionMissing}, {std::numeric_limits<float>::denorm_min(), RegionPoor},
                {0.501f, RegionPoor},   {0.502f, RegionFair},
                {1.0f, RegionFair},     {1.001f, RegionGood}};
    for (const auto& r : rows)
        EXPECT_EQ(condition_type(r.cond), r.type) << r.cond;
}

QVector<TAV::Marker> markerTrack(const std::vector<float>& conds)
{
    QVector<TAV::Marker> track;
    for (float c : conds)
        track.append(TAV::Marker{0, 0, track.size(), 0, 0, 0, c});
    return track;
}

TEST(RegionsUpdate, SampleTrackComparesEverySampleAndOneSampleEndsAtOne)
{
    EXPECT_EQ(runsOf(Regions(markerTrack({1.5f, 1.5f, 0, 0, 1.5f}))),
              (std::vector<Span>{{0, 1, 1}, {2, 3, 2}, {4, 4, 1}}));
    EXPECT_EQ(runsOf(Regions(markerTrack({0.3f}))), (std::vector<Span>{{0, 1, 8}}));
    QVector<TAV::Rigid> rigid(1);
    rigid[0].cond = 2.0f;
    EXPECT_EQ(runsOf(Regions(rigid)), (std::vector<Span>{{0, 1, 1}}));
}

} // namespace
