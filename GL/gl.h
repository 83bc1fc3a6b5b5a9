#pragma once
// GL utilities of the host view library: the 2-D camera of a view and the point
// level-of-detail filter. The system's OpenGL header is reached as <GL/gl.h>: the
// project root is only on the quote include path, so that name is never this file.
#include <GL/gl.h>

#include "math/vector.h"

#include <cmath>
#include <cstddef>

namespace GL {

enum AlignmentFlag {
    AlignLeft = 1,
    AlignHCenter = 4,
    AlignTop = 32,
    AlignBottom = 64,
    AlignVCenter = 128,
    AlignCenter = 132,
};

// The data coordinates at the alignment point and the pixels per data unit.
// Top tests AlignBottom and Bottom tests AlignTop: with top alignment the bottom
// edge is pos.y + (h - 1) / scale.y and Cursor measures y from that edge.
struct Viewport {
    Vector pos;
    Vector scale{1, 1, 1};
    Vector minScale{1e-9f, 1e-9f, 1e-9f};
    Vector maxScale{1e9f, 1e9f, 1e9f};
    GLint viewport[4] = {0, 0, 0, 0};
    int align = AlignLeft | AlignBottom;

    float Left(int w, float = 0.f) const
    {
        if (align & AlignHCenter)
            return float(pos.x - (w * 0.5) / scale.x);
        return pos.x;
    }
    float Right(int w, float = 0.f) const
    {
        if (align & AlignHCenter)
            return float(pos.x + (w * 0.5) / scale.x);
        return pos.x + (w - 1) / scale.x;
    }
    float Top(int h, float = 0.f) const
    {
        if ((align & AlignVCenter) == AlignVCenter)
            return float(pos.y + (h * 0.5) / scale.y);
        if (align & AlignBottom)
            return pos.y + (h - 1) / scale.y;
        return pos.y;
    }
    float Bottom(int h, float = 0.f) const
    {
        if ((align & AlignVCenter) == AlignVCenter)
            return float(pos.y - (h * 0.5) / scale.y);
        if (align & AlignTop)
            return pos.y + (h - 1) / scale.y;
        return pos.y;
    }
    Vector Cursor(float x, float y, int w, int h) const
    {
        Vector v;
        if (align & AlignHCenter)
            v.x = float((x - w * 0.5) / scale.x + pos.x);
        else
            v.x = pos.x + x / scale.x;
        if ((align & AlignVCenter) == AlignVCenter)
            v.y = float((y - h * 0.5) / scale.y + pos.y);
        else if (align & AlignTop)
            v.y = pos.y - (y - (h - 1)) / scale.y;
        else
            v.y = y / scale.y + pos.y;
        v.z = 0;
        return v;
    }
};

// Lets a point through when it moved at least px along x or py along any
// coordinate since the last point it let through.
struct PLOD4 {
    float px, py;
    size_t last_n = 0;
    Vector last_p;

    PLOD4(float px, float py) : px(px), py(py) {}

    bool operator()(size_t n, const Vector& p)
    {
        if (float(n - last_n) >= px || std::fabs(p.x - last_p.x) >= py || std::fabs(p.y - last_p.y) >= py ||
            std::fabs(p.z - last_p.z) >= py) {
            last_n = n;
            last_p = p;
            return true;
        }
        return false;
    }
};

} // namespace GL
