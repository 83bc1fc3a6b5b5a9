// Run lists: building them from sample tracks, painting and widening them. How
// Update, Apply, Remove, Extend and Merge treat ordinary lists is replayed against
// a model by the run-list fuzz corpus; these are the cases it cannot reach.
#include "support/capture.h"
#include "tav/tavframe.h"
#include "utils/regions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr int kIntMax = std::numeric_limits<int>::max();

// Compared by all three fields: std::pair's == would ignore the type.
typedef std::tuple<int, int, int> Span;

std::vector<Span> runsOf(const Regions& r)
{
    std::vector<Span> out;
    for (const Pair& p : r)
        out.emplace_back(p.first, p.second, p.type);
    return out;
}

Regions regionsOf(const std::vector<Span>& runs)
{
    Regions r;
    for (const Span& x : runs)
        r.push_back(Pair(std::get<0>(x), std::get<1>(x), std::get<2>(x)));
    return r;
}

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

// Runs that no Update makes.
TEST(Apply, OrsRunTypesIntoFrames)
{
    const struct {
        const char* name;
        std::vector<Span> runs;
        std::vector<int> before, after;
        std::string printed;
    } rows[] = {{"LaterRunsStillApplied", {{0, 9, 8}, {0, 3, 1}}, {}, {11, 11, 11, 11},
                 "error: attempting to modify an invalid index (4)\n"},
                {"NegativeIndexReportedNotWritten", {{-2, 0, 1}}, {}, {},
                 "error: attempting to modify an invalid index (-2)\n"},
                {"RunEndingAtTheLargestIntCountsIn64Bits", {{kIntMax - 1, kIntMax, 1}, {0, 0, 1}}, {0}, {1},
                 "error: attempting to modify an invalid index (2147483646)\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<int> flags = row.before;
        StdoutCapture out;
        regionsOf(row.runs).Apply(flags);
        EXPECT_EQ(flags, row.after);
        EXPECT_EQ(out.text(), row.printed);
    }
}

// Runs that start before 0 and a growth of the largest int: clipped to the list,
// saturating.
TEST(RegionsExtend, SaturatesInsideTheList)
{
    Regions r = regionsOf({{-3, 1, 8}, {2, 3, 1}, {4, 6, 8}});
    r.Extend(kIntMax, kIntMax, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 6, 8}, {2, 3, 1}, {0, 6, 8}}));
}

} // namespace
