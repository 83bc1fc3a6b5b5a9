#include "graphfixture.h"

namespace {

const Vector none(-1, -1, -1); // nothing recorded

// Marker tracks 1 (with a rigid track) and 2, four frames; track 2's sample at
// frame 2 is invalid.
class TrackOffsets : public GraphWithView {
protected:
    TrackOffsets() { setTracks(tracks); }
    void setTracks(TAV::Frames& f)
    {
        setFrames(0, 4);
        graph->SetTracks(&f);
    }
    Vector marker(int id) const
    {
        Vector v = none;
        graph->trackOffsets.find(id, v);
        return v;
    }

    TAV::Frames tracks = makeTracks({makeTrack(1, {1, 1, 1, 1}, {1, 1, 1, 1}), makeTrack(2, {1, 1, 0, 1})});
};

struct OffsetRow {
    const char* name;
    bool connected;   // else the current frame is the reference
    float scale, freq; // a zero scale maps the mouse to +infinity, or NaN at 0
    int x;             // mouse x, or the current frame
    Vector track1, track2;
};

void PrintTo(const OffsetRow& row, std::ostream* os) { *os << row.name; }

class OffsetRows : public TrackOffsets, public testing::WithParamInterface<OffsetRow> {};

TEST_P(OffsetRows, TakeEachTrackAtTheReferenceFrame)
{
    const OffsetRow& row = GetParam();
    setFrames(0, 4, 0, 0, row.freq, row.connected ? 0 : row.x);
    if (row.connected) {
        graph->Connected(view);
        view->viewport.scale.x = row.scale;
        window->mouse.x = row.x;
    }
    window->update = 0;
    graph->UpdateTrackOffsets();
    EXPECT_EQ(window->update, row.connected ? 1 : 0);
    EXPECT_EQ(marker(1), row.track1);
    EXPECT_EQ(marker(2), row.track2);
    EXPECT_EQ(graph->rbtrackOffsets.count(1), row.track1 == none ? 0u : 1u);
    graph->ClearTrackOffsets(); // without a repaint
    EXPECT_EQ(window->update, row.connected ? 1 : 0);
    EXPECT_TRUE(graph->trackOffsets.empty() && graph->rbtrackOffsets.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, OffsetRows,
    testing::Values(OffsetRow{"WithoutAViewTheCurrentFrame", false, 1, 0, 1, {1, 11, -1}, {1, 21, -1}},
                    OffsetRow{"MouseLeftOfTheDataTakesTheFirst", true, 1, 0, -30, {0, 10, 0}, {0, 20, 0}},
                    OffsetRow{"MouseRightOfTheDataTakesTheLast", true, 1, 0, 300, {3, 13, -3}, {3, 23, -3}},
                    OffsetRow{"InvalidSampleLeavesItsTrackUnshifted", true, 1, 0, 2, {2, 12, -2}, none},
                    OffsetRow{"InfiniteMouseTakesTheLast", true, 0, 0, 5, {3, 13, -3}, {3, 23, -3}},
                    OffsetRow{"NaNMouseIsFrameZero", true, 0, 0, 0, {0, 10, 0}, {0, 20, 0}},
                    // Half of a huge period saturates; the search's first probe (index 1) is within it.
                    OffsetRow{"HugePeriodSaturatesTheTolerance", true, 1, 1e-30f, 3, {1, 11, -1}, {1, 21, -1}}),
    [](const testing::TestParamInfo<OffsetRow>& i) { return std::string(i.param.name); });

// The last track is the reference: a rigid-only one indexes the marker tracks too.
TEST_F(TrackOffsets, RigidOnlyReferenceTrackIndexesMarkerTracks)
{
    tracks.append(makeTrack(7, {}, {1, 1, 1, 1}));
    setTracks(tracks);
    graph->Connected(view);
    window->mouse.x = 3;
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(2), Vector(3, 23, -3));
    EXPECT_EQ(graph->rbtrackOffsets.count(7), 1u);
}

// The reference track has no sample near the position: its index -1 must record
// nothing, and must not read before any track's first sample.
TEST_F(TrackOffsets, PositionOutsideTheReferenceTrackRecordsNothing)
{
    TAV::Frame late = makeTrack(9, {1, 1});
    for (TAV::Marker& m : late.markers)
        m.time += 2;
    tracks.append(late);
    setTracks(tracks);
    graph->Connected(view);
    window->mouse.x = 0;
    graph->UpdateTrackOffsets();
    EXPECT_TRUE(graph->trackOffsets.empty());
    EXPECT_TRUE(graph->rbtrackOffsets.empty());
}

} // namespace
