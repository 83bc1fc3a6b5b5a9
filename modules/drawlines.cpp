// Track lines: consecutive valid samples of each shown track joined per drawn
// axis, only while the view is zoomed in far enough.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/drawvisible.h"
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"

#include <algorithm>
#include <cmath>
#include <optional>

void draw_line(qint64 n0, qint64 n1, const Vector& v0, const Vector& v1, const int& channels, bool rgb)
{
    const double x0 = double(n0), x1 = double(n1);
    for (int axis = 0; axis < 3; ++axis) {
        if (!(channels & (1 << axis)))
            continue;
        const ColorRGB c = vertexColor(axis, rgb);
        glColor3f(c.r, c.g, c.b);
        glVertex3d(x0, v0[axis], 1.0);
        glVertex3d(x1, v1[axis], 1.0);
    }
}

namespace {

// What one paint of the lines reads and derives once.
struct LinePaint {
    bool draw; // false when the view is too far zoomed out for lines
    bool markers, rigids;
    int channels;
    float left, right;
};

LinePaint linePaint(const TAVGraph& g, const GLW& glw)
{
    LinePaint s;
    const int pt_size = g.property<int>(GraphProperty::pointSize);
    const float lodpx = float(double(g.property<float>(GraphProperty::linesLODpx)) * g.period);
    s.channels = g.property<int>(GraphProperty::axisMask);
    s.markers = g.property<bool>(GraphProperty::enableMarkers);
    s.rigids = g.property<bool>(GraphProperty::enableRigids);

    const ViewEdges e = viewEdges(glw);
    s.left = e.left;
    s.right = e.right;
    // The data width of one point less one pixel.
    const float px = float(std::max(pt_size, 1) - 1) * ((e.right - e.left) / float(e.w));
    s.draw = !(px > lodpx);
    return s;
}

// Hands each segment of one track that the view shows to `segment`, in sample
// order. A segment joins two valid samples of strictly increasing time; the one
// crossing the left edge is included, the one crossing the right edge is not.
// Samples come in frame order, so those left of the view are a prefix: the walk
// starts at its last sample instead of visiting them all. Every `blockSize`
// samples, `block(prev, from, to)` may answer that no segment among the samples
// prev and [from, to) is wanted, and the walk passes over them.
constexpr int blockSize = 32;

template <class T, class Segment, class Block>
void walkSegments(const QVector<T>& data, float left, float right, int64_t offsetX, Segment segment, Block block)
{
    if (data.isEmpty() || !(left <= right))
        return; // with the edges crossed every sample is either left or right of the view
    const int size = data.size();
    const T* d = data.constData();
    const int first = int(
        std::partition_point(d, d + size, [&](const T& m) { return left > float(frameX(m.time, offsetX)); }) - d);
    // Before the first sample there is no predecessor: starting with the sample
    // itself is the same, since a segment needs strictly increasing time.
    const T* last = first > 0 ? d + first - 1 : d;
    for (int i = first; i < size; ++i) {
        if ((i - first) % blockSize == 0) {
            const int end = std::min(size, i + blockSize);
            if (block(*last, d + i, d + end)) {
                last = d + end - 1;
                i = end - 1;
                continue;
            }
        }
        const T& m = d[i];
        const int64_t t1 = frameX(m.time, offsetX);
        if (float(t1) > right)
            break;
        if (left > float(t1) || m.cond <= 0 || last->cond <= 0 || last->time >= m.time) {
            last = &m;
            continue;
        }
        segment(frameX(last->time, offsetX), t1, *last, m);
        last = &m;
    }
}

template <class T, class Segment>
void walkSegments(const QVector<T>& data, float left, float right, int64_t offsetX, Segment segment)
{
    walkSegments(data, left, right, offsetX, segment, [](const T&, const T*, const T*) { return false; });
}

// Marker and rigid lines alike take their offset from trackOffsets, looked up by
// the first sample's id (rigid points use rbtrackOffsets; the difference stays).
template <class T>
Vector lineOffset(const TAVGraph& g, const QVector<T>& data)
{
    Vector v;
    g.trackOffsets.find(int(data.constFirst().id), v);
    return v;
}

// The segments that can still reach a pixel, each preceded by its colour where
// that differs from the one last sent.
class CulledSegments {
public:
    CulledSegments(Coverage& coverage, int channels, bool rgb) : coverage(coverage), channels(channels), rgb(rgb) {}

