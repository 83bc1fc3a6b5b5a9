#pragma once
// An edit of a take as the marker samples it changed, each before and after. Undo
// and redo replay these, so an edit costs memory in proportion to what it touched.
#include "tav/tavframes.h"

#include <cstdint>
#include <vector>

struct SampleChange {
    int frame;
    TAV::Marker before;
    TAV::Marker after;
};
using SampleChanges = std::vector<SampleChange>;

// Inclusive frame indices.
struct FrameSpan {
    int first = -1;
    int last = -1;
    bool isEmpty() const { return first < 0 || last < first; }
};

// The sample of marker id in frame (a frame index), or null when the frame has none.
const TAV::Marker* markerAt(const TAV::Frames& take, int frame, uint32_t id);
TAV::Marker* markerAt(TAV::Frames& take, int frame, uint32_t id);

bool sameSample(const TAV::Marker& a, const TAV::Marker& b);

// Writes each change's after (or its before, to undo) into the take.
void applyChanges(TAV::Frames& take, const SampleChanges& changes, bool undo);
FrameSpan changedSpan(const SampleChanges& changes);
