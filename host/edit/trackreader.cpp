#include "host/edit/trackreader.h"

#include "host/edit/samplechange.h"

bool TrackReader::valid(uint32_t id, int frame) const
{
    if (id == hide.id && frame >= hide.first && frame <= hide.last)
        return false;
    const TAV::Marker* m = markerAt(frames, frame, id);
    return m && m->cond > 0.0f;
}

bool TrackReader::validThrough(uint32_t id, int first, int last) const
{
    for (int f = first; f <= last; ++f)
        if (!valid(id, f))
            return false;
    return true;
}

Eigen::Vector3d TrackReader::position(uint32_t id, int frame) const
{
    const TAV::Marker* m = markerAt(frames, frame, id);
    return m ? Eigen::Vector3d(m->x, m->y, m->z) : Eigen::Vector3d::Zero();
}
