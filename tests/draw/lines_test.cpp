// The lines of a paint, recorded call by call, and the shortcut of the walk
// checked against a plain walk over every sample.
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <functional>
#include <random>

using takes::marker;
using takes::rigid;
using takes::track;

namespace {

struct LineRow {
    const char* name;
    std::function<void(TAVGraph&, GLW&)> setup;
    Calls lines;
};
void PrintTo(const LineRow& row, std::ostream* os) { *os << row.name; }

// With "pointSize" 1 a point adds no width, so lines are drawn at every zoom.
class Lines : public DrawStream, public testing::WithParamInterface<LineRow> {
protected:
    void SetUp() override
    {
        DrawStream::SetUp();
        graph.setProperty<int>("pointSize", 1);
    }
};

TEST_P(Lines, SendTheseSegments)
{
    GetParam().setup(graph, view);
    EXPECT_EQ(glrec::toString(afterPoints(draw())), glrec::toString(GetParam().lines));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Lines,
    testing::Values(
        LineRow{"EachSegmentInItsOwnBlock",
                [](TAVGraph& g, GLW&) {
                    g.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6), marker(2, 7, 8, 9)}));
                },
                segment(0, 1, {1, 2, 3}, {4, 5, 6}) + segment(1, 2, {4, 5, 6}, {7, 8, 9})},
        LineRow{"AGapBreaksTheLineOnBothSides",
                [](TAVGraph& g, GLW&) {
                    g.tracks.append(track(0, {marker(3, 3, 3, 3), marker(4, 4, 4, 4), marker(5, 5, 5, 5, 0),
                                              marker(6, 6, 6, 6, 0), marker(7, 7, 7, 7), marker(8, 8, 8, 8)}));
                },
                segment(3, 4, {3, 3, 3}, {4, 4, 4}) + segment(7, 8, {7, 7, 7}, {8, 8, 8})},
        LineRow{"EqualTimesJoinNothing",
                [](TAVGraph& g, GLW&) {
                    g.tracks.append(
                        track(0, {marker(0, 0, 0, 0), marker(1, 1, 1, 1), marker(1, 2, 2, 2), marker(2, 3, 3, 3)}));
                },
                segment(0, 1, {0, 0, 0}, {1, 1, 1}) + segment(1, 2, {2, 2, 2}, {3, 3, 3})},
        LineRow{"TheSegmentIntoTheViewStartsLeftOfIt",
                [](TAVGraph& g, GLW& v) {
                    v.viewport.pos.x = 10;
                    g.tracks.append(
                        track(0, {marker(8, 8, 8, 8), marker(9, 9, 9, 9), marker(10, 1, 1, 1), marker(11, 2, 2, 2)}));
                },
                segment(9, 10, {9, 9, 9}, {1, 1, 1}) + segment(10, 11, {1, 1, 1}, {2, 2, 2})},
        LineRow{"AnInvalidSampleLeftOfTheViewBreaksTheCrossing",
                [](TAVGraph& g, GLW& v) {
                    v.viewport.pos.x = 10;
                    g.tracks.append(track(0, {marker(8, 8, 8, 8), marker(9, 9, 9, 9, 0), marker(10, 1, 1, 1)}));
                },
                Calls{}},
        LineRow{"NothingCrossesTheRightEdge",
                [](TAVGraph& g, GLW&) {
                    g.tracks.append(track(0, {marker(99, 1, 1, 1), marker(100, 2, 2, 2), marker(101, 3, 3, 3)}));
                },
                segment(99, 100, {1, 1, 1}, {2, 2, 2})},
        LineRow{"AxisMaskZeroLeavesEmptyPairs",
                [](TAVGraph& g, GLW&) {
                    g.setProperty<int>("axisMask", 0);
                    g.tracks.append(track(0, {marker(0, 1, 1, 1), marker(1, 2, 2, 2), marker(2, 3, 3, 3)}));
                },
                Calls{glrec::Begin(GL_LINES), glrec::End(), glrec::Begin(GL_LINES), glrec::End()}},
        LineRow{"RGBColoursEachAxis",
                [](TAVGraph& g, GLW&) {
                    g.setProperty<bool>("enableRGB", true);
                    g.tracks.append(track(0, {marker(0, 1, 2, 3), marker(1, 4, 5, 6)}));
                },
                segment(0, 1, {1, 2, 3}, {4, 5, 6}, 7, true)},
        LineRow{"RigidLinesTakeTheMarkerOffsets",
                [](TAVGraph& g, GLW&) {
                    g.trackOffsets[2] = Vector(1, 1, 1);
                    g.rbtrackOffsets[2] = Vector(5, 5, 5);
                    g.tracks.append(track(2, {}, {rigid(0, 1, 2, 3), rigid(1, 4, 5, 6)}));
                },
                segment(0, 1, {0, 1, 2}, {3, 4, 5})},
        LineRow{"TheFirstSampleChoosesTheOffset",
                [](TAVGraph& g, GLW&) {
                    g.trackOffsets[3] = Vector(1, 1, 1);
                    g.trackOffsets[4] = Vector(9, 9, 9);
                    TAV::Frame f = track(3, {marker(0, 1, 1, 1), marker(1, 2, 2, 2)});
                    f.markers[1].id = 4;
                    g.tracks.append(f);
                },
                segment(0, 1, {0, 0, 0}, {1, 1, 1})}),
    [](const testing::TestParamInfo<LineRow>& i) { return std::string(i.param.name); });

