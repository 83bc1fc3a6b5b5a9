#include "modules/core/trackruns.h"
#include "host/tavview/areas.h"
#include "host/tavview/take.h"
#include "host/tavview/tracks.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace {

struct Run {
    int first, last, type;
    bool operator==(const Run& o) const { return first == o.first && last == o.last && type == o.type; }
};
void PrintTo(const Run& r, std::ostream* os) { *os << "(" << r.first << "," << r.last << "," << r.type << ")"; }

std::vector<Run> runs(const Regions& regions)
{
    std::vector<Run> out;
    for (const Pair& p : regions)
        out.push_back(Run{p.begin(), p.end(), p.type});
    return out;
}

struct AreaRow {
    const char* name;
    TrackSelection selection;
    int jumpMask;
    std::vector<Run> areas;
};
void PrintTo(const AreaRow& row, std::ostream* os) { *os << row.name; }

class AreasOfTheDefaultTake : public testing::TestWithParam<AreaRow> {};

// The built-in take's events (see defaulttake.cpp), combined frame by frame.
TEST_P(AreasOfTheDefaultTake, AreTheRunsWhereNavigationStops)
{
    const AreaRow& row = GetParam();
    const Take take = defaultTake();
    TAV::Frames tracks;
    buildTracks(take, row.selection, tracks);
    EXPECT_EQ(runs(areasOfInterest(mergedRuns(tracks, row.selection.markers, row.selection.rigids), row.jumpMask)),
              row.areas);
}

const AreaRow areaRows[] = {
    // With a good track beside it, a gap frame is good | missing: still a stop.
    {"GapsBesideAGoodTrack", {{0, 1}, {}}, 10, {{100, 139, 3}, {400, 405, 3}}},
    {"PoorRunsButNotFairOnes", {{2}, {}}, 10, {{220, 259, 8}, {560, 575, 2}}},
    {"FairRunsWhenTheMaskAsks", {{2}, {}}, 4, {{300, 349, 4}}},
    {"FilledSamplesAreGood", {{3}, {}}, 10, {{480, 519, 2}}},
    {"NothingSelected", {{}, {}}, 10, {}},
};

INSTANTIATE_TEST_SUITE_P(Rows, AreasOfTheDefaultTake, testing::ValuesIn(areaRows),
                         [](const testing::TestParamInfo<AreaRow>& i) { return std::string(i.param.name); });

} // namespace
