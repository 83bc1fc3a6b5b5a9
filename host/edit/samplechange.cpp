#include "host/edit/samplechange.h"

#include <algorithm>

const TAV::Marker* markerAt(const TAV::Frames& take, int frame, uint32_t id)
{
    if (frame < 0 || frame >= take.size())
        return nullptr;
    const TAV::Markers& m = take.at(frame).markers;
    const int i = TAV::indexOfId(m, id);
    return i < 0 ? nullptr : &m.at(i);
}

TAV::Marker* markerAt(TAV::Frames& take, int frame, uint32_t id)
{
    if (frame < 0 || frame >= take.size())
        return nullptr;
    // Looked up through const access first, so a frame is detached only when it has the id.
    const int i = TAV::indexOfId(take.at(frame).markers, id);
    return i < 0 ? nullptr : &take[frame].markers[i];
}

bool sameSample(const TAV::Marker& a, const TAV::Marker& b)
{
    return a.id == b.id && a.flags == b.flags && a.time == b.time && a.x == b.x && a.y == b.y && a.z == b.z &&
           a.cond == b.cond;
}

void applyChanges(TAV::Frames& take, const SampleChanges& changes, bool undo)
{
    for (const SampleChange& c : changes)
        if (TAV::Marker* m = markerAt(take, c.frame, c.after.id))
            *m = undo ? c.before : c.after;
}

FrameSpan changedSpan(const SampleChanges& changes)
{
    FrameSpan span;
    for (const SampleChange& c : changes) {
        span.first = span.first < 0 ? c.frame : std::min(span.first, c.frame);
        span.last = std::max(span.last, c.frame);
    }
    return span;
}
