#include "graphfixture.h"

#include <QString>

namespace {

std::string rectText(const QRectF& r)
{
    return QString("x %1 top %2 w %3 h %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
}

// Marker track 1: samples at x 0..3, the one at 2 invalid; coordinates from -2 to 3.
// Rigid track 2: one valid sample at x 1 reaching y 20.
TAV::Frames rangeTracks()
{
    TAV::Frame markers;
    markers.id = 1;
    markers.markers = {{1, 0, 0, -2, 0, 1, 1}, {1, 0, 1, 3, 1, 0, 1}, {1, 0, 2, 50, 50, 50, 0}, {1, 0, 3, 1, 1, 1, 1}};
    TAV::Frame rigids;
    rigids.id = 2;
    rigids.rigids = {{2, 0, 0, {-40, 0, 0, 0, 0, 0, 1}, 0}, {2, 0, 1, {0, 20, 0, 0, 0, 0, 1}, 1}};
    return makeTracks({markers, rigids});
}

TEST(Range2D, GrowsTheRectangle)
{
    const FramesInfo takeAt1000(1000, 1100, 1010, 1020, 1000, 100.0f);
    const FramesInfo fourFrames(0, 4, 0, 0, 0, 100.0f);
    const QRectF flat(0, 7, 0, -4);
    const struct {
        const char* name;
        FramesInfo info;
        qint64 selectStart, selectEnd;
        bool modifyRegion;
        int mode;
        QRectF in, expected;
        bool enableRigids = true;
        QList<int> rigids = {};
    } rows[] = {
        {"Mode0HeadTailWithoutModifyRegion", takeAt1000, 0, 0, false, 0, flat, QRectF(10, 7, 10, -4)},
        {"Mode0WholeRangeWithModifyRegion", takeAt1000, 0, 0, true, 0, flat, QRectF(0, 7, 100, -4)},
        // The stored selection is already relative to the start.
        {"Mode2ReversedSelectionIsSwapped", takeAt1000, 40, 10, true, 2, flat, QRectF(10, 7, 30, -4)},
        {"Mode2SelectionIsBoundedToTheFramesFirst", takeAt1000, 120, -5, true, 2, flat, QRectF(0, 7, 99, -4)},
        {"Mode1FitsThenScalesFiveFold", fourFrames, 0, 0, true, 1, QRectF(), QRectF(0, 15, 4, -25), false},
        {"OnlyRigidsSelectedSkipsMarkerTracks", fourFrames, 0, 0, true, 1, QRectF(), QRectF(0, 100, 4, -100), true, {2}},
        {"EdgesCountInvalidSamplesDoNot", fourFrames, 1, 3, true, 2, QRectF(), QRectF(1, 3, 2, -3), false},
        {"ExtentOnlyGrows", fourFrames, 0, 0, true, 1, QRectF(-5, 30, 20, -40), QRectF(-5, 150, 20, -200), false},
        // Beyond float range: the edges clamp to the largest float instead of overflowing.
        {"HugeRectStaysDefined", fourFrames, 0, 0, true, 1, QRectF(0, 1e300, 10, -2e300), QRectF(0, 5e300, 10, -1e301)}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAVGraph graph;
        TAV::Frames tracks = rangeTracks();
        graph.SetTracks(&tracks);
        graph.SetTrackSelection(row.rigids, "rigids");
        FramesInfo info = row.info;
        graph.SetFramesInfo(&info);
        graph.selectStart = row.selectStart;
        graph.selectEnd = row.selectEnd;
        graph.ModifyRegion(row.modifyRegion);
        graph.EnableRigids(row.enableRigids);
        QRectF rect = row.in;
        graph.Range2D(&rect, row.mode);
        EXPECT_EQ(rectText(rect), rectText(row.expected));
    }
}

} // namespace
