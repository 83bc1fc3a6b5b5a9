// "fastDraw" call by call, where no depth buffer allows a cull: the same segments
// as the exact drawing; and what a kept fast paint must have read the same to be
// replayed.
#include "modules/paintcache.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

using takes::marker;

namespace {

// What a paint sends after its points block, less the closing glPopAttrib.
Calls afterPoints(const Calls& c)
{
    const auto size = std::find_if(c.rbegin(), c.rend(), [](const glrec::Call& k) { return k.name == "glPointSize"; });
    return Calls(size.base(), c.end() - 1);
}

// Vertices only, x as a float: the fast paint sends the same segments in one block.
std::vector<std::vector<double>> vertices(const Calls& calls)
{
    std::vector<std::vector<double>> v;
    for (const glrec::Call& c : calls)
        if (c.name == "glVertex3d" || c.name == "glVertex3f")
            v.push_back({double(float(c.args[0])), c.args[1], c.args[2]});
    return v;
}

// Tracks in frame order with repeated times and gaps, beginning on either side of
// the view; views on either side of them and across them. Both walks start near
// the view, each its own way: they must join the same samples.
TEST_F(DrawStream, FastSendsTheSameSegments)
{
    graph.setProperty<int>("pointSize", 1);
    graph.offsetX = 3;
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> step(0, 2), valid(0, 9), start(-60, 60);
    for (uint32_t k = 0; k < 12; ++k) {
        QVector<TAV::Marker> ms;
        int64_t t = start(rng);
        for (int i = 0; i < 150; ++i, t += step(rng))
            ms.append(marker(t, float(i), float(k), float(-i), valid(rng) ? 1.f : 0.f));
        graph.tracks.append(takes::track(k, ms));
    }
    graph.trackOffsets[5] = Vector(1, 2, 3);

    int segments = 0;
    for (float left : {-100.f, -20.5f, -3.f, 0.f, 33.25f, 120.f, 400.f}) {
        for (float scale : {0.5f, 4.f}) {
            SCOPED_TRACE(testing::Message() << "left " << left << " scale " << scale);
            view.viewport.pos.x = left;
            view.viewport.scale.x = scale;
            graph.setProperty<bool>("fastDraw", false);
            const Calls exact = afterPoints(draw());
            graph.setProperty<bool>("fastDraw", true);
            const Calls fast = afterPoints(draw());
            EXPECT_EQ(vertices(fast), vertices(exact));
            EXPECT_LE(glrec::count(fast, "glBegin"), 1) << "all segments in one block";
            segments += glrec::count(exact, "glBegin");
        }
    }
    EXPECT_GT(segments, 500);
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
