#pragma once
// The graph's drawing pieces below the graph object: the view's edges as the
// drawing sees them, the vertices of one sample and one segment, and the colour of
// a run type. They emit OpenGL immediate-mode calls and hold no state.
#include "GL/glw.h"
#include "math/vector.h"

#include <QtGlobal>

#include <cstdint>

// The view's size in whole pixels and its data edges, as every drawing step reads them.
struct ViewEdges {
    int w = 0, h = 0;
    float left = 0, right = 0, top = 0, bottom = 0;
};
ViewEdges viewEdges(const GLW& glw);
// A view can be drawn into when it has pixels and finite edges: otherwise point
// sizes turn NaN and vertices infinite.
bool drawable(const ViewEdges& e);

struct ColorRGB {
    float r, g, b;
};
// Colour of axis 0 (x), 1 (y) or 2 (z) where axes are told apart.
inline ColorRGB axisColor(int axis)
{
    const ColorRGB colours[3] = {{0.8f, 0.f, 0.f}, {0.f, 0.8f, 0.f}, {0.f, 0.f, 0.8f}};
    return colours[axis];
}

// Colour of a track vertex on one axis where the block sends each colour once: by
// axis with rgb, else grey, or for rigid points (rb) their own (8.0 clamped by GL).
inline ColorRGB vertexColor(int axis, bool rgb, bool rb = false)
{
    if (rgb)
        return axisColor(axis);
    return rb ? ColorRGB{8.0f, 0.8f, 0.2f} : ColorRGB{0.8f, 0.8f, 0.8f};
}

// One point per bit of channels (1 x, 2 y, 4 z) at x = n, z = 1. Grey, or the
// rigid-body colour for rb; with rgb each axis in its own colour.
void draw_v(int n, const Vector& v, const int& channels, bool rgb, bool rb);

// One segment per bit of channels from (n0, v0) to (n1, v1) at z = 1, each axis
// preceded by its colour. The caller brackets it with glBegin(GL_LINES)/glEnd().
void draw_line(qint64 n0, qint64 n1, const Vector& v0, const Vector& v1, const int& channels, bool rgb);

// Shade of a run of this type (bit set: 1 good, 2 missing, 4 fair, 8 poor, 16 mixed).
ColorRGB typeColor(int type);
