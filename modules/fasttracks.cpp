// The fast drawing of track points and lines. Every point comes before every
// segment, as in the exact drawing: the points of all tracks are walked first,
// then the segments, each culled against what was certainly written before it. A
// track's index lets either walk pass over blocks of samples that can add no
// pixel; what is left is sent as vertex arrays.
#include "modules/fasttracks.h"

#include "GL/gl.h"
#include "modules/drawvisible.h"
#include "modules/tavgraph.h"
#include "modules/trackindex.h"
#include "modules/trackpaint.h"
#include "modules/vertexlist.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"
#include "modules/core/trackoffsets.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

// The x range in which a point of this paint can still touch a pixel of the
// view: the edges widened by half a point and one pixel more.
struct XWindow {
    double lo, hi;
};

XWindow visibleX(const PointPaint& s, const GLW& glw)
{
    const ViewEdges& e = s.view;
    const double perPixel = std::max(std::fabs(double(e.right) - e.left) / std::max(e.w - 1, 1),
                                     1.0 / std::fabs(double(glw.viewport.scale.x)));
    const double margin = (s.size * 0.5 + 1.0) * perPixel;
    return {std::min(e.left, e.right) - margin, std::max(e.left, e.right) + margin};
}

// Sets the fresh filter to its state just before sample `begin` and returns
// `begin` when that state is certain without walking there; otherwise returns 0,
// the start of the walk. Times ascend and x is never negative here.
template <class T>
int filterFrom(const T* d, int begin, bool fill, PointFilter& lod, OffsetOf& offset, int64_t offsetX)
{
    int k = begin - 1;
    while (k >= 0 && !pointShown(d[k], fill))
        --k;
    if (k < 0)
        return begin; // the filter sees nothing before the window
    int before = k - 1;
    while (before >= 0 && !pointShown(d[before], fill))
        --before;
    const T& m = d[k];
    const Lanes p = lanesOf(m) - lanesOf(offset(m.id));
    const uint64_t n = uint64_t(frameX(m.time, offsetX));
    if (before < 0) {
        lod(n, p); // the only sample the filter sees before the window
        return begin;
    }
    // Sample k moved at least the x step since the drawn sample before it, so
    // the filter accepted it whatever it had accepted earlier.
    if (lod.stepsX(uint64_t(frameX(d[before].time, offsetX)), n)) {
        lod.take(n, p);
        return begin;
    }
    return 0;
}

// What the walks of one paint share.
struct Paint {
    const TAVGraph& g;
    PointPaint ps;
    LinePaint ls;
    XWindow window;
    bool rgbLines;
    bool lines;         // segments are drawn
    Coverage* culling;  // what is certainly written; none: nothing is culled
    bool cullPoints;    // points are culled: GL draws them at the size asked
};

// The points of one track: the filter sees every shown sample from where its state
// is certain, and the points it lets through within the view's window are sent.
template <class T>
class PointWalk {
public:
    PointWalk(const Paint& p, const QVector<T>& data, const IdMap<Vector>& offsets, bool rb, VertexList& out)
        : p(p), d(data.constData()), lod(p.ps.px, p.ps.py), offset(offsets), rb(rb), out(out)
    {
        const int size = data.size();
        const int64_t offsetX = p.g.offsetX;
        to = size;
        // The filter steps x as unsigned: a window is taken only where x starts at 0 or more.
        if (frameX(d[0].time, offsetX) >= 0) {
            const T *begin = d, *end = d + size;
            pointStretch(begin, end, offsetX, [](double x) { return x; }, p.window.lo, p.window.hi);
            to = int(end - d);
            from = p.ps.lod ? filterFrom(d, int(begin - d), p.ps.fill, lod, offset, offsetX) : int(begin - d);
        }
    }

    int first() const { return from; }
    int end() const { return to; }
    const T* data() const { return d; }
    // The filter lets few samples through; without it every one is a point.
    bool eachSampleLookedAt() const { return !p.ps.lod; }

