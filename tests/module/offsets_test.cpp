#include "graphfixture.h"

#include <functional>

namespace {

const Vector none(-1, -1, -1); // nothing recorded

// Marker tracks 1 (with a rigid track) and 2, four frames, track 2's sample at frame
// 2 invalid; the last track is the reference. Each row may change the tracks first.
TEST(TrackOffsets, TakeEachTrackAtTheReferenceFrame)
{
    const auto noChange = [](TAV::Frames&) {};
    const struct {
        const char* name;
        bool connected;    // else the current frame is the reference
        float scale, freq; // a zero scale maps the mouse to +infinity, or NaN at 0
        int x;             // mouse x, or the current frame
        Vector track1, track2;
        std::function<void(TAV::Frames&)> change;
    } rows[] = {
        {"WithoutAViewTheCurrentFrame", false, 1, 0, 1, {1, 11, -1}, {1, 21, -1}, noChange},
        {"MouseLeftOfTheDataTakesTheFirst", true, 1, 0, -30, {0, 10, 0}, {0, 20, 0}, noChange},
        {"MouseRightOfTheDataTakesTheLast", true, 1, 0, 300, {3, 13, -3}, {3, 23, -3}, noChange},
        {"InvalidSampleLeavesItsTrackUnshifted", true, 1, 0, 2, {2, 12, -2}, none, noChange},
        {"InfiniteMouseTakesTheLast", true, 0, 0, 5, {3, 13, -3}, {3, 23, -3}, noChange},
        {"NaNMouseIsFrameZero", true, 0, 0, 0, {0, 10, 0}, {0, 20, 0}, noChange},
        // Half of a huge period saturates; the search's first probe (index 1) is within it.
        {"HugePeriodSaturatesTheTolerance", true, 1, 1e-30f, 3, {1, 11, -1}, {1, 21, -1}, noChange},
        {"RigidOnlyReferenceIndexesMarkerTracks", true, 1, 0, 2, {2, 12, -2}, none,
         [](TAV::Frames& t) { t.append(makeTrack(7, {}, {1, 1, 1, 1})); }},
        // The samples at frame 3 stay in the storage: nothing past the end is read.
        {"ShorterTrackRecordsNothingPastItsEnd", true, 1, 0, 3, none, {3, 23, -3},
         [](TAV::Frames& t) {
             t[0].markers.removeLast();
             t[0].rigids.removeLast();
         }},
        // No reference sample near the mouse: nothing recorded, nothing read before a start.
        {"PositionOutsideTheReferenceTrack", true, 1, 0, 0, none, none, [](TAV::Frames& t) {
             t.append(makeTrack(9, {1, 1}));
             for (TAV::Marker& m : t.last().markers)
                 m.time += 2;
         }}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphOnView g;
        TAV::Frames tracks = makeTracks({makeTrack(1, {1, 1, 1, 1}, {1, 1, 1, 1}), makeTrack(2, {1, 1, 0, 1})});
        row.change(tracks);
        g.graph->SetTracks(&tracks);
        g.setFrames(0, 4, 0, 0, row.freq, row.connected ? 0 : row.x);
        if (row.connected) {
            g.graph->Connected(g.view);
            g.view->viewport.scale.x = row.scale;
            g.window->mouse.x = row.x;
        }
        g.window->update = 0;
        g.graph->UpdateTrackOffsets();
        EXPECT_EQ(g.window->update, row.connected ? 1 : 0);
        for (int id : {1, 2}) {
            Vector v = none;
            g.graph->trackOffsets.find(id, v);
            EXPECT_EQ(v, id == 1 ? row.track1 : row.track2) << "track " << id;
        }
        EXPECT_EQ(g.graph->rbtrackOffsets.count(1), row.track1 == none ? 0u : 1u);
        g.graph->ClearTrackOffsets(); // without a repaint
        EXPECT_EQ(g.window->update, row.connected ? 1 : 0);
        EXPECT_TRUE(g.graph->trackOffsets.empty() && g.graph->rbtrackOffsets.empty());
    }
}

} // namespace
