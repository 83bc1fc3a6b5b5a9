#pragma once
// The store of a capture take: the vector of frames with its static tables and
// named properties. The same class holds a store of tracks (one track per frame).
#include "tav/tavframe.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

#include <cstdint>
#include <type_traits>
#include <vector>

namespace TAV {

typedef std::vector<Camera> Cameras;
typedef std::vector<MarkerInfo> MarkerInfoTable;
typedef std::vector<TrackerInfo> TrackerInfoTable;
typedef std::vector<DeviceInfo> DeviceInfoTable;

// Names of the store's properties that its producers set and its readers use.
namespace StoreProperty {
constexpr char frequency[] = "frequency"; // double, frames a second; 0 without a rate
constexpr char timeLut[] = "timeLut"; // QList<qint64>, each frame's time in microseconds
constexpr char firstFrame[] = "firstFrame"; // qint64, the take's own number of frame 0
} // namespace StoreProperty

// Sample kinds of the 16-bit type mask.
enum : unsigned short { MaskMarkers = 1, MaskRigids = 2, MaskPeaks = 4, MaskPlanes = 8 };

class Frames : public QVector<Frame> {
public:
    Cameras cameras;
    MarkerInfoTable markerInfo;
    TrackerInfoTable trackerInfo;
    DeviceInfoTable deviceInfo;
    Properties _properties;

    Frames();
    // A copy always reports "frequency" 0.0; an assignment keeps the source's.
    // No move operations are declared, so moves go through these and keep that rule.
    Frames(const Frames& f);
    Frames& operator=(const Frames& f);
    ~Frames();

    bool GetFrame(Frame& f, int n) const;
    bool SetFrame(const Frame& f, int n);
    bool SetData(const Frame& d, unsigned short mask);
    QList<qint64> GetTime() const;

    bool GetTrack(Frame& d, uint32_t id, unsigned short mask) const;
    bool GetTrack(Frame& d, uint32_t id, unsigned short mask, int start, int finish) const;
    bool GetMarkers(Markers& m, int n, const std::vector<uint32_t>& ids, bool allowEmpty) const;
    bool GetRigids(Rigids& r, int n, const std::vector<uint32_t>& ids, bool allowEmpty) const;

    bool SparseSwap(Frame& f);
    bool SparseSwap(Frames& f);

    template <class T>
    T property(const char* name, bool* ok = nullptr) const;
    template <class T>
    void setProperty(const char* name, const T& value);
};

bool sparse_swap(QVector<Marker>& track, Frames& frames);
bool sparse_swap(QVector<Rigid>& track, Frames& frames);
bool sparse_swap(Frame& track, Frames& frames);
bool sparse_swap(Frames& tracks, Frames& frames);

template <class T>
T Frames::property(const char* name, bool* ok) const
{
    const auto it = _properties.constFind(QString::fromLatin1(name));
    if (it == _properties.constEnd()) {
        if (ok)
            *ok = false;
        return T();
    }
    if (it->userType() == qMetaTypeId<T>()) {
        if (ok)
            *ok = true;
        return it->template value<T>();
    }
    QVariant v = *it;
    const bool converted = v.convert(qMetaTypeId<T>());
    if (ok)
        *ok = converted;
    return converted ? v.template value<T>() : T();
}

template <class T>
void Frames::setProperty(const char* name, const T& value)
{
    _properties.insert(QString::fromLatin1(name), QVariant::fromValue(value));
}

// True when a equals b, or b lies strictly within tolerance of a. Integers are
// compared by their distance in unsigned arithmetic, so times near the ends of
// the range cannot overflow; the result is that of a - tol < b && a + tol > b.
template <class T>
bool fuzzyCmp(const T& a, const T& b, int tolerance)
{
    if (a == b)
        return true;
    if constexpr (std::is_integral<T>::value) {
        if (tolerance <= 0)
            return false;
        using U = std::make_unsigned_t<T>;
        const U distance = a < b ? U(U(b) - U(a)) : U(U(a) - U(b));
        return uintmax_t(distance) < uintmax_t(tolerance);
    } else {
        const T tol = T(tolerance);
        return a - tol < b && a + tol > b;
    }
}

// Index of the sample whose time matches val within fuzz, by binary search over
// ascending times; -1 outside [first time, last time]; when nothing is within the
// tolerance, the last index probed. Const access only: a shared track stays shared.
template <class T>
int findIndex(const T& track, int64_t val, int fuzz)
{
    if (track.isEmpty())
        return -1;
    if (track.constFirst().time > val || track.constLast().time < val)
        return -1;
    int lo = 0, hi = track.size() - 1, mid = 0;
    while (lo <= hi) {
        mid = lo + ((hi - lo) >> 1);
        const int64_t t = track.at(mid).time;
        if (fuzzyCmp<int64_t>(t, val, fuzz))
            return mid;
        if (t < val)
            lo = mid + 1;
        else
            hi = mid - 1;
    }
    return mid;
}

} // namespace TAV
