// Whole paints, recorded call by call: points, lines, the region layer and the
// cursor in their state block, and the views that get no call at all.
#include "modules/core/sampleflags.h"
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <tuple>
#include <utility>

using takes::marker;
using takes::rigid;
using takes::track;

namespace {

struct PaintRow {
    const char* name;
    std::function<void(TAVGraph&, GLW&)> setup;
    Calls expected;
};
void PrintTo(const PaintRow& row, std::ostream* os) { *os << row.name; }

class Paint : public DrawStream, public testing::WithParamInterface<PaintRow> {};

TEST_P(Paint, SendsTheseCalls)
{
    GetParam().setup(graph, view);
    EXPECT_EQ(glrec::toString(draw()), glrec::toString(GetParam().expected));
}

const float nan = std::numeric_limits<float>::quiet_NaN();
const float inf = std::numeric_limits<float>::infinity();

// A view of 100 pixels over 100 frames, where the point size is half the frame period.
void sizes(TAVGraph& g, GLW& v, double period, int min, int max)
{
    v.rect = QRectF(0, 0, 100, 51);
    g.period = period;
    g.setProperty<int>("pointSizeMin", min);
    g.setProperty<int>("pointSizeMax", max);
}

// Two samples one frame apart, joined while a point adds little width.
void pair(TAVGraph& g, GLW& v, int pointSize, float scaleX, double period)
{
    g.setProperty<int>("pointSize", pointSize);
    g.period = period;
    v.viewport.scale.x = scaleX;
    g.tracks.append(track(0, {marker(0, 1, 1, 1), marker(1, 2, 2, 2)}));
}
const Calls pairPoints = point(0, {1, 1, 1}) + point(1, {2, 2, 2});
const Calls pairLine = segment(0, 1, {1, 1, 1}, {2, 2, 2});

// Runs over data from frame 0 to 100, which fills the default view.
void runs(TAVGraph& g, std::initializer_list<Pair> list)
{
    g.framesInfo.finish = 100;
    for (const Pair& p : list)
        g.regions.push_back(p);
}
const Calls outsideData{glrec::Color4f(0, 0, 0, 0.8f)};
const Calls workingRange{glrec::Color4f(0.3f, 0.3f, 0.3f, 0.7f)};

// Frame 1000 is x 0.
void cursorAt(TAVGraph& g, int64_t frame)
{
    g.offsetX = 1000;
    g.framesInfo.current = frame;
}

// Points as one array sends them: grey once, then the vertex of every axis.
Calls greyArray(std::initializer_list<std::pair<float, Vector>> points)
{
    Calls c{glrec::Color3f(0.8f, 0.8f, 0.8f)};
    for (const auto& [x, v] : points)
        for (int axis = 0; axis < 3; ++axis)
            c.push_back(glrec::Vertex3f(x, v[axis], 1));
    return c;
}

// A take that paints something of every kind, then a view spoilt so that nothing may be sent.
std::function<void(TAVGraph&, GLW&)> refused(void (*spoil)(GLW&))
{
    return [spoil](TAVGraph& g, GLW& v) {
        g.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6)}));
        g.regions.push_back(Pair(0, 1, 1));
        g.framesInfo = FramesInfo(0, 2, 0, 2, 1);
        spoil(v);
    };
}

