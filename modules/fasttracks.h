#pragma once
// The fast drawing of the tracks, chosen by the graph's "fastDraw" property: the
// same picture as drawTrackPoints and drawTrackLines, sending only what can be seen.
#include "modules/lanes.h"

#include <cstdint>

class Coverage;
class GLW;
class TAVGraph;
class TrackIndexes;

// Points pass the level-of-detail filter in the same order as in the exact drawing,
// so the same ones are accepted; only those within half a point of the view are
// sent, and of those only the ones that can still reach a pixel of `coverage`
// (none: all of them). The walk starts near the view when the filter's state there
// is certain. Segments likewise, culled against what the points and earlier
// segments certainly wrote. Points, then segments, are each sent in one block.
// `indexes` lets the walk pass over blocks of samples that can add no pixel.
void drawFastTracks(const TAVGraph& graph, const GLW& glw, Coverage* coverage, TrackIndexes& indexes);

// The point level-of-detail filter of the exact drawing (GL::PLOD4), its x step
// found once as the least whole number of frames d with float(d) >= px, and the
// three coordinate tests made at once.
class PointFilter {
public:
    PointFilter(float px, float py);

    // p: the sample's coordinates less its offset, in lanes 0 to 2.
    bool operator()(uint64_t n, Lanes p)
    {
        // All tests, then one branch: which of them passes is hard to predict.
        if (stepsX(lastN, n) | anyOfThree(absLanes(p - lastP) >= py)) {
            take(n, p);
            return true;
        }
        return false;
    }
    // operator() where x cannot have made the step: only the coordinates are tested.
    bool moved(uint64_t n, Lanes p)
    {
        if (anyOfThree(absLanes(p - lastP) >= py)) {
            take(n, p);
            return true;
        }
        return false;
    }
    // Whether no x in [n0, n1] makes the step from the last one let through, nor
    // from a later one among them (they do not decrease).
    bool noStepWithin(uint64_t n0, uint64_t n1) const { return never || (lastN <= n0 && n1 - lastN < step); }
    // Whether x moved at least the step from `from` to `to` (unsigned: a smaller
    // `to` is a huge step).
    bool stepsX(uint64_t from, uint64_t to) const { return !never & (to - from >= step); }
    void take(uint64_t n, Lanes p)
    {
        lastN = n;
        lastP = p;
    }

private:
    Lanes py;
    uint64_t step = 0;
    bool never = false; // no step is large enough (px beyond every float(d), or NaN)
    uint64_t lastN = 0;
    Lanes lastP = {0, 0, 0, 0};
};
