// New tracks and new track selections: rebuild the per-track run lists and the
// merged runs, then ask for a repaint.
#include "modules/tavgraph.h"

#include "modules/core/trackruns.h"

void TAVGraph::SetTracks(TAV::Frames* f)
{
    if (!f)
        return;
    // Assignment shares the host's frame vector; every read below stays const so
    // that the copy is never detached.
    tracks = *f;
    forgetFastPaint(); // it holds the old samples
    timeLut = tracks.property<QList<qint64>>(TAV::StoreProperty::timeLut);
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

void TAVGraph::updateRegions() { regionsSet = trackRuns(tracks, markers, rigids); }

void TAVGraph::mergeRegions() { regions = mergeRuns(regionsSet, markers, rigids); }
