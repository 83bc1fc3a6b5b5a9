#pragma once
// Flag bits of a sample that the graph reads.
#include <cstdint>

// A filled (interpolated) marker sample: hidden while the graph's "enableFill" is off.
constexpr uint32_t FilledFlag = 0x10;

template <class T>
bool isFilled(const T& sample)
{
    return (sample.flags & FilledFlag) != 0;
}
