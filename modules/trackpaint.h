#pragma once
// What one paint of the track points and lines reads from the graph and derives
// once. The exact drawing and the fast one share it, so both draw the same points
// and segments.
#include "modules/drawprimitives.h"
#include "modules/core/framex.h"

#include <algorithm>
#include <cstdint>

class GLW;
class TAVGraph;

struct PointPaint {
    ViewEdges view;
    bool lod, fill, rgb, markers, rigids;
    int channels;
    int size;     // GL point size, in pixels
    float px, py; // steps of the level-of-detail filter
};
PointPaint pointPaint(const TAVGraph& g, const GLW& glw);

struct LinePaint {
    bool draw; // false when the view is too far zoomed out for lines
    bool markers, rigids;
    int channels;
    float left, right;
};
LinePaint linePaint(const TAVGraph& g, const GLW& glw);

// Marker and rigid lines alike take their offset from trackOffsets, looked up by
// the first sample's id (rigid points use rbtrackOffsets; the difference stays).
Vector lineOffset(const TAVGraph& g, uint32_t firstId);

// A segment joins two valid samples of strictly increasing time.
template <class T>
bool joins(const T& a, const T& b)
{
    return !(a.cond <= 0) && !(b.cond <= 0) && a.time < b.time;
}

// The first of `size` samples in frame order that is not left of `left`.
template <class T>
int firstAtOrRightOf(const T* d, int size, float left, int64_t offsetX)
{
    return int(std::partition_point(d, d + size, [&](const T& m) { return left > float(frameX(m.time, offsetX)); }) -
               d);
}
