// What a kept fast paint must have read the same to be replayed.
#include "GL/glw.h"
#include "modules/paintcache.h"
#include "tests/draw/takes.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

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
