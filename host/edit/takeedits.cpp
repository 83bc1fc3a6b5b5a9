#include "host/edit/takeedits.h"

#include "host/c3d/c3dtake.h"

#include <algorithm>

TAV::Marker missingSample(uint32_t id, int64_t time)
{
    return TAV::Marker{id, 0, time, 0.0f, 0.0f, 0.0f, C3D::MissingCondition};
}

namespace {

FrameSpan clipped(FrameSpan span, const TAV::Frames& take)
{
    return FrameSpan{std::max(span.first, 0), std::min(span.last, take.size() - 1)};
}

} // namespace

SampleChanges deletion(const TAV::Frames& take, const QList<int>& ids, FrameSpan span)
{
    SampleChanges changes;
    span = clipped(span, take);
    for (int id : ids)
        for (int f = span.first; f <= span.last; ++f) {
            const TAV::Marker* m = markerAt(take, f, uint32_t(id));
            if (!m)
                continue;
            const TAV::Marker gone = missingSample(m->id, m->time);
            if (!sameSample(*m, gone))
                changes.push_back({f, *m, gone});
        }
    return changes;
}

SampleChanges reversion(const TAV::Frames& take, const TAV::Frames& original, const QList<int>& ids,
                        FrameSpan span)
{
    SampleChanges changes;
    span = clipped(span, take);
    for (int id : ids)
        for (int f = span.first; f <= span.last; ++f) {
            const TAV::Marker* now = markerAt(take, f, uint32_t(id));
            const TAV::Marker* was = markerAt(original, f, uint32_t(id));
            if (now && was && !sameSample(*now, *was))
                changes.push_back({f, *now, *was});
        }
    return changes;
}
