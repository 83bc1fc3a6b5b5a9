#pragma once
// Which tracks and samples a paint shows.
#include "modules/core/sampleflags.h"
#include "tav/tavframe.h"

#include <QList>

#include <cstdint>

// A track of one kind is shown when nothing at all is selected, or when the lists of
// its kind (own) hold its id.
inline bool trackShown(const QList<int>& own, const QList<int>& markers, const QList<int>& rigids, uint32_t id)
{
    return (markers.isEmpty() && rigids.isEmpty()) || own.contains(int(id));
}

// A sample is drawn as a point unless its condition is zero or less (a NaN one is
// drawn); a filled marker only while filling is shown (rigid samples carry no fill).
inline bool pointShown(const TAV::Marker& m, bool fill) { return !(m.cond <= 0) && (fill || !isFilled(m)); }
inline bool pointShown(const TAV::Rigid& r, bool) { return !(r.cond <= 0); }