    // The axes on which a point of the block may still add a pixel.
    int axes(const SampleBlock& block)
    {
        const int all = p.ps.channels & 7;
        if (!block.finite)
            return all;
        if (block.empty())
            return 0;
        const int64_t x0 = frameX(block.timeLo, p.g.offsetX), x1 = frameX(block.timeHi, p.g.offsetX);
        if (!block.oneId || x0 < std::numeric_limits<int32_t>::min() || x1 > std::numeric_limits<int32_t>::max())
            return all;
        const Vector o = offset(block.id);
        int axes = all;
        for (int axis = 0; axis < 3; ++axis)
            if ((axes & (1 << axis)) && p.culling->pointsCovered(float(int32_t(x0)), float(int32_t(x1)),
                                                                 block.lo[axis] - o[axis], block.hi[axis] - o[axis],
                                                                 p.ps.size))
                axes &= ~(1 << axis);
        return axes;
    }

    // Samples [a, b) of `block` send no point, but the filter sees them. Most of a
    // zoomed-out take goes through here, so the filter's state is kept in locals,
    // and where the block's times cannot make the x step, only its coordinates
    // are tested. A block is passed over only when it has no valid sample or its
    // valid samples carry one id (axes() sees to that; the walk is not made when no
    // axis is drawn).
    void pass(int a, int b, const SampleBlock& block)
    {
        if (!p.ps.lod || block.empty())
            return;
        const int64_t x0 = frameX(block.timeLo, p.g.offsetX), x1 = frameX(block.timeHi, p.g.offsetX);
        if (block.ascending && x0 >= 0 && lod.noStepWithin(uint64_t(x0), uint64_t(x1)))
            lod = filtered<false>(lod, d + a, d + b, lanesOf(offset(block.id)));
        else
            lod = filtered<true>(lod, d + a, d + b, lanesOf(offset(block.id)));
    }

    // The filter after it saw the shown samples of [m, end), all less offset `o`,
    // of which `steps` may make the x step.
    template <bool steps>
    PointFilter filtered(PointFilter f, const T* m, const T* end, Lanes o)
    {
        const bool fill = p.ps.fill;
        const int64_t offsetX = p.g.offsetX;
        for (; m != end; ++m) {
            if (!pointShown(*m, fill))
                continue;
            if (steps)
                f(uint64_t(frameX(m->time, offsetX)), lanesOf(*m) - o);
            else
                f.moved(uint64_t(frameX(m->time, offsetX)), lanesOf(*m) - o);
        }
        return f;
    }

    void samples(int a, int b, int axes)
    {
        const int64_t offsetX = p.g.offsetX;
        for (int i = a; i < b; ++i) {
            const T& m = d[i];
            if (!pointShown(m, p.ps.fill))
                continue;
            const Lanes v = lanesOf(m) - lanesOf(offset(m.id));
            if (p.ps.lod && !lod(uint64_t(frameX(m.time, offsetX)), v))
                continue;
            const float x = float(frameX32(m.time, offsetX));
            if (!(double(x) >= p.window.lo && double(x) <= p.window.hi))
                continue;
            for (int axis = 0; axis < 3; ++axis)
                if ((axes & (1 << axis)) && (!p.cullPoints || p.culling->point(x, v[axis], p.ps.size)))
                    out.add(x, v[axis], vertexColor(axis, p.ps.rgb, rb));
        }
    }

private:
    const Paint& p;
    const T* d;
    int from = 0, to = 0;
    PointFilter lod;
    OffsetOf offset;
    bool rb;
    VertexList& out;
};

// The segments of one track: from the first sample in the view (joined to the one
// before it) up to the first one right of the view.
template <class T>
class LineWalk {
public:
    LineWalk(const Paint& p, const QVector<T>& data, VertexList& out)
        : p(p), d(data.constData()), offset(lineOffset(p.g, d[0].id)), out(out)
    {
        const int size = data.size();
        const int64_t offsetX = p.g.offsetX;
        from = firstAtOrRightOf(d, size, p.ls.left, offsetX);
        to = int(std::partition_point(d + from, d + size,
                                      [&](const T& m) { return !(float(frameX(m.time, offsetX)) > p.ls.right); }) -
                 d);
        // Before the first sample there is no predecessor: starting with the sample
        // itself is the same, since a segment needs strictly increasing time.
        last = from > 0 ? d + from - 1 : d;
    }

