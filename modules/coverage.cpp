#include "modules/coverage.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace {

// How far a one-pixel segment may reach beyond its end points, in each axis: half a
// pixel for the diamond rule, a little more for drivers that draw it as a quad.
constexpr double lineReach = 1.0;

// floor and ceil of values that fit an int (a point's centre is within the view).
int floorInt(double v)
{
    const int i = int(v);
    return i - (v < i);
}
int ceilInt(double v)
{
    const int i = int(v);
    return i + (v > i);
}

// Pixel i has its centre at i + 0.5. The first pixel whose centre is at or right
// of `lo`, and the last at or left of `hi`, kept within [a, b] (the bitmap widened
// by one: beyond it nothing is certain, and one pixel outside is enough to say so).
// Clamped before narrowing, so that far-off values do not overflow an int.
int firstCentre(double lo, int a, int b)
{
    const double v = lo - 0.5;
    if (!(v >= a))
        return a;
    return v > b ? b : ceilInt(v);
}
int lastCentre(double hi, int a, int b)
{
    const double v = hi - 0.5;
    if (!(v >= a))
        return a;
    return v > b ? b : floorInt(v);
}

} // namespace

double coverageMargin(double magnitude, int subpixelBits)
{
    // A vertex snapped to a grid of 2^-bits pixels moves by at most one step (less
    // when the driver rounds); a float product or sum is off by half a unit in the
    // last place (2^-24 relative), and a transform takes a handful of them, given
    // ample room here.
    return std::ldexp(1.0, -std::clamp(subpixelBits, 4, 16)) + 1e-6 * std::fabs(magnitude);
}

Coverage::Coverage(const WindowMap& map, const PixelRect& view, double margin) : map(map), view(view), m(margin)
{
    const int pad = 8;
    x0 = view.x - pad;
    y0 = view.y - pad;
    w = std::max(view.w, 0) + 2 * pad;
    h = std::max(view.h, 0) + 2 * pad;
    words = (h + 63) / 64;
    bits.assign(size_t(words) * size_t(w), 0);
    aligned = map.bx == 0 && map.ay == 0;
}

namespace {

// Bits lo to hi (0 to 63) of a word.
uint64_t bitRange(int lo, int hi)
{
    return (hi == 63 ? ~uint64_t(0) : ((uint64_t(1) << (hi + 1)) - 1)) & ~((uint64_t(1) << lo) - 1);
}

} // namespace

bool Coverage::certain(int px, int py) const
{
    const int i = px - x0, j = py - y0;
    if (i < 0 || j < 0 || i >= w || j >= h)
        return false;
    return (bits[size_t(i) * size_t(words) + size_t(j / 64)] >> (j % 64)) & 1u;
}

// Pixels outside the bitmap are never certain, so a primitive reaching them is sent.
bool Coverage::allCertain(int i0, int i1, int j0, int j1) const
{
    if (i0 > i1 || j0 > j1)
        return true;
    for (const Box& r : recent)
        if (i0 >= r.i0 && i1 <= r.i1 && j0 >= r.j0 && j1 <= r.j1)
            return true;
    if (!bitsCertain(i0, i1, j0, j1))
        return false;
    recent[nextRecent] = Box{i0, i1, j0, j1};
    nextRecent = (nextRecent + 1) % 4;
    return true;
}

bool Coverage::bitsCertain(int i0, int i1, int j0, int j1) const
{
    if (i0 < x0 || j0 < y0 || i1 >= x0 + w || j1 >= y0 + h)
        return false;
    const int a = j0 - y0, b = j1 - y0;
    const uint64_t* column = &bits[size_t(i0 - x0) * size_t(words)];
    if (a / 64 == b / 64) {
        const uint64_t want = bitRange(a % 64, b % 64);
        for (int i = i0; i <= i1; ++i, column += words)
            if ((column[a / 64] & want) != want)
                return false;
        return true;
    }
    for (int i = i0; i <= i1; ++i, column += words)
        for (int word = a / 64; word <= b / 64; ++word) {
            const uint64_t want = bitRange(std::max(a, word * 64) - word * 64, std::min(b, word * 64 + 63) - word * 64);
            if ((column[word] & want) != want)
                return false;
        }
    return true;
}

void Coverage::mark(int i0, int i1, int j0, int j1)
{
    const int a = std::max(j0, y0) - y0, b = std::min(j1, y0 + h - 1) - y0;
    if (a > b)
        return;
    for (int i = std::max(i0, x0) - x0; i <= std::min(i1, x0 + w - 1) - x0; ++i) {
        uint64_t* column = &bits[size_t(i) * size_t(words)];
        for (int word = a / 64; word <= b / 64; ++word)
            column[word] |= bitRange(std::max(a, word * 64) - word * 64, std::min(b, word * 64 + 63) - word * 64);
    }
}

// Callers keep to the bitmap: mark() clamps, and a segment marks only between its
// ends, which are inside the view.
void Coverage::markPixel(int i, int j)
{
    const int a = i - x0, b = j - y0;
    assert(a >= 0 && b >= 0 && a < w && b < h);
    bits[size_t(a) * size_t(words) + size_t(b / 64)] |= uint64_t(1) << (b % 64);
}