struct CutRow {
    const char* name;
    int pointSize;
    float scaleX;
    double period;
    bool drawn;
};
void PrintTo(const CutRow& row, std::ostream* os) { *os << row.name; }

class LineDetail : public DrawStream, public testing::WithParamInterface<CutRow> {};

TEST_P(LineDetail, DrawsLinesOnlyWhileAPointAddsLittleWidth)
{
    const CutRow& row = GetParam();
    graph.setProperty<int>("pointSize", row.pointSize);
    graph.period = row.period;
    view.viewport.scale.x = row.scaleX;
    graph.tracks.append(track(0, {marker(0, 1, 1, 1), marker(1, 2, 2, 2)}));
    EXPECT_EQ(glrec::toString(afterPoints(draw())),
              glrec::toString(row.drawn ? segment(0, 1, {1, 1, 1}, {2, 2, 2}) : Calls{}));
}

// The default view is 101 pixels over 100 frames: a point of size 2 adds 0.99 frames.
INSTANTIATE_TEST_SUITE_P(Rows, LineDetail,
                         testing::Values(CutRow{"PointSizeOneAlways", 1, 1, 1, true},
                                         CutRow{"PointSizeZeroCountsAsOne", 0, 1, 1, true},
                                         CutRow{"WideViewHasNone", 2, 1, 1, false},
                                         CutRow{"ZoomedInHasThem", 2, 10, 1, true},
                                         CutRow{"TheFramePeriodScalesTheThreshold", 2, 1, 8, true}),
                         [](const testing::TestParamInfo<CutRow>& i) { return std::string(i.param.name); });

// The lines as a plain reading gives them: every sample visited from the first,
// a predecessor only once one was seen, each segment in its own block.
template <class T>
void plainWalk(const QVector<T>& data, float left, float right, qint64 offsetX, const Vector& vOffset, int channels,
               bool rgb)
{
    const T* last = nullptr;
    for (const T& m : data) {
        const qint64 t1 = m.time - offsetX;
        if (float(t1) > right)
            break;
        if (left > float(t1) || !last || m.cond <= 0 || last->cond <= 0 || last->time >= m.time) {
            last = &m;
            continue;
        }
        glBegin(GL_LINES);
        draw_line(last->time - offsetX, t1, Vector(*last) - vOffset, Vector(m) - vOffset, channels, rgb);
        glEnd();
        last = &m;
    }
}

// Tracks in frame order with repeated times, gaps, and starts on either side of
// the view; views on either side of them and across them.
TEST_F(DrawStream, LinesMatchAPlainWalkWhereTracksBeginLeftOfTheView)
{
    graph.setProperty<int>("pointSize", 1);
    graph.offsetX = 3;
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> step(0, 2), valid(0, 9), start(-60, 60);
    for (int k = 0; k < 12; ++k) {
        QVector<TAV::Marker> ms;
        int64_t t = start(rng);
        for (int i = 0; i < 150; ++i, t += step(rng))
            ms.append(marker(t, float(i), float(k), float(-i), valid(rng) ? 1.f : 0.f));
        graph.tracks.append(track(uint32_t(k), ms));
    }
    graph.trackOffsets[5] = Vector(1, 2, 3);

    for (float left : {-100.f, -20.5f, 0.f, 17.f, 33.25f, 120.f, 400.f}) {
        for (float scale : {0.5f, 1.f, 4.f}) {
            view.viewport.pos.x = left;
            view.viewport.scale.x = scale;
            const Calls lines = afterPoints(draw());

            glrec::reset();
            const ViewEdges e = viewEdges(view);
            for (const TAV::Frame& f : qAsConst(graph.tracks))
                plainWalk(f.markers, e.left, e.right, graph.offsetX,
                          graph.trackOffsets.count(int(f.id)) ? graph.trackOffsets.at(int(f.id)) : Vector(), 7,
                          false);
            EXPECT_EQ(glrec::toString(lines), glrec::toString(glrec::calls())) << "left " << left << " scale " << scale;
        }
    }
}

} // namespace
