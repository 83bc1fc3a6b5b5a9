#pragma once
// A graph painting into a view without a window, every GL call recorded; and the
// call sequences that the drawing is expected to make, written out independently.
#include "modules/tavgraph.h"
#include "tests/glrecorder/glrecorder.h"

#include <gtest/gtest.h>

#include <string>

using glrec::Calls;

inline Calls operator+(Calls a, const Calls& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Paints into a view of 101 x 51 pixels showing x 0..100 and y -25..25.
class DrawStream : public testing::Test {
protected:
    TAVGraph graph;
    GLW view;

    void SetUp() override
    {
        std::string which;
        ASSERT_TRUE(glrec::bound(&which)) << which << " does not resolve to the recorder: calls would reach libGL";
        view.rect = QRectF(0, 0, 101, 51);
        view.viewport.pos = Vector(0, -25, 0);
        view.setProperty("visible", true);
        graph.framesInfo.current = -1000; // the cursor stays out of the view unless a test moves it
    }

    Calls draw()
    {
        glrec::reset();
        graph.Draw2D(&view);
        return glrec::calls();
    }
};

// The state block around a paint.
inline Calls opening()
{
    return {glrec::PushAttrib(GL_ALL_ATTRIB_BITS), glrec::Disable(GL_LIGHTING), glrec::ShadeModel(GL_FLAT),
            glrec::Enable(GL_DEPTH_TEST), glrec::Enable(GL_BLEND),
            glrec::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)};
}

// The points block: size, then the vertices of every point.
inline Calls pointsBlock(float size, const Calls& points)
{
    return Calls{glrec::PointSize(size), glrec::Begin(GL_POINTS)} + points + Calls{glrec::End(), glrec::PointSize(1)};
}

// One sample as a point per axis.
inline Calls point(float x, const Vector& v, int channels = 7, bool rgb = false, bool rigid = false)
{
    Calls c{glrec::Color3f(0.8f, 0.8f, 0.8f)};
    if (rigid)
        c.push_back(glrec::Color3f(8.0f, 0.8f, 0.2f));
    const float axis[3] = {v.x, v.y, v.z};
    const Calls colours{glrec::Color3f(0.8f, 0, 0), glrec::Color3f(0, 0.8f, 0), glrec::Color3f(0, 0, 0.8f)};
    for (int i = 0; i < 3; ++i) {
        if (!(channels & (1 << i)))
            continue;
        if (rgb)
            c.push_back(colours[i]);
        c.push_back(glrec::Vertex3f(x, axis[i], 1));
    }
    return c;
}

// The segment calls for one pair of samples, without their begin/end.
inline Calls segmentVertices(double x0, double x1, const Vector& v0, const Vector& v1, int channels = 7,
                             bool rgb = false)
{
    Calls c;
    const float a[3] = {v0.x, v0.y, v0.z}, b[3] = {v1.x, v1.y, v1.z};
    const Calls colours{glrec::Color3f(0.8f, 0, 0), glrec::Color3f(0, 0.8f, 0), glrec::Color3f(0, 0, 0.8f)};
    for (int i = 0; i < 3; ++i) {
        if (!(channels & (1 << i)))
            continue;
        c.push_back(rgb ? colours[i] : glrec::Color3f(0.8f, 0.8f, 0.8f));
        c.push_back(glrec::Vertex3d(x0, a[i], 1));
        c.push_back(glrec::Vertex3d(x1, b[i], 1));
    }
    return c;
}

// One segment in its own begin/end pair, as the exact drawing sends it.
inline Calls segment(double x0, double x1, const Vector& v0, const Vector& v1, int channels = 7, bool rgb = false)
{
    return Calls{glrec::Begin(GL_LINES)} + segmentVertices(x0, x1, v0, v1, channels, rgb) + Calls{glrec::End()};
}

// A full-height band from x0 to x1 at depth z, as the region layer draws it.
inline Calls band(double x0, double x1, double top, double bottom, double z)
{
    return {glrec::Begin(GL_QUADS), glrec::Vertex3d(x0, top, z), glrec::Vertex3d(x0, bottom, z),
            glrec::Vertex3d(x1, bottom, z), glrec::Vertex3d(x1, top, z), glrec::End()};
}

// Index of the n-th call (from 0) with this name, or -1.
inline int nth(const Calls& c, const std::string& name, int n)
{
    for (size_t i = 0; i < c.size(); ++i)
        if (c[i].name == name && n-- == 0)
            return int(i);
    return -1;
}

inline Calls slice(const Calls& c, int from, int to) { return Calls(c.begin() + from, c.begin() + to); }

// The points block of a paint: its two glPointSize calls and what lies between.
inline Calls pointsPart(const Calls& c)
{
    const int a = nth(c, "glPointSize", 0), b = nth(c, "glPointSize", 1);
    return a < 0 || b < 0 ? Calls{} : slice(c, a, b + 1);
}

// What a paint sends after its points and before the closing glPopAttrib: the
// lines, when the paint has no runs and its cursor is out of the view.
inline Calls afterPoints(const Calls& c)
{
    const int b = nth(c, "glPointSize", 1);
    return b < 0 || c.empty() ? Calls{} : slice(c, b + 1, int(c.size()) - 1);
}
