#pragma once
// Which tracks of a take are shown: marker ids and rigid-body ids, as the graph's
// "markers" and "rigids" lists. Also the take's names for them.
#include "host/tavview/take.h"

#include <QList>
#include <QString>
#include <QStringList>

struct TrackSelection {
    QList<int> markers;
    QList<int> rigids;

    bool isEmpty() const { return markers.isEmpty() && rigids.isEmpty(); }
    bool operator==(const TrackSelection& o) const { return markers == o.markers && rigids == o.rigids; }
};

int markerCount(const Take& take);
int rigidCount(const Take& take);
QString markerLabel(const Take& take, int id);
QString rigidLabel(const Take& take, int id);
// What a point is ("marker", "angle", "force", ...), from "kind=" in its options;
// points without a kind are markers.
QString markerKind(const Take& take, int id);
// The units of a point's values: "units=" in its options, else the take's.
QString markerUnits(const Take& take, int id);

// Up to three real markers and one rigid body that have samples to draw,
// preferring tracks with gaps, then with poor samples, then with fair or filled
// ones. A track that is never valid is never chosen.
TrackSelection defaultSelection(const Take& take);

// The units of the selected tracks' values, each once ("mm", "mm, deg").
QString selectionUnits(const Take& take, const TrackSelection& selection);

// Reads --select tokens: "3", "5-7", "r0" (a rigid body), or a label. On an
// unknown id or label returns false with one line in error.
bool resolveSelection(const QStringList& tokens, const Take& take, TrackSelection& selection, QString& error);
