// Track points: every shown sample as one GL point per drawn axis, thinned by the
// level-of-detail filter, all in one GL_POINTS block.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/trackpaint.h"
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

namespace {

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
