// "fastDraw" against the exact paint, call by call: the same points where the view
// can show them, the same segments in one block, the same runs and cursor.
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <algorithm>
#include <cmath>

using takes::marker;
using takes::track;

namespace {

// The points of a points block, one group of calls per sample.
std::vector<Calls> pointGroups(const Calls& block)
{
    std::vector<Calls> groups;
    for (size_t i = 2; i + 2 < block.size(); ++i) {
        if (block[i] == glrec::Color3f(0.8f, 0.8f, 0.8f))
            groups.emplace_back();
        groups.back().push_back(block[i]);
    }
    return groups;
}

double groupX(const Calls& group)
{
    for (const glrec::Call& c : group)
        if (c.name == "glVertex3f")
            return c.args[0];
    return std::nan("");
}

Calls withoutBlocks(const Calls& c)
{
    Calls out;
    for (const glrec::Call& call : c)
        if (call.name != "glBegin" && call.name != "glEnd")
            out.push_back(call);
    return out;
}

class FastDraw : public DrawStream {
protected:
    Calls exact, fast;

    void paintBoth()
    {
        graph.setProperty<bool>("fastDraw", false);
        exact = draw();
        graph.setProperty<bool>("fastDraw", true);
        fast = draw();
    }

    // Fast points are the exact ones in order, less some that lie outside the view.
    void expectSamePointsInView(const std::string& where)
    {
        const Calls exactBlock = pointsPart(exact), fastBlock = pointsPart(fast);
        ASSERT_GE(fastBlock.size(), 4u) << where;
        EXPECT_EQ(slice(fastBlock, 0, 2), slice(exactBlock, 0, 2)) << where;
        const std::vector<Calls> e = pointGroups(exactBlock), f = pointGroups(fastBlock);
        const ViewEdges v = viewEdges(view);
        size_t j = 0;
        for (const Calls& group : e) {
            if (j < f.size() && f[j] == group) {
                ++j;
                continue;
            }
            const double x = groupX(group);
            EXPECT_TRUE(x < v.left || x > v.right) << where << ": a point at x " << x << " in the view was not sent";
        }
        EXPECT_EQ(j, f.size()) << where << ": fast points out of order or not in the exact paint";
    }

