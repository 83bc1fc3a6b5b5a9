#pragma once
// The runs the graph shades and navigates, rebuilt in the host: the module has
// no getter for them, so they are computed here with the public run-list
// operations in exactly the graph's order.
#include "tav/tavframes.h"
#include "utils/regions.h"

#include <QList>
#include <QString>

// One run list per selected track from its samples, each applied into one
// per-frame vector of (largest last end + 1) zeros, then that vector turned into
// runs: the graph's merged list, runs of all tracks combined frame by frame.
Regions mergedRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids);

// The runs of that list whose type shares a bit with jumpMask: where the graph's
// next/previous-area actions stop. Not fused with Merge, so each keeps its type.
Regions areasOfInterest(const Regions& runs, int jumpMask);

// A short description of a run type, e.g. "gap", "poor", "gap, fair".
QString runTypeName(int type);
