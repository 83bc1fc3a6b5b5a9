#pragma once
// One captured frame (or, in a store of tracks, one track) and the look-up of a
// sample by id that every other part uses.
#include "tav/libtav2/tav.hpp"

#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <string>
#include <utility>

namespace TAV {

typedef QVector<Marker> Markers;
typedef QVector<Rigid> Rigids;
typedef QVector<Peak> Peaks;
typedef QVector<Plane> Planes;
typedef QMap<QString, QVariant> Properties;

// Plain records: QVector grows and copies them as raw bytes, with no per-element calls.
static_assert(!QTypeInfo<Marker>::isComplex && QTypeInfoQuery<Marker>::isRelocatable &&
                  !QTypeInfo<Rigid>::isComplex && QTypeInfoQuery<Rigid>::isRelocatable,
              "sample records are relocatable");

struct Frame {
    uint32_t id = 0xFFFFFFFF;
    int64_t time = -1;
    std::string timestamp;
    Markers markers;
    Rigids rigids;
    Peaks peaks;
    Planes planes;
    Properties _properties;

    Frame() = default;
    Frame(const Frame&) = default;
    Frame(Frame&&) = default;
    Frame& operator=(const Frame&) = default;
    Frame& operator=(Frame&&) = default;
    ~Frame() = default;

    void swap(Frame& o)
    {
        std::swap(id, o.id);
        std::swap(time, o.time);
        timestamp.swap(o.timestamp);
        markers.swap(o.markers);
        rigids.swap(o.rigids);
        peaks.swap(o.peaks);
        planes.swap(o.planes);
        _properties.swap(o._properties);
    }

    operator Markers&() { return markers; }
    operator const Markers&() const { return markers; }
    operator Rigids&() { return rigids; }
    operator const Rigids&() const { return rigids; }
    operator Peaks&() { return peaks; }
    operator const Peaks&() const { return peaks; }
    operator Planes&() { return planes; }
    operator const Planes&() const { return planes; }

    // Declared by the capture API; the module never uses it. Explicit, so a frame
    // never turns into a number by accident.
    explicit operator int64_t() const { return time; }
};

// Index of the first sample whose id is not less than id, by binary search (the
// vector is sorted by id); -1 when that sample does not carry exactly this id.
template <class T>
int searchId(const QVector<T>& v, uint32_t id)
{
    const T* first = v.constData();
    const T* last = first + v.size();
    const T* it = std::lower_bound(first, last, id, [](const T& s, uint32_t k) { return s.id < k; });
    return (it != last && it->id == id) ? int(it - first) : -1;
}

// Index of the sample with this id: the element at index id in the dense case,
// else the binary search. -1 when the vector has no such sample.
// Reads through const access only, so a shared vector is never detached.
template <class T>
int indexOfId(const QVector<T>& v, uint32_t id)
{
    if (id < uint32_t(v.size()) && v.at(int(id)).id == id)
        return int(id);
    return searchId(v, id);
}

template <class T>
bool set(QVector<T>& f, const T& d)
{
    const int i = indexOfId(f, d.id);
    if (i < 0)
        return false;
    f[i] = d;
    return true;
}

inline bool set(Frame& f, const Marker& d)
{
    const int i = indexOfId(f.markers, d.id);
    if (i < 0)
        return false;
    f.markers[i] = d;
    return true;
}

inline bool set(Frame& f, const Rigid& d)
{
    const int i = indexOfId(f.rigids, d.id);
    if (i < 0)
        return false;
    f.rigids[i] = d;
    return true;
}

inline bool set(Frame& f, const Peak& d) { return set(f.peaks, d); }
inline bool set(Frame& f, const Plane& d) { return set(f.planes, d); }

template <class T>
bool add(QVector<T>& destination, const QVector<T>& source, uint32_t id)
{
    const int i = indexOfId(source, id);
    if (i < 0)
        return false;
    destination.append(source.at(i));
    return true;
}

} // namespace TAV
