#include "host/report/takequality.h"
#include "synthetictake.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(MarkerQuality, CountsGapsAndPoorSamples)
{
    const struct {
        const char* name;
        const char* conds;
        int valid, gaps, longestGap, poor;
    } rows[] = {
        {"empty", "", 0, 0, 0, 0},
        {"gaps at both ends", "MMGGGM", 3, 2, 2, 0},
        {"all missing", "MMMM", 0, 1, 4, 0},
        {"poor runs count samples", "GPPFGPM", 6, 1, 1, 3},
        // One sample makes a run one frame too long; it is cut back.
        {"one missing sample", "M", 0, 1, 1, 0},
        {"one poor sample", "P", 1, 0, 0, 1},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        const MarkerQuality q = markerQuality(letterTrack(r.conds), "m");
        EXPECT_EQ(q.frames, int(strlen(r.conds)));
        EXPECT_EQ(q.valid, r.valid);
        EXPECT_EQ(q.gaps, r.gaps);
        EXPECT_EQ(q.longestGap, r.longestGap);
        EXPECT_EQ(q.poor, r.poor);
    }
}

TEST(TakeQuality, LeavesModelOutputsOutUnlessAskedFor)
{
    const TAV::Frames take = letterTake({{"LASI", "GGMG"}, {"KneeAngle", "GGGG", "kind=angle;units=deg"},
                                         {"RASI", "GPGG", "units=mm"}},
                                        100.0);
    const TakeQuality q = takeQuality(take, "t.c3d");
    ASSERT_EQ(q.markers.size(), 2u);
    EXPECT_EQ(q.markers[1].name, "RASI") << "options without a kind describe a marker";
    EXPECT_EQ(takeQuality(take, "t.c3d", true).markers.size(), 3u);
}

} // namespace
