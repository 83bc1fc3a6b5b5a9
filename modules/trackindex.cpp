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


// The block of samples [m, end).
template <class T>
SampleBlock blockOf(const T* m, const T* end)
{
    SampleBlock b = emptyBlock();
    Lanes lo = splat(HUGE_VALF), hi = splat(-HUGE_VALF);
    LaneMask odd = {0, 0, 0, 0}; // non-zero where some coordinate is not finite
    for (; m != end; ++m) {
        if (m->cond <= 0)
            continue;
        if (b.empty())
            b.id = m->id;
        b.oneId = b.oneId && m->id == b.id;
        b.ascending = b.ascending && !(b.timeHi > m->time);
        b.timeLo = std::min(b.timeLo, int64_t(m->time));
        b.timeHi = std::max(b.timeHi, int64_t(m->time));
        const Lanes v = lanesOf(*m);
        lo = v < lo ? v : lo;
        hi = v > hi ? v : hi;
        odd |= LaneMask(v - v); // zero for a finite value, NaN otherwise
    }
    for (int axis = 0; axis < 3; ++axis) {
        b.lo[axis] = lo[axis];
        b.hi[axis] = hi[axis];
        b.finite = b.finite && odd[axis] == 0;
    }
    return b;
}

} // namespace

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

const TrackIndex& TrackIndexes::markers(const TAV::Frames& tracks, int i)
{
    follow(tracks);
    std::unique_ptr<TrackIndex>& index = markerIndex[size_t(i)];
    if (!index)
        index = std::make_unique<TrackIndex>(held.at(i).markers);
    return *index;
}

const TrackIndex& TrackIndexes::rigids(const TAV::Frames& tracks, int i)
{
    follow(tracks);
    std::unique_ptr<TrackIndex>& index = rigidIndex[size_t(i)];
    if (!index)
        index = std::make_unique<TrackIndex>(held.at(i).rigids);
    return *index;
}
