// Track points: every shown sample as one GL point per drawn axis, thinned by the
// level-of-detail filter, all in one GL_POINTS block.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/drawvisible.h"
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"
#include "modules/core/trackoffsets.h"
#include "utils/saturate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

void draw_v(int n, const Vector& v, const int& channels, bool rgb, bool rb)
{
    glColor3f(0.8f, 0.8f, 0.8f);
    if (rb)
        glColor3f(8.0f, 0.8f, 0.2f); // 8.0 on purpose: GL clamps it, rigid points show (1.0, 0.8, 0.2)
    const float x = float(n);
    for (int axis = 0; axis < 3; ++axis) {
        if (!(channels & (1 << axis)))
            continue;
        if (rgb) {
            const ColorRGB c = axisColor(axis);
            glColor3f(c.r, c.g, c.b);
        }
        glVertex3f(x, v[axis], 1.0f);
    }
}

void ColourSender::operator()(const ColorRGB& c)
{
    if (sent && c.r == last.r && c.g == last.g && c.b == last.b)
        return;
    glColor3f(c.r, c.g, c.b);
    last = c;
    sent = true;
}

namespace {

// What one paint of the points reads and derives once.
struct PointPaint {
    ViewEdges view;
    bool lod, fill, rgb, markers, rigids;
    int channels;
    int size;      // GL point size, in pixels
    float px, py;  // steps of the level-of-detail filter
};

PointPaint pointPaint(const TAVGraph& g, const GLW& glw)
{
    PointPaint s;
    const int pt_size = g.property<int>(GraphProperty::pointSize);
    s.lod = g.property<bool>(GraphProperty::LOD);
    s.fill = g.property<bool>(GraphProperty::enableFill);
    const bool rgb = g.property<bool>(GraphProperty::enableRGB);
    s.markers = g.property<bool>(GraphProperty::enableMarkers);
    s.rigids = g.property<bool>(GraphProperty::enableRigids);
    const float lodpx = g.property<float>(GraphProperty::linesLODpx);
    const int pt_size_min = g.property<int>(GraphProperty::pointSizeMin);
    const int pt_size_max = g.property<int>(GraphProperty::pointSizeMax);
    s.channels = g.property<int>(GraphProperty::axisMask);

    s.view = viewEdges(glw);
    const ViewEdges& e = s.view;
    const float extra = float(std::max(pt_size, 1) - 1);
    s.px = 2 * ((e.right - e.left) / float(e.w) * extra);
    s.py = (e.top - e.bottom) / float(e.h) * extra;

    // Half the pixel width of one frame period, within the configured bounds
    // (the upper one wins when they cross).
    s.size = saturate_cast<int>(double(float(e.w) / (e.right - e.left + 1.0)) * g.period * 0.5);
    if (s.size < pt_size_min)
        s.size = pt_size_min;
    if (s.size > pt_size_max)
        s.size = pt_size_max;

    // Colours per axis only where points are dense. The threshold is compared
    // without the frame period that the lines apply.
    s.rgb = rgb && !(lodpx >= s.px);
    return s;
}

template <class T>
void sendTrackPoints(const QVector<T>& data, const PointPaint& s, const IdMap<Vector>& offsets, int64_t offsetX,
                     bool rb)
{
    GL::PLOD4 lod(s.px, s.py);
    OffsetOf offset(offsets);
    for (const T& m : data) {
        if (!pointShown(m, s.fill))
            continue;
        const Vector p = Vector(m) - offset(m.id);
        if (s.lod && !lod(size_t(frameX(m.time, offsetX)), p))
            continue;
        draw_v(frameX32(m.time, offsetX), p, s.channels, s.rgb, rb);
    }
}

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
int filterFrom(const QVector<T>& data, int begin, bool fill, GL::PLOD4& lod, OffsetOf& offset, int64_t offsetX)
{
    int k = begin - 1;
    while (k >= 0 && !pointShown(data.at(k), fill))
        --k;
    if (k < 0)
        return begin; // the filter sees nothing before the window
    int before = k - 1;
    while (before >= 0 && !pointShown(data.at(before), fill))
        --before;
    const T& m = data.at(k);
    const Vector p = Vector(m) - offset(m.id);
    const size_t n = size_t(frameX(m.time, offsetX));
    if (before < 0) {
        lod(n, p); // the only sample the filter sees before the window
        return begin;
    }
    // Sample k moved at least the x step since the drawn sample before it, so
    // the filter accepted it whatever it had accepted earlier.
    if (float(n - size_t(frameX(data.at(before).time, offsetX))) >= lod.px) {
        lod.last_n = n;
        lod.last_p = p;
        return begin;
    }
    return 0;
}

// The point vertices of the samples that can still reach a pixel, each preceded
// by its colour where that differs from the one last sent.
class CulledPoints {
public:
    CulledPoints(Coverage& coverage, const PointPaint& s) : coverage(coverage), s(s) {}

