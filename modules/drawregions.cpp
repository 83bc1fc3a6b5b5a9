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

namespace {

// What the runs' bands leave in one pixel column, as far as the cull can tell: the
// column keeps the first band whose span holds its centre.
struct Column {
    bool settled = false; // a band certainly holds the centre: later ones are hidden
    bool mixed = false;   // bands of different types may hold it first
    int type = -1;        // the type of those that may
};

} // namespace

// The runs' bands are full height at one depth, drawn after the tracks: a pixel
// column keeps the first band whose span holds its centre. Where that band is
// certain, or all bands that may be first there have one type, the column's colour
// is known: such columns are drawn as whole-pixel quads, neighbours of one type in
// one quad. A band that may be first in a column whose colour is not known is sent
// as it is, after those quads, in the order of the runs. Either way a column gets
// the colour GL gives it in the exact drawing: the quads only ever lie under bands
// of their own type.
bool drawVisibleRegions(const TAVGraph& g, const GLW& glw, const Coverage& coverage)
{
    if (g.regions.empty())
        return true;
    const ViewEdges e = viewEdges(glw);
    const WindowMap& map = coverage.windowMap();
    const double m = coverage.margin();
    if (pointExtraWidth(g, e) < 1.0 || map.bx != 0 || !(map.ax > 0) || !(m < 0.25))
        return false; // outlines are drawn per run, or x is not a column
    const PixelRect& view = coverage.pixels();
    const int width = std::max(view.w, 0);
    std::vector<Column> columns(static_cast<size_t>(width));
    const auto column = [&](double t) { return map.ax * t + map.cx - view.x - 0.5; }; // pixel i's centre at i

    struct Band {
        double t0, t1;
        int type;
    };
    std::vector<Band> asSent;
    const double offset = 0.5 * g.period;
    for (const Pair& region : g.regions) {
        const double rend = region.end() * g.period;
        if (double(e.left) > rend)
            continue;
        const double rbegin = region.begin() * g.period;
        const double t0 = rbegin - offset, t1 = rend + offset;
        const double w0 = column(t0), w1 = column(t1);
        const bool finite = std::isfinite(w0) && std::isfinite(w1);
        // Columns whose centre the band may hold, and those it certainly holds.
        const int p0 = finite ? int(std::max(std::ceil(w0 - m), 0.0)) : 0;
        const int p1 = finite ? int(std::min(std::floor(w1 + m), double(width - 1))) : width - 1;
        const double c0 = finite ? std::ceil(w0 + m) : 1, c1 = finite ? std::floor(w1 - m) : 0;
        bool send = false;
        for (int i = p0; i <= p1; ++i) {
            Column& c = columns[size_t(i)];
            if (c.settled)
                continue;
            c.mixed = c.mixed || (c.type >= 0 && c.type != region.type);
            c.type = region.type;
            const bool certain = i >= c0 && i <= c1;
            c.settled = certain;
            send = send || !certain || c.mixed;
        }
        if (send)
            asSent.push_back(Band{t0, t1, region.type});
        if (rbegin > double(e.right))
            break; // runs are ordered by begin: no later one is visible
    }

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPolygonMode(GL_FRONT, GL_FILL);
    drawWorkingRange(g, e);
    glBegin(GL_QUADS);
    const auto quad = [&e](double t0, double t1, int type) {
        const ColorRGB c = typeColor(type);
        glColor4f(c.r, c.g, c.b, 0.5f);
        glVertex3d(t0, e.top, 0.0);
        glVertex3d(t0, e.bottom, 0.0);
        glVertex3d(t1, e.bottom, 0.0);
        glVertex3d(t1, e.top, 0.0);
    };
    // Pixel i spans window x view.x + i to view.x + i + 1: a quad between those
    // edges holds exactly the centres of its columns.
    const auto edge = [&](int i) { return (view.x + i - map.cx) / map.ax; };
    for (int i = 0; i < width;) {
        const Column& c = columns[size_t(i)];
        int j = i + 1;
        if (c.settled && !c.mixed) {
            while (j < width && columns[size_t(j)].settled && !columns[size_t(j)].mixed &&
                   columns[size_t(j)].type == c.type)
                ++j;
            quad(edge(i), edge(j), c.type);
        }
        i = j;
    }
    for (const Band& b : asSent)
        quad(b.t0, b.t1, b.type);
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
