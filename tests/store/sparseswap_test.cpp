#include "tests/store/samples.h"

#include <gtest/gtest.h>


namespace {

// A track of marker 1 with the given frame times and x = 1000 + time.
TAV::Markers editedTrack(const std::vector<int64_t>& times)
{
    TAV::Markers track;
    for (int64_t t : times)
        track.append(marker(1, t, float(1000 + t)));
    return track;
}

float xAt(const TAV::Frames& s, int frame, int id) { return s.at(frame).markers.at(id).x; }

// The first sample whose time names no frame, or whose id the frame lacks, ends the
// swap with false; exchanges made before it stay, none is made after it.
TEST(SparseSwapStops, AtTheFirstSampleWithoutAPlace)
{
    const struct {
        const char* name;
        std::vector<int64_t> times;
        int swapped; // samples exchanged before the stop
    } rows[] = {{"PastTheEnd", {0, 2, 4, 1}, 2}, {"NegativeTime", {-1, 0}, 0}, {"AbsentId", {0, 3, 1}, 1},
                {"EmptyTrack", {}, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames s = denseStore(4, 3);
        s[3].markers = markers({0, 2}, 3);
        const TAV::Frames before = s;
        TAV::Markers track = editedTrack(row.times);

        EXPECT_FALSE(TAV::sparse_swap(track, s));

        for (int i = 0; i < track.size(); ++i) {
            const int64_t t = track.at(i).time;
            const bool swapped = i < row.swapped;
            EXPECT_EQ(track.at(i).x, swapped ? float(100 * t + 1) : float(1000 + t)) << "sample " << i;
            if (swapped) {
                EXPECT_EQ(xAt(s, int(t), 1), float(1000 + t));
            }
        }
        EXPECT_EQ(s.isSharedWith(before), row.swapped == 0) << "only a write detaches";
    }
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

    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(xAt(s, i / 3, i % 3), xAt(original, i / 3, i % 3)) << "frame " << i / 3 << " id " << i % 3;
    for (int i = 0; i < track.size(); ++i)
        EXPECT_EQ(track.at(i).x, edited.at(i).x);
}

// A frame swaps its rigid bodies only when its marker swap stopped; the exchanges
// made before the stop stay.
TEST(SparseSwap, FramesSwapMarkersOrElseRigids)
{
    TAV::Frames s = denseStore(3, 2);
    TAV::Frames tracks;
    tracks.resize(2);
    tracks[0].markers = editedTrack({0});
    tracks[0].rigids.append(rigid(1, 0, 77.0f));
    tracks[1].markers = editedTrack({1, 9});
    tracks[1].rigids.append(rigid(0, 1, 99.0f));

    EXPECT_TRUE(s.SparseSwap(tracks));

    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f);
    EXPECT_EQ(xAt(s, 1, 1), 1001.0f);
    EXPECT_EQ(s.at(1).rigids.at(0).pose[0], 99.0f);
}

} // namespace
