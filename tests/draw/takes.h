#pragma once
// Takes for the drawing tests: single samples and tracks written out by hand, and
// a generated dense take with gaps and poor stretches.
#include "tav/tavframes.h"

#include <QVector>

#include <cmath>
#include <cstdint>
#include <random>

namespace takes {

// A sample without an id: track() gives it one.
inline TAV::Marker marker(int64_t time, float x, float y, float z, float cond = 1.f, uint32_t flags = 0)
{
    return TAV::Marker{0, flags, time, x, y, z, cond};
}

inline TAV::Rigid rigid(int64_t time, float x, float y, float z, float cond = 1.f, uint32_t flags = 0)
{
    return TAV::Rigid{0, flags, time, {x, y, z, 0, 0, 0, 1}, cond};
}

// A track record: the samples of one id, their ids set to it.
inline TAV::Frame track(uint32_t id, QVector<TAV::Marker> markers, QVector<TAV::Rigid> rigids = {})
{
    TAV::Frame f;
    f.id = id;
    for (TAV::Marker& m : markers)
        m.id = id;
    for (TAV::Rigid& r : rigids)
        r.id = id;
    f.markers = markers;
    f.rigids = rigids;
    return f;
}

// How a generated take looks.
struct Shape {
    int markers = 6;
    int rigids = 2;
    int frames = 3000;
    unsigned seed = 1;
    // Frames [gapBegin, gapEnd) are missing in every track (none when equal).
    int gapBegin = 0, gapEnd = 0;
};

// Dense tracks (one sample per frame, time = frame index), ids 0.. for markers and
// then the rigid bodies. Coordinates wander smoothly within about +-40; every
// track has random gaps and poor stretches.
inline TAV::Frames generated(const Shape& s)
{
    std::mt19937 rng(s.seed);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    TAV::Frames take;
    for (int k = 0; k < s.markers + s.rigids; ++k) {
        const float phase = unit(rng) * 6.f, base = unit(rng) * 60.f - 30.f, speed = 0.002f + unit(rng) * 0.02f;
        TAV::Frame f = track(uint32_t(k), {});
        float cond = 2.f;
        for (int i = 0; i < s.frames; ++i) {
            if (unit(rng) < 0.01f) // a new stretch of quality
                cond = unit(rng) < 0.3f ? 0.f : (unit(rng) < 0.5f ? 0.3f + unit(rng) : 2.f);
            const float c = (i >= s.gapBegin && i < s.gapEnd) ? 0.f : cond, a = phase + speed * i;
            const float x = base + 10.f * std::sin(a), y = base + 8.f * std::cos(1.3f * a),
                        z = base - 6.f * std::sin(0.7f * a);
            if (k < s.markers)
                f.markers.append(TAV::Marker{f.id, 0, i, x, y, z, c});
            else
                f.rigids.append(TAV::Rigid{f.id, 0, i, {x, y, z, 0, 0, 0, 1}, c});
        }
        take.append(f);
    }
    return take;
}

} // namespace takes
