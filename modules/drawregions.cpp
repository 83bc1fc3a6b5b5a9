// The region layer: the working range, the shaded runs with their outlines and
// the areas outside the data; and the frame cursor above them.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/tavgraph.h"
#include "utils/saturate.h"

#include <algorithm>

ColorRGB typeColor(int type)
{
    if (type == RegionGood)
        return {0.345f, 0.6f, 0.85f};
    if (type == RegionMissing)
        return {0.3f, 0.3f, 0.3f};
    if (type == RegionFair)
        return {0.8f, 0.6f, 0.3f};
    if (type & RegionPoor)
        return {0.3f, 0.8f, 0.3f};
    if ((type & 0x14) == 0x14)
        return {0.6f, 0.4f, 0.1f};
    if (type & RegionMixed)
        return {0.5f, 0.5f, 0.5f};
    return {0.6f, 0.4f, 0.6f};
}

namespace {

// A full-height band from x0 to x1 at depth z.
void band(double x0, double x1, const ViewEdges& e, double z)
{
    glBegin(GL_QUADS);
    glVertex3d(x0, e.top, z);
    glVertex3d(x0, e.bottom, z);
    glVertex3d(x1, e.bottom, z);
    glVertex3d(x1, e.top, z);
    glEnd();
}

} // namespace

void TAVGraph::drawRegions(GLW* glw)
{
    // Without runs there is no region layer, so no working range or data edges either.
    if (!glw || regions.empty())
        return;
    const ViewEdges e = viewEdges(*glw);
    const int pt_size = property<int>("pointSize");
    const float px = (e.right - e.left) / float(e.w) * float(std::max(pt_size, 1) - 1);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPolygonMode(GL_FRONT, GL_FILL);

    const int head = diff32(framesInfo.head, offsetX);
    const int tail = diff32(framesInfo.tail, offsetX);
    const double pad = 0.2;
    if (head != tail) {
        glColor4f(0.3f, 0.3f, 0.3f, 0.7f);
        if (float(head) > e.left)
            band(e.left, head - pad, e, 0.0);
        if (e.right > float(tail))
            band(tail + pad, e.right, e, 0.0);
    }

    // A run covers half a period beyond each of its ends.
    const double offset = 0.5 * period;
    for (const Pair& region : regions) {
        const double rend = region.end() * period;
        if (double(e.left) > rend)
            continue;
        const double rbegin = region.begin() * period;
        const double t0 = rbegin - offset, t1 = rend + offset;
        glColor4f(1.f, 1.f, 1.f, 0.5f);
        const ColorRGB c = typeColor(region.type);
        glColor4f(c.r, c.g, c.b, 0.5f);
        band(t0, t1, e, 0.0);
        if (px < 1.0) { // a point adds less than one x unit: the run's edges are worth drawing
            glColor4f(0.3f, 0.3f, 0.5f, 0.8f);
            glBegin(GL_LINES);
            glVertex3d(t0, e.top, 0.1);
            glVertex3d(t0, e.bottom, 0.1);
            glVertex3d(t1, e.bottom, 0.1);
            glVertex3d(t1, e.top, 0.1);
            glEnd();
        }
        if (rbegin > double(e.right))
            break; // runs are ordered by begin: no later one is visible
    }

    glColor4f(0.f, 0.f, 0.f, 0.8f);
    const float start = float(float(framesInfo.start) - pad - float(offsetX));
    if (start > e.left)
        band(e.left, start, e, 0.2);
    const float finish = float(float(sub64(framesInfo.finish, offsetX)) + pad);
    if (e.right > finish)
        band(finish, e.right, e, 0.2);

    glPopAttrib();
}

void TAVGraph::drawCursor(GLW* glw)
{
    const ViewEdges e = viewEdges(*glw);
    const float x = float(sub64(framesInfo.current, offsetX));
    if (e.left > x || x > e.right)
        return;
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    glVertex3d(x, e.top, 0.2);
    glVertex3d(x, e.bottom, 0.2);
    glEnd();
}