    int first() const { return from; }
    int end() const { return to; }
    const T* data() const { return d; }
    bool eachSampleLookedAt() const { return true; }

    // The axes on which a segment of the block, or the one into it, may still add
    // a pixel.
    int axes(const SampleBlock& block)
    {
        const int all = p.ps.channels & 7;
        if (!block.finite)
            return all;
        double x0 = HUGE_VAL, x1 = -HUGE_VAL;
        float lo[3] = {HUGE_VALF, HUGE_VALF, HUGE_VALF}, hi[3] = {-HUGE_VALF, -HUGE_VALF, -HUGE_VALF};
        if (!block.empty()) {
            x0 = double(frameX(block.timeLo, p.g.offsetX));
            x1 = double(frameX(block.timeHi, p.g.offsetX));
            std::copy(block.lo, block.lo + 3, lo);
            std::copy(block.hi, block.hi + 3, hi);
        }
        if (!(last->cond <= 0)) {
            const Vector v(*last);
            const double x = double(frameX(last->time, p.g.offsetX));
            x0 = std::min(x0, x);
            x1 = std::max(x1, x);
            for (int axis = 0; axis < 3; ++axis) {
                if (!std::isfinite(v[axis]))
                    return all;
                lo[axis] = std::min(lo[axis], v[axis]);
                hi[axis] = std::max(hi[axis], v[axis]);
            }
        }
        if (x0 > x1)
            return 0; // nothing valid: no segment
        int axes = all;
        for (int axis = 0; axis < 3; ++axis)
            if ((axes & (1 << axis)) &&
                p.culling->segmentsCovered(x0, x1, lo[axis] - offset[axis], hi[axis] - offset[axis]))
                axes &= ~(1 << axis);
        return axes;
    }

    void pass(int, int b, const SampleBlock&) { last = d + b - 1; }

    void samples(int a, int b, int axes)
    {
        const int64_t offsetX = p.g.offsetX;
        for (int i = a; i < b; ++i) {
            const T& m = d[i];
            if (!(p.ls.left > float(frameX(m.time, offsetX))) && joins(*last, m))
                segment(double(frameX(last->time, offsetX)), double(frameX(m.time, offsetX)), Vector(*last) - offset,
                        Vector(m) - offset, axes);
            last = &m;
        }
    }

private:
    const Paint& p;
    const T* d;
    int from = 0, to = 0;
    const T* last;
    Vector offset;
    VertexList& out;

    void segment(double x0, double x1, const Vector& v0, const Vector& v1, int axes)
    {
        for (int axis = 0; axis < 3; ++axis) {
            if (!(axes & (1 << axis)) || (p.culling && !p.culling->segment(x0, v0[axis], x1, v1[axis])))
                continue;
            const ColorRGB c = vertexColor(axis, p.rgbLines);
            out.add(float(x0), v0[axis], c);
            out.add(float(x1), v1[axis], c);
        }
    }
};

// Samples [a, b) of a block that may add a pixel on `axes`. Where each of them
// would be looked at, they are first asked about in pieces of a few samples:
// zoomed out, a piece lands on a few pixels, and most often adds nothing.
template <class Walk>
void visitSamples(Walk& w, int a, int b, int axes)
{
    if (!w.eachSampleLookedAt()) {
        w.samples(a, b, axes);
        return;
    }
    constexpr int piece = 8;
    for (int s = a; s < b; s += piece) {
        const int e = std::min(b, s + piece);
        const SampleBlock block = blockOf(w.data() + s, w.data() + e);
        const int left = w.axes(block) & axes;
        if (left)
            w.samples(s, e, left);
        else
            w.pass(s, e, block);
    }
}

