#include "bench/limits.h"

#include <QFile>

#include <algorithm>
#include <vector>

namespace {

double sum(const TAV::Marker* m, const TAV::Marker* end)
{
    double s = 0;
    for (; m != end; ++m)
        s += double(m->time) + m->x + m->y + m->z + m->cond;
    return s;
}

double sum(const TAV::Rigid* r, const TAV::Rigid* end)
{
    double s = 0;
    for (; r != end; ++r)
        s += double(r->time) + r->pose[0] + r->pose[1] + r->pose[2] + r->cond;
    return s;
}

template <class T>
double sum(const QVector<T>& v)
{
    return sum(v.constData(), v.constData() + v.size());
}

template <class T>
double sum(const QVector<T>& v, int first, int count)
{
    const int from = std::clamp(first, 0, v.size()), to = std::clamp(first + count, from, v.size());
    return sum(v.constData() + from, v.constData() + to);
}

} // namespace

double readStore(const TAV::Frames& store)
{
    double s = 0;
    for (const TAV::Frame& f : store)
        s += sum(f.markers) + sum(f.rigids);
    return s;
}

double readTrackWindow(const TAV::Frames& tracks, int first, int count)
{
    double s = 0;
    for (const TAV::Frame& t : tracks)
        s += sum(t.markers, first, count) + sum(t.rigids, first, count);
    return s;
}

int64_t readRuns(const Regions& runs)
{
    int64_t s = 0;
    for (const Pair& r : runs)
        s += r.begin() + r.end() + r.type;
    return s;
}

uint64_t readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    std::vector<uint64_t> chunk(size_t(1) << 19); // 4 MiB
    uint64_t s = 0;
    for (;;) {
        const qint64 got = file.read(reinterpret_cast<char*>(chunk.data()), qint64(chunk.size() * 8));
        if (got <= 0)
            break;
        const size_t words = size_t(got) / 8;
        for (size_t i = 0; i < words; ++i)
            s += chunk[i];
    }
    return s;
}
