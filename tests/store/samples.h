#pragma once
// Builders for small stores: samples whose time is their frame index.
#include "tav/tavframes.h"

#include <vector>

inline TAV::Marker marker(uint32_t id, int64_t time, float x = 0)
{
    return TAV::Marker{id, 0, time, x, 0, 0, 1.5f};
}

inline TAV::Rigid rigid(uint32_t id, int64_t time, float x = 0)
{
    return TAV::Rigid{id, 0, time, {x, 0, 0, 0, 0, 0, 1}, 1.5f};
}

inline TAV::Markers markers(const std::vector<uint32_t>& ids, int64_t time = 0)
{
    TAV::Markers v;
    for (uint32_t id : ids)
        v.append(marker(id, time));
    return v;
}

inline std::vector<uint32_t> idsOf(const TAV::Markers& v)
{
    std::vector<uint32_t> ids;
    for (const TAV::Marker& m : v)
        ids.push_back(m.id);
    return ids;
}

// Every frame holds markers and rigid bodies 0..ids-1 at their index; x = 100 * frame + id.
inline TAV::Frames denseStore(int frames, uint32_t ids)
{
    TAV::Frames s;
    for (int f = 0; f < frames; ++f) {
        TAV::Frame frame;
        frame.id = uint32_t(f);
        frame.time = f;
        for (uint32_t id = 0; id < ids; ++id) {
            frame.markers.append(marker(id, f, float(100 * f + id)));
            frame.rigids.append(rigid(id, f, float(100 * f + id)));
        }
        s.append(frame);
    }
    return s;
}
