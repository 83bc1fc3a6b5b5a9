#include "tests/store/samples.h"

#include <gtest/gtest.h>

namespace {

TEST(GetTrack, GathersAnIdFromTheFramesThatHoldIt)
{
    TAV::Frames s;
    for (const auto& ids : {std::vector<uint32_t>{1, 7}, {7}, {2}, {3, 7, 9}}) {
        TAV::Frame f;
        f.markers = markers(ids, s.size());
        s.append(f);
    }
    TAV::Frame d;
    d.timestamp = "kept";

    EXPECT_TRUE(s.GetTrack(d, 7, TAV::MaskMarkers));

    EXPECT_EQ(timesOf(d.markers), (std::vector<int64_t>{0, 1, 3}));
    EXPECT_EQ(idsOf(d.markers), (std::vector<uint32_t>{7, 7, 7}));
    EXPECT_EQ(d.timestamp, "kept");
}

TEST(GetTrack, MaskSelectsTheKinds)
{
    const TAV::Frames s = denseStore(4, 3);
    TAV::Frame both, none, fromEmpty;
    none.time = 5;

    EXPECT_TRUE(s.GetTrack(both, 2, TAV::MaskMarkers | TAV::MaskRigids));
    EXPECT_TRUE(s.GetTrack(none, 2, 0));
    EXPECT_TRUE(TAV::Frames().GetTrack(fromEmpty, 2, TAV::MaskMarkers));

    EXPECT_EQ(both.markers.size(), 4);
    EXPECT_EQ(both.rigids.size(), 4);
    EXPECT_EQ(both.rigids.at(3).pose[0], 302.0f);
    EXPECT_TRUE(none.markers.isEmpty() && none.rigids.isEmpty());
    EXPECT_EQ(none.id, 2u);
    EXPECT_EQ(none.time, -1);
    EXPECT_TRUE(fromEmpty.markers.isEmpty());
    EXPECT_EQ(fromEmpty.id, 2u);
    EXPECT_EQ(fromEmpty.time, -1);
}

TEST(GetTrack, DenseStoreIsReadWithoutDetachingAndTrackAllocatedOnce)
{
    const TAV::Frames s = denseStore(50, 4);
    const TAV::Frames copy = s;
    TAV::Frame d;

    s.GetTrack(d, 3, TAV::MaskMarkers);

    EXPECT_TRUE(copy.isSharedWith(s));
    EXPECT_TRUE(copy.at(10).markers.isSharedWith(s.at(10).markers));
    EXPECT_EQ(d.markers.size(), 50);
    EXPECT_EQ(d.markers.capacity(), 50);
}

// The range is decided by the time of each frame's first marker, not by the
// tracked sample's own time and not by the frame's time.
TEST(GetTrackRanged, FirstMarkerTimeDecidesAndMarkerlessFramesAreTaken)
{
    TAV::Frames s;
    const int64_t firstMarkerTimes[] = {9, 10, 20, 21};
    for (int64_t t : firstMarkerTimes) {
        TAV::Frame f;
        f.time = 15;
        f.markers = {marker(0, t), marker(4, 15)};
        f.rigids.append(rigid(4, s.size()));
        s.append(f);
    }
    TAV::Frame markerless;
    markerless.rigids.append(rigid(4, 4));
    s.append(markerless);

    TAV::Frame m, r;
    s.GetTrack(m, 4, TAV::MaskMarkers, 10, 20);
    s.GetTrack(r, 4, TAV::MaskRigids, 10, 20);

    EXPECT_EQ(m.markers.size(), 2);
    std::vector<int64_t> rigidTimes;
    for (const TAV::Rigid& x : r.rigids)
        rigidTimes.push_back(x.time);
    EXPECT_EQ(rigidTimes, (std::vector<int64_t>{1, 2, 4})) << "the rule holds without the marker bit";
}

TEST(GetTrackRanged, BoundsAreWidenedNotWrapped)
{
    TAV::Frames s;
    TAV::Frame f;
    f.markers.append(marker(0, int64_t(1) << 40));
    s.append(f);
    TAV::Frame d;

    s.GetTrack(d, 0, TAV::MaskMarkers, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());

    EXPECT_TRUE(d.markers.isEmpty());
}

TEST(GetMarkers, PicksByIdInListOrderAppending)
{
    const TAV::Frames s = denseStore(2, 6);
    TAV::Markers m = markers({99});

    EXPECT_TRUE(s.GetMarkers(m, 1, {5, 42, 2}, false));

    EXPECT_EQ(idsOf(m), (std::vector<uint32_t>{99, 5, 2}));
}

TEST(GetMarkers, EmptyIdListTakesTheFrameOrNothing)
{
    const TAV::Frames s = denseStore(2, 3);
    TAV::Markers all, kept = markers({99});

    EXPECT_TRUE(s.GetMarkers(all, 0, {}, false));
    EXPECT_TRUE(s.GetMarkers(kept, 0, {}, true));

    EXPECT_TRUE(all.isSharedWith(s.at(0).markers));
    EXPECT_EQ(idsOf(kept), std::vector<uint32_t>{99});
}

TEST(GetMarkers, OutOfRangeFramesAreRefused)
{
    const TAV::Frames s = denseStore(2, 3);
    TAV::Markers m = markers({99});
    TAV::Rigids r;

    for (int n : {-1, 2}) {
        EXPECT_FALSE(s.GetMarkers(m, n, {}, false)) << n;
        EXPECT_FALSE(s.GetRigids(r, n, {}, false)) << n;
    }
    EXPECT_EQ(m.size(), 1);
    EXPECT_TRUE(r.isEmpty());
    EXPECT_TRUE(s.GetRigids(r, 1, {2}, false));
    EXPECT_EQ(r.at(0).pose[0], 102.0f);
}

} // namespace
