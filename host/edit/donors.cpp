#include "host/edit/donors.h"

#include <algorithm>
#include <cmath>
#include <utility>

int donorsNeeded(FillMethod method)
{
    switch (method) {
    case FillMethod::Pattern:
        return 1;
    case FillMethod::Rigid:
        return RigidMinimumDonors;
    default:
        return 0;
    }
}

namespace {

// Spread (standard deviation) of the distance between target and donor over the
// frames next to the gap where both are valid; -1 when too few such frames.
double distanceSpread(const TrackReader& reader, const Gap& gap, uint32_t donor)
{
    const int from = std::max(0, gap.first - DonorWindow), to = std::min(reader.frameCount() - 1, gap.last + DonorWindow);
    double sum = 0, sumSq = 0;
    int n = 0;
    for (int f = from; f <= to; ++f) {
        if (f >= gap.first && f <= gap.last)
            continue;
        if (!reader.valid(gap.id, f) || !reader.valid(donor, f))
            continue;
        const double d = (reader.position(gap.id, f) - reader.position(donor, f)).norm();
        sum += d;
        sumSq += d * d;
        ++n;
    }
    if (n < 4)
        return -1;
    const double mean = sum / n;
    return std::sqrt(std::max(0.0, sumSq / n - mean * mean));
}

} // namespace

std::vector<uint32_t> chooseDonors(const TrackReader& reader, const Gap& gap, int count)
{
    std::vector<std::pair<double, uint32_t>> ranked;
    const int edge = gap.first - 1;
    if (count <= 0 || edge < 0)
        return {};
    for (const TAV::Marker& m : reader.take().at(edge).markers) {
        if (m.id == gap.id || !reader.validThrough(m.id, gap.first - 1, gap.last + 1))
            continue;
        const double spread = distanceSpread(reader, gap, m.id);
        if (spread >= 0)
            ranked.emplace_back(spread, m.id);
    }
    std::sort(ranked.begin(), ranked.end());
    std::vector<uint32_t> donors;
    for (size_t i = 0; i < ranked.size() && int(i) < count; ++i)
        donors.push_back(ranked[i].second);
    return donors;
}
