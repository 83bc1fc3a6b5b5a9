// The synthetic takes: their track form must be exactly what the host extracts from
// their frame form (the benchmarks use either), and they must look like a capture.
#include "bench/synthtake.h"

#include "host/tavview/tracks.h"
#include "utils/regions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <set>

namespace {

struct ShapeRow {
    const char* name;
    TakeShape shape;
};

void PrintTo(const ShapeRow& row, std::ostream* os) { *os << row.name; }

TakeShape shape(int markers, int rigids, int frames, unsigned seed = 7)
{
    TakeShape s;
    s.markers = markers;
    s.rigids = rigids;
    s.frames = frames;
    s.seed = seed;
    return s;
}

template <class T>
bool sameBytes(const QVector<T>& a, const QVector<T>& b)
{
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), sizeof(T) * size_t(a.size())) == 0;
}

class TrackForm : public testing::TestWithParam<ShapeRow> {};

TEST_P(TrackForm, IsWhatTheHostExtracts)
{
    const TakeShape& s = GetParam().shape;
    const Take take = synthTake(s);
    TAV::Frames extracted, made;
    buildTracks(take, allTracks(s), extracted);
    synthTracks(s, made);

    ASSERT_EQ(made.size(), extracted.size());
    for (int i = 0; i < made.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(made[i].id, extracted[i].id);
        EXPECT_EQ(made[i].time, extracted[i].time);
        EXPECT_TRUE(sameBytes(made[i].markers, extracted[i].markers));
        EXPECT_TRUE(sameBytes(made[i].rigids, extracted[i].rigids));
    }
    EXPECT_EQ(made.property<QList<qint64>>("timeLut"), extracted.property<QList<qint64>>("timeLut"));
    EXPECT_EQ(made.property<double>("frequency"), extracted.property<double>("frequency"));
    EXPECT_EQ(made.markerInfo.size(), extracted.markerInfo.size());
    EXPECT_EQ(made.trackerInfo.size(), extracted.trackerInfo.size());
}

INSTANTIATE_TEST_SUITE_P(Shapes, TrackForm,
                         testing::Values(ShapeRow{"benchmark_ids", shape(64, 8, 1500)},
                                         ShapeRow{"more_rigids_than_markers", shape(2, 5, 800)},
                                         ShapeRow{"markers_only", shape(3, 0, 800)},
                                         ShapeRow{"other_seed", shape(4, 2, 800, 99)}),
                         [](const testing::TestParamInfo<ShapeRow>& info) { return std::string(info.param.name); });

TEST(SynthTake, EveryFrameHoldsEveryIdAtItsIndex)
{
    const TakeShape s = shape(64, 8, 2000);
    const Take take = synthTake(s);
    ASSERT_EQ(take.frameCount(), s.frames);
    EXPECT_EQ(take.rate, s.rate);
    EXPECT_EQ(take.timeLut().size(), s.frames);
    for (int f = 0; f < take.frameCount(); f += 97) {
        const TAV::Frame& frame = take.frames.at(f);
        ASSERT_EQ(frame.markers.size(), s.markers);
        ASSERT_EQ(frame.rigids.size(), s.rigids);
        for (int i = 0; i < s.markers; ++i) {
            EXPECT_EQ(frame.markers[i].id, uint32_t(i));
            EXPECT_EQ(frame.markers[i].time, f);
        }
        for (int i = 0; i < s.rigids; ++i)
            EXPECT_EQ(frame.rigids[i].time, f);
    }
}

// Gaps, filled gaps, poor stretches and single bad samples, in proportions a
// capture of someone walking about has, on positions that move smoothly.
TEST(SynthTake, LooksLikeACapture)
{
    const TakeShape s = shape(64, 8, 20000);
    TAV::Frames tracks;
    synthTracks(s, tracks);

    long long samples = 0, missing = 0, filled = 0, poor = 0;
    std::set<int> markerTypes, rigidTypes;
    int longPoorRuns = 0, jumps = 0;
    for (const TAV::Frame& t : tracks) {
        for (int i = 0; i < t.markers.size(); ++i) {
            const TAV::Marker& m = t.markers[i];
            ++samples;
            missing += m.cond <= 0;
            filled += (m.flags & 0x10) != 0;
            poor += condition_type(m.cond) == RegionPoor;
            ASSERT_TRUE(std::isfinite(m.x) && std::fabs(m.x) < 5000 && std::fabs(m.z) < 5000);
            if (i > 0 && m.cond > 0 && t.markers[i - 1].cond > 0 && std::fabs(m.x - t.markers[i - 1].x) > 50)
                ++jumps;
        }
        for (const Pair& run : Regions(t.markers)) {
            markerTypes.insert(run.type);
            longPoorRuns += run.type == RegionPoor && run.size() >= 5;
        }
        for (const Pair& run : Regions(t.rigids))
            rigidTypes.insert(run.type);
    }
    EXPECT_GT(missing, samples / 200);
    EXPECT_LT(missing, samples / 10);
    EXPECT_GT(filled, 0);
    EXPECT_GT(poor, samples / 500);
    EXPECT_LT(poor, samples / 20);
    EXPECT_GT(longPoorRuns, 64);
    EXPECT_EQ(jumps, 0) << "positions move at walking speed, 100 frames a second";
    EXPECT_EQ(markerTypes, (std::set<int>{RegionGood, RegionMissing, RegionFair, RegionPoor}));
    EXPECT_TRUE(rigidTypes.count(RegionMissing) && rigidTypes.count(RegionPoor));
}

TEST(SynthTake, TheSameSeedGivesTheSameTake)
{
    TAV::Frames a, b, other;
    synthTracks(shape(4, 1, 3000), a);
    synthTracks(shape(4, 1, 3000), b);
    synthTracks(shape(4, 1, 3000, 8), other);
    for (int i = 0; i < a.size(); ++i) {
        EXPECT_TRUE(sameBytes(a[i].markers, b[i].markers));
        EXPECT_FALSE(sameBytes(a[i].markers, other[i].markers));
    }
}

struct RunsRow {
    const char* name;
    int runs;
};

void PrintTo(const RunsRow& row, std::ostream* os) { *os << row.name; }

class RunTrack : public testing::TestWithParam<RunsRow> {};

TEST_P(RunTrack, HasExactlyTheRunsAskedFor)
{
    const TAV::Frames t = runTrack(GetParam().runs);
    ASSERT_EQ(t.size(), 1);
    const Regions runs(t.constFirst().markers);
    EXPECT_EQ(int(runs.size()), GetParam().runs);
    for (size_t i = 1; i < runs.size(); ++i)
        EXPECT_NE(runs[i].type, runs[i - 1].type);
}

INSTANTIATE_TEST_SUITE_P(Lengths, RunTrack,
                         testing::Values(RunsRow{"one", 1}, RunsRow{"two", 2}, RunsRow{"benchmark", 10000}),
                         [](const testing::TestParamInfo<RunsRow>& info) { return std::string(info.param.name); });

} // namespace
