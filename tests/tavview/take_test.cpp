#include "host/tavview/take.h"
#include "host/tavview/tracks.h"
#include "host/tavview/trackselection.h"
#include "utils/regions.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>

namespace {

TEST(DefaultTake, IsDenseWithSampleTimesAsFrameIndices)
{
    const Take take = defaultTake();
    ASSERT_GT(take.frameCount(), 0);
    EXPECT_EQ(take.rate, 100.0);
    EXPECT_EQ(take.firstFrame, 1);
    for (int f = 0; f < take.frameCount(); ++f) {
        const TAV::Frame& frame = take.frames.at(f);
        ASSERT_EQ(frame.markers.size(), markerCount(take));
        ASSERT_EQ(frame.rigids.size(), rigidCount(take));
        for (int i = 0; i < frame.markers.size(); ++i) {
            ASSERT_EQ(frame.markers.at(i).id, uint32_t(i));
            ASSERT_EQ(frame.markers.at(i).time, f);
        }
        for (const TAV::Rigid& r : frame.rigids)
            ASSERT_EQ(r.time, f);
    }
    const QList<qint64> lut = take.timeLut();
    ASSERT_EQ(lut.size(), take.frameCount());
    EXPECT_EQ(lut.at(1), 10000);
}

// Gaps, poor and fair runs and filled samples in the markers, a gap in a rigid body.
TEST(DefaultTake, HoldsEveryFeatureTheGraphShades)
{
    const Take take = defaultTake();
    std::set<int> markerTypes;
    bool filled = false, rigidGap = false;
    for (const TAV::Frame& frame : take.frames) {
        for (const TAV::Marker& m : frame.markers) {
            markerTypes.insert(condition_type(m.cond));
            filled = filled || (m.flags & 0x10);
        }
        for (const TAV::Rigid& r : frame.rigids)
            rigidGap = rigidGap || condition_type(r.cond) == RegionMissing;
    }
    EXPECT_EQ(markerTypes, (std::set<int>{RegionGood, RegionMissing, RegionFair, RegionPoor}));
    EXPECT_TRUE(filled);
    EXPECT_TRUE(rigidGap);
}

// Markers 1 to 3 have gaps, 5 poor samples, 4 fair ones, 0 nothing.
TEST(DefaultSelection, PrefersGapsThenPoorThenFairSamples)
{
    const TrackSelection s = defaultSelection(defaultTake());
    EXPECT_EQ(s.markers, (QList<int>{1, 2, 3}));
    EXPECT_EQ(s.rigids, QList<int>{0});
}

TEST(DefaultSelection, LeavesOutPointsThatAreNotMarkers)
{
    Take take = defaultTake();
    take.frames.markerInfo[1].options = "kind=angle;units=deg";
    take.frames.markerInfo[3].options = "kind=force";
    EXPECT_EQ(defaultSelection(take).markers, (QList<int>{2, 4, 5}));
    EXPECT_EQ(markerKind(take, 1), "angle");
    EXPECT_EQ(markerKind(take, 2), "marker");
}

struct SelectRow {
    const char* name;
    QStringList tokens;
    QList<int> markers;
    QList<int> rigids;
    const char* errorPart; // null when the tokens resolve
};

void PrintTo(const SelectRow& row, std::ostream* os) { *os << row.name; }

class ResolveSelection : public testing::TestWithParam<SelectRow> {
protected:
    const Take take = defaultTake();
};

TEST_P(ResolveSelection, ReadsIdsRangesRigidsAndLabels)
{
    const SelectRow& row = GetParam();
    TrackSelection s;
    s.markers = {99};
    QString error;
    const bool ok = resolveSelection(row.tokens, take, s, error);
    if (row.errorPart) {
        EXPECT_FALSE(ok);
        EXPECT_TRUE(error.contains(QLatin1String(row.errorPart))) << error.toStdString();
        EXPECT_EQ(s.markers, QList<int>{99}) << "untouched on error";
        return;
    }
    ASSERT_TRUE(ok) << error.toStdString();
    EXPECT_EQ(s.markers, row.markers);
    EXPECT_EQ(s.rigids, row.rigids);
}

const SelectRow selectRows[] = {
    {"IdsRangesAndRigids", {"4", "1-2", "r1", "2"}, {4, 1, 2}, {1}, nullptr},
    {"ExactLabels", {"LSHO", "Wand"}, {1}, {1}, nullptr},
    {"LabelsIgnoringCase", {"relb", "PELVIS"}, {4}, {0}, nullptr},
    {"NoSuchMarker", {"6"}, {}, {}, "no marker 6"},
    {"NoSuchRigid", {"r2"}, {}, {}, "no rigid body 2"},
    {"BackwardsRange", {"4-2"}, {}, {}, "backwards"},
    {"UnknownLabel", {"NOSE"}, {}, {}, "\"NOSE\""},
};

INSTANTIATE_TEST_SUITE_P(Rows, ResolveSelection, testing::ValuesIn(selectRows),
                         [](const testing::TestParamInfo<SelectRow>& i) { return std::string(i.param.name); });

// A store in which frame 2 has no sample of marker 1 (its vector skips that id).
Take sparseTake()
{
    Take take;
    take.rate = 50;
    for (int f = 0; f < 4; ++f) {
        TAV::Frame frame;
        for (uint32_t id = 0; id < 3; ++id)
            if (!(f == 2 && id == 1))
                frame.markers.append(TAV::Marker{id, 0, f, float(id), float(f), 0, 2.f});
        frame.rigids.append(TAV::Rigid{0, 0, f, {1, 2, 3, 0, 0, 0, 1}, 2.f});
        take.frames.append(frame);
    }
    return take;
}

TEST(BuildTracks, FillsFramesWithoutTheIdSoTracksStayDense)
{
    const Take take = sparseTake();
    TAV::Frames tracks;
    buildTracks(take, TrackSelection{{1}, {}}, tracks);
    ASSERT_EQ(tracks.size(), 1);
    const TAV::Markers& m = tracks.at(0).markers;
    ASSERT_EQ(m.size(), 4);
    for (int f = 0; f < 4; ++f)
        EXPECT_EQ(m.at(f).time, f);
    EXPECT_EQ(m.at(2).cond, 0.f);
    EXPECT_EQ(m.at(2).id, 1u);
    EXPECT_EQ(m.at(3).y, 3.f);
    // The gap is a run of its own, so the graph shades it at frame 2.
    const Regions runs(m);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[1].begin(), 2);
    EXPECT_EQ(runs[1].type, RegionMissing);
}

TEST(BuildTracks, OneTrackPerIdWithOnlyTheSelectedKindsAndTheTakesTimes)
{
    const Take take = sparseTake();
    TAV::Frames tracks;
    buildTracks(take, TrackSelection{{2, 0}, {0}}, tracks);
    ASSERT_EQ(tracks.size(), 2);
    EXPECT_EQ(tracks.at(0).id, 0u);
    EXPECT_EQ(tracks.at(0).markers.size(), 4);
    EXPECT_EQ(tracks.at(0).rigids.size(), 4);
    EXPECT_EQ(tracks.at(1).id, 2u);
    EXPECT_TRUE(tracks.at(1).rigids.isEmpty());
    EXPECT_EQ(tracks.property<double>("frequency"), 50.0);
    EXPECT_EQ(tracks.property<QList<qint64>>("timeLut"), (QList<qint64>{0, 20000, 40000, 60000}));
}

} // namespace
