#include "modules/trackindex.h"

#include "modules/lanes.h"

#include <algorithm>
#include <cmath>

namespace {

SampleBlock emptyBlock()
{
    SampleBlock b;
    for (int axis = 0; axis < 3; ++axis) {
        b.lo[axis] = HUGE_VALF;
        b.hi[axis] = -HUGE_VALF;
    }
    b.timeLo = INT64_MAX;
    b.timeHi = INT64_MIN;
    b.id = 0;
    b.oneId = true;
    b.finite = true;
    b.ascending = true;
    return b;
}

void widen(SampleBlock& into, const SampleBlock& b)
{
    if (b.empty())
        return;
    if (into.empty())
        into.id = b.id;
    into.oneId = into.oneId && b.oneId && b.id == into.id;
    into.finite = into.finite && b.finite;
    into.ascending = into.ascending && b.ascending && !(into.timeHi > b.timeLo); // blocks are widened in order
    into.timeLo = std::min(into.timeLo, b.timeLo);
    into.timeHi = std::max(into.timeHi, b.timeHi);
    for (int axis = 0; axis < 3; ++axis) {
        into.lo[axis] = std::min(into.lo[axis], b.lo[axis]);
        into.hi[axis] = std::max(into.hi[axis], b.hi[axis]);
    }
}


} // namespace

template <class T>
SampleBlock blockOf(const T* m, const T* end)
{
    SampleBlock b = emptyBlock();
    while (m != end && m->cond <= 0)
        ++m;
    if (m == end)
        return b;
    // From the first valid sample on, everything is accumulated without a branch
    // but the test for validity.
    const uint32_t id = m->id;
    uint32_t otherIds = 0;
    int64_t lo = m->time, hi = m->time, previous = m->time;
    bool descends = false;
    Lanes low = splat(HUGE_VALF), high = splat(-HUGE_VALF); // a value that is not a number is passed over
    LaneMask odd = {0, 0, 0, 0};                           // zero for a finite value, NaN otherwise
    for (; m != end; ++m) {
        if (m->cond <= 0)
            continue;
        otherIds |= m->id ^ id;
        descends |= m->time < previous;
        previous = m->time;
        lo = std::min(lo, int64_t(m->time));
        hi = std::max(hi, int64_t(m->time));
        const Lanes v = lanesOf(*m);
        low = v < low ? v : low;
        high = v > high ? v : high;
        odd |= LaneMask(v - v);
    }
    b.id = id;
    b.oneId = otherIds == 0;
    b.ascending = !descends;
    b.timeLo = lo;
    b.timeHi = hi;
    for (int axis = 0; axis < 3; ++axis) {
        b.lo[axis] = low[axis];
        b.hi[axis] = high[axis];
        b.finite = b.finite && odd[axis] == 0;
    }
    return b;
}

template SampleBlock blockOf(const TAV::Marker*, const TAV::Marker*);
template SampleBlock blockOf(const TAV::Rigid*, const TAV::Rigid*);

template <class T>
TrackIndex::TrackIndex(const QVector<T>& samples)
{
    const int n = samples.size();
    const T* d = samples.constData();
    std::vector<SampleBlock> level;
    level.reserve(size_t(n / leaf + 1));
    for (int a = 0; a < n; a += leaf)
        level.push_back(blockOf(d + a, d + std::min(n, a + leaf)));
    blocks.push_back(std::move(level));
    while (blocks.back().size() > 1) {
        const std::vector<SampleBlock>& below = blocks.back();
        std::vector<SampleBlock> up((below.size() + fan - 1) / fan, emptyBlock());
        for (size_t i = 0; i < below.size(); ++i)
            widen(up[i / fan], below[i]);
        blocks.push_back(std::move(up));
    }
}

template TrackIndex::TrackIndex(const QVector<TAV::Marker>&);
template TrackIndex::TrackIndex(const QVector<TAV::Rigid>&);

void TrackIndexes::follow(const TAV::Frames& tracks)
{
    if (held.constData() == tracks.constData() && held.size() == tracks.size())
        return;
    held = tracks;
    markerIndex.clear();
    rigidIndex.clear();
    markerIndex.resize(size_t(tracks.size()));
    rigidIndex.resize(size_t(tracks.size()));
}

template <class T>
const TrackIndex& TrackIndexes::indexOf(std::vector<std::unique_ptr<TrackIndex>>& kind, const QVector<T>& samples,
                                       const TAV::Frames& tracks, int i)
{
    follow(tracks);
    std::unique_ptr<TrackIndex>& index = kind[size_t(i)];
    if (!index)
        index = std::make_unique<TrackIndex>(samples);
    return *index;
}

const TrackIndex& TrackIndexes::markers(const TAV::Frames& tracks, int i)
{
    return indexOf(markerIndex, tracks.at(i).markers, tracks, i);
}

const TrackIndex& TrackIndexes::rigids(const TAV::Frames& tracks, int i)
{
    return indexOf(rigidIndex, tracks.at(i).rigids, tracks, i);
}
