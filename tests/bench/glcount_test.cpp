// The paint set-ups of the benchmarks, counted through the GL call counter: the
// counter sees the module's calls, and the views and styles show what the
// benchmark names say.
#include "bench/glcount.h"
#include "bench/graphview.h"
#include "bench/synthtake.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const int frames = 3000;

class PaintCounts : public testing::Test {
protected:
    TAV::Frames tracks;
    GraphView g{false};

    void SetUp() override
    {
        TakeShape s;
        s.markers = 6;
        s.rigids = 2;
        s.frames = frames;
        synthTracks(s, tracks);
        g.load(tracks, frames, allTracks(s));
    }

    glcount::Counts paint(const PaintCase& c)
    {
        g.setUp(c);
        glcount::reset();
        g.graph().Draw2D(&g.view());
        return glcount::counts();
    }
};

TEST_F(PaintCounts, SeeEveryCallTheModuleMakes)
{
    const glcount::Counts n = paint(PaintCase{true, PaintStyle::Lines, true});
    EXPECT_GT(n.vertices, 0);
    EXPECT_GT(n.blocks, 0);
    EXPECT_EQ(n.blocks, n.ends);
    EXPECT_GE(n.calls, n.vertices + n.blocks + n.ends);
    glcount::reset();
    EXPECT_EQ(glcount::counts().calls, 0);
}

struct ZoomRow {
    const char* name;
    bool fast;
    bool zoomedIn;
};

void PrintTo(const ZoomRow& row, std::ostream* os) { *os << row.name; }

class Zooms : public PaintCounts, public testing::WithParamInterface<ZoomRow> {};

TEST_P(Zooms, ShowWhatTheyAreNamedAfter)
{
    g.setUp(PaintCase{GetParam().fast, PaintStyle::Points, GetParam().zoomedIn});
    const QRectF shown = g.shown();
    const QRectF whole = g.wholeTake();
    if (GetParam().zoomedIn) {
        EXPECT_NEAR(shown.width(), ZoomedInFrames - 1, 1.0);
        EXPECT_NEAR(shown.center().x(), frames / 2, 1.0);
    } else {
        EXPECT_LE(shown.left(), 0);
        EXPECT_GE(shown.right(), frames - 1);
    }
    // Zoomed along time only: the heights of the whole take stay.
    EXPECT_LE(shown.top(), std::min(whole.top(), whole.bottom()));
    EXPECT_GE(shown.bottom(), std::max(whole.top(), whole.bottom()));
}

TEST_P(Zooms, StylesDrawWhatTheyAreNamedAfter)
{
    const bool fast = GetParam().fast, in = GetParam().zoomedIn;
    const glcount::Counts points = paint(PaintCase{fast, PaintStyle::Points, in});
    const glcount::Counts lines = paint(PaintCase{fast, PaintStyle::Lines, in});
    const glcount::Counts runs = paint(PaintCase{fast, PaintStyle::Runs, in});
    // Every valid neighbour pair is a segment of 3 axes x 2 vertices: more than the points add.
    EXPECT_GT(lines.vertices, points.vertices + 3 * (in ? ZoomedInFrames : frames));
    // Without tracks only the runs are left, each a band of 4 vertices where it shows.
    EXPECT_LT(runs.vertices, points.vertices / 4);
    if (!in) {
        EXPECT_GE(runs.vertices, 4 * int(g.graph().regions.size()));
    }
    // The defaults come back for the next case.
    EXPECT_EQ(paint(PaintCase{fast, PaintStyle::Points, in}).vertices, points.vertices);
}

INSTANTIATE_TEST_SUITE_P(Cases, Zooms,
                         testing::Values(ZoomRow{"exact_out", false, false}, ZoomRow{"fast_out", true, false},
                                         ZoomRow{"exact_in", false, true}, ZoomRow{"fast_in", true, true}),
                         [](const testing::TestParamInfo<ZoomRow>& info) { return std::string(info.param.name); });

// With the whole take in view the fast paint leaves nothing out: the same vertices,
// its lines in one block where the exact paint opens one per segment.
TEST_F(PaintCounts, FastSendsTheSameVerticesWhenAllIsInView)
{
    const glcount::Counts exact = paint(PaintCase{false, PaintStyle::Lines, false});
    const glcount::Counts fast = paint(PaintCase{true, PaintStyle::Lines, false});
    EXPECT_EQ(fast.vertices, exact.vertices);
    EXPECT_LT(fast.blocks, exact.blocks);
}

} // namespace
