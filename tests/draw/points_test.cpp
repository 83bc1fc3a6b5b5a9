// The points block of a paint, recorded call by call.
#include "modules/core/sampleflags.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <cstdint>
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

using Points = DrawRows<PointRow>;

// In the default view the filter's steps are 1.98 frames and 0.98 units.
TEST_P(Points, SendsTheseVerticesInOneBlock)
{
    GetParam().setup(graph, view);
    EXPECT_EQ(glrec::toString(pointsPart(draw())), glrec::toString(pointsBlock(GetParam().size, GetParam().points)));
}

const float nan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Rows, Points,
    testing::Values(
        PointRow{"RGBColoursTheMaskedAxesWherePointsAreDense",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<int>("axisMask", 5);
                     g.setProperty<bool>("enableRGB", true);
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}, {rigid(0, 4, 5, 6)}));
                 },
                 point(0, {1, 2, 3}, 5, true) + point(0, {4, 5, 6}, 5, true, true)},
        // A point spans 0.2 frames: below "linesLODpx" 0.25, though not once the
        // period 0.5 scales it as the lines do.
        PointRow{"RGBIsIgnoredWhenZoomedInWithoutThePeriod",
                 [](TAVGraph& g, GLW& v) {
                     g.setProperty<bool>("enableRGB", true);
                     g.period = 0.5;
                     v.viewport.scale.x = 10;
                     g.tracks.append(track(0, {marker(0, 1, 2, 3)}));
                 },
                 point(0, {1, 2, 3})},
        // Filled markers hide while filling is off, rigids never; a NaN condition
        // is not "zero or less".
        PointRow{"OnlyValidSamplesAreDrawn",
                 [](TAVGraph& g, GLW&) {
                     g.setProperty<bool>("enableFill", false);
                     g.tracks.append(track(0,
                                           {marker(0, 1, 1, 1, 1, FilledFlag), marker(1, 2, 2, 2, 0), marker(2, 3, 3, 3, nan),
                                            marker(3, 4, 4, 4, 0.01f, 0x01), marker(4, 9, 9, 9, -1)},
                                           {rigid(0, 5, 5, 5, 1, FilledFlag)}));
                 },
                 point(2, {3, 3, 3}) + point(3, {4, 4, 4}) + point(0, {5, 5, 5}, 7, false, true)},
        // 1: too close to the fresh filter's (0, 0); 3: one frame and 0.4 on. The
        // next track starts afresh: its 1 is too close again.
        PointRow{"TheFilterKeepsPointsThatMovedFarEnoughFreshForEachTrack",
                 [](TAVGraph& g, GLW&) {
                     g.tracks.append(track(0, {marker(1, 0.5f, 0, 0), marker(2, 0.5f, 0, 0), marker(3, 0.9f, 0, 0),
                                               marker(4, 0.9f, 0, 0), marker(5, 5, 0, 0)}));
                     g.tracks.append(track(1, {marker(1, 0, 0, 0), marker(2, 0, 0, 0)}));
                 },
                 point(2, {0.5f, 0, 0}) + point(4, {0.9f, 0, 0}) + point(5, {5, 0, 0}) + point(2, {0, 0, 0})},
        PointRow{"OffsetsComeFromEachKindsOwnMap",
                 [](TAVGraph& g, GLW&) {
                     g.trackOffsets[4] = Vector(1, 1, 1);
                     g.rbtrackOffsets[4] = Vector(2, 2, 2);
                     g.tracks.append(track(4, {marker(0, 5, 5, 5)}, {rigid(0, 5, 5, 5)}));
                 },
                 point(0, {4, 4, 4}) + point(0, {3, 3, 3}, 7, false, true)},
        PointRow{"OnlySelectedTracksOfEachKind",
                 [](TAVGraph& g, GLW&) {
                     g.markers = {1};
                     g.tracks.append(track(0, {marker(0, 1, 1, 1)}, {rigid(0, 1, 1, 1)}));
                     g.tracks.append(track(1, {marker(1, 2, 2, 2)}, {rigid(1, 2, 2, 2)}));
                 },
                 point(1, {2, 2, 2})},
        PointRow{"XIsTimeLessTheOffsetIn32BitsAndPointsOutsideAreSent",
                 [](TAVGraph& g, GLW&) {
                     g.offsetX = 1000;
                     g.tracks.append(track(0, {marker(1003, 1, 1, 1), marker(5000, 2, 2, 2), marker(-7, 3, 3, 3),
                                               marker(1007 + (int64_t(1) << 32), 4, 4, 4)}));
                 },
                 point(3, {1, 1, 1}) + point(4000, {2, 2, 2}) + point(-1007, {3, 3, 3}) + point(7, {4, 4, 4})}),
    RowName());

struct SizeRow {
    const char* name;
    double period;
    int min, max;
    float size;
};
void PrintTo(const SizeRow& row, std::ostream* os) { *os << row.name; }

using PointSize = DrawRows<SizeRow>;

// A view of 100 pixels over 100 frames: the size is half the frame period.
TEST_P(PointSize, IsHalfAFramePeriodWithinItsBounds)
{
    view.rect = QRectF(0, 0, 100, 51);
    graph.period = GetParam().period;
    graph.setProperty<int>("pointSizeMin", GetParam().min);
    graph.setProperty<int>("pointSizeMax", GetParam().max);
    const Calls c = pointsPart(draw());
    ASSERT_FALSE(c.empty());
    EXPECT_EQ(c.front(), glrec::PointSize(GetParam().size));
}

INSTANTIATE_TEST_SUITE_P(Rows, PointSize,
                         testing::Values(SizeRow{"HalfOfEightFrames", 8, 2, 5, 4},
                                         SizeRow{"RaisedToTheMinimum", 1, 2, 5, 2},
                                         SizeRow{"LoweredToTheMaximum", 8333.3, 2, 5, 5},
                                         SizeRow{"MaximumWinsWhenTheBoundsCross", 1, 6, 4, 4},
                                         SizeRow{"HugePeriodSaturates", 1e300, 2, 5, 5}),
                         RowName());

} // namespace
