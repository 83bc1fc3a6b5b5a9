#pragma once
// Vertices at the tracks' depth with their colours, collected in the order the
// exact drawing sends them and sent at once.
#include "modules/drawprimitives.h"

#include <GL/gl.h>

#include <vector>

class VertexList {
public:
    void add(float x, float y, const ColorRGB& c)
    {
        xyz.insert(xyz.end(), {x, y, 1.0f});
        rgb.insert(rgb.end(), {c.r, c.g, c.b});
    }
    // One block of `mode`: a vertex array where the client state allows one,
    // immediate mode otherwise. The same pixels either way.
    void draw(GLenum mode) const;

private:
    std::vector<float> xyz, rgb;
};
