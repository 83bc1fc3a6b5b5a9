#pragma once
// The areas of interest among the runs the graph shades and navigates. The module
// has no getter for its runs; the host builds them with the graph's own rule
// (mergedRuns of the shared core).
#include "host/tavview/take.h"
#include "tav/tavframes.h"
#include "utils/regions.h"

#include <QList>
#include <QString>
#include <QVector>

// The runs of that list whose type shares a bit with jumpMask: where the graph's
// next/previous-area actions stop. Not fused with Merge, so each keeps its type.
Regions areasOfInterest(const Regions& runs, int jumpMask);

// The areas panel's own kinds: samples whose acceleration is above the spike
// threshold, and samples a gap filler made. The graph never makes runs of these.
enum : int { SpikeRun = 0x100, FilledRun = 0x200 };

// One stretch of one track's own samples, frame indices inclusive.
struct TrackArea {
    QString track;
    int type;
    int first, last;
};

// Per selected track (markers, then rigid bodies), its own runs whose type shares a
// bit with jumpMask and its stretches of filled samples: what merging the tracks
// hides when one track's gap lies among other tracks' samples.
QVector<TrackArea> trackAreas(const Take& take, const TAV::Frames& tracks, const QList<int>& markers,
                              const QList<int>& rigids, int jumpMask);

// Runs of type SpikeRun where the markers' acceleration exceeds threshold.
Regions spikeAreas(const TAV::Frames& take, const QList<int>& markers, double threshold);

// Runs of type FilledRun over the frames where any of the tracks holds a filled
// sample, by position in the tracks.
Regions filledStretches(const TAV::Frames& tracks);

// A short description of a run type, e.g. "gap", "poor", "gap, fair", "spike".
QString runTypeName(int type);
