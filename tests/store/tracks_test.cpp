#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>

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

    EXPECT_TRUE(s.GetTrack(d, 7, TAV::MaskMarkers));

    EXPECT_EQ(idsOf(d.markers), (std::vector<uint32_t>{7, 7, 7}));
    EXPECT_EQ(d.markers.at(2).time, 3);
    EXPECT_EQ(d.id, 7u);
    EXPECT_EQ(d.time, -1);
}

// A dense track is allocated once, for every frame.
TEST(GetTrack, DenseTrackIsAllocatedOnce)
{
    const TAV::Frames s = denseStore(50, 4);
    TAV::Frame d;

    s.GetTrack(d, 3, TAV::MaskMarkers | TAV::MaskRigids);

    EXPECT_EQ(d.markers.capacity(), 50);
    EXPECT_EQ(d.rigids.at(49).pose[0], 4903.0f);
}

// The range is decided by the time of each frame's first marker, not by the
// tracked sample's own time and not by the frame's time.
TEST(GetTrackRanged, FirstMarkerTimeDecidesAndMarkerlessFramesAreTaken)
{
    TAV::Frames s;
    for (int64_t t : {9, 10, 20, 21}) {
        TAV::Frame f;
        f.time = 15;
        f.markers = {marker(0, t), marker(4, 15)};
        f.rigids.append(rigid(4, s.size()));
        s.append(f);
    }
    TAV::Frame markerless;
    markerless.rigids.append(rigid(4, 4));
    s.append(markerless);

    TAV::Frame m, r, far;
    s.GetTrack(m, 4, TAV::MaskMarkers, 10, 20);
    s.GetTrack(r, 4, TAV::MaskRigids, 10, 20);

    EXPECT_EQ(m.markers.size(), 2);
    std::vector<int64_t> rigidTimes;
    for (const TAV::Rigid& x : r.rigids)
        rigidTimes.push_back(x.time);
    EXPECT_EQ(rigidTimes, (std::vector<int64_t>{1, 2, 4})) << "the rule holds without the marker bit";

    s[0].markers[0].time = int64_t(1) << 40;
    s.GetTrack(far, 0, TAV::MaskMarkers, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    EXPECT_EQ(far.markers.size(), 3) << "bounds are widened, not wrapped";
}

// An empty id list takes the whole frame, or nothing where empty is allowed.
TEST(GetMarkers, PicksByIdInListOrder)
{
    const TAV::Frames s = denseStore(2, 6);
    TAV::Markers m = markers({99}), all;
    TAV::Rigids r, none;

    EXPECT_TRUE(s.GetMarkers(m, 1, {5, 42, 2}, false));
    EXPECT_TRUE(s.GetMarkers(all, 0, {}, false));
    EXPECT_TRUE(s.GetRigids(r, 1, {3}, true));
    EXPECT_TRUE(s.GetRigids(none, 1, {}, true));

    EXPECT_EQ(idsOf(m), (std::vector<uint32_t>{99, 5, 2}));
    EXPECT_TRUE(all.isSharedWith(s.at(0).markers));
    ASSERT_EQ(r.size(), 1);
    EXPECT_EQ(r[0].pose[0], 103.0f);
    EXPECT_TRUE(none.isEmpty());
}

} // namespace
