// The region layer and the cursor of a paint, recorded call by call.
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"

#include <cstdint>
#include <functional>
#include <limits>

namespace {

// The region layer of a paint: its own attribute block, or nothing.
Calls regionLayer(const Calls& c)
{
    const int a = nth(c, "glPushAttrib", 1), b = nth(c, "glPopAttrib", 0);
    return a < 0 || b < 0 ? Calls{} : slice(c, a, b + 1);
}

Calls layer(const Calls& inner)
{
    return Calls{glrec::PushAttrib(GL_ALL_ATTRIB_BITS), glrec::PolygonMode(GL_FRONT, GL_FILL)} + inner +
           Calls{glrec::PopAttrib()};
}

// A run in the default view (y from -25 to 25), filled and maybe outlined.
Calls run(double t0, double t1, float r, float g, float b, bool outline = true)
{
    Calls c = Calls{glrec::Color4f(1, 1, 1, 0.5f), glrec::Color4f(r, g, b, 0.5f)} + band(t0, t1, 25, -25, 0);
    if (outline)
        c = c + Calls{glrec::Color4f(0.3f, 0.3f, 0.5f, 0.8f), glrec::Begin(GL_LINES), glrec::Vertex3d(t0, 25, 0.1),
                      glrec::Vertex3d(t0, -25, 0.1), glrec::Vertex3d(t1, -25, 0.1), glrec::Vertex3d(t1, 25, 0.1),
                      glrec::End()};
    return c;
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
class RegionLayer : public DrawStream, public testing::WithParamInterface<RegionRow> {
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
        RegionRow{"ARunCoversHalfAPeriodBeyondItsEnds",
                  [](TAVGraph& g, GLW&) { g.regions.push_back(Pair(10, 12, 1)); },
                  layer(run(9.5, 12.5, 0.345f, 0.6f, 0.85f) + outsideData)},
        RegionRow{"TheFramePeriodScalesRuns",
                  [](TAVGraph& g, GLW&) {
                      g.period = 2;
                      g.regions.push_back(Pair(10, 12, 2));
                  },
                  layer(run(19, 25, 0.3f, 0.3f, 0.3f) + outsideData)},
        RegionRow{"OutlinesOnlyWhileAPointAddsLessThanAFrame",
                  [](TAVGraph& g, GLW&) {
                      g.setProperty<int>("pointSize", 3);
                      g.regions.push_back(Pair(10, 12, 4));
                  },
                  layer(run(9.5, 12.5, 0.8f, 0.6f, 0.3f, false) + outsideData)},
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
                  layer(workingRange + band(0, 19.8, 25, -25, 0) + band(40.2, 100, 25, -25, 0) +
                        run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) + outsideData)},
        RegionRow{"FarApartFrameNumbersDoNotOverflow",
                  [](TAVGraph& g, GLW&) {
                      g.offsetX = -1;
                      g.framesInfo.head = std::numeric_limits<int64_t>::max(); // less -1: low half 0
                      g.framesInfo.tail = std::numeric_limits<int64_t>::min(); // less -1: low half 1
                      g.regions.push_back(Pair(0, 99, 1));
                  },
                  layer(workingRange + band(1.2, 100, 25, -25, 0) + run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) +
                        outsideData + band(0, double(0.8f), 25, -25, 0.2))},
        RegionRow{"OutsideTheDataOnBothSides",
                  [](TAVGraph& g, GLW& v) {
                      v.viewport.pos.x = -10;
                      g.offsetX = 1000;
                      g.framesInfo = FramesInfo(1000, 1050, 1000, 1000);
                      g.regions.push_back(Pair(0, 49, 1));
                  },
                  layer(run(-0.5, 49.5, 0.345f, 0.6f, 0.85f) + outsideData + band(-10, double(-0.2f), 25, -25, 0.2) +
                        band(double(50.2f), 90, 25, -25, 0.2))},
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
    [](const testing::TestParamInfo<RegionRow>& i) { return std::string(i.param.name); });

struct ColourRow {
    const char* name;
    int type;
    ColorRGB colour;
};
void PrintTo(const ColourRow& row, std::ostream* os) { *os << row.name; }

class TypeColour : public testing::TestWithParam<ColourRow> {};

TEST_P(TypeColour, ShadesTheRunType)
{
    const ColorRGB c = typeColor(GetParam().type);
    EXPECT_EQ(c.r, GetParam().colour.r);
    EXPECT_EQ(c.g, GetParam().colour.g);
    EXPECT_EQ(c.b, GetParam().colour.b);
}

INSTANTIATE_TEST_SUITE_P(Rows, TypeColour,
                         testing::Values(ColourRow{"Good", 1, {0.345f, 0.6f, 0.85f}},
                                         ColourRow{"Missing", 2, {0.3f, 0.3f, 0.3f}},
                                         ColourRow{"Fair", 4, {0.8f, 0.6f, 0.3f}},
                                         ColourRow{"Poor", 8, {0.3f, 0.8f, 0.3f}},
                                         ColourRow{"PoorWinsOverMixed", 0x18, {0.3f, 0.8f, 0.3f}},
                                         ColourRow{"MixedFair", 0x14, {0.6f, 0.4f, 0.1f}},
                                         ColourRow{"Mixed", 0x12, {0.5f, 0.5f, 0.5f}},
                                         ColourRow{"GoodAndFair", 5, {0.6f, 0.4f, 0.6f}},
                                         ColourRow{"GoodAndMissing", 3, {0.6f, 0.4f, 0.6f}},
                                         ColourRow{"NoType", 0, {0.6f, 0.4f, 0.6f}}),
                         [](const testing::TestParamInfo<ColourRow>& i) { return std::string(i.param.name); });

struct CursorRow {
    const char* name;
    int64_t current;
    bool drawn;
    double x;
};
void PrintTo(const CursorRow& row, std::ostream* os) { *os << row.name; }

class Cursor : public DrawStream, public testing::WithParamInterface<CursorRow> {};

// The view shows x 0 to 100; frame 1000 is x 0. With no tracks and no runs, what
// follows the points block is the cursor alone.
TEST_P(Cursor, IsAWhiteLineWhereTheViewShowsIt)
{
    graph.offsetX = 1000;
    graph.framesInfo.current = GetParam().current;
    const Calls expected = GetParam().drawn ? Calls{glrec::Color3f(1, 1, 1), glrec::Begin(GL_LINES),
                                                    glrec::Vertex3d(GetParam().x, 25, 0.2),
                                                    glrec::Vertex3d(GetParam().x, -25, 0.2), glrec::End()}
                                            : Calls{};
    EXPECT_EQ(glrec::toString(afterPoints(draw())), glrec::toString(expected));
}

INSTANTIATE_TEST_SUITE_P(Rows, Cursor,
                         testing::Values(CursorRow{"OnTheLeftEdge", 1000, true, 0},
                                         CursorRow{"OnTheRightEdge", 1100, true, 100},
                                         CursorRow{"Inside", 1042, true, 42},
                                         CursorRow{"OneLeftOfTheView", 999, false, 0},
                                         CursorRow{"OneRightOfTheView", 1101, false, 0}),
                         [](const testing::TestParamInfo<CursorRow>& i) { return std::string(i.param.name); });

} // namespace
