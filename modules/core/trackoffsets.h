#pragma once
// Per-track y offsets: every track's value at one reference frame becomes its origin.
// The graph takes them when asked and draws every sample less its track's offset;
// a host that picks drawn samples takes them by the same rule.
#include "math/vector.h"
#include "tav/tavframes.h"
#include "utils/idmap.h"

#include <QtGlobal>

struct TrackOffsets {
    IdMap<Vector> markers;
    IdMap<Vector> rigids;
};

// The absolute frame offsets are taken at: graph x (index) kept within the take's
// frameCount frames (raised to 0 first, then lowered to the last frame), plus offsetX.
qint64 offsetFrame(qint64 index, qint64 frameCount, qint64 offsetX);

// Every track's valid sample at that frame. The last track is the reference: its
// sample index at the frame (within half a period) is used in every track, as all
// tracks are sampled on the same frames. Nothing when the frame is outside it.
TrackOffsets offsetsAt(const TAV::Frames& tracks, qint64 frame, double period);

// A sample less its track's offset, looked up once per id: every sample of a track
// carries the same id, so the map is searched again only when the id changes.
class OffsetOf {
public:
    explicit OffsetOf(const IdMap<Vector>& map) : map(map) {}
    const Vector& operator()(uint32_t id)
    {
        if (!known || id != lastId) {
            offset = Vector();
            map.find(int(id), offset);
            lastId = id;
            known = true;
        }
        return offset;
    }

private:
    const IdMap<Vector>& map;
    bool known = false;
    uint32_t lastId = 0;
    Vector offset;
};
