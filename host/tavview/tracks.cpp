#include "host/tavview/tracks.h"

#include <set>
#include <vector>

namespace {

TAV::Marker absent(const TAV::Marker&, uint32_t id, int frame) { return TAV::Marker{id, 0, frame, 0, 0, 0, 0}; }
TAV::Rigid absent(const TAV::Rigid&, uint32_t id, int frame)
{
    return TAV::Rigid{id, 0, frame, {0, 0, 0, 0, 0, 0, 0}, 0};
}

// Where the next sample of one track of one kind goes. The track is sized once and
// written through a pointer: appending sample by sample checked the vector's
// capacity and sharing 72 million times on a million-frame take.
template <class T>
struct Writer {
    T* next;
    uint32_t id;

    void take(const QVector<T>& frameSamples, int frame)
    {
        const int i = TAV::indexOfId(frameSamples, id);
        *next++ = i >= 0 ? frameSamples.constData()[i] : absent(T(), id, frame);
    }
};

template <class T>
Writer<T> writerOf(QVector<T>& track, uint32_t id, int n)
{
    track.resize(n);
    return Writer<T>{track.data(), id};
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
    std::vector<Writer<TAV::Marker>> markers;
    std::vector<Writer<TAV::Rigid>> rigids;
    TAV::Frame* next = tracks.data();
    for (int id : ids) {
        TAV::Frame& track = *next++;
        track.id = uint32_t(id);
        track.time = -1;
        if (selection.markers.contains(id))
            markers.push_back(writerOf(track.markers, track.id, n));
        if (selection.rigids.contains(id))
            rigids.push_back(writerOf(track.rigids, track.id, n));
    }
    // Frames outer, tracks inner: one pass over the take, however many tracks.
    for (int f = 0; f < n; ++f) {
        const TAV::Frame& frame = take.frames.at(f);
        for (Writer<TAV::Marker>& w : markers)
            w.take(frame.markers, f);
        for (Writer<TAV::Rigid>& w : rigids)
            w.take(frame.rigids, f);
    }
    tracks.setProperty<double>(TAV::StoreProperty::frequency, take.rate);
    tracks.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, take.timeLut());
}