// Block i of a level: when nothing in it can add a pixel, the walk passes over it;
// otherwise it looks at its blocks one level down, and at the lowest level at each
// sample, on the axes that can still add one.
template <class Walk>
void visit(Walk& w, const TrackIndex& index, int level, int i)
{
    const int64_t span = TrackIndex::span(level);
    const int a = int(std::max<int64_t>(i * span, w.first()));
    const int b = int(std::min<int64_t>((i + 1) * span, w.end()));
    if (a >= b)
        return;
    const SampleBlock& block = index.block(level, i);
    const int axes = w.axes(block);
    if (!axes)
        w.pass(a, b, block);
    else if (level == 0)
        visitSamples(w, a, b, axes);
    else
        for (int c = i * TrackIndex::fan; c < std::min(index.count(level - 1), (i + 1) * TrackIndex::fan); ++c)
            visit(w, index, level - 1, c);
}

// An index is given only when there is coverage to cull against: without one,
// every sample of the window is looked at.
template <class Walk>
void walk(Walk& w, const TrackIndex* index, int channels)
{
    if (w.first() >= w.end())
        return;
    if (index)
        visit(w, *index, index->levels() - 1, 0);
    else
        w.samples(w.first(), w.end(), channels);
}

// f(samples, index, rigid) for every shown track's markers, then its rigid
// bodies, in track order, as the exact drawing takes them; the track's index
// when `indexed`.
template <class F>
void forEachShownTrack(const TAVGraph& g, const Paint& p, TrackIndexes& indexes, bool indexed, F f)
{
    for (int i = 0; i < g.tracks.size(); ++i) {
        const TAV::Frame& t = g.tracks.at(i);
        if (p.ps.markers && trackShown(g.markers, g.markers, g.rigids, t.id) && !t.markers.isEmpty())
            f(t.markers, indexed ? &indexes.markers(g.tracks, i) : nullptr, false);
        if (p.ps.rigids && trackShown(g.rigids, g.markers, g.rigids, t.id) && !t.rigids.isEmpty())
            f(t.rigids, indexed ? &indexes.rigids(g.tracks, i) : nullptr, true);
    }
}

} // namespace

PointFilter::PointFilter(float px, float py) : py(splat(py))
{
    // float(d) grows with d, so float(d) >= px holds from some least d on.
    uint64_t lo = 0, hi = std::numeric_limits<uint64_t>::max();
    if (!(float(hi) >= px)) {
        never = true;
        return;
    }
    while (lo < hi) {
        const uint64_t mid = lo + (hi - lo) / 2;
        if (float(mid) >= px)
            hi = mid;
        else
            lo = mid + 1;
    }
    step = lo;
}

void drawFastTracks(const TAVGraph& g, const GLW& glw, Coverage* coverage, TrackIndexes& indexes)
{
    Paint p{g, pointPaint(g, glw), linePaint(g, glw), {}, g.property<bool>(GraphProperty::enableRGB), false,
            coverage, false};
    p.window = visibleX(p.ps, glw);
    p.lines = p.ls.draw && p.ls.left <= p.ls.right;
    // Where a frame spans a pixel or more, a track's points and segments seldom fall
    // on pixels already written, and looking costs more than sending them.
    const ViewEdges& e = p.ps.view;
    if (!(std::fabs(double(e.right) - e.left) >= e.w))
        coverage = nullptr;
    p.culling = coverage;
    p.cullPoints = coverage && pointSizeExact(p.ps.size);

    const int channels = p.ps.channels & 7;
    VertexList points, segments;
    if (channels)
        forEachShownTrack(g, p, indexes, p.cullPoints, [&](const auto& samples, const TrackIndex* index, bool rb) {
            using T = typename std::decay_t<decltype(samples)>::value_type;
            PointWalk<T> w(p, samples, rb ? g.rbtrackOffsets : g.trackOffsets, rb, points);
            walk(w, index, channels);
        });
    if (channels && p.lines)
        forEachShownTrack(g, p, indexes, coverage != nullptr, [&](const auto& samples, const TrackIndex* index, bool) {
            using T = typename std::decay_t<decltype(samples)>::value_type;
            LineWalk<T> w(p, samples, segments);
            walk(w, index, channels);
        });

    glPointSize(float(p.ps.size));
    points.draw(GL_POINTS);
    glPointSize(1.0f);
    if (p.lines)
        segments.draw(GL_LINES);
}