    // Looks at the shown samples of [from, to) at once: on the axes where every
    // point they can make falls on certain pixels, send() does not look at them
    // one by one. Zoomed out, most samples of a take are such blocks.
    template <class T>
    void coverBlock(const T* from, const T* to, OffsetOf& offset, int64_t offsetX)
    {
        covered = 0;
        double x0 = HUGE_VAL, x1 = -HUGE_VAL;
        double lo[3] = {HUGE_VAL, HUGE_VAL, HUGE_VAL}, hi[3] = {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        for (const T* m = from; m != to; ++m) {
            if (!pointShown(*m, s.fill))
                continue;
            const Vector p = Vector(*m) - offset(m->id);
            const double x = float(frameX32(m->time, offsetX));
            x0 = std::min(x0, x);
            x1 = std::max(x1, x);
            for (int axis = 0; axis < 3; ++axis) {
                if (!std::isfinite(p[axis]))
                    return; // left to the point-by-point look, which leaves it to GL
                lo[axis] = std::min(lo[axis], double(p[axis]));
                hi[axis] = std::max(hi[axis], double(p[axis]));
            }
        }
        if (x0 > x1)
            return;
        for (int axis = 0; axis < 3; ++axis)
            if ((s.channels & (1 << axis)) && coverage.pointsCovered(x0, x1, lo[axis], hi[axis], s.size))
                covered |= 1 << axis;
    }

    void send(int n, const Vector& v, bool rb)
    {
        const float x = float(n);
        for (int axis = 0; axis < 3; ++axis) {
            if (!(s.channels & (1 << axis)) || (covered & (1 << axis)) || !coverage.point(x, v[axis], s.size))
                continue;
            colour(vertexColor(axis, s.rgb, rb));
            glVertex3f(x, v[axis], 1.0f);
        }
    }

private:
    Coverage& coverage;
    const PointPaint& s;
    ColourSender colour;
    int covered = 0; // axes on which the current block adds nothing
};

constexpr int pointBlock = 32;

template <class T>
void sendVisibleTrackPoints(const QVector<T>& data, const PointPaint& s, const XWindow& window,
                            const IdMap<Vector>& offsets, int64_t offsetX, bool rb, CulledPoints* culled)
{
    const int size = data.size();
    if (size == 0)
        return;
    GL::PLOD4 lod(s.px, s.py);
    OffsetOf offset(offsets);

    // Samples come in frame order. When their x stays within [0, 2^31) it ascends
    // with them, so the window is one stretch of samples and nothing after it shows.
    int from = 0, end = size;
    const int64_t firstX = frameX(data.constFirst().time, offsetX);
    const int64_t lastX = frameX(data.constLast().time, offsetX);
    if (firstX >= 0 && firstX <= lastX && lastX <= std::numeric_limits<int32_t>::max()) {
        const T* d = data.constData();
        const auto x = [offsetX](const T& m) { return double(float(frameX32(m.time, offsetX))); };
        const int begin = int(std::partition_point(d, d + size, [&](const T& m) { return x(m) < window.lo; }) - d);
        end = int(std::partition_point(d + begin, d + size, [&](const T& m) { return x(m) <= window.hi; }) - d);
        from = s.lod ? filterFrom(data, begin, s.fill, lod, offset, offsetX) : begin;
    }

    for (int i = from; i < end; ++i) {
        if (culled && (i - from) % pointBlock == 0)
            culled->coverBlock(data.constData() + i, data.constData() + std::min(end, i + pointBlock), offset, offsetX);
        const T& m = data.at(i);
        if (!pointShown(m, s.fill))
            continue;
        const Vector p = Vector(m) - offset(m.id);
        if (s.lod && !lod(size_t(frameX(m.time, offsetX)), p))
            continue;
        const int n = frameX32(m.time, offsetX);
        const double x = float(n);
        if (x < window.lo || x > window.hi)
            continue;
        if (culled)
            culled->send(n, p, rb);
        else
            draw_v(n, p, s.channels, s.rgb, rb);
    }
}

} // namespace

void TAVGraph::drawTrackPoints(GLW* glw)
{
    const PointPaint s = pointPaint(*this, *glw);
    glPointSize(float(s.size));
    glBegin(GL_POINTS);
    for (const TAV::Frame& f : qAsConst(tracks)) {
        if (s.markers && trackShown(markers, markers, rigids, f.id))
            sendTrackPoints(f.markers, s, trackOffsets, offsetX, false);
        if (s.rigids && trackShown(rigids, markers, rigids, f.id))
            sendTrackPoints(f.rigids, s, rbtrackOffsets, offsetX, true);
    }
    glEnd();
    glPointSize(1.0f);
}

void drawVisibleTrackPoints(const TAVGraph& g, const GLW& glw, Coverage* coverage)
{
    const PointPaint s = pointPaint(g, glw);
    const XWindow window = visibleX(s, glw);
    std::optional<CulledPoints> culled;
    if (coverage && pointSizeExact(s.size))
        culled.emplace(*coverage, s);
    CulledPoints* c = culled ? &*culled : nullptr;
    glPointSize(float(s.size));
    glBegin(GL_POINTS);
    for (const TAV::Frame& f : qAsConst(g.tracks)) {
        if (s.markers && trackShown(g.markers, g.markers, g.rigids, f.id))
            sendVisibleTrackPoints(f.markers, s, window, g.trackOffsets, g.offsetX, false, c);
        if (s.rigids && trackShown(g.rigids, g.markers, g.rigids, f.id))
            sendVisibleTrackPoints(f.rigids, s, window, g.rbtrackOffsets, g.offsetX, true, c);
    }
    glEnd();
    glPointSize(1.0f);
}
