#include "host/c3d/c3dtake.h"
#include "host/report/takequality.h"
#include "support/data.h"
#include "synthetictake.h"

#include <gtest/gtest.h>

namespace {

struct TrackCase {
    const char* name;
    const char* conds;
    int frames, valid, gaps, longestGap, poor;
};

void PrintTo(const TrackCase& row, std::ostream* os) { *os << row.name; }

class MarkerQualityOfTrack : public testing::TestWithParam<TrackCase> {};

TEST_P(MarkerQualityOfTrack, CountsGapsAndPoorSamples)
{
    const TrackCase& r = GetParam();
    const MarkerQuality q = markerQuality(letterTrack(r.conds), "m");
    EXPECT_EQ(q.frames, r.frames);
    EXPECT_EQ(q.valid, r.valid);
    EXPECT_EQ(q.gaps, r.gaps);
    EXPECT_EQ(q.longestGap, r.longestGap);
    EXPECT_EQ(q.poor, r.poor);
}

INSTANTIATE_TEST_SUITE_P(Rows, MarkerQualityOfTrack,
                         testing::Values(TrackCase{"Empty", "", 0, 0, 0, 0, 0},
                                         TrackCase{"AllGood", "GGGG", 4, 4, 0, 0, 0},
                                         TrackCase{"GapInside", "GGMMMGG", 7, 4, 1, 3, 0},
                                         TrackCase{"GapsAtBothEnds", "MMGGGM", 6, 3, 2, 2, 0},
                                         TrackCase{"LastFrameAloneIsAGap", "GGGGM", 5, 4, 1, 1, 0},
                                         TrackCase{"AllMissing", "MMMM", 4, 0, 1, 4, 0},
                                         TrackCase{"PoorRunsCountSamples", "GPPFGPM", 7, 6, 1, 1, 3},
                                         TrackCase{"FairIsNeitherGapNorPoor", "FFGF", 4, 4, 0, 0, 0},
                                         // One sample makes a run one frame too long; it is cut back.
                                         TrackCase{"OneMissingSample", "M", 1, 0, 1, 1, 0},
                                         TrackCase{"OnePoorSample", "P", 1, 1, 0, 0, 1}),
                         [](const testing::TestParamInfo<TrackCase>& i) { return std::string(i.param.name); });

TEST(TakeQuality, LeavesModelOutputsOutUnlessAskedFor)
{
    const TAV::Frames take = letterTake({{"LASI", "GGMG"}, {"KneeAngle", "GGGG", "kind=angle;units=deg"},
                                         {"RASI", "GPGG", "units=mm"}},
                                        100.0);
    const TakeQuality q = takeQuality(take, "t.c3d");
    EXPECT_EQ(q.frames, 4);
    EXPECT_EQ(q.rate, 100.0);
    ASSERT_EQ(q.markers.size(), 2u);
    EXPECT_EQ(q.markers[0].name, "LASI");
    EXPECT_EQ(q.markers[1].name, "RASI") << "options without a kind describe a marker";
    EXPECT_EQ(q.markers[1].poor, 1);
    EXPECT_EQ(takeQuality(take, "t.c3d", true).markers.size(), 3u);
}

TEST(TakeQuality, NamesPointsByIdWithoutMarkerInfo)
{
    TAV::Frames take = letterTake({{"a", "GM"}, {"b", "MG"}}, 50.0);
    take.markerInfo.clear();
    const TakeQuality q = takeQuality(take, "t");
    ASSERT_EQ(q.markers.size(), 2u);
    EXPECT_EQ(q.markers[1].name, "1");
    EXPECT_EQ(q.markers[1].gaps, 1);
}

struct SampleGaps {
    const char* name;
    const char* file;
    int gaps;
    int longestGap;
};

void PrintTo(const SampleGaps& row, std::ostream* os) { *os << row.name; }

class SampleFileGaps : public testing::TestWithParam<SampleGaps> {};

// The gap structure the provenance notes give for the shared files.
TEST_P(SampleFileGaps, MatchTheKnownGapStructure)
{
    TAV_REQUIRE_SAMPLE_DATA();
    TAV::Frames take;
    QString error;
    ASSERT_TRUE(C3D::loadTake(sampleC3D(GetParam().file), take, &error)) << error.toStdString();
    const MarkerQuality t = takeQuality(take, GetParam().file).total();
    EXPECT_EQ(t.gaps, GetParam().gaps);
    EXPECT_EQ(t.longestGap, GetParam().longestGap);
}

INSTANTIATE_TEST_SUITE_P(Rows, SampleFileGaps,
                         testing::Values(SampleGaps{"Eb015pi", "Eb015pi.c3d", 12, 47},
                                         // 50 runs in markers with gaps, plus 8 markers never valid.
                                         SampleGaps{"MACsample", "MACsample.c3d", 58, 180},
                                         SampleGaps{"codamotion", "codamotion_gaitwands_19970212.c3d", 29, 29},
                                         SampleGaps{"Walking_Hybrid", "Walking_Hybrid_1_1.c3d", 49, 180}),
                         [](const testing::TestParamInfo<SampleGaps>& i) { return std::string(i.param.name); });

} // namespace