// In the default view the filter's steps are 1.98 frames and 0.98 units, and a
// point of size 2 adds 0.99 frames: too wide for lines.
INSTANTIATE_TEST_SUITE_P(
    Rows, Paint,
    testing::Values(
        PaintRow{"RGBColoursTheMaskedAxesWherePointsAreDense",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("axisMask", 5);
                     g.setProperty<bool>("enableRGB", true);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}, {rigid(0, 4, 5, 6)}));
                 },
                 paint(2, point(0, {1, 2, 3}, 5, true) + point(0, {4, 5, 6}, 5, true, true))},
        // A point spans 0.2 frames: below "linesLODpx" 0.25, though not once the
        // period 0.5 scales it as the lines do.
        PaintRow{"RGBIsIgnoredWhenZoomedInWithoutThePeriod",
                 [](TAVGraph& g, GLW& v) {
                     g.setProperty<bool>("enableRGB", true);
                     g.period = 0.5;
                     v.viewport.scale.x = 10;
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}));
                 },
                 paint(2, point(0, {1, 2, 3}))},
        // Filled markers hide while filling is off, rigids never; a NaN condition
        // is not "zero or less".
        PaintRow{"OnlyValidSamplesAreDrawn",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("enableFill", false);
                     g.tracks.append(track(0,
                                           {marker(0, 1, 1, 1, 1, FilledFlag), marker(1, 2, 2, 2, 0), marker(2, 3, 3, 3, nan),
                                            marker(3, 4, 4, 4, 0.01f, 0x01), marker(4, 9, 9, 9, -1)},
                                           {rigid(0, 5, 5, 5, 1, FilledFlag)}));
                 },
                 paint(2, point(2, {3, 3, 3}) + point(3, {4, 4, 4}) + point(0, {5, 5, 5}, 7, false, true))},
        // 1: too close to the fresh filter's (0, 0); 3: one frame and 0.4 on. The
        // next track starts afresh: its 1 is too close again.
        PaintRow{"TheFilterKeepsPointsThatMovedFarEnoughFreshForEachTrack",
                 [](TAVGraph& g, GLW&) {
                     g.tracks.append(track(0, {marker(1, 0.5f, 0, 0), marker(2, 0.5f, 0, 0), marker(3, 0.9f, 0, 0),
                                               marker(4, 0.9f, 0, 0), marker(5, 5, 0, 0)}));
                     g.tracks.append(track(1, {marker(1, 0, 0, 0), marker(2, 0, 0, 0)}));
                 },
                 paint(2, point(2, {0.5f, 0, 0}) + point(4, {0.9f, 0, 0}) + point(5, {5, 0, 0}) + point(2, {0, 0, 0}))},
        PaintRow{"OffsetsComeFromEachKindsOwnMap",
                 [](TAVGraph& g, GLW&) {
                     g.trackOffsets[4] = Vector(1, 1, 1);
                     g.rbtrackOffsets[4] = Vector(2, 2, 2);
                     g.tracks.append(track(4, {marker(0, 5, 5, 5)}, {rigid(0, 5, 5, 5)}));
                 },
                 paint(2, point(0, {4, 4, 4}) + point(0, {3, 3, 3}, 7, false, true))},
        PaintRow{"OnlySelectedTracksOfEachKind",
                 [](TAVGraph& g, GLW&) {
                     g.markers = {1};
                     g.tracks.append(track(0, {marker(0, 1, 1, 1)}, {rigid(0, 1, 1, 1)}));
                     g.tracks.append(track(1, {marker(1, 2, 2, 2)}, {rigid(1, 2, 2, 2)}));
                 },
                 paint(2, point(1, {2, 2, 2}))},
        PaintRow{"XIsTimeLessTheOffsetIn32BitsAndPointsOutsideAreSent",
                 [](TAVGraph& g, GLW&) {
                     g.offsetX = 1000;
                     g.tracks.append(track(0, {marker(1003, 1, 1, 1), marker(5000, 2, 2, 2), marker(-7, 3, 3, 3),
                                               marker(1007 + (int64_t(1) << 32), 4, 4, 4)}));
                 },
                 paint(2, point(3, {1, 1, 1}) + point(4000, {2, 2, 2}) + point(-1007, {3, 3, 3}) + point(7, {4, 4, 4}))},
        PaintRow{"SizeIsHalfOfEightFrames", [](TAVGraph& g, GLW& v) { sizes(g, v, 8, 2, 5); }, paint(4, {})},
        PaintRow{"SizeLoweredToTheMaximum", [](TAVGraph& g, GLW& v) { sizes(g, v, 8333.3, 2, 5); }, paint(5, {})},
        PaintRow{"SizeMaximumWinsWhenTheBoundsCross", [](TAVGraph& g, GLW& v) { sizes(g, v, 1, 6, 4); }, paint(4, {})},
        PaintRow{"SizeOfAHugePeriodSaturates", [](TAVGraph& g, GLW& v) { sizes(g, v, 1e300, 2, 5); }, paint(5, {})},
        // With "pointSize" 1 a point adds no width and the filter lets every point through.
        // Equal times join nothing; an invalid sample breaks the line on both sides.
        // The last sample stays in the vector's memory, past its end.
        PaintRow{"JoinOnlyValidSamplesOfRisingTime",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("pointSize", 1);
                     g.tracks.append(track(0, {marker(0, 0, 0, 0), marker(1, 1, 1, 1), marker(1, 2, 2, 2),
                                               marker(2, 3, 3, 3), marker(3, 4, 4, 4, 0), marker(4, 5, 5, 5),
                                               marker(5, 6, 6, 6), marker(6, 7, 7, 7)}));
                     g.tracks[0].markers.resize(7);
                 },
                 paint(2,
                       point(0, {0, 0, 0}) + point(1, {1, 1, 1}) + point(1, {2, 2, 2}) + point(2, {3, 3, 3}) +
                           point(4, {5, 5, 5}) + point(5, {6, 6, 6}),
                       segment(0, 1, {0, 0, 0}, {1, 1, 1}) + segment(1, 2, {2, 2, 2}, {3, 3, 3}) +
                           segment(4, 5, {5, 5, 5}, {6, 6, 6}))},
        // Rigid lines take their offset from the marker offsets, by the first
        // sample's id; with "enableRGB" every drawn axis has its colour, however
        // wide the view. Rigid points keep their own offsets, without colours.
        PaintRow{"OfRigidsTakeTheMarkerOffsetOfTheFirstSamplesId",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("pointSize", 1);
                     g.setProperty<int>("axisMask", 5);
                     g.setProperty<bool>("enableRGB", true);
                     g.trackOffsets[2] = Vector(1, 1, 1);
                     g.rbtrackOffsets[2] = Vector(5, 5, 5);
                     g.trackOffsets[4] = Vector(9, 9, 9);
                     TAV::Frame f = track(2, {}, {rigid(0, 1, 2, 3), rigid(1, 4, 5, 6)});
                     f.rigids[1].id = 4;
                     g.tracks.append(f);
                 },
                 paint(2, point(0, {-4, -3, -2}, 5, false, true) + point(1, {4, 5, 6}, 5, false, true),
                       segment(0, 1, {0, 1, 2}, {3, 4, 5}, 5, true))},
        PaintRow{"PointSizeZeroCountsAsOne", [](TAVGraph& g, GLW& v) { pair(g, v, 0, 1, 1); }, paint(2, pairPoints, pairLine)},
        PaintRow{"WideViewHasNone", [](TAVGraph& g, GLW& v) { pair(g, v, 2, 1, 1); }, paint(2, pairPoints)},
        PaintRow{"ZoomedInHasThem", [](TAVGraph& g, GLW& v) { pair(g, v, 2, 10, 1); }, paint(4, pairPoints, pairLine)},
        PaintRow{"TheFramePeriodScalesTheThreshold", [](TAVGraph& g, GLW& v) { pair(g, v, 2, 1, 8); },
                 paint(4, pairPoints, pairLine)},
        // A point of size 3 adds 1.98 frames: too wide for outlines.
        PaintRow{"ThePeriodScalesRunsWhichAreOutlinedOnlyWhileAPointAddsLessThanAFrame",
                 [](TAVGraph& g, GLW&) {
                     g.period = 2;
                     g.setProperty<int>("pointSize", 3);
                     runs(g, {Pair(10, 12, 2)});
                 },
                 paint(2, {}, layer(run(19, 25, 0.3f, 0.3f, 0.3f, false) + outsideData))},
        PaintRow{"WithoutRunsThereIsNoLayer",
                 [](TAVGraph& g, GLW&) { g.framesInfo = FramesInfo(0, 50, 20, 40, -1000); },
                 paint(2, {})},
        PaintRow{"TheWorkingRangeShadesOutsideHeadAndTail",
                 [](TAVGraph& g, GLW&) {
                     runs(g, {Pair(0, 99, 1)});
                     g.framesInfo.head = 20;
                     g.framesInfo.tail = 40;
                 },
                 paint(2, {},
                       layer(workingRange + band(0, 19.8, 0) + band(40.2, 100, 0) + run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) +
                             outsideData))},
        // Less the offset -1, head overflows 64 bits and tail 32 bits: the low 32
        // bits of the exact differences are 0 and -2^31.
        PaintRow{"FarApartFrameNumbersDoNotOverflow",
                 [](TAVGraph& g, GLW&) {
                     runs(g, {Pair(0, 99, 1)});
                     g.offsetX = -1;
                     g.framesInfo.head = std::numeric_limits<int64_t>::max();
                     g.framesInfo.tail = std::numeric_limits<int32_t>::max();
                 },
                 paint(2, {},
                       layer(workingRange + band(std::numeric_limits<int32_t>::min() + 0.2, 100, 0) +
                             run(-0.5, 99.5, 0.345f, 0.6f, 0.85f) + outsideData + band(0, double(0.8f), 0.2)))},
        // The view shows x 50 to 150; the run from 161 is drawn and ends the loop.
        PaintRow{"RunsLeftOfTheViewAreSkippedAndTheFirstBeyondItEndsTheLoop",
                 [](TAVGraph& g, GLW& v) {
                     v.viewport.pos.x = 50;
                     runs(g, {Pair(0, 5, 1), Pair(6, 60, 2), Pair(61, 160, 4), Pair(161, 170, 8), Pair(171, 180, 1)});
                     g.framesInfo.finish = 200;
                 },
                 paint(2, {},
                       layer(run(5.5, 60.5, 0.3f, 0.3f, 0.3f) + run(60.5, 160.5, 0.8f, 0.6f, 0.3f) +
                             run(160.5, 170.5, 0.3f, 0.8f, 0.3f) + outsideData))},
        // Frame 1000 is x 0; the view shows x 0 to 100, both edges included.
        PaintRow{"CursorOnTheLeftEdge", [](TAVGraph& g, GLW&) { cursorAt(g, 1000); }, paint(2, {}, cursor(0))},
        PaintRow{"CursorOnTheRightEdge", [](TAVGraph& g, GLW&) { cursorAt(g, 1100); }, paint(2, {}, cursor(100))},
        PaintRow{"NoCursorLeftOfTheView", [](TAVGraph& g, GLW&) { cursorAt(g, 999); }, paint(2, {})},
        PaintRow{"NoCursorRightOfTheView", [](TAVGraph& g, GLW&) { cursorAt(g, 1101); }, paint(2, {})},
        // Runs cover half a period beyond their ends; the data ends at frame 3.
        PaintRow{"PointsLinesRunsAndCursorInOneStateBlock",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("pointSize", 1);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6), marker(2, 7, 8, 9)}));
                     g.regions.push_back(Pair(0, 2, 1));
                     g.framesInfo = FramesInfo(0, 3, 0, 0, 1);
                 },
                 paint(2, point(0, {1, 2, 3}) + point(1, {4, 5, 6}) + point(2, {7, 8, 9}),
                       segment(0, 1, {1, 2, 3}, {4, 5, 6}) + segment(1, 2, {4, 5, 6}, {7, 8, 9}) +
                           layer(run(-0.5, 2.5, 0.345f, 0.6f, 0.85f) + outsideData + band(double(3.2f), 100, 0.2)) +
                           cursor(1))},
        PaintRow{"RefusedWithoutVisible", refused([](GLW& v) { v.setProperty("visible", QVariant()); }), {}},
        PaintRow{"RefusedAtZeroHeight", refused([](GLW& v) { v.rect.setHeight(0); }), {}},
        PaintRow{"RefusedBelowOnePixelWide", refused([](GLW& v) { v.rect.setWidth(0.5); }), {}},
        PaintRow{"RefusedAtNaNWidth", refused([](GLW& v) { v.rect.setWidth(double(nan)); }), {}},
        PaintRow{"RefusedAtZeroScaleX", refused([](GLW& v) { v.viewport.scale.x = 0; }), {}},
        PaintRow{"RefusedAtAnInfinitePosition", refused([](GLW& v) { v.viewport.pos.y = -inf; }), {}},
        // "fastDraw" without a depth buffer to cull against sends the same points
        // in one array. The filter's state where the view's window begins (x 48:
        // the left edge 50 less half a point and a pixel) is only sometimes certain;
        // every way into the window must leave it where the whole walk would.
        PaintRow{"FastStartsTheFilterWhereTheWholeWalkWouldHaveIt",
                 [](TAVGraph& g, GLW& v) {
                     g.setProperty<bool>("fastDraw", true);
                     v.viewport.pos.x = 50;
                     // 47 moved 7 frames from 40: certainly kept. So 48 is too close and 49 is not.
                     // 153 is beyond the window, which ends at 152.
                     g.tracks.append(track(0, {marker(40, 0, 0, 0), marker(47, 0, 0, 0), marker(48, 0.5f, 0, 0),
                                               marker(49, 0.6f, 0, 0), marker(153, 9, 9, 9)}));
                     // 47 is the only valid sample before the window: the fresh filter keeps it.
                     g.tracks.append(track(1, {marker(3, 9, 9, 9, 0), marker(47, 0, 0, 0), marker(48, 0.5f, 0, 0)}));
                     // 47 is one frame after 46: uncertain, the walk starts at 44 (keeps 44, 46).
                     g.tracks.append(track(2, {marker(44, 3, 3, 3), marker(45, 3, 3, 3), marker(46, 3.5f, 3, 3),
                                               marker(47, 3.6f, 3, 3), marker(48, 3.7f, 3, 3)}));
                     // 47's only shown predecessor is one frame back: uncertain, the walk starts at
                     // 46 and keeps 48, two frames on.
                     g.tracks.append(track(5, {marker(46, 6, 6, 6), marker(47, 6, 6, 6), marker(48, 6, 6, 6)}));
                     // A negative x before the window: the walk starts at the beginning.
                     g.tracks.append(track(3, {marker(-5, 4, 4, 4), marker(47, 4, 4, 4), marker(48, 4.2f, 4, 4)}));
                     // Nothing valid before the window: a fresh filter there.
                     g.tracks.append(track(4, {marker(10, 5, 5, 5, 0), marker(48, 5, 5, 5)}));
                 },
                 paint(2, greyArray({{49, {0.6f, 0, 0}}, {48, {3.7f, 3, 3}}, {48, {6, 6, 6}}, {48, {5, 5, 5}}}))}),
    [](const testing::TestParamInfo<PaintRow>& i) { return std::string(i.param.name); });

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

} // namespace
