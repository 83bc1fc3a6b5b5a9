#pragma once
// The quality of a take's markers, counted from the same run lists the graph
// shades: a run of the missing type is a gap, samples in poor runs are poor.
#include "tav/tavframes.h"

#include <string>
#include <vector>

struct MarkerQuality {
    std::string name;
    int frames = 0;
    int valid = 0;      // frames with a valid sample
    int gaps = 0;       // runs of missing samples
    int longestGap = 0; // frames
    int poor = 0;       // samples graded poor
    int filled = 0;     // valid samples a gap filler made
    int missing() const { return frames - valid; }
    // Never valid: one "gap" as long as the take, which is no gap to fill.
    bool neverValid() const { return frames > 0 && valid == 0; }
    double validPercent() const { return frames > 0 ? 100.0 * valid / frames : 0.0; }
};

struct TakeQuality {
    std::string name;
    int frames = 0;
    double rate = 0.0; // "frequency" of the store
    std::vector<MarkerQuality> markers;
    // The whole take: frames (marker samples, so the valid percentage is over all
    // markers), valid, poor and filled samples summed; gaps summed and the longest
    // gap taken over the markers that are valid somewhere.
    MarkerQuality total() const;
    int neverValid() const;
};

MarkerQuality markerQuality(const TAV::Markers& track, const std::string& name);

// One entry per marker of the take, in id order. Points whose markerInfo options
// name another kind than "marker" (model outputs) are left out unless allPoints.
TakeQuality takeQuality(const TAV::Frames& take, const std::string& name, bool allPoints = false);
