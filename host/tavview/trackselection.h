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

// Up to three real markers and one rigid body, preferring tracks with gaps, then
// with poor samples, then with fair or filled ones.
TrackSelection defaultSelection(const Take& take);

// Reads --select tokens: "3", "5-7", "r0" (a rigid body), or a label. On an
// unknown id or label returns false with one line in error.
bool resolveSelection(const QStringList& tokens, const Take& take, TrackSelection& selection, QString& error);
