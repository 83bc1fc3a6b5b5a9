// The region layer and the cursor of a paint, recorded call by call.
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <tuple>

namespace {

// The region layer of a paint: its own attribute block, or nothing.
Calls regionLayer(const Calls& c)
{
    const int a = nth(c, "glPushAttrib", 1), b = nth(c, "glPopAttrib", 0);
    return a < 0 || b < 0 ? Calls{} : slice(c, a, b + 1);
}

const Calls outsideData{glrec::Color4f(0, 0, 0, 0.8f)};
const Calls workingRange{glrec::Color4f(0.3f, 0.3f, 0.3f, 0.7f)};

struct RegionRow {
    const char* name;
    std::function<void(TAVGraph&, GLW&)> setup;
    Calls layer; // empty: no region layer at all
};
void PrintTo(const RegionRow& row, std::ostream* os) { *os << row.name; }

// Data from frame 0 to 100 fills the default view, so by default nothing lies outside it.
class RegionLayer : public DrawRows<RegionRow> {
protected:
    void SetUp() override
    {
        DrawStream::SetUp();
        graph.framesInfo.finish = 100;
    }
};

TEST_P(RegionLayer, SendsTheseCalls)
{
    GetParam().setup(graph, view);
    EXPECT_EQ(glrec::toString(regionLayer(draw())), glrec::toString(GetParam().layer));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RegionLayer,
    testing::Values(
        // A point of size 3 adds 1.98 frames: too wide for outlines.
        RegionRow{"ThePeriodScalesRunsWhichAreOutlinedOnlyWhileAPointAddsLessThanAFrame",
                  [](TAVGraph& g, GLW&) {
                      g.period = 2;
                      g.setProperty<int>("pointSize", 3);
                      g.regions.push_back(Pair(10, 12, 2));
                  },
                  layer(run(19, 25, 0.3f, 0.3f, 0.3f, false) + outsideData)},
        RegionRow{"WithoutRunsThereIsNoLayer",
                  [](TAVGraph& g, GLW&) {
                      g.framesInfo.head = 20;
                      g.framesInfo.tail = 40;
                      g.framesInfo.finish = 50;
                  },
                  Calls{}},
        RegionRow{"TheWorkingRangeShadesOutsideHeadAndTail",
                  [](TAVGraph& g, GLW&) {
                      g.framesInfo.head = 20;
                      g.framesInfo.tail = 40;
                      g.regions.push_back(Pair(0, 99, 1));
                  },
                  layer(workingRange + band(0, 19.8, 0) + band(40.2, 100, 0) + run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) +
                        outsideData)},
        // Less the offset -1, head overflows 64 bits and tail 32 bits: the low 32
        // bits of the exact differences are 0 and -2^31.
        RegionRow{"FarApartFrameNumbersDoNotOverflow",
                  [](TAVGraph& g, GLW&) {
                      g.offsetX = -1;
                      g.framesInfo.head = std::numeric_limits<int64_t>::max();
                      g.framesInfo.tail = std::numeric_limits<int32_t>::max();
                      g.regions.push_back(Pair(0, 99, 1));
                  },
                  layer(workingRange + band(std::numeric_limits<int32_t>::min() + 0.2, 100, 0) +
                        run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) + outsideData + band(0, double(0.8f), 0.2))},
        // The view shows x 50 to 150; the run from 161 is drawn and ends the loop.
        RegionRow{"RunsLeftOfTheViewAreSkippedAndTheFirstBeyondItEndsTheLoop",
                  [](TAVGraph& g, GLW& v) {
                      v.viewport.pos.x = 50;
                      g.framesInfo.finish = 200;
                      for (const Pair& p : {Pair(0, 5, 1), Pair(6, 60, 2), Pair(61, 160, 4), Pair(161, 170, 8),
                                            Pair(171, 180, 1)})
                          g.regions.push_back(p);
                  },
                  layer(run(5.5, 60.5, 0.3f, 0.3f, 0.3f) + run(60.5, 160.5, 0.8f, 0.6f, 0.3f) +
                        run(160.5, 170.5, 0.3f, 0.8f, 0.3f) + outsideData)}),
    RowName());

// The shades of mixed types; single types are in the rows above.
TEST(TypeColour, ShadesMixedTypesByTheirFirstMatchingRule)
{
    const auto rgb = [](int type) {
        const ColorRGB c = typeColor(type);
        return std::make_tuple(c.r, c.g, c.b);
    };
    EXPECT_EQ(rgb(0x18), std::make_tuple(0.3f, 0.8f, 0.3f)) << "poor wins over mixed";
    EXPECT_EQ(rgb(0x14), std::make_tuple(0.6f, 0.4f, 0.1f)) << "mixed and fair";
    EXPECT_EQ(rgb(0x12), std::make_tuple(0.5f, 0.5f, 0.5f)) << "mixed";
    EXPECT_EQ(rgb(5), std::make_tuple(0.6f, 0.4f, 0.6f)) << "good and fair";
    EXPECT_EQ(rgb(0), std::make_tuple(0.6f, 0.4f, 0.6f)) << "no type";
}

// Frame 1000 is x 0; the view shows x 0 to 100, both edges included. With no
// tracks and no runs, what follows the points block is the cursor alone.
TEST_F(DrawStream, DrawsTheCursorAsAWhiteLineWhereTheViewShowsIt)
{
    graph.offsetX = 1000;
    for (int64_t current : {999, 1000, 1100, 1101}) {
        graph.framesInfo.current = current;
        const double x = double(current - 1000);
        const Calls line{glrec::Color3f(1, 1, 1), glrec::Begin(GL_LINES), glrec::Vertex3d(x, 25, 0.2),
                         glrec::Vertex3d(x, -25, 0.2), glrec::End()};
        EXPECT_EQ(glrec::toString(afterPoints(draw())), glrec::toString(x >= 0 && x <= 100 ? line : Calls{}))
            << "frame " << current;
    }
}

} // namespace
