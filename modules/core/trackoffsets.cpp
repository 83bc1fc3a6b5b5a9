#include "modules/core/trackoffsets.h"

#include "utils/saturate.h"

#include <cmath>

qint64 offsetFrame(qint64 index, qint64 frameCount, qint64 offsetX)
{
    if (index < 0)
        index = 0;
    if (index >= frameCount)
        index = sub64(frameCount, 1);
    return add64(index, offsetX);
}

TrackOffsets offsetsAt(const TAV::Frames& tracks, qint64 frame, double period)
{
    TrackOffsets o;
    if (tracks.isEmpty())
        return o;
    const TAV::Frame& reference = tracks.constLast();
    const int tol = saturate_cast<int>(std::fabs(0.5 * period));
    int index = 0;
    if (!reference.markers.isEmpty())
        index = TAV::findIndex(reference.markers, frame, tol);
    else if (!reference.rigids.isEmpty())
        index = TAV::findIndex(reference.rigids, frame, tol);
    else
        index = static_cast<int32_t>(frame);
    if (index < 0)
        return o;
    for (const TAV::Frame& t : tracks) {
        if (t.markers.size() > index) {
            const TAV::Marker& m = t.markers.at(index);
            if (m.cond > 0)
                o.markers[int(m.id)] = Vector(m);
        }
        if (t.rigids.size() > index) {
            const TAV::Rigid& r = t.rigids.at(index);
            if (r.cond > 0)
                o.rigids[int(r.id)] = Vector(r);
        }
    }
    return o;
}
