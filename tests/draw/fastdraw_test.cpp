// "fastDraw" call by call: where the level-of-detail filter starts near the view,
// and how much less it sends. Its picture is compared with the exact one in pixels.
#include "modules/paintcache.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <functional>
#include <utility>

using takes::marker;
using takes::track;

namespace {

class FastDraw : public DrawStream {
protected:
    Calls exact, fast;

    void paintBoth()
    {
        exact = draw();
        graph.setProperty<bool>("fastDraw", true);
        fast = draw();
    }
};

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
    paintBoth();

    // Grey once: the fast paint sends a colour only when it changes.
    Calls kept{glrec::Color3f(0.8f, 0.8f, 0.8f)};
    for (const auto& [x, v] : {std::pair<float, Vector>{49, {0.6f, 0, 0}}, {48, {3.7f, 3, 3}}, {48, {5, 5, 5}}})
        for (int axis = 0; axis < 3; ++axis)
            kept.push_back(glrec::Vertex3f(x, v[axis], 1));
    EXPECT_EQ(glrec::toString(pointsPart(fast)), glrec::toString(pointsBlock(2, kept)));
}

// Zoomed in to 100 of 10,000 frames, the fast paint sends a small share of the
// vertices, and its segments in one block instead of one each.
TEST_F(FastDraw, SendsFarLessWhenZoomedIn)
{
    graph.tracks = takes::generated({8, 0, 10000, 3});
    view.rect = QRectF(0, 0, 1000, 300);
    view.viewport.pos.x = 5000;
    view.viewport.scale.x = 10;
    paintBoth();
    const auto vertices = [](const Calls& c) { return glrec::count(c, "glVertex3f") + glrec::count(c, "glVertex3d"); };
    EXPECT_LT(vertices(fast) * 5, vertices(exact));
    EXPECT_EQ(glrec::count(fast, "glBegin"), 2) << "one block of points, one of segments";
    EXPECT_GT(glrec::count(exact, "glBegin"), 400);
}

// A kept paint is replayed only when every input it read is the same: each row
// changes one, in a way that keeps the others.
TEST(FastPaintInputs, DifferWhenAnyInputDiffers)
{
    const auto runs = [](std::initializer_list<Pair> l) {
        Regions r;
        r.assign(l.begin(), l.end());
        return r;
    };
    FastPaintInputs base;
    base.tracks = takes::generated({2, 0, 10, 1});
    base.markers = {1, 2};
    base.regions = runs({Pair(0, 9, 1), Pair(10, 19, 2)});
    base.propertyNames = {"pointSize"};
    base.propertyValues = {2};
    const GLW views[2];
    base.view = &views[0];
    EXPECT_TRUE(base == FastPaintInputs(base));
    const struct {
        const char* name;
        std::function<void(FastPaintInputs&)> change;
    } rows[] = {
        {"other samples", [](FastPaintInputs& i) { i.tracks = takes::generated({2, 0, 10, 1}); }},
        {"more tracks", [](FastPaintInputs& i) { i.tracks = takes::generated({3, 0, 10, 1}); }},
        {"markers", [](FastPaintInputs& i) { i.markers = {1}; }},
        {"rigids", [](FastPaintInputs& i) { i.rigids = {1}; }},
        {"offsets", [](FastPaintInputs& i) { i.trackOffsets[1] = Vector(1, 0, 0); }},
        {"rigid offsets", [](FastPaintInputs& i) { i.rbtrackOffsets[1] = Vector(1, 0, 0); }},
        {"a run's type", [&](FastPaintInputs& i) { i.regions = runs({Pair(0, 9, 1), Pair(10, 19, 4)}); }},
        {"a run's bounds", [&](FastPaintInputs& i) { i.regions = runs({Pair(0, 8, 1), Pair(9, 19, 2)}); }},
        {"frames", [](FastPaintInputs& i) { i.framesInfo.finish = 5; }},
        {"period", [](FastPaintInputs& i) { i.period = 2; }},
        {"offsetX", [](FastPaintInputs& i) { i.offsetX = 1; }},
        {"a property", [](FastPaintInputs& i) { i.propertyValues = {3}; }},
        {"view", [&](FastPaintInputs& i) { i.view = &views[1]; }},
        {"viewport", [](FastPaintInputs& i) { i.viewport[6] = 1; }},
        {"transform", [](FastPaintInputs& i) { i.map.cy = 1; }},
        {"pixels", [](FastPaintInputs& i) { i.pixels.h = 1; }},
        {"margin", [](FastPaintInputs& i) { i.margin = 0.1; }},
    };
    for (const auto& row : rows) {
        FastPaintInputs changed = base;
        row.change(changed);
        EXPECT_FALSE(base == changed) << row.name;
    }
}

} // namespace
