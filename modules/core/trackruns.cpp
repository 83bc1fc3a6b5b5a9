#include "modules/core/trackruns.h"

#include <algorithm>
#include <vector>

RegionsSet trackRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids)
{
    RegionsSet set;
    for (const TAV::Frame& t : tracks) {
        const int id = int(t.id);
        if (markers.contains(id) && !t.markers.isEmpty())
            set[id | MarkerTrackKey] = Regions(t.markers);
        if (rigids.contains(id) && !t.rigids.isEmpty())
            set[id | RigidTrackKey] = Regions(t.rigids);
    }
    return set;
}

Regions mergeRuns(RegionsSet& set, const QList<int>& markers, const QList<int>& rigids)
{
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

Regions mergedRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids)
{
    RegionsSet set = trackRuns(tracks, markers, rigids);
    return mergeRuns(set, markers, rigids);
}
