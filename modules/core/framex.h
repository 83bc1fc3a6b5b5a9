#pragma once
// Graph x of a frame number or sample time: less the frame range's start (offsetX).
#include "utils/saturate.h"

#include <cstdint>

// Exact in 64 bits, clamped at the ends: what lines, the cursor and the view's range use.
inline int64_t frameX(int64_t time, int64_t offsetX) { return sub64(time, offsetX); }

// Narrowed to a 32-bit int: where points and the working range's ends are drawn,
// as those vertices are given an int.
inline int32_t frameX32(int64_t time, int64_t offsetX) { return diff32(time, offsetX); }

// Microseconds from one frame to the next at freq frames per second; 1 without a rate,
// so that runs are stepped in frames.
inline double framePeriod(float freq) { return freq > 0.0f ? 1000000.0 / double(freq) : 1.0; }
