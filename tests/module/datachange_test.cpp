#include "graphfixture.h"

#include "modules/core/frametimes.h"
#include "tests/glrecorder/glrecorder.h"

#include <QSignalSpy>

#include <limits>

namespace {

TEST(SetFramesInfo, SetsOffsetAndPeriodAndReportsAValidHeadTail)
{
    const qint64 huge = std::numeric_limits<qint64>::max();
    const struct {
        const char* name;
        FramesInfo info;
        double period;
        QList<QVariant> updateSelect; // empty: nothing emitted
    } rows[] = {{"RelativeToStart", FramesInfo(100, 200, 0, 1, 0, 120.0f), 1e6 / 120.0, {qint64(-100), qint64(-99)}},
                {"EmptyHeadTailEmitsNothing", FramesInfo(0, 100, 5, 5, 0, 0.0f), 1.0, {}},
                {"NegativeHeadEmitsNothing", FramesInfo(0, 100, -1, 10, 0, 100.0f), 10000.0, {}},
                // Head and tail are tested as 32-bit values; the 64-bit pair clamps instead of overflowing.
                {"HugeValuesClampWithoutOverflow", FramesInfo(-huge, huge, 0, 1, 0, 1.0f), 1e6, {huge, huge}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAVGraph graph;
        QSignalSpy spy(&graph, &TAVGraph::UpdateSelect);
        FramesInfo info = row.info;
        graph.SetFramesInfo(&info);
        EXPECT_EQ(graph.offsetX, info.start);
        EXPECT_DOUBLE_EQ(graph.period, row.period);
        EXPECT_EQ(spy.isEmpty() ? QList<QVariant>() : spy.at(0), row.updateSelect);
        EXPECT_LE(spy.count(), 1);
    }
}

// Sample times in microseconds; without a rate, the frame numbers.
TEST(FrameTimes, RoundToMicrosecondsOrCountFrames)
{
    EXPECT_EQ(frameTimes(3, 120.0), QList<qint64>({0, 8333, 16667}));
    EXPECT_EQ(frameTimes(3, 0.0), QList<qint64>({0, 1, 2}));
    EXPECT_EQ(frameTimes(2, -50.0), QList<qint64>({0, 1}));
    EXPECT_TRUE(frameTimes(0, 120.0).isEmpty());
    EXPECT_TRUE(frameTimes(-4, 120.0).isEmpty());
}

TEST(DataChange, SelectionNamesAreExactAndRebuildRegions)
{
    TAVGraph graph;
    TAV::Frames tracks = makeTracks({makeTrack(5, {1.5f, 1.5f, 0, 0, 1.5f}, {0.3f, 0.3f, 0.3f, 0.3f, 0.3f}),
                                     makeTrack(6, {1.5f, 1.5f, 1.5f, 1.5f, 1.5f})});
    tracks.setProperty<QList<qint64>>("timeLut", {10, 20, 30});
    graph.SetTracks(&tracks);
    EXPECT_EQ(graph.timeLut, QList<qint64>({10, 20, 30}));

    graph.SetTrackSelection({5}, "Markers");
    EXPECT_TRUE(graph.regionsSet.empty());
    graph.SetTrackSelection({5, 6, 9}, "markers");
    EXPECT_EQ(runsText(graph.regionsSet.at(0x1000005)), "0-1:1 2-3:2 4-4:1");
    // The selected tracks OR-ed frame by frame, where the last frame joins the last
    // run; an id without a track gets an empty entry.
    EXPECT_EQ(runsText(graph.regions), "0-1:1 2-4:3");
    EXPECT_TRUE(graph.regionsSet.at(0x1000009).empty());
    graph.SetTrackSelection({5}, "rigids");
    ASSERT_EQ(graph.regionsSet.size(), 4u);
    EXPECT_EQ(runsText(graph.regionsSet.at(0x2000005)), "0-4:8");

    graph.SetTrackSelection({1, 2}, "cameras");
    EXPECT_EQ(graph.regionsSet.size(), 4u);
    graph.SetTrackSelection({}, "rigids");
    EXPECT_EQ(graph.regionsSet.count(0x2000005), 0u);
}

// The graph's copy shares the host's frames: reading them for regions, offsets, the
// data range and painting (both drawing modes) must never detach it.
TEST_F(GraphWithView, ReadingTheTracksKeepsTheHostStoreShared)
{
    TAV::Frames host = makeTracks({makeTrack(1, {1, 1, 0, 1}, {1, 1, 1, 1}), makeTrack(2, {1, 1, 1, 1})});
    setFrames(0, 4);
    graph->Connected(view);
    window->update = 0;
    graph->SetTrackSelection({1, 2}, "markers");
    EXPECT_EQ(window->update, 1); // each data change asks for one repaint
    graph->SetTrackSelection({1}, "rigids");
    graph->SetTracks(&host);
    graph->UpdateTrackOffsets();
    QRectF rect;
    graph->Range2D(&rect, 1);
    graph->NextAOI();
    for (bool fast : {false, true}) {
        graph->setProperty<bool>(GraphProperty::fastDraw, fast);
        glrec::reset();
        graph->Draw2D(view);
        EXPECT_GT(glrec::count(glrec::calls(), "glVertex3f"), 0); // the points were read
    }
    EXPECT_EQ(graph->tracks.constData(), host.constData());
    EXPECT_EQ(graph->tracks.at(0).markers.constData(), host.at(0).markers.constData());
    EXPECT_FALSE(graph->trackOffsets.empty());
}

} // namespace
