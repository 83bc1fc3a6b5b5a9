// New tracks and new track selections: rebuild the per-track run lists and the
// merged runs, then ask for a repaint.
#include "modules/tavgraph.h"

#include <algorithm>
#include <vector>

void TAVGraph::SetTracks(TAV::Frames* f)
{
    // Assignment shares the host's frame vector; every read below stays const so
    // that the copy is never detached.
    tracks = *f;
    timeLut = tracks.property<QList<qint64>>("timeLut");
    DataChange();
}

void TAVGraph::SetTrackSelection(const QList<int>& selected, const QString& name)
{
    if (name == QLatin1String("markers"))
        markers = selected;
    else if (name == QLatin1String("rigids"))
        rigids = selected;
    else if (name == QLatin1String("cameras"))
        cameras = selected;
    else
        return;
    DataChange();
}

void TAVGraph::DataChange()
{
    updateRegions();
    mergeRegions();
    requestRepaint();
}

void TAVGraph::updateRegions()
{
    regionsSet.clear();
    for (const TAV::Frame& t : qAsConst(tracks)) {
        const int id = int(t.id);
        if (markers.contains(id) && !t.markers.isEmpty())
            regionsSet[id | MarkerTrackKey] = Regions(t.markers);
        if (rigids.contains(id) && !t.rigids.isEmpty())
            regionsSet[id | RigidTrackKey] = Regions(t.rigids);
    }
}

void TAVGraph::mergeRegions()
{
    regions.clear();
    if (regionsSet.empty())
        return;
    int s = 0;
    for (const auto& entry : regionsSet)
        if (!entry.second.empty())
            s = std::max(s, entry.second.back().end());
    std::vector<int> ttrack(size_t(s) + 1, 0);
    // The subscript inserts an empty run list for a selected id without data, which
    // then applies nothing.
    for (int id : qAsConst(markers))
        regionsSet[id | MarkerTrackKey].Apply(ttrack);
    for (int id : qAsConst(rigids))
        regionsSet[id | RigidTrackKey].Apply(ttrack);
    regions.Update(ttrack);
}
