#include "graphfixture.h"

namespace {

const Vector none(-1, -1, -1); // nothing recorded

// Marker tracks 1 (with a rigid track) and 2, four frames; track 2's sample at
// frame 2 is invalid.
struct OffsetsOnView : GraphOnView {
    OffsetsOnView() { setTracks(); }
    void setTracks()
    {
        setFrames(0, 4);
        graph->SetTracks(&tracks);
    }
    Vector marker(int id) const
    {
        Vector v = none;
        graph->trackOffsets.find(id, v);
        return v;
    }

    TAV::Frames tracks = makeTracks({makeTrack(1, {1, 1, 1, 1}, {1, 1, 1, 1}), makeTrack(2, {1, 1, 0, 1})});
};

TEST(TrackOffsets, TakeEachTrackAtTheReferenceFrame)
{
    const struct {
        const char* name;
        bool connected;    // else the current frame is the reference
        float scale, freq; // a zero scale maps the mouse to +infinity, or NaN at 0
        int x;             // mouse x, or the current frame
        Vector track1, track2;
    } rows[] = {{"WithoutAViewTheCurrentFrame", false, 1, 0, 1, {1, 11, -1}, {1, 21, -1}},
                {"MouseLeftOfTheDataTakesTheFirst", true, 1, 0, -30, {0, 10, 0}, {0, 20, 0}},
                {"MouseRightOfTheDataTakesTheLast", true, 1, 0, 300, {3, 13, -3}, {3, 23, -3}},
                {"InvalidSampleLeavesItsTrackUnshifted", true, 1, 0, 2, {2, 12, -2}, none},
                {"InfiniteMouseTakesTheLast", true, 0, 0, 5, {3, 13, -3}, {3, 23, -3}},
                {"NaNMouseIsFrameZero", true, 0, 0, 0, {0, 10, 0}, {0, 20, 0}},
                // Half of a huge period saturates; the search's first probe (index 1) is within it.
                {"HugePeriodSaturatesTheTolerance", true, 1, 1e-30f, 3, {1, 11, -1}, {1, 21, -1}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OffsetsOnView g;
        g.setFrames(0, 4, 0, 0, row.freq, row.connected ? 0 : row.x);
        if (row.connected) {
            g.graph->Connected(g.view);
            g.view->viewport.scale.x = row.scale;
            g.window->mouse.x = row.x;
        }
        g.window->update = 0;
        g.graph->UpdateTrackOffsets();
        EXPECT_EQ(g.window->update, row.connected ? 1 : 0);
        EXPECT_EQ(g.marker(1), row.track1);
        EXPECT_EQ(g.marker(2), row.track2);
        EXPECT_EQ(g.graph->rbtrackOffsets.count(1), row.track1 == none ? 0u : 1u);
        g.graph->ClearTrackOffsets(); // without a repaint
        EXPECT_EQ(g.window->update, row.connected ? 1 : 0);
        EXPECT_TRUE(g.graph->trackOffsets.empty() && g.graph->rbtrackOffsets.empty());
    }
}

// The last track is the reference: a rigid-only one indexes the marker tracks too.
TEST(TrackOffsets, RigidOnlyReferenceTrackIndexesMarkerTracks)
{
    OffsetsOnView g;
    g.tracks.append(makeTrack(7, {}, {1, 1, 1, 1}));
    g.setTracks();
    g.graph->Connected(g.view);
    g.window->mouse.x = 3;
    g.graph->UpdateTrackOffsets();
    EXPECT_EQ(g.marker(2), Vector(3, 23, -3));
    EXPECT_EQ(g.graph->rbtrackOffsets.count(7), 1u);
}

// A track shorter than the reference has nothing at a later index, whatever its
// storage still holds there.
TEST(TrackOffsets, ShorterTrackRecordsNothingPastItsEnd)
{
    OffsetsOnView g;
    g.tracks[0].markers.removeLast(); // the samples at frame 3 stay in the storage
    g.tracks[0].rigids.removeLast();
    g.setTracks();
    g.graph->Connected(g.view);
    g.window->mouse.x = 3;
    g.graph->UpdateTrackOffsets();
    EXPECT_EQ(g.marker(1), none);
    EXPECT_EQ(g.graph->rbtrackOffsets.count(1), 0u);
    EXPECT_EQ(g.marker(2), Vector(3, 23, -3));
}

// The reference track has no sample near the position: its index -1 must record
// nothing, and must not read before any track's first sample.
TEST(TrackOffsets, PositionOutsideTheReferenceTrackRecordsNothing)
{
    OffsetsOnView g;
    TAV::Frame late = makeTrack(9, {1, 1});
    for (TAV::Marker& m : late.markers)
        m.time += 2;
    g.tracks.append(late);
    g.setTracks();
    g.graph->Connected(g.view);
    g.window->mouse.x = 0;
    g.graph->UpdateTrackOffsets();
    EXPECT_TRUE(g.graph->trackOffsets.empty());
    EXPECT_TRUE(g.graph->rbtrackOffsets.empty());
}

} // namespace
