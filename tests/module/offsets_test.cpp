#include "graphfixture.h"

#include <cmath>

namespace {

class TrackOffsets : public GraphWithView {
protected:
    TrackOffsets()
    {
        tracks = makeTracks({makeTrack(1, {1, 1, 1, 1}, {1, 1, 1, 1}), makeTrack(2, {1, 1, 0, 1})});
        setFrames(0, 4);
        graph->SetTracks(&tracks);
    }
    // Puts the mouse at data x (one pixel per frame from pos.x 0).
    void mouseAt(int x)
    {
        graph->Connected(view);
        window->mouse.x = x;
    }
    Vector marker(int id) const
    {
        Vector v(-1, -1, -1);
        graph->trackOffsets.find(id, v);
        return v;
    }

    TAV::Frames tracks;
};

TEST_F(TrackOffsets, WithoutAViewTheCurrentFrameIsTheReference)
{
    FramesInfo info(0, 4, 0, 0, 1, 0.0f);
    graph->SetFramesInfo(&info);
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(1, 11, -1));
    EXPECT_EQ(marker(2), Vector(1, 21, -1));
    Vector rigid;
    EXPECT_TRUE(graph->rbtrackOffsets.find(1, rigid));
    EXPECT_EQ(rigid, Vector(1, 11, -1));
}

TEST_F(TrackOffsets, MouseOutsideTheDataTakesTheNearestEnd)
{
    mouseAt(-30);
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(0, 10, 0));
    mouseAt(300);
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(3, 13, -3));
}

TEST_F(TrackOffsets, InvalidSampleLeavesItsTrackUnshifted)
{
    mouseAt(2);
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(2, 12, -2));
    EXPECT_EQ(graph->trackOffsets.count(2), 0u);
}

TEST_F(TrackOffsets, RigidOnlyReferenceTrackIndexesMarkerTracks)
{
    tracks.append(makeTrack(7, {}, {1, 1, 1, 1}));
    graph->SetTracks(&tracks);
    mouseAt(3);
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
    graph->SetTracks(&tracks);
    mouseAt(0);
    graph->UpdateTrackOffsets();
    EXPECT_TRUE(graph->trackOffsets.empty());
    EXPECT_TRUE(graph->rbtrackOffsets.empty());
}

TEST_F(TrackOffsets, NonFiniteMouseStaysDefined)
{
    mouseAt(5);
    view->viewport.scale.x = 0; // the mouse maps to +infinity
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(3, 13, -3));
    window->mouse.x = 0; // 0 / 0: NaN reads as frame 0
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(0, 10, 0));
}

// The tolerance is half a period: at a vanishing rate it saturates, and the first
// probe of the search (index 1 of 4) is within it.
TEST_F(TrackOffsets, HugePeriodSaturatesTheTolerance)
{
    setFrames(0, 4, 0, 0, 1e-30f);
    mouseAt(3);
    graph->UpdateTrackOffsets();
    EXPECT_EQ(marker(1), Vector(1, 11, -1));
}

TEST_F(TrackOffsets, UpdateRepaintsClearDoesNotAndEmptiesBothMaps)
{
    mouseAt(1);
    window->update = 0;
    graph->UpdateTrackOffsets();
    EXPECT_EQ(window->update, 1);
    graph->ClearTrackOffsets();
    EXPECT_EQ(window->update, 1);
    EXPECT_TRUE(graph->trackOffsets.empty());
    EXPECT_TRUE(graph->rbtrackOffsets.empty());
}

} // namespace
