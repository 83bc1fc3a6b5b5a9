#pragma once
// A take of known smooth motion: markers fixed on a body that moves and turns
// like a walking subject's pelvis, sampled at 100 Hz. Every sample is valid, so
// gaps cut into it have a known truth.
#include "host/c3d/c3dtake.h"
#include "tav/tavframes.h"

#include <cmath>

namespace motion {

constexpr int Markers = 5;
// Body-fixed marker positions (mm): four donors around the target, marker 0.
const float offsets[Markers][3] = {{60, 20, 30}, {0, 0, 0}, {150, 0, 10}, {0, 120, -20}, {90, 80, 100}};

inline void position(int marker, int frame, float& x, float& y, float& z)
{
    const double t = frame / 100.0;
    const double yaw = 0.6 * std::sin(2 * M_PI * 0.4 * t);
    const double px = 1200 * t + 40 * std::sin(2 * M_PI * 0.9 * t);
    const double py = 300 * std::sin(2 * M_PI * 0.25 * t);
    const double pz = 900 + 25 * std::sin(2 * M_PI * 1.8 * t);
    const float* o = offsets[marker];
    x = float(px + std::cos(yaw) * o[0] - std::sin(yaw) * o[1]);
    y = float(py + std::sin(yaw) * o[0] + std::cos(yaw) * o[1]);
    z = float(pz + o[2]);
}

inline TAV::Frames take(int frames)
{
    TAV::Frames t;
    t.resize(frames);
    for (int f = 0; f < frames; ++f) {
        t[f].id = uint32_t(f);
        t[f].time = f;
        for (int m = 0; m < Markers; ++m) {
            TAV::Marker s{uint32_t(m), 0, f, 0, 0, 0, 2.0f};
            position(m, f, s.x, s.y, s.z);
            t[f].markers.append(s);
        }
    }
    return t;
}

} // namespace motion
