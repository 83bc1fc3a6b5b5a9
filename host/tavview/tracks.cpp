#include "host/tavview/tracks.h"

#include <set>
#include <vector>

namespace {

TAV::Marker absent(const TAV::Marker&, uint32_t id, int frame) { return TAV::Marker{id, 0, frame, 0, 0, 0, 0}; }
TAV::Rigid absent(const TAV::Rigid&, uint32_t id, int frame)
{
    return TAV::Rigid{id, 0, frame, {0, 0, 0, 0, 0, 0, 0}, 0};
}

// One track being filled: where it is and which kinds it takes.
struct TrackSlot {
    TAV::Frame* track;
    uint32_t id;
    bool marker, rigid;
};

// The sample of id in a frame's vector, or a missing placeholder at that frame.
template <class T>
void appendSample(QVector<T>& track, const QVector<T>& frameSamples, uint32_t id, int frame)
{
    const int i = TAV::indexOfId(frameSamples, id);
    track.append(i >= 0 ? frameSamples.at(i) : absent(T(), id, frame));
}

} // namespace

void buildTracks(const Take& take, const TrackSelection& selection, TAV::Frames& tracks)
{
    std::set<int> ids(selection.markers.cbegin(), selection.markers.cend());
    ids.insert(selection.rigids.cbegin(), selection.rigids.cend());

    tracks = TAV::Frames();
    tracks.markerInfo = take.frames.markerInfo;
    tracks.trackerInfo = take.frames.trackerInfo;
    tracks.resize(int(ids.size()));
    const int n = take.frames.size();
    std::vector<TrackSlot> filling;
    TAV::Frame* next = tracks.data();
    for (int id : ids) {
        TrackSlot s{next++, uint32_t(id), selection.markers.contains(id), selection.rigids.contains(id)};
        s.track->id = s.id;
        s.track->time = -1;
        if (s.marker)
            s.track->markers.reserve(n);
        if (s.rigid)
            s.track->rigids.reserve(n);
        filling.push_back(s);
    }
    // Frames outer, tracks inner: one pass over the take, however many tracks.
    for (int f = 0; f < n; ++f) {
        const TAV::Frame& frame = take.frames.at(f);
        for (const TrackSlot& s : filling) {
            if (s.marker)
                appendSample(s.track->markers, frame.markers, s.id, f);
            if (s.rigid)
                appendSample(s.track->rigids, frame.rigids, s.id, f);
        }
    }
    tracks.setProperty<double>("frequency", take.rate);
    tracks.setProperty<QList<qint64>>("timeLut", take.timeLut());
}
