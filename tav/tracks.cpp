// Track extraction: the samples of one id gathered over the frames, and the
// samples of a list of ids picked out of one frame.
#include "tav/tavframes.h"

namespace TAV {

namespace {

// Room for one sample per frame, for the kinds the take carries (judged by its
// first frame): a dense track then grows without a single reallocation.
template <class T>
void reserveTrack(QVector<T>& track, const QVector<T>& firstFrameSamples, int frames)
{
    if (!firstFrameSamples.isEmpty())
        track.reserve(track.size() + frames);
}

// A sparse id leaves most of the reserved room unused: give it back.
template <class T>
void trimTrack(QVector<T>& track)
{
    if (track.size() < track.capacity() / 2)
        track.squeeze();
}

// Appends, frame by frame and in the order markers, rigids, peaks, planes, the
// samples of id from every frame that take() accepts.
template <class Take>
void gatherTrack(const Frames& store, Frame& d, uint32_t id, unsigned short mask, Take take)
{
    d.id = id;
    d.time = -1;
    if (store.isEmpty())
        return;
    const bool markers = mask & MaskMarkers, rigids = mask & MaskRigids;
    const bool peaks = mask & MaskPeaks, planes = mask & MaskPlanes;
    const Frame& first = store.constFirst();
    if (markers)
        reserveTrack(d.markers, first.markers, store.size());
    if (rigids)
        reserveTrack(d.rigids, first.rigids, store.size());
    if (peaks)
        reserveTrack(d.peaks, first.peaks, store.size());
    if (planes)
        reserveTrack(d.planes, first.planes, store.size());

    for (const Frame& f : store) {
        if (!take(f))
            continue;
        if (markers)
            add(d.markers, f.markers, id);
        if (rigids)
            add(d.rigids, f.rigids, id);
        if (peaks)
            add(d.peaks, f.peaks, id);
        if (planes)
            add(d.planes, f.planes, id);
    }

    if (markers)
        trimTrack(d.markers);
    if (rigids)
        trimTrack(d.rigids);
    if (peaks)
        trimTrack(d.peaks);
    if (planes)
        trimTrack(d.planes);
}

template <class T>
void pickSamples(QVector<T>& out, const QVector<T>& frameSamples, const std::vector<uint32_t>& ids,
                 bool allowEmpty)
{
    if (!ids.empty()) {
        out.reserve(out.size() + int(ids.size()));
        for (uint32_t id : ids)
            add(out, frameSamples, id);
    } else if (!allowEmpty) {
        out = frameSamples;
    }
}

} // namespace

bool Frames::GetTrack(Frame& d, uint32_t id, unsigned short mask) const
{
    gatherTrack(*this, d, id, mask, [](const Frame&) { return true; });
    return true;
}

// The range is judged by the time of each frame's first marker, whatever its id
// and whatever the mask; a frame without markers is always taken.
bool Frames::GetTrack(Frame& d, uint32_t id, unsigned short mask, int start, int finish) const
{
    const int64_t lo = start, hi = finish;
    gatherTrack(*this, d, id, mask, [lo, hi](const Frame& f) {
        if (f.markers.isEmpty())
            return true;
        const int64_t t = f.markers.constFirst().time;
        return t >= lo && t <= hi;
    });
    return true;
}

bool Frames::GetMarkers(Markers& m, int n, const std::vector<uint32_t>& ids, bool allowEmpty) const
{
    if (n < 0 || n >= size())
        return false;
    pickSamples(m, at(n).markers, ids, allowEmpty);
    return true;
}

bool Frames::GetRigids(Rigids& r, int n, const std::vector<uint32_t>& ids, bool allowEmpty) const
{
    if (n < 0 || n >= size())
        return false;
    pickSamples(r, at(n).rigids, ids, allowEmpty);
    return true;
}

} // namespace TAV
