#pragma once
// Synthetic takes for the benchmarks: markers and rigid bodies carried by someone
// walking about a room, with occlusion gaps (the short ones partly filled), poor
// stretches, single bad samples and jitter. The same take comes as the frame store
// a file loader makes and as the store of tracks a host builds from it, sample for
// sample the same, so a benchmark can skip the slow extraction when it only needs
// the tracks.
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"
#include "tav/tavframes.h"

struct TakeShape {
    int markers = 64;
    int rigids = 8;
    int frames = 10000;
    unsigned seed = 7;
    double rate = 100.0;
};

// Every frame holds every id and a sample's time is its frame index, as the C3D
// loader makes them; "frequency" and "timeLut" are set as it sets them.
Take synthTake(const TakeShape& shape);

// What buildTracks makes of synthTake(shape) with allTracks(shape) selected: one
// dense record per id, holding that id's marker and rigid-body samples.
void synthTracks(const TakeShape& shape, TAV::Frames& tracks);

// Every marker and rigid-body id of the shape.
TrackSelection allTracks(const TakeShape& shape);

// One marker track (id 0) whose samples form exactly `runs` runs, each 1 to 5
// frames long, cycling good, missing, good, poor.
TAV::Frames runTrack(int runs);
