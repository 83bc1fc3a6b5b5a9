#pragma once
// Takes for the drawing tests: single samples and tracks written out by hand, and
// a generated dense take with gaps, poor stretches and filled samples.
#include "tav/tavframes.h"

#include <QVector>

#include <cmath>
#include <cstdint>
#include <random>

namespace takes {

inline TAV::Marker marker(int64_t time, float x, float y, float z, float cond = 1.f, uint32_t flags = 0,
                          uint32_t id = 0)
{
    return TAV::Marker{id, flags, time, x, y, z, cond};
}

inline TAV::Rigid rigid(int64_t time, float x, float y, float z, float cond = 1.f, uint32_t flags = 0,
                        uint32_t id = 0)
{
    TAV::Rigid r{id, flags, time, {x, y, z, 0, 0, 0, 1}, cond};
    return r;
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
// track has random gaps, poor and fair stretches, and filled samples.
inline TAV::Frames generated(const Shape& s)
{
    std::mt19937 rng(s.seed);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    TAV::Frames take;
    const int tracks = s.markers + s.rigids;
    for (int k = 0; k < tracks; ++k) {
        const bool isRigid = k >= s.markers;
        const float phase = unit(rng) * 6.f, base = unit(rng) * 60.f - 30.f, speed = 0.002f + unit(rng) * 0.02f;
        QVector<TAV::Marker> ms;
        QVector<TAV::Rigid> rs;
        float cond = 2.f;
        for (int i = 0; i < s.frames; ++i) {
            if (unit(rng) < 0.01f) // a new stretch of quality
                cond = unit(rng) < 0.3f ? 0.f : (unit(rng) < 0.5f ? 0.3f + unit(rng) : 2.f);
            const float c = (i >= s.gapBegin && i < s.gapEnd) ? 0.f : cond;
            const float a = phase + speed * i;
            const float x = base + 10.f * std::sin(a), y = base + 8.f * std::cos(1.3f * a),
                        z = base - 6.f * std::sin(0.7f * a);
            const uint32_t flags = unit(rng) < 0.05f ? 0x10 : 0;
            if (isRigid)
                rs.append(rigid(i, x, y, z, c, flags));
            else
                ms.append(marker(i, x, y, z, c, flags));
        }
        take.append(track(uint32_t(k), ms, rs));
    }
    return take;
}

} // namespace takes
