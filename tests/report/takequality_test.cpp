#include "host/report/takequality.h"
#include "synthetictake.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct TrackCase {
    const char* name;
    const char* conds;
    int valid, gaps, longestGap, poor;
};

void PrintTo(const TrackCase& row, std::ostream* os) { *os << row.name; }

class MarkerQualityOfTrack : public testing::TestWithParam<TrackCase> {};

TEST_P(MarkerQualityOfTrack, CountsGapsAndPoorSamples)
{
    const TrackCase& r = GetParam();
    const MarkerQuality q = markerQuality(letterTrack(r.conds), "m");
    EXPECT_EQ(q.frames, int(strlen(r.conds)));
    EXPECT_EQ(q.valid, r.valid);
    EXPECT_EQ(q.gaps, r.gaps);
    EXPECT_EQ(q.longestGap, r.longestGap);
    EXPECT_EQ(q.poor, r.poor);
}

INSTANTIATE_TEST_SUITE_P(Rows, MarkerQualityOfTrack,
                         testing::Values(TrackCase{"Empty", "", 0, 0, 0, 0},
                                         TrackCase{"GapsAtBothEnds", "MMGGGM", 3, 2, 2, 0},
                                         TrackCase{"AllMissing", "MMMM", 0, 1, 4, 0},
                                         TrackCase{"PoorRunsCountSamples", "GPPFGPM", 6, 1, 1, 3},
                                         // One sample makes a run one frame too long; it is cut back.
                                         TrackCase{"OneMissingSample", "M", 0, 1, 1, 0},
                                         TrackCase{"OnePoorSample", "P", 1, 0, 0, 1}),
                         [](const testing::TestParamInfo<TrackCase>& i) { return std::string(i.param.name); });

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