    // Looks at the valid samples among prev and [from, to) at once: the axes on which
    // every segment they can form stays within certain pixels are not looked at
    // again until the next block. True when that is every drawn axis.
    template <class T>
    bool coverBlock(const T& prev, const T* from, const T* to, int64_t offsetX, const Vector& offset)
    {
        covered = 0;
        double x0 = HUGE_VAL, x1 = -HUGE_VAL, lo[3] = {HUGE_VAL, HUGE_VAL, HUGE_VAL}, hi[3] = {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        const auto take = [&](const T& m) {
            if (m.cond <= 0)
                return;
            const double x = double(frameX(m.time, offsetX));
            const Vector v = Vector(m) - offset;
            x0 = std::min(x0, x);
            x1 = std::max(x1, x);
            for (int axis = 0; axis < 3; ++axis) {
                lo[axis] = std::min(lo[axis], double(v[axis]));
                hi[axis] = std::max(hi[axis], double(v[axis]));
            }
        };
        take(prev);
        for (const T* m = from; m != to; ++m)
            take(*m);
        if (!(x0 <= x1))
            return false; // nothing valid: the walk is as quick
        for (int axis = 0; axis < 3; ++axis)
            if ((channels & (1 << axis)) && coverage.segmentsCovered(x0, x1, lo[axis], hi[axis]))
                covered |= 1 << axis;
        return (covered & channels) == (channels & 7);
    }

    void send(qint64 n0, qint64 n1, const Vector& v0, const Vector& v1)
    {
        const double x0 = double(n0), x1 = double(n1);
        for (int axis = 0; axis < 3; ++axis) {
            if (!(channels & (1 << axis)) || (covered & (1 << axis)) || !coverage.segment(x0, v0[axis], x1, v1[axis]))
                continue;
            colour(vertexColor(axis, rgb));
            glVertex3d(x0, v0[axis], 1.0);
            glVertex3d(x1, v1[axis], 1.0);
        }
    }

private:
    Coverage& coverage;
    int channels;
    bool rgb;
    ColourSender colour;
    int covered = 0;     // axes of the current block whose segments are all covered
};

template <class T>
void sendVisibleSegments(const TAVGraph& g, const QVector<T>& data, const LinePaint& s, CulledSegments* culled)
{
    if (data.isEmpty())
        return;
    const bool rgb = g.property<bool>(GraphProperty::enableRGB);
    const Vector vOffset = lineOffset(g, data);
    if (!culled) {
        walkSegments(data, s.left, s.right, g.offsetX, [&](int64_t t0, int64_t t1, const T& a, const T& b) {
            draw_line(t0, t1, Vector(a) - vOffset, Vector(b) - vOffset, s.channels, rgb);
        });
        return;
    }
    walkSegments(
        data, s.left, s.right, g.offsetX,
        [&](int64_t t0, int64_t t1, const T& a, const T& b) {
            culled->send(t0, t1, Vector(a) - vOffset, Vector(b) - vOffset);
        },
        [&](const T& prev, const T* from, const T* to) {
            return culled->coverBlock(prev, from, to, g.offsetX, vOffset);
        });
}

} // namespace

template <class T>
void TAVGraph::drawTrackLines(const QVector<T>& data, float left, float right, int channels, int)
{
    if (data.isEmpty())
        return;
    const bool rgb = property<bool>(GraphProperty::enableRGB);
    const Vector vOffset = lineOffset(*this, data);
    walkSegments(data, left, right, offsetX, [&](int64_t t0, int64_t t1, const T& a, const T& b) {
        glBegin(GL_LINES);
        draw_line(t0, t1, Vector(a) - vOffset, Vector(b) - vOffset, channels, rgb);
        glEnd();
    });
}

void TAVGraph::drawTrackLines(GLW* glw)
{
    const LinePaint s = linePaint(*this, *glw);
    if (!s.draw)
        return;
    for (const TAV::Frame& f : qAsConst(tracks)) {
        if (s.markers && trackShown(markers, markers, rigids, f.id))
            drawTrackLines<TAV::Marker>(f.markers, s.left, s.right, s.channels, 1);
        if (s.rigids && trackShown(rigids, markers, rigids, f.id))
            drawTrackLines<TAV::Rigid>(f.rigids, s.left, s.right, s.channels, 2);
    }
}

void drawVisibleTrackLines(const TAVGraph& g, const GLW& glw, Coverage* coverage)
{
    const LinePaint s = linePaint(g, glw);
    if (!s.draw)
        return;
    std::optional<CulledSegments> culled;
    if (coverage)
        culled.emplace(*coverage, s.channels, g.property<bool>(GraphProperty::enableRGB));
    CulledSegments* c = culled ? &*culled : nullptr;
    glBegin(GL_LINES);
    for (const TAV::Frame& f : qAsConst(g.tracks)) {
        if (s.markers && trackShown(g.markers, g.markers, g.rigids, f.id))
            sendVisibleSegments(g, f.markers, s, c);
        if (s.rigids && trackShown(g.rigids, g.markers, g.rigids, f.id))
            sendVisibleSegments(g, f.rigids, s, c);
    }
    glEnd();
}
