// The GL call counter sees the module's calls, and the zoomed-in benchmarks show
// the frames their name says.
#include "bench/glcount.h"
#include "bench/graphview.h"
#include "bench/synthtake.h"

#include <gtest/gtest.h>

namespace {

TEST(PaintCounts, CountTheModulesCallsAndReset)
{
    TakeShape s;
    s.frames = 3000;
    TAV::Frames tracks;
    synthTracks(s, tracks);
    GraphView g(false);
    g.load(tracks, s.frames, allTracks(s));

    g.setUp(PaintCase{false, PaintStyle::Points, true});
    EXPECT_NEAR(g.shown().width(), ZoomedInFrames - 1, 1.0);
    EXPECT_NEAR(g.shown().center().x(), s.frames / 2, 1.0);

    glcount::reset();
    g.graph().Draw2D(&g.view());
    const glcount::Counts n = glcount::counts();
    EXPECT_GT(n.vertices, 0);
    EXPECT_GT(n.blocks, 0);
    EXPECT_EQ(n.blocks, n.ends);
    EXPECT_GE(n.calls, n.vertices + n.blocks + n.ends);
    glcount::reset();
    EXPECT_EQ(glcount::counts().calls, 0);
}

} // namespace
