#pragma once
// The runs of the selected tracks: one run list per track from its samples, and the
// merged list of all of them that the graph shades and navigates.
#include "tav/tavframes.h"
#include "utils/regions.h"

#include <QList>

// One run list per selected track that has samples, keyed by kind and id.
RegionsSet trackRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids);

// Each selected track's runs applied, markers then rigids, into one per-frame vector
// of (largest last end + 1) zeros, then that vector turned into runs. A selected id
// without runs gets an empty entry in set, which applies nothing.
Regions mergeRuns(RegionsSet& set, const QList<int>& markers, const QList<int>& rigids);

// Both steps at once, for those that need only the merged list.
Regions mergedRuns(const TAV::Frames& tracks, const QList<int>& markers, const QList<int>& rigids);
