// The region layer: the working range, the shaded runs with their outlines and
// the areas outside the data; and the frame cursor above them.
#include "GL/gl.h"
#include "modules/drawprimitives.h"
#include "modules/drawvisible.h"
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "utils/saturate.h"

#include <algorithm>
#include <cmath>
#include <vector>

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

constexpr double pad = 0.2; // the working range's and the data's edges stand off their frames

// The data width of one point less one pixel: below one x unit the runs' edges are
// worth drawing.
float pointExtraWidth(const TAVGraph& g, const ViewEdges& e)
{
    const int pt_size = g.property<int>(GraphProperty::pointSize);
    return (e.right - e.left) / float(e.w) * float(std::max(pt_size, 1) - 1);
}

// Grey over the frames outside the working range (head to tail), when it is set.
void drawWorkingRange(const TAVGraph& g, const ViewEdges& e)
{
    const int head = frameX32(g.framesInfo.head, g.offsetX);
    const int tail = frameX32(g.framesInfo.tail, g.offsetX);
    if (head != tail) {
        glColor4f(0.3f, 0.3f, 0.3f, 0.7f);
        if (float(head) > e.left)
            band(e.left, head - pad, e, 0.0);
        if (e.right > float(tail))
            band(tail + pad, e.right, e, 0.0);
    }
}

// Dark over the view beyond the first and last frame, above the runs.
void drawOutsideData(const TAVGraph& g, const ViewEdges& e)
{
    glColor4f(0.f, 0.f, 0.f, 0.8f);
    const float start = float(float(g.framesInfo.start) - pad - float(g.offsetX));
    if (start > e.left)
        band(e.left, start, e, 0.2);
    const float finish = float(float(frameX(g.framesInfo.finish, g.offsetX)) + pad);
    if (e.right > finish)
        band(finish, e.right, e, 0.2);
}

} // namespace

void TAVGraph::drawRegions(GLW* glw)
{
    // Without runs there is no region layer, so no working range or data edges either.
    if (!glw || regions.empty())
        return;
    const ViewEdges e = viewEdges(*glw);
    const float px = pointExtraWidth(*this, e);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPolygonMode(GL_FRONT, GL_FILL);
    drawWorkingRange(*this, e);

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
        if (px < 1.0) {
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

    drawOutsideData(*this, e);
    glPopAttrib();
}

// The runs' bands are full height at one depth, drawn after the tracks: a pixel
// column keeps the first band that reaches it. A band is sent only when it can
// reach a column no earlier band certainly covers, and a band of the same colour
// that starts exactly where the previous one sent ends extends it.
bool drawVisibleRegions(const TAVGraph& g, const GLW& glw, const Coverage& coverage)
{
    if (g.regions.empty())
        return true;
    const ViewEdges e = viewEdges(glw);
    const WindowMap& map = coverage.windowMap();
    if (pointExtraWidth(g, e) < 1.0 || map.bx != 0 || !(map.ax > 0))
        return false; // outlines are drawn per run, or x is not a column
    const PixelRect& view = coverage.pixels();
    const double m = coverage.margin();
    std::vector<char> covered(size_t(std::max(view.w, 0)), 0);
    const auto column = [&](double wx) { return wx - view.x - 0.5; }; // pixel i's centre at column(...) == i

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPolygonMode(GL_FRONT, GL_FILL);
    drawWorkingRange(g, e);

    glBegin(GL_QUADS);
    bool pending = false;
    double p0 = 0, p1 = 0;
    int pType = 0;
    const auto flush = [&] {
        if (!pending)
            return;
        const ColorRGB c = typeColor(pType);
        glColor4f(c.r, c.g, c.b, 0.5f);
        glVertex3d(p0, e.top, 0.0);
        glVertex3d(p0, e.bottom, 0.0);
        glVertex3d(p1, e.bottom, 0.0);
        glVertex3d(p1, e.top, 0.0);
        pending = false;
    };
    // Bands that follow each other edge to edge (the same double) leave no pixel
    // centre between them uncovered: GL fills a shared edge once. So every centre
    // inside such a chain, by more than the margin, is certainly written, however
    // narrow its bands are.
    double chainFrom = 0, chainTo = 0, chainEnd = std::nan("");
    double markedTo = -1; // the last column marked in the current chain
    const double last = double(view.w) - 1;
    const double offset = 0.5 * g.period;
    for (const Pair& region : g.regions) {
        const double rend = region.end() * g.period;
        if (double(e.left) > rend)
            continue;
        const double rbegin = region.begin() * g.period;
        const double t0 = rbegin - offset, t1 = rend + offset;
        const double w0 = column(map.ax * t0 + map.cx), w1 = column(map.ax * t1 + map.cx);
        const double lo = std::max(std::ceil(w0 - m), 0.0), hi = std::min(std::floor(w1 + m), last);
        bool adds = !std::isfinite(w0) || !std::isfinite(w1); // left to GL
        for (double i = lo; i <= hi && !adds; ++i)
            adds = !covered[size_t(i)];
        if (adds) {
            if (!(pending && pType == region.type && p1 == t0)) {
                flush();
                pending = true;
                p0 = t0;
                pType = region.type;
            }
            p1 = t1;
        } else {
            flush();
        }
        // A band left out adds no centre that is not certain already, so the chain
        // goes on through it.
        if (t0 == chainEnd) {
            chainTo = w1;
        } else {
            chainFrom = w0;
            chainTo = w1;
            markedTo = std::ceil(chainFrom + m) - 1;
        }
        chainEnd = t1;
        for (double i = std::max(markedTo + 1, 0.0); i <= std::min(std::floor(chainTo - m), last); ++i)
            covered[size_t(i)] = 1;
        markedTo = std::max(markedTo, std::floor(chainTo - m));
        if (rbegin > double(e.right))
            break;
    }
    flush();
    glEnd();

    drawOutsideData(g, e);
    glPopAttrib();
    return true;
}

void TAVGraph::drawCursor(GLW* glw)
{
    const ViewEdges e = viewEdges(*glw);
    const float x = float(frameX(framesInfo.current, offsetX));
    if (e.left > x || x > e.right)
        return;
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    glVertex3d(x, e.top, 0.2);
    glVertex3d(x, e.bottom, 0.2);
    glEnd();
}
