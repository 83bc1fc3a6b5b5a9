#include "host/tavview/areas.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

template <class T>
void addRuns(RegionsSet& set, int key, const QVector<T>& samples)
{
    if (!samples.isEmpty())
        set[key] = Regions(samples);
}

} // namespace

Regions mergedRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids)
{
    RegionsSet set;
    for (const TAV::Frame& t : tracks) {
        const int id = int(t.id);
        if (markers.contains(id))
            addRuns(set, id | MarkerTrackKey, t.markers);
        if (rigids.contains(id))
            addRuns(set, id | RigidTrackKey, t.rigids);
    }
    Regions merged;
    if (set.empty())
        return merged;

    int last = 0;
    for (const auto& entry : set)
        if (!entry.second.empty())
            last = std::max(last, entry.second.back().end());
    std::vector<int> perFrame(size_t(last) + 1, 0);
    for (int id : markers)
        set[id | MarkerTrackKey].Apply(perFrame);
    for (int id : rigids)
        set[id | RigidTrackKey].Apply(perFrame);
    merged.Update(perFrame);
    return merged;
}

Regions areasOfInterest(const Regions& runs, int jumpMask)
{
    Regions areas;
    std::copy_if(runs.begin(), runs.end(), std::back_inserter(areas),
                 [jumpMask](const Pair& p) { return (p.type & jumpMask) != 0; });
    return areas;
}

QString runTypeName(int type)
{
    QStringList parts;
    if (type & RegionMissing)
        parts << QStringLiteral("gap");
    if (type & RegionPoor)
        parts << QStringLiteral("poor");
    if (type & RegionFair)
        parts << QStringLiteral("fair");
    if (type & RegionMixed)
        parts << QStringLiteral("mixed");
    if (parts.isEmpty())
        parts << (type & RegionGood ? QStringLiteral("good") : QStringLiteral("none"));
    return parts.join(QStringLiteral(", "));
}
