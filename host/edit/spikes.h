#pragma once
// Spikes: samples whose acceleration exceeds a threshold, in the take's units per
// frame squared (the second difference of three consecutive valid samples).
#include "host/edit/samplechange.h"

#include <vector>

// Frames where marker id's acceleration is above threshold and at least that of its
// neighbours: one displaced sample also bends the curve at its neighbours, by half
// as much, and only the sample itself is the spike.
std::vector<int> spikeFrames(const TAV::Frames& take, uint32_t id, double threshold);

// Consecutive spike frames joined into spans.
std::vector<FrameSpan> spikeSpans(const std::vector<int>& frames);