// Whether GL certainly keeps a vertex here: inside the view by more than the margin.
bool Coverage::centreInside(double wx, double wy) const
{
    return wx > view.x + m && wx < view.x + view.w - m && wy > view.y + m && wy < view.y + view.h - m;
}

bool Coverage::point(double x, double y, int size)
{
    const double wx = map.ax * x + map.bx * y + map.cx;
    const double wy = map.ay * x + map.by * y + map.cy;
    if (!(wx >= view.x - m && wx <= view.x + view.w + m && wy >= view.y - m && wy <= view.y + view.h + m))
        return !std::isfinite(wx) || !std::isfinite(wy); // certainly clipped; what is not finite is left to GL
    // Pixel i's centre i + 0.5 lies within r of c for i in [ceil(c - r - 0.5), floor(c + r - 0.5)].
    const double possible = size * 0.5 + m + 0.5, certain = size * 0.5 - m - 0.5;
    if (allCertain(ceilInt(wx - possible), floorInt(wx + possible - 1), ceilInt(wy - possible),
                   floorInt(wy + possible - 1)))
        return false;
    if (centreInside(wx, wy))
        mark(ceilInt(wx - certain - 1), floorInt(wx + certain), ceilInt(wy - certain - 1), floorInt(wy + certain));
    return true;
}

bool Coverage::segmentsCovered(double x0, double x1, double y0, double y1) const
{
    return boxCovered(x0, x1, y0, y1, lineReach + m);
}

// A point may write the pixels whose centres lie within half its size, and the
// margin, of its centre (as in point()).
bool Coverage::pointsCovered(double x0, double x1, double y0, double y1, int size) const
{
    return boxCovered(x0, x1, y0, y1, size * 0.5 + m);
}

// Every pixel whose centre lies within `reach` of the box's window image.
bool Coverage::boxCovered(double x0d, double x1d, double y0d, double y1d, double reach) const
{
    double lx = HUGE_VAL, hx = -HUGE_VAL, ly = HUGE_VAL, hy = -HUGE_VAL;
    if (aligned) {
        const double a = map.ax * x0d + map.cx, b = map.ax * x1d + map.cx;
        const double c = map.by * y0d + map.cy, d = map.by * y1d + map.cy;
        if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(c) || !std::isfinite(d))
            return false;
        lx = std::min(a, b);
        hx = std::max(a, b);
        ly = std::min(c, d);
        hy = std::max(c, d);
    } else {
        for (double x : {x0d, x1d})
            for (double y : {y0d, y1d}) {
                const double wx = map.ax * x + map.bx * y + map.cx, wy = map.ay * x + map.by * y + map.cy;
                if (!std::isfinite(wx) || !std::isfinite(wy))
                    return false;
                lx = std::min(lx, wx);
                hx = std::max(hx, wx);
                ly = std::min(ly, wy);
                hy = std::max(hy, wy);
            }
    }
    const int bx0 = x0 - 1, bx1 = x0 + w, by0 = y0 - 1, by1 = y0 + h;
    return allCertain(firstCentre(lx - reach, bx0, bx1), lastCentre(hx + reach, bx0, bx1),
                      firstCentre(ly - reach, by0, by1), lastCentre(hy + reach, by0, by1));
}

bool Coverage::segment(double x0d, double y0d, double x1d, double y1d)
{
    if (segmentsCovered(x0d, x1d, y0d, y1d))
        return false;
    const double ax = map.ax * x0d + map.bx * y0d + map.cx, ay = map.ay * x0d + map.by * y0d + map.cy;
    const double bx = map.ax * x1d + map.bx * y1d + map.cx, by = map.ay * x1d + map.by * y1d + map.cy;
    if (!centreInside(ax, ay) || !centreInside(bx, by))
        return true; // clipping may shorten it: nothing is certain
    // Along the major axis, every pixel centre line crossed at least half a pixel
    // from both ends: there the segment passes through the pixel's diamond (and a
    // quad of width one covers its centre) when it crosses within half a pixel of the
    // centre, less the margin twice (both ends may move).
    const bool yMajor = std::fabs(by - ay) >= std::fabs(bx - ax);
    const double u0 = yMajor ? ay : ax, u1 = yMajor ? by : bx, v0 = yMajor ? ax : ay, v1 = yMajor ? bx : by;
    if (u0 == u1)
        return true;
    const double lo = std::min(u0, u1) + 0.5 + 2 * m, hi = std::max(u0, u1) - 0.5 - 2 * m;
    const double slope = (v1 - v0) / (u1 - u0);
    // Both ends are inside the view, so every centre between them fits an int.
    for (int c = ceilInt(lo - 0.5), last = floorInt(hi - 0.5); c <= last; ++c) {
        const double v = v0 + (c + 0.5 - u0) * slope;
        const int cell = floorInt(v);
        if (std::fabs(v - (cell + 0.5)) < 0.5 - 2 * m) {
            if (yMajor)
                markPixel(cell, c);
            else
                markPixel(c, cell);
        }
    }
    return true;
}
