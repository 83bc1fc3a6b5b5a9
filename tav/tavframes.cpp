// The store itself: construction, the frequency rule, frame access and write-back.
#include "tav/tavframes.h"

namespace TAV {

Frames::Frames()
{
    setProperty<double>(StoreProperty::frequency, 0.0);
}

// The base is initialised explicitly so that the frame vector is shared, not
// rebuilt; a copy then reports "frequency" 0.0 whatever the source held.
Frames::Frames(const Frames& f)
    : QVector<Frame>(f),
      cameras(f.cameras),
      markerInfo(f.markerInfo),
      trackerInfo(f.trackerInfo),
      deviceInfo(f.deviceInfo),
      _properties(f._properties)
{
    setProperty<double>(StoreProperty::frequency, 0.0);
}

// Assignment keeps the source's "frequency": only construction resets it.
Frames& Frames::operator=(const Frames& f)
{
    QVector<Frame>::operator=(f);
    cameras = f.cameras;
    markerInfo = f.markerInfo;
    trackerInfo = f.trackerInfo;
    deviceInfo = f.deviceInfo;
    _properties = f._properties;
    return *this;
}

Frames::~Frames() = default;

bool Frames::GetFrame(Frame& f, int n) const
{
    if (n < 0 || n >= size())
        return false;
    f = at(n);
    return true;
}

bool Frames::SetFrame(const Frame& f, int n)
{
    if (n < 0 || n >= size())
        return false;
    (*this)[n] = f;
    return true;
}

namespace {

// Writes each sample of one kind back into the frame its time names. The track's
// vector is held by a shared copy, so writing into the store cannot pull it from
// under the walk even when the track is one of the store's own frames.
template <class T>
void writeBack(Frames& store, const QVector<T> samples)
{
    for (const T& s : samples) {
        if (s.time < 0 || s.time >= store.size())
            continue;
        set(store[int(s.time)], s);
    }
}

} // namespace

bool Frames::SetData(const Frame& d, unsigned short mask)
{
    if (mask & MaskMarkers)
        writeBack(*this, d.markers);
    if (mask & MaskRigids)
        writeBack(*this, d.rigids);
    if (mask & MaskPeaks)
        writeBack(*this, d.peaks);
    if (mask & MaskPlanes)
        writeBack(*this, d.planes);
    return true;
}

QList<qint64> Frames::GetTime() const
{
    QList<qint64> times;
    times.reserve(size());
    for (const Frame& f : *this)
        times.append(f.time);
    return times;
}

bool Frames::SparseSwap(Frame& f)
{
    return sparse_swap(f, *this);
}

bool Frames::SparseSwap(Frames& f)
{
    return sparse_swap(f, *this);
}

} // namespace TAV
