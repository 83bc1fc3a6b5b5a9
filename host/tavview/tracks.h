#pragma once
// The store of tracks tavview hands to the graph: one dense track per selected id.
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"

// One track per id of the selection, in id order, with the samples of the kinds
// selected for that id, gathered in one pass over the frames. Tracks are dense: a
// frame without a sample of the id still contributes one, with cond 0 and time =
// the frame index, because the graph's runs and offsets take a sample's position
// in its track as its frame.
// The store carries the take's "timeLut" (microseconds) and "frequency".
// Filled in place: returning a store by value would copy-construct it, and a
// copied store forgets its "frequency".
void buildTracks(const Take& take, const TrackSelection& selection, TAV::Frames& tracks);
