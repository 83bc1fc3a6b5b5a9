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

// A whole paint: the state block around the points block (points of `size`
// pixels) and what follows the points (lines, the region layer, the cursor).
inline Calls paint(float size, const Calls& points, const Calls& rest = {})
{
    const Calls opening{glrec::PushAttrib(GL_ALL_ATTRIB_BITS), glrec::Disable(GL_LIGHTING), glrec::ShadeModel(GL_FLAT),
                        glrec::Enable(GL_DEPTH_TEST), glrec::Enable(GL_BLEND),
                        glrec::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)};
    return opening + Calls{glrec::PointSize(size), glrec::Begin(GL_POINTS)} + points +
           Calls{glrec::End(), glrec::PointSize(1)} + rest + Calls{glrec::PopAttrib()};
}

const Calls axisColours{glrec::Color3f(0.8f, 0, 0), glrec::Color3f(0, 0.8f, 0), glrec::Color3f(0, 0, 0.8f)};

// One sample as a point per axis of channels (1 x, 2 y, 4 z).
inline Calls point(float x, const Vector& v, int channels = 7, bool rgb = false, bool rigid = false)
{
    Calls c{glrec::Color3f(0.8f, 0.8f, 0.8f)};
    if (rigid)
        c.push_back(glrec::Color3f(8.0f, 0.8f, 0.2f));
    for (int i = 0; i < 3; ++i) {
        if (!(channels & (1 << i)))
            continue;
        if (rgb)
            c.push_back(axisColours[i]);
        c.push_back(glrec::Vertex3f(x, v[i], 1));
    }
    return c;
}

// One segment in its own begin/end pair, as the exact drawing sends it.
inline Calls segment(double x0, double x1, const Vector& v0, const Vector& v1, int channels = 7, bool rgb = false)
{
    Calls c{glrec::Begin(GL_LINES)};
    for (int i = 0; i < 3; ++i) {
        if (!(channels & (1 << i)))
            continue;
        c.push_back(rgb ? axisColours[i] : glrec::Color3f(0.8f, 0.8f, 0.8f));
        c.push_back(glrec::Vertex3d(x0, v0[i], 1));
        c.push_back(glrec::Vertex3d(x1, v1[i], 1));
    }
    c.push_back(glrec::End());
    return c;
}

// A full-height band of the default view from x0 to x1 at depth z.
inline Calls band(double x0, double x1, double z)
{
    return {glrec::Begin(GL_QUADS), glrec::Vertex3d(x0, 25, z), glrec::Vertex3d(x0, -25, z),
            glrec::Vertex3d(x1, -25, z), glrec::Vertex3d(x1, 25, z), glrec::End()};
}

// A run from t0 to t1 in its shade, maybe outlined.
inline Calls run(double t0, double t1, float r, float g, float b, bool outline = true)
{
    Calls c = Calls{glrec::Color4f(1, 1, 1, 0.5f), glrec::Color4f(r, g, b, 0.5f)} + band(t0, t1, 0);
    if (outline)
        c = c + Calls{glrec::Color4f(0.3f, 0.3f, 0.5f, 0.8f), glrec::Begin(GL_LINES), glrec::Vertex3d(t0, 25, 0.1),
                      glrec::Vertex3d(t0, -25, 0.1), glrec::Vertex3d(t1, -25, 0.1), glrec::Vertex3d(t1, 25, 0.1),
                      glrec::End()};
    return c;
}

// The region layer's own attribute block around its calls.
inline Calls layer(const Calls& inner)
{
    return Calls{glrec::PushAttrib(GL_ALL_ATTRIB_BITS), glrec::PolygonMode(GL_FRONT, GL_FILL)} + inner +
           Calls{glrec::PopAttrib()};
}

// The cursor: a white line across the default view at x.
inline Calls cursor(double x)
{
    return {glrec::Color3f(1, 1, 1), glrec::Begin(GL_LINES), glrec::Vertex3d(x, 25, 0.2),
            glrec::Vertex3d(x, -25, 0.2), glrec::End()};
}
