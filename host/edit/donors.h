#pragma once
// Choosing donor markers for a gap when the user names none: the markers, valid
// across the gap, whose distance to the target varied least next to it.
#include "host/edit/gapfill.h"

// Frames on each side of a gap over which a donor's distance to the target is judged.
constexpr int DonorWindow = 100;

std::vector<uint32_t> chooseDonors(const TrackReader& reader, const Gap& gap, int count);

// How many donors a method follows (0 for those that need none).
int donorsNeeded(FillMethod method);
