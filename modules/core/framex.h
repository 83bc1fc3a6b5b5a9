#pragma once
// Graph x of a frame number or sample time: less the frame range's start (offsetX).
#include "utils/saturate.h"

#include <algorithm>
#include <cstdint>
#include <limits>

// Exact in 64 bits, clamped at the ends: what lines, the cursor and the view's range use.
inline int64_t frameX(int64_t time, int64_t offsetX) { return sub64(time, offsetX); }

// Narrowed to a 32-bit int: where points and the working range's ends are drawn,
// as those vertices are given an int.
inline int32_t frameX32(int64_t time, int64_t offsetX) { return diff32(time, offsetX); }

// Microseconds from one frame to the next at freq frames per second; 1 without a rate,
// so that runs are stepped in frames.
inline double framePeriod(float freq) { return freq > 0.0f ? 1000000.0 / double(freq) : 1.0; }

// Where a sample's point is drawn along x: its 32-bit x, as the float GL is given.
template <class T>
double pointX(const T& sample, int64_t offsetX)
{
    return double(float(frameX32(sample.time, offsetX)));
}

// The samples [begin, end), in frame order, whose point x maps to [lo, hi] under
// `to`, an ascending map. Where x stays within 32 bits it ascends with the samples
// and they are one stretch, found by bisection; otherwise all of them are returned.
template <class T, class Map>
void pointStretch(const T*& begin, const T*& end, int64_t offsetX, Map to, double lo, double hi)
{
    if (begin == end)
        return;
    const int64_t first = frameX(begin->time, offsetX), last = frameX((end - 1)->time, offsetX);
    if (first < std::numeric_limits<int32_t>::min() || first > last || last > std::numeric_limits<int32_t>::max())
        return;
    begin = std::partition_point(begin, end, [&](const T& s) { return to(pointX(s, offsetX)) < lo; });
    end = std::partition_point(begin, end, [&](const T& s) { return to(pointX(s, offsetX)) <= hi; });
}
