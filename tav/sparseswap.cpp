// Sparse swap: each sample of a track trades places with the sample of the same
// id in the frame its time names.
#include "tav/tavframes.h"

#include <utility>

namespace TAV {

namespace {

// Stops with false at the first sample whose time names no frame (negative times
// included) or whose id the frame lacks; exchanges already made stay made.
// Each side is detached only when it is written.
template <class T>
bool swapSamples(QVector<T>& track, Frames& frames, QVector<T> Frame::*kind)
{
    if (track.isEmpty())
        return false;
    for (int i = 0; i < track.size(); ++i) {
        const T& sample = track.at(i);
        const int64_t t = sample.time;
        if (t < 0 || t >= frames.size())
            return false;
        const int j = searchId(frames.at(int(t)).*kind, sample.id);
        if (j < 0)
            return false;
        std::swap(track[i], (frames[int(t)].*kind)[j]);
    }
    return true;
}

} // namespace

bool sparse_swap(QVector<Marker>& track, Frames& frames)
{
    return swapSamples(track, frames, &Frame::markers);
}

bool sparse_swap(QVector<Rigid>& track, Frames& frames)
{
    return swapSamples(track, frames, &Frame::rigids);
}

// Markers, or rigid bodies when the marker swap did not complete: never both,
// and never peaks or planes.
bool sparse_swap(Frame& track, Frames& frames)
{
    if (sparse_swap(track.markers, frames))
        return true;
    return sparse_swap(track.rigids, frames);
}

// True for any non-empty store of tracks, whatever became of each track.
bool sparse_swap(Frames& tracks, Frames& frames)
{
    if (tracks.isEmpty())
        return false;
    for (int i = 0; i < tracks.size(); ++i)
        sparse_swap(tracks[i], frames);
    return true;
}

} // namespace TAV
