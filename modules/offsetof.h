#pragma once
// Per-sample offset look-up for the walks over one track: every sample of a track
// carries the same id, so the map is searched again only when the id changes.
#include "math/vector.h"
#include "utils/idmap.h"

#include <cstdint>

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