    // The same segments, the same runs and cursor; the segments in at most one block.
    void expectSameRest(const std::string& where)
    {
        const Calls e = afterPoints(exact), f = afterPoints(fast);
        const int layer = nth(e, "glPushAttrib", 0), fastLayer = nth(f, "glPushAttrib", 0);
        ASSERT_GE(layer, 0) << where;
        ASSERT_GE(fastLayer, 0) << where;
        const Calls fastLines = slice(f, 0, fastLayer);
        EXPECT_LE(glrec::count(fastLines, "glBegin"), 1) << where;
        EXPECT_EQ(withoutBlocks(slice(e, 0, layer)), withoutBlocks(fastLines)) << where;
        EXPECT_EQ(slice(e, layer, int(e.size())), slice(f, fastLayer, int(f.size()))) << where;
    }
};

struct Zoom {
    const char* name;
    float left, scale;
    int pointSize;
    bool lod;
};

// Views over a generated take of 3000 frames (tracks begin at 0, one begins at
// 300 and one runs backwards), from the whole take down to a few frames.
TEST_F(FastDraw, SendsWhatTheExactPaintShowsInTheView)
{
    graph.tracks = takes::generated({6, 2, 3000, 11, 1500, 1530});
    TAV::Frame late = graph.tracks.at(1);
    late.id = 40;
    late.markers.remove(0, 300);
    TAV::Frame backwards = graph.tracks.at(2);
    backwards.id = 41;
    std::reverse(backwards.markers.begin(), backwards.markers.end());
    graph.tracks.append(late);
    graph.tracks.append(backwards);
    graph.regions.assign({Pair(0, 1499, 1), Pair(1500, 1529, 2), Pair(1530, 2999, 9)});
    graph.framesInfo = FramesInfo(0, 3000, 100, 2900, 1510);
    graph.trackOffsets[3] = Vector(5, 5, 5);
    view.rect = QRectF(0, 0, 400, 200);
    view.viewport.pos.y = -60;
    view.viewport.scale.y = 200.f / 120;

    const Zoom zooms[] = {
        {"whole take", -100, 400.f / 3200, 2, true},
        {"filter step above a frame", 800, 0.6f, 2, true},
        {"filter step below a frame", 1200, 2.5f, 2, true},
        {"left edge in the gap", 1510, 4, 2, true},
        {"right edge in the gap", 1400, 3.5f, 2, true},
        {"big points", 1450.5f, 9, 5, true},
        {"without the filter", 2000, 1.5f, 2, false},
        {"a few frames", 1200.25f, 50, 2, true},
        {"left of the take", -500, 2, 2, true},
        {"right of the take", 3100, 2, 2, true},
    };
    for (const Zoom& z : zooms) {
        view.viewport.pos.x = z.left;
        view.viewport.scale.x = z.scale;
        graph.setProperty<int>("pointSize", z.pointSize);
        graph.setProperty<int>("pointSizeMin", z.pointSize);
        graph.setProperty<bool>("LOD", z.lod);
        paintBoth();
        expectSamePointsInView(z.name);
        expectSameRest(z.name);
    }
}

// The filter's state where the view's window begins (x 48: the left edge 50 less
// half a point and a pixel) is only sometimes certain; every way into the window
// must leave it where the whole walk would. A point is 1.98 frames by 0.98 units.
TEST_F(FastDraw, StartsTheFilterWhereTheWholeWalkWouldHaveIt)
{
    view.viewport.pos.x = 50;
    // 47 moved 7 frames from 40: certainly kept. So 48 is too close and 49 is not.
    graph.tracks.append(track(0, {marker(40, 0, 0, 0), marker(47, 0, 0, 0), marker(48, 0.5f, 0, 0),
                                  marker(49, 0.6f, 0, 0)}));
    // 47 is the only valid sample before the window: the fresh filter keeps it.
    graph.tracks.append(track(1, {marker(3, 9, 9, 9, 0), marker(47, 0, 0, 0), marker(48, 0.5f, 0, 0)}));
    // 47 is one frame after 46: uncertain, the walk starts at 44 (keeps 44, 46).
    graph.tracks.append(track(2, {marker(44, 3, 3, 3), marker(45, 3, 3, 3), marker(46, 3.5f, 3, 3),
                                  marker(47, 3.6f, 3, 3), marker(48, 3.7f, 3, 3)}));
    // A negative x before the window: the walk starts at the beginning.
    graph.tracks.append(track(3, {marker(-5, 4, 4, 4), marker(47, 4, 4, 4), marker(48, 4.2f, 4, 4)}));
    // Nothing valid before the window: a fresh filter there.
    graph.tracks.append(track(4, {marker(10, 5, 5, 5, 0), marker(48, 5, 5, 5)}));
    graph.regions.assign({Pair(0, 60, 1)});
    paintBoth();
    expectSamePointsInView("hand-made tracks");
    expectSameRest("hand-made tracks");

    const Calls kept = point(49, {0.6f, 0, 0}) + point(48, {3.7f, 3, 3}) + point(48, {5, 5, 5});
    EXPECT_EQ(glrec::toString(pointsPart(fast)), glrec::toString(pointsBlock(2, kept)));
}

// Zoomed in on 10,000 frames of 8 markers, the fast paint sends a small share of
// the vertices, and its segments in one block instead of one each.
TEST_F(FastDraw, SendsFarLessWhenZoomedIn)
{
    graph.tracks = takes::generated({8, 0, 10000, 3});
    view.rect = QRectF(0, 0, 1000, 300);
    view.viewport.pos.x = 5000;
    for (float frames : {500.f, 100.f}) {
        view.viewport.scale.x = 1000 / frames;
        paintBoth();
        const int exactVertices = glrec::count(exact, "glVertex3f") + glrec::count(exact, "glVertex3d");
        const int fastVertices = glrec::count(fast, "glVertex3f") + glrec::count(fast, "glVertex3d");
        EXPECT_LT(fastVertices * 5, exactVertices) << frames << " frames";
        EXPECT_LE(glrec::count(fast, "glBegin"), 2) << frames << " frames";
        if (frames == 100.f) {
            EXPECT_GT(glrec::count(exact, "glBegin"), 500) << "each segment in its own block";
        }
    }
}

} // namespace
