#pragma once
// The physical limit of each measure: the same sample bytes read once by a plain
// loop over the arrays, the least that any code looking at each of them must spend.
// Each returns a sum of what it read, so the reading cannot be left out.
#include "tav/tavframes.h"
#include "utils/regions.h"

#include <QString>

#include <cstdint>

// Every marker and rigid-body sample of every record of a store: the frames of a
// take, or the tracks built from them.
double readStore(const TAV::Frames& store);
// The samples of frames first .. first + count - 1 of each dense track.
double readTrackWindow(const TAV::Frames& tracks, int first, int count);
int64_t readRuns(const Regions& runs);
// The file's bytes, in large chunks; 0 when it cannot be opened.
uint64_t readFile(const QString& path);
