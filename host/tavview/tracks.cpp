#include "host/tavview/tracks.h"

#include <set>

namespace {

TAV::Marker absent(const TAV::Marker&, uint32_t id, int frame) { return TAV::Marker{id, 0, frame, 0, 0, 0, 0}; }
TAV::Rigid absent(const TAV::Rigid&, uint32_t id, int frame)
{
    return TAV::Rigid{id, 0, frame, {0, 0, 0, 0, 0, 0, 0}, 0};
}

// GetTrack skips frames that lack the id; rebuild such a track with placeholders.
template <class T>
void makeDense(QVector<T>& track, const TAV::Frames& frames, uint32_t id, QVector<T> TAV::Frame::*samples)
{
    const int n = frames.size();
    if (track.size() == n)
        return;
    QVector<T> dense;
    dense.reserve(n);
    for (int f = 0; f < n; ++f) {
        const QVector<T>& v = frames.at(f).*samples;
        const int i = TAV::indexOfId(v, id);
        dense.append(i >= 0 ? v.at(i) : absent(T(), id, f));
    }
    track.swap(dense);
}

} // namespace

void buildTracks(const Take& take, const TrackSelection& selection, TAV::Frames& tracks)
{
    std::set<int> ids(selection.markers.cbegin(), selection.markers.cend());
    ids.insert(selection.rigids.cbegin(), selection.rigids.cend());

    tracks = TAV::Frames();
    tracks.markerInfo = take.frames.markerInfo;
    tracks.trackerInfo = take.frames.trackerInfo;
    tracks.reserve(int(ids.size()));
    for (int id : ids) {
        const bool marker = selection.markers.contains(id), rigid = selection.rigids.contains(id);
        const unsigned short mask = (marker ? TAV::MaskMarkers : 0) | (rigid ? TAV::MaskRigids : 0);
        TAV::Frame track;
        take.frames.GetTrack(track, uint32_t(id), mask);
        if (marker)
            makeDense(track.markers, take.frames, uint32_t(id), &TAV::Frame::markers);
        if (rigid)
            makeDense(track.rigids, take.frames, uint32_t(id), &TAV::Frame::rigids);
        tracks.append(track);
    }
    tracks.setProperty<double>("frequency", take.rate);
    tracks.setProperty<QList<qint64>>("timeLut", take.timeLut());
}
