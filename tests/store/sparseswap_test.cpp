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
        TAV::Markers track = editedTrack(row.times);

        EXPECT_EQ(TAV::sparse_swap(track, s), row.swapped > 0 && row.swapped == track.size());

        for (int i = 0; i < track.size(); ++i) {
            const int64_t t = track.at(i).time;
            const bool swapped = i < row.swapped;
            EXPECT_EQ(track.at(i).x, swapped ? float(100 * t + 1) : float(1000 + t)) << "sample " << i;
            if (swapped) {
                EXPECT_EQ(xAt(s, int(t), 1), float(1000 + t));
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
    tracks[0].markers = editedTrack({0});
    tracks[0].rigids.append(rigid(1, 0, 77.0f));
    tracks[1].markers = editedTrack({1, 9});
    tracks[1].rigids.append(rigid(0, 1, 99.0f));

    EXPECT_TRUE(s.SparseSwap(tracks));
    TAV::Frames none;
    EXPECT_FALSE(s.SparseSwap(none)) << "an empty store of tracks";

    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f);
    EXPECT_EQ(xAt(s, 1, 1), 1001.0f);
    EXPECT_EQ(s.at(1).rigids.at(0).pose[0], 99.0f);
}

} // namespace
