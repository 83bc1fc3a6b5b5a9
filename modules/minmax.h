#pragma once
// Widening of a [min, max] range by a value: strict comparisons, min tested first.
#include "math/vector.h"

inline void minmax(float v, float& _min, float& _max)
{
    if (_min > v)
        _min = v;
    if (v > _max)
        _max = v;
}

inline void minmax(const Vector& v, float& _min, float& _max)
{
    minmax(v.x, _min, _max);
    minmax(v.y, _min, _max);
    minmax(v.z, _min, _max);
}
