// A whole paint: its order, the views it refuses, and what it leaves shared.
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <functional>
#include <limits>

using takes::marker;
using takes::track;

namespace {

// Runs cover half a period beyond their ends; the data ends at frame 3.
TEST_F(DrawStream, PaintsPointsLinesRunsAndCursorInOneStateBlock)
{
    graph.setProperty<int>("pointSize", 1);
    graph.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6), marker(2, 7, 8, 9)}));
    graph.regions.push_back(Pair(0, 2, 1));
    graph.framesInfo = FramesInfo(0, 3, 0, 0, 1);

    const Calls points = point(0, {1, 2, 3}) + point(1, {4, 5, 6}) + point(2, {7, 8, 9});
    const Calls lines = segment(0, 1, {1, 2, 3}, {4, 5, 6}) + segment(1, 2, {4, 5, 6}, {7, 8, 9});
    const Calls runs = layer(run(-0.5, 2.5, 0.345f, 0.6f, 0.85f) + Calls{glrec::Color4f(0, 0, 0, 0.8f)} +
                             band(double(3.2f), 100, 0.2));
    const Calls cursor{glrec::Color3f(1, 1, 1), glrec::Begin(GL_LINES), glrec::Vertex3d(1, 25, 0.2),
                       glrec::Vertex3d(1, -25, 0.2), glrec::End()};

    EXPECT_EQ(glrec::toString(draw()), glrec::toString(opening() + pointsBlock(2, points) + lines + runs + cursor +
                                                       Calls{glrec::PopAttrib()}));
}

struct RefusedRow {
    const char* name;
    std::function<void(GLW&)> spoil;
};
void PrintTo(const RefusedRow& row, std::ostream* os) { *os << row.name; }

using Refused = DrawRows<RefusedRow>;

// Everything a paint could draw is in the view, yet nothing at all is sent.
TEST_P(Refused, ViewGetsNoCallAtAll)
{
    graph.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6)}));
    graph.regions.push_back(Pair(0, 1, 1));
    graph.framesInfo = FramesInfo(0, 2, 0, 2, 1);
    ASSERT_FALSE(draw().empty());

    GetParam().spoil(view);
    EXPECT_EQ(glrec::toString(draw()), "");
}

const float inf = std::numeric_limits<float>::infinity();
const float nan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Rows, Refused,
    testing::Values(RefusedRow{"WithoutVisible", [](GLW& v) { v.setProperty("visible", QVariant()); }},
                    RefusedRow{"ZeroHeight", [](GLW& v) { v.rect.setHeight(0); }},
                    RefusedRow{"WidthBelowOnePixel", [](GLW& v) { v.rect.setWidth(0.5); }},
                    RefusedRow{"NaNWidth", [](GLW& v) { v.rect.setWidth(double(nan)); }},
                    RefusedRow{"ZeroScaleX", [](GLW& v) { v.viewport.scale.x = 0; }},
                    RefusedRow{"InfinitePosition", [](GLW& v) { v.viewport.pos.y = -inf; }}),
    RowName());

// The graph's store shares its frames with the host's; painting reads it only.
TEST_F(DrawStream, PaintingLeavesTheHostsStoreShared)
{
    TAV::Frames host = takes::generated({});
    graph.markers = {0, 1};
    graph.SetTracks(&host);
    ASSERT_TRUE(graph.tracks.isSharedWith(host));
    view.viewport.pos.x = 1000;
    view.viewport.scale.x = 8;
    for (bool fast : {false, true}) {
        graph.setProperty<bool>("fastDraw", fast);
        draw();
        EXPECT_TRUE(graph.tracks.isSharedWith(host)) << (fast ? "fast" : "exact");
    }
}

TEST_F(DrawStream, FastDrawIsOffUntilAHostSetsIt)
{
    EXPECT_FALSE(graph.property("fastDraw").isValid());
}

} // namespace
