#include "tests/store/samples.h"

#include <gtest/gtest.h>

namespace {

// A track of marker 1 with the given frame times and x = 1000 + time.
TAV::Markers editedTrack(std::initializer_list<int64_t> times, uint32_t id = 1)
{
    TAV::Markers track;
    for (int64_t t : times)
        track.append(marker(id, t, float(1000 + t)));
    return track;
}

float xAt(const TAV::Frames& s, int frame, int id) { return s.at(frame).markers.at(id).x; }

TEST(SparseSwap, ExchangesUntilATimeNamesNoFrame)
{
    TAV::Frames s = denseStore(5, 3);
    TAV::Markers track = editedTrack({0, 2, 5});

    EXPECT_FALSE(TAV::sparse_swap(track, s));

    EXPECT_EQ(xAt(s, 0, 1), 1000.0f);
    EXPECT_EQ(xAt(s, 2, 1), 1002.0f);
    EXPECT_EQ(track.at(0).x, 1.0f) << "the track now holds the frame's former sample";
    EXPECT_EQ(track.at(1).x, 201.0f);
    EXPECT_EQ(track.at(2).x, 1005.0f) << "no roll-back, no further exchange";
}

TEST(SparseSwap, NegativeTimeStopsLikeOutOfRange)
{
    TAV::Frames s = denseStore(3, 3);
    const TAV::Frames before = s;
    TAV::Markers track = editedTrack({-1, 0});

    EXPECT_FALSE(TAV::sparse_swap(track, s));

    EXPECT_TRUE(s.isSharedWith(before)) << "nothing was written";
    EXPECT_EQ(track.at(1).x, 1000.0f);
}

TEST(SparseSwap, AbsentIdStopsAtThatSample)
{
    TAV::Frames s = denseStore(3, 3);
    s[1].markers = markers({0, 2}, 1);
    TAV::Markers track = editedTrack({0, 1, 2});

    EXPECT_FALSE(TAV::sparse_swap(track, s));

    EXPECT_EQ(xAt(s, 0, 1), 1000.0f);
    EXPECT_EQ(xAt(s, 2, 1), 201.0f);
}

TEST(SparseSwap, SwappingTwiceRestoresBothSides)
{
    TAV::Frames s = denseStore(4, 3);
    const TAV::Frames original = s;
    TAV::Markers track = editedTrack({0, 1, 3});
    const TAV::Markers edited = track;

    ASSERT_TRUE(TAV::sparse_swap(track, s));
    EXPECT_EQ(xAt(s, 3, 1), 1003.0f);
    EXPECT_EQ(xAt(original, 3, 1), 301.0f) << "a store sharing the frames is not written";
    EXPECT_EQ(edited.at(2).x, 1003.0f) << "a copy of the track is not written";
    ASSERT_TRUE(TAV::sparse_swap(track, s));

    for (int f = 0; f < s.size(); ++f)
        for (int id = 0; id < 3; ++id)
            EXPECT_EQ(xAt(s, f, id), xAt(original, f, id)) << f << "/" << id;
    for (int i = 0; i < track.size(); ++i)
        EXPECT_EQ(track.at(i).x, edited.at(i).x);
}

TEST(SparseSwapFrame, MarkersOrElseRigidsNeverBoth)
{
    TAV::Frames s = denseStore(3, 2);
    TAV::Frame withMarkers;
    withMarkers.markers = editedTrack({0});
    withMarkers.rigids.append(rigid(1, 0, 77.0f));
    TAV::Frame rigidsOnly;
    rigidsOnly.rigids.append(rigid(1, 2, 88.0f));
    TAV::Frame failingMarkers;
    failingMarkers.markers = editedTrack({1, 9});
    failingMarkers.rigids.append(rigid(0, 1, 99.0f));

    EXPECT_TRUE(TAV::sparse_swap(withMarkers, s));
    EXPECT_TRUE(s.SparseSwap(rigidsOnly));
    EXPECT_TRUE(s.SparseSwap(failingMarkers));

    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f) << "rigids stay when the markers all swapped";
    EXPECT_EQ(s.at(2).rigids.at(1).pose[0], 88.0f);
    EXPECT_EQ(xAt(s, 1, 1), 1001.0f) << "the marker exchange made before the stop stays";
    EXPECT_EQ(s.at(1).rigids.at(0).pose[0], 99.0f);
    TAV::Markers empty;
    EXPECT_FALSE(TAV::sparse_swap(empty, s));
}

TEST(SparseSwapStore, TrueForAnyNonEmptyStoreOfTracks)
{
    TAV::Frames s = denseStore(2, 2);
    TAV::Frames none;
    TAV::Frames failing;
    TAV::Frame bad;
    bad.markers = editedTrack({5});
    failing.append(bad);
    failing.append(TAV::Frame());
    TAV::Frames good;
    good.resize(1);
    s.GetTrack(good[0], 1, TAV::MaskMarkers);
    good[0].markers[1].x = 5.0f;

    EXPECT_FALSE(TAV::sparse_swap(none, s));
    EXPECT_TRUE(TAV::sparse_swap(failing, s));
    EXPECT_TRUE(s.SparseSwap(good));
    EXPECT_EQ(xAt(s, 1, 1), 5.0f);
}

} // namespace
