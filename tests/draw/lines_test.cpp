// The lines of a paint, recorded call by call, and the shortcut of the walk
// checked against a plain walk over every sample.
#include "modules/drawprimitives.h"
#include "tests/draw/streamfixture.h"
#include "tests/draw/takes.h"

#include <random>
#include <vector>

using takes::marker;
using takes::rigid;
using takes::track;

namespace {

// With "pointSize" 1 a point adds no width, so lines are drawn at every zoom.
class Lines : public DrawStream {
protected:
    void SetUp() override
    {
        DrawStream::SetUp();
        graph.setProperty<int>("pointSize", 1);
    }
};

// Equal times join nothing; an invalid sample breaks the line on both sides.
TEST_F(Lines, JoinOnlyValidSamplesOfRisingTime)
{
    graph.tracks.append(track(0, {marker(0, 0, 0, 0), marker(1, 1, 1, 1), marker(1, 2, 2, 2), marker(2, 3, 3, 3),
                                  marker(3, 4, 4, 4, 0), marker(4, 5, 5, 5), marker(5, 6, 6, 6)}));
    EXPECT_EQ(glrec::toString(afterPoints(draw())),
              glrec::toString(segment(0, 1, {0, 0, 0}, {1, 1, 1}) + segment(1, 2, {2, 2, 2}, {3, 3, 3}) +
                              segment(4, 5, {5, 5, 5}, {6, 6, 6})));
}

// Rigid lines take their offset from the marker offsets, by the first sample's id;
// with "enableRGB" every drawn axis has its colour, however wide the view.
TEST_F(Lines, OfRigidsTakeTheMarkerOffsetOfTheFirstSamplesId)
{
    graph.setProperty<int>("axisMask", 5);
    graph.setProperty<bool>("enableRGB", true);
    graph.trackOffsets[2] = Vector(1, 1, 1);
    graph.rbtrackOffsets[2] = Vector(5, 5, 5);
    graph.trackOffsets[4] = Vector(9, 9, 9);
    TAV::Frame f = track(2, {}, {rigid(0, 1, 2, 3), rigid(1, 4, 5, 6)});
    f.rigids[1].id = 4;
    graph.tracks.append(f);
    EXPECT_EQ(glrec::toString(afterPoints(draw())), glrec::toString(segment(0, 1, {0, 1, 2}, {3, 4, 5}, 5, true)));
}

struct CutRow {
    const char* name;
    int pointSize;
    float scaleX;
    double period;
    bool drawn;
};
void PrintTo(const CutRow& row, std::ostream* os) { *os << row.name; }

using LineDetail = DrawRows<CutRow>;

// The default view is 101 pixels over 100 frames: a point of size 2 adds 0.99 frames.
TEST_P(LineDetail, DrawsLinesOnlyWhileAPointAddsLittleWidth)
{
    graph.setProperty<int>("pointSize", GetParam().pointSize);
    graph.period = GetParam().period;
    view.viewport.scale.x = GetParam().scaleX;
    graph.tracks.append(track(0, {marker(0, 1, 1, 1), marker(1, 2, 2, 2)}));
    EXPECT_EQ(glrec::toString(afterPoints(draw())),
              glrec::toString(GetParam().drawn ? segment(0, 1, {1, 1, 1}, {2, 2, 2}) : Calls{}));
}

INSTANTIATE_TEST_SUITE_P(Rows, LineDetail,
                         testing::Values(CutRow{"PointSizeZeroCountsAsOne", 0, 1, 1, true},
                                         CutRow{"WideViewHasNone", 2, 1, 1, false},
                                         CutRow{"ZoomedInHasThem", 2, 10, 1, true},
                                         CutRow{"TheFramePeriodScalesTheThreshold", 2, 1, 8, true}),
                         RowName());

// The lines as a plain reading gives them: every sample visited from the first,
// a predecessor only once one was seen, each segment in its own block.
void plainWalk(const QVector<TAV::Marker>& data, const ViewEdges& e, qint64 offsetX, const Vector& vOffset)
{
    const TAV::Marker* last = nullptr;
    for (const TAV::Marker& m : data) {
        const qint64 t1 = m.time - offsetX;
        if (float(t1) > e.right)
            break;
        if (e.left > float(t1) || !last || m.cond <= 0 || last->cond <= 0 || last->time >= m.time) {
            last = &m;
            continue;
        }
        glBegin(GL_LINES);
        draw_line(last->time - offsetX, t1, Vector(*last) - vOffset, Vector(m) - vOffset, 7, false);
        glEnd();
        last = &m;
    }
}

// Tracks in frame order with repeated times and gaps, beginning on either side of
// the view; views on either side of them and across them.
TEST_F(Lines, MatchAPlainWalkWhereTracksBeginLeftOfTheView)
{
    graph.offsetX = 3;
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> step(0, 2), valid(0, 9), start(-60, 60);
    for (int k = 0; k < 12; ++k) {
        QVector<TAV::Marker> ms;
        int64_t t = start(rng);
        for (int i = 0; i < 151; ++i, t += step(rng)) {
            ms.append(marker(t, float(i), float(k), float(-i), valid(rng) ? 1.f : 0.f));
            ms.last().id = uint32_t(k);
        }
        ms.resize(150); // the last sample stays in the vector's memory, past its end
        TAV::Frame f;
        f.id = uint32_t(k);
        f.markers = ms;
        graph.tracks.append(f);
    }
    graph.trackOffsets[5] = Vector(1, 2, 3);

    // The fast paint's segments are the same ones, in one block, as floats.
    const auto vertices = [](const Calls& calls) {
        std::vector<std::vector<double>> v;
        for (const glrec::Call& c : calls)
            if (c.name == "glVertex3d" || c.name == "glVertex3f")
                v.push_back({double(float(c.args[0])), c.args[1], c.args[2]});
        return v;
    };
    for (float left : {-100.f, -20.5f, -3.f, 0.f, 33.25f, 120.f, 400.f}) {
        for (float scale : {0.5f, 4.f}) {
            view.viewport.pos.x = left;
            view.viewport.scale.x = scale;
            graph.setProperty<bool>("fastDraw", false);
            const Calls lines = afterPoints(draw());
            graph.setProperty<bool>("fastDraw", true);
            const Calls fast = afterPoints(draw());

            glrec::reset();
            for (const TAV::Frame& f : qAsConst(graph.tracks))
                plainWalk(f.markers, viewEdges(view), graph.offsetX, f.id == 5 ? Vector(1, 2, 3) : Vector());
            EXPECT_EQ(glrec::toString(lines), glrec::toString(glrec::calls())) << "left " << left << " scale " << scale;
            EXPECT_EQ(vertices(fast), vertices(glrec::calls())) << "left " << left << " scale " << scale;
        }
    }
}

} // namespace
