#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// A copy reports frequency 0 and an assignment keeps the source's; both share the
// frames and keep the marker names. A read that cannot convert gives 0 and says so.
TEST(FramesProperties, CopiesResetTheFrequencyAndReadsConvert)
{
    TAV::Frames source = denseStore(2, 1);
    source.setProperty<double>("frequency", 120.0);
    source.setProperty<QString>("label", QString("not a number"));
    source.markerInfo.emplace_back(1, 2, "head", "");
    const TAV::Frames copied(source);
    TAV::Frames assigned;
    assigned = source;
    bool ok = true;

    EXPECT_EQ(copied._properties.value("frequency").userType(), int(QMetaType::Double));
    EXPECT_EQ(copied.property<double>("frequency"), 0.0);
    EXPECT_EQ(assigned.property<double>("frequency"), 120.0);
    for (const TAV::Frames* s : {&copied, static_cast<const TAV::Frames*>(&assigned)}) {
        EXPECT_TRUE(s->isSharedWith(source)) << "the frame vector is shared, not rebuilt";
        EXPECT_EQ(s->markerInfo.at(0).name, "head");
    }
    EXPECT_EQ(source.property<double>("label", &ok), 0.0);
    EXPECT_FALSE(ok);
}

// The store fuzz corpus checks frame indices near the ends against a model; here
// the far negative ones, and the picking of samples from one frame: by id in list
// order, or the whole frame for an empty list unless empty is allowed.
TEST(FrameAccess, RefusesIndicesOutsideTheStoreAndPicksSamplesById)
{
    const TAV::Frames s = denseStore(2, 6);
    TAV::Frames writable = s;
    for (int n : {-1, 2, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(n);
        TAV::Frame f;
        TAV::Markers m;
        TAV::Rigids r;
        EXPECT_FALSE(s.GetFrame(f, n));
        EXPECT_FALSE(writable.SetFrame(f, n));
        EXPECT_FALSE(s.GetMarkers(m, n, {}, false));
        EXPECT_FALSE(s.GetRigids(r, n, {}, false));
        EXPECT_TRUE(f.markers.isEmpty() && m.isEmpty() && r.isEmpty());
    }

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

// Only the kinds in the mask are written, and only into the frames they name.
TEST(FramesSetData, WritesTheMaskedKindsBackIntoTheirFrames)
{
    TAV::Frames s = denseStore(3, 3);
    const TAV::Frames other = s;
    TAV::Frame track;
    track.markers = {marker(1, 0, 2.0f), marker(1, 2, 5.0f), marker(1, 3, 8.0f)};
    track.rigids.append(rigid(1, 0, 9.0f));

    EXPECT_TRUE(s.SetData(track, TAV::MaskMarkers));

    EXPECT_EQ(s.at(0).markers.at(1).x, 2.0f);
    EXPECT_EQ(s.at(2).markers.at(1).x, 5.0f);
    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f) << "rigids are outside the mask";
    EXPECT_TRUE(s.at(1).markers.isSharedWith(other.at(1).markers)) << "an unwritten frame stays shared";
}

// A track takes the samples of one id from the frames that hold it.
TEST(GetTrack, GathersAnIdFromTheFramesThatHoldIt)
{
    TAV::Frames s = denseStore(3, 4);
    s[1].markers = markers({1, 2}, 1);
    TAV::Frame track;

    EXPECT_TRUE(s.GetTrack(track, 3, TAV::MaskMarkers | TAV::MaskRigids));

    EXPECT_EQ(idsOf(track.markers), (std::vector<uint32_t>{3, 3}));
    EXPECT_EQ(track.markers.at(1).time, 2);
    EXPECT_EQ(track.id, 3u);
    EXPECT_EQ(track.time, -1);
    ASSERT_EQ(track.rigids.size(), 3);
    EXPECT_EQ(track.rigids.at(2).pose[0], 203.0f);
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

// The first sample whose time names no frame, or whose id the frame lacks, ends the
// swap with false; exchanges made before it stay, none is made after it.
TEST(SparseSwap, ExchangesUpToTheFirstSampleWithoutAPlace)
{
    const struct {
        const char* name;
        std::vector<int64_t> times;
        int swapped; // samples exchanged; the swap succeeds when that is all of a non-empty track
    } rows[] = {{"Complete", {0, 1, 2}, 3}, {"PastTheEnd", {0, 2, 4, 1}, 2}, {"NegativeTime", {-1, 0}, 0},
                {"AbsentId", {0, 3, 1}, 1},  {"EmptyTrack", {}, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames s = denseStore(4, 3);
        s[3].markers = markers({0, 2}, 3);
        TAV::Markers track;
        for (int64_t t : row.times)
            track.append(marker(1, t, float(1000 + t)));

        EXPECT_EQ(TAV::sparse_swap(track, s), row.swapped > 0 && row.swapped == track.size());

        for (int i = 0; i < track.size(); ++i) {
            const int64_t t = track.at(i).time;
            const bool swapped = i < row.swapped;
            EXPECT_EQ(track.at(i).x, swapped ? float(100 * t + 1) : float(1000 + t)) << "sample " << i;
            if (swapped) {
                EXPECT_EQ(s.at(int(t)).markers.at(1).x, float(1000 + t));
            }
        }
    }
}

// A frame swaps its rigid bodies only when its marker swap stopped; the exchanges
// made before the stop stay.
TEST(SparseSwap, FramesSwapMarkersOrElseRigids)
{
    TAV::Frames s = denseStore(3, 2);
    TAV::Frames tracks;
    tracks.resize(2);
    tracks[0].markers = {marker(1, 0, 1000.0f)};
    tracks[0].rigids.append(rigid(1, 0, 77.0f));
    tracks[1].markers = {marker(1, 1, 1001.0f), marker(1, 9)};
    tracks[1].rigids.append(rigid(0, 1, 99.0f));

    EXPECT_TRUE(s.SparseSwap(tracks));
    TAV::Frames none;
    EXPECT_FALSE(s.SparseSwap(none)) << "an empty store of tracks";

    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f);
    EXPECT_EQ(s.at(1).markers.at(1).x, 1001.0f);
    EXPECT_EQ(s.at(1).rigids.at(0).pose[0], 99.0f);
}

} // namespace
