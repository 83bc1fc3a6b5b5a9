#pragma once
// A sample's three coordinates, and the float after them, as one vector of four
// lanes: a test of all three coordinates is then one operation where the processor
// has SIMD, and plain float arithmetic, lane by lane, where it has not.
#include "math/vector.h"
#include "tav/tavframe.h"

#include <cstddef>
#include <cstring>

typedef float Lanes __attribute__((vector_size(16)));
typedef int LaneMask __attribute__((vector_size(16)));

inline Lanes lanesAt(const void* record, size_t offset)
{
    Lanes v;
    std::memcpy(&v, static_cast<const char*>(record) + offset, sizeof v);
    return v;
}
// x, y, z and cond of a marker; the position and the first orientation value of a rigid body.
inline Lanes lanesOf(const TAV::Marker& m) { return lanesAt(&m, offsetof(TAV::Marker, x)); }
inline Lanes lanesOf(const TAV::Rigid& r) { return lanesAt(&r, offsetof(TAV::Rigid, pose)); }
inline Lanes lanesOf(const Vector& v) { return Lanes{v.x, v.y, v.z, 0.f}; }
inline Lanes splat(float f) { return Lanes{f, f, f, f}; }
inline Lanes absLanes(Lanes v) { return Lanes(LaneMask(v) & 0x7fffffff); }
// Whether the test held in lane 0, 1 or 2.
inline bool anyOfThree(LaneMask m)
{
#if defined(__SSE__)
    return __builtin_ia32_movmskps(Lanes(m)) & 7;
#else
    return (m[0] | m[1] | m[2]) != 0;
#endif
}
