// The points block of a paint, recorded call by call.
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <functional>
#include <limits>

using takes::marker;
using takes::rigid;
using takes::track;

namespace {

struct PointRow {
    const char* name;
    std::function<void(TAVGraph&, GLW&)> setup;
    Calls points; // between glBegin(GL_POINTS) and glEnd()
    float size = 2;
};
void PrintTo(const PointRow& row, std::ostream* os) { *os << row.name; }

class Points : public DrawStream, public testing::WithParamInterface<PointRow> {};

// In the default view a point is 2 x 1.98 frames wide and 0.98 units high for the
// filter, colours per axis apply and the point size is raised to its minimum 2.
TEST_P(Points, SendsTheseVerticesInOneBlock)
{
    GetParam().setup(graph, view);
    EXPECT_EQ(glrec::toString(pointsPart(draw())), glrec::toString(pointsBlock(GetParam().size, GetParam().points)));
}

const float nan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Rows, Points,
    testing::Values(
        PointRow{"MarkersAreGreyOnEveryAxis",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6)}));
                 },
                 point(0, {1, 2, 3}) + point(1, {4, 5, 6})},
        PointRow{"RigidBodiesAddTheirColourWithItsRedOfEight",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.tracks.append(track(0, {}, {rigid(3, 1, 2, 3)}));
                 },
                 point(3, {1, 2, 3}, 7, false, true)},
        PointRow{"RGBColoursEachAxisWhereThePointsAreDense",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.setProperty<bool>("enableRGB", true);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}, {rigid(0, 4, 5, 6)}));
                 },
                 point(0, {1, 2, 3}, 7, true) + point(0, {4, 5, 6}, 7, true, true)},
        PointRow{"RGBIsIgnoredWhenZoomedIn",
                 [](TAVGraph& g, GLW& v) {
                     g.setProperty<bool>("LOD", false);
                     g.setProperty<bool>("enableRGB", true);
                     v.viewport.scale.x = 10; // 2 x 10 / 101 frames per point: below "linesLODpx"
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}));
                 },
                 point(0, {1, 2, 3}), 4},
        PointRow{"FilledMarkersHideWithoutFillRigidsNever",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.setProperty<bool>("enableFill", false);
                     g.tracks.append(track(0, {marker(0, 1, 1, 1, 1, 0x10), marker(1, 2, 2, 2, 1, 0x01)},
                                           {rigid(0, 3, 3, 3, 1, 0x10)}));
                 },
                 point(1, {2, 2, 2}) + point(0, {3, 3, 3}, 7, false, true)},
        PointRow{"SamplesWithoutPositiveConditionAreSkipped",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.tracks.append(track(0, {marker(0, 1, 1, 1, 0), marker(1, 2, 2, 2, -1), marker(2, 3, 3, 3, nan),
                                               marker(3, 4, 4, 4, 0.01f)}));
                 },
                 // NaN is not "zero or less": such a sample is drawn.
                 point(2, {3, 3, 3}) + point(3, {4, 4, 4})},
        PointRow{"TheFilterKeepsPointsThatMovedFarEnough",
                 [](TAVGraph& g, GLW&) {
                     g.tracks.append(track(0, {marker(1, 0.5f, 0, 0), marker(2, 0.5f, 0, 0), marker(3, 0.9f, 0, 0),
                                               marker(4, 0.9f, 0, 0), marker(5, 5, 0, 0)}));
                 },
                 // 1: too close to the fresh filter's (0, 0); 3: one frame and 0.4 on.
                 point(2, {0.5f, 0, 0}) + point(4, {0.9f, 0, 0}) + point(5, {5, 0, 0})},
        PointRow{"EveryTrackStartsAFreshFilter",
                 [](TAVGraph& g, GLW&) {
                     g.tracks.append(track(0, {marker(2, 0, 0, 0), marker(3, 0, 0, 0)}, {rigid(1, 0, 0, 0)}));
                     g.tracks.append(track(1, {marker(1, 0, 0, 0), marker(2, 0, 0, 0)}));
                 },
                 point(2, {0, 0, 0}) + point(2, {0, 0, 0})},
        PointRow{"PointSizeOneLetsEverythingThrough",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("pointSize", 1);
                     g.tracks.append(track(0, {marker(0, 0, 0, 0), marker(0, 0, 0, 0), marker(1, 0, 0, 0)}));
                 },
                 point(0, {0, 0, 0}) + point(0, {0, 0, 0}) + point(1, {0, 0, 0})},
        PointRow{"AxisMaskChoosesTheAxes",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.setProperty<int>("axisMask", 5);
                     g.setProperty<bool>("enableRGB", true);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}));
                 },
                 point(0, {1, 2, 3}, 5, true)},
        PointRow{"OffsetsComeFromEachKindsOwnMap",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.trackOffsets[4] = Vector(1, 1, 1);
                     g.rbtrackOffsets[4] = Vector(2, 2, 2);
                     g.tracks.append(track(4, {marker(0, 5, 5, 5)}, {rigid(0, 5, 5, 5)}));
                 },
                 point(0, {4, 4, 4}) + point(0, {3, 3, 3}, 7, false, true)},
        PointRow{"OnlySelectedTracksOfEachKind",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.markers = {1};
                     g.tracks.append(track(0, {marker(0, 1, 1, 1)}, {rigid(0, 1, 1, 1)}));
                     g.tracks.append(track(1, {marker(1, 2, 2, 2)}, {rigid(1, 2, 2, 2)}));
                 },
                 point(1, {2, 2, 2})},
        PointRow{"XIsTimeLessTheFrameOffsetAndPointsOutsideAreSent",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.offsetX = 1000;
                     g.tracks.append(track(0, {marker(1003, 1, 1, 1), marker(5000, 2, 2, 2), marker(-7, 3, 3, 3)}));
                 },
                 point(3, {1, 1, 1}) + point(4000, {2, 2, 2}) + point(-1007, {3, 3, 3})},
        PointRow{"XIsNarrowedTo32Bits",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("LOD", false);
                     g.tracks.append(track(0, {marker((int64_t(1) << 32) + 7, 1, 1, 1)}));
                 },
                 point(7, {1, 1, 1})}),
    [](const testing::TestParamInfo<PointRow>& i) { return std::string(i.param.name); });

