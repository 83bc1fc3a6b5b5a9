// Track lines: consecutive valid samples of each shown track joined per drawn
// axis, only while the view is zoomed in far enough.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/trackpaint.h"
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"

#include <algorithm>

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

namespace {

// Hands each segment of one track that the view shows to `segment`, in sample
// order. The one crossing the left edge is included, the one crossing the right
// edge is not. Samples come in frame order, so those left of the view are a
// prefix: the walk starts at its last sample instead of visiting them all.
template <class T, class Segment>
void walkSegments(const QVector<T>& data, float left, float right, int64_t offsetX, Segment segment)
{
    if (data.isEmpty() || !(left <= right))
        return; // with the edges crossed every sample is either left or right of the view
    const int size = data.size();
    const T* d = data.constData();
    const int first = firstAtOrRightOf(d, size, left, offsetX);
    // Before the first sample there is no predecessor: starting with the sample
    // itself is the same, since a segment needs strictly increasing time.
    const T* last = first > 0 ? d + first - 1 : d;
    for (int i = first; i < size; ++i) {
        const T& m = d[i];
        const int64_t t1 = frameX(m.time, offsetX);
        if (float(t1) > right)
            break;
        if (!(left > float(t1)) && joins(*last, m))
            segment(frameX(last->time, offsetX), t1, *last, m);
        last = &m;
    }
}

} // namespace

Vector lineOffset(const TAVGraph& g, uint32_t firstId)
{
    Vector v;
    g.trackOffsets.find(int(firstId), v);
    return v;
}

template <class T>
void TAVGraph::drawTrackLines(const QVector<T>& data, float left, float right, int channels, int)
{
    if (data.isEmpty())
        return;
    const bool rgb = property<bool>(GraphProperty::enableRGB);
    const Vector vOffset = lineOffset(*this, data.constFirst().id);
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
