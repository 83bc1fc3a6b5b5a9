#include "host/tavview/areas.h"
#include "host/tavview/take.h"
#include "host/tavview/tracks.h"
#include "modules/core/trackruns.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

// The built-in take's events (see defaulttake.cpp), combined frame by frame.
TEST(AreasOfTheDefaultTake, AreTheRunsWhereNavigationStops)
{
    using Run = std::tuple<int, int, int>; // first, last, type
    const struct {
        const char* name;
        TrackSelection selection;
        int jumpMask;
        std::vector<Run> areas;
    } rows[] = {
        // With a good track beside it, a gap frame is good | missing: still a stop.
        {"gaps beside a good track", {{0, 1}, {}}, 10, {{100, 139, 3}, {400, 405, 3}}},
        {"poor runs but not fair ones", {{2}, {}}, 10, {{220, 259, 8}, {560, 575, 2}}},
        {"fair runs when the mask asks", {{2}, {}}, 4, {{300, 349, 4}}},
        {"filled samples are good", {{3}, {}}, 10, {{480, 519, 2}}},
        {"nothing selected", {{}, {}}, 10, {}},
    };
    const Take take = defaultTake();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames tracks;
        buildTracks(take, row.selection, tracks);
        std::vector<Run> found;
        for (const Pair& p : areasOfInterest(mergedRuns(tracks, row.selection.markers, row.selection.rigids), row.jumpMask))
            found.emplace_back(p.begin(), p.end(), p.type);
        EXPECT_EQ(found, row.areas);
    }
}

} // namespace