struct SizeRow {
    const char* name;
    double period;
    int min, max;
    float size;
};
void PrintTo(const SizeRow& row, std::ostream* os) { *os << row.name; }

class PointSize : public DrawStream, public testing::WithParamInterface<SizeRow> {};

// A view of 100 pixels over 100 frames: the size is half the frame period.
TEST_P(PointSize, IsHalfAFramePeriodWithinItsBounds)
{
    const SizeRow& row = GetParam();
    view.rect = QRectF(0, 0, 100, 51);
    graph.period = row.period;
    graph.setProperty<int>("pointSizeMin", row.min);
    graph.setProperty<int>("pointSizeMax", row.max);
    const Calls c = draw();
    ASSERT_FALSE(c.empty());
    EXPECT_EQ(glrec::toString(pointsPart(c).front()), glrec::toString(glrec::PointSize(row.size)));
}

INSTANTIATE_TEST_SUITE_P(Rows, PointSize,
                         testing::Values(SizeRow{"HalfOfEightFrames", 8, 2, 5, 4},
                                         SizeRow{"RaisedToTheMinimum", 1, 2, 5, 2},
                                         SizeRow{"LoweredToTheMaximum", 8333.3, 2, 5, 5},
                                         SizeRow{"MaximumWinsWhenTheBoundsCross", 1, 6, 4, 4},
                                         SizeRow{"MaximumWinsFromAboveToo", 100, 6, 4, 4},
                                         SizeRow{"HugePeriodSaturates", 1e300, 2, 5, 5},
                                         SizeRow{"NegativeHugePeriodSaturates", -1e300, 2, 5, 2},
                                         SizeRow{"NaNPeriodGivesZero", std::nan(""), 2, 5, 2}),
                         [](const testing::TestParamInfo<SizeRow>& i) { return std::string(i.param.name); });

} // namespace
