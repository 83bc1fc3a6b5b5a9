#pragma once
// Marker positions as the fills read them: a sample counts when it is present and
// valid (cond > 0). One stretch of one marker can be hidden, so a fill can be tried
// on samples whose truth is known.
#include "tav/tavframes.h"

#include <Eigen/Core>

#include <cstdint>

struct HiddenStretch {
    uint32_t id = 0xFFFFFFFF;
    int first = 0;
    int last = -1;
};

class TrackReader {
public:
    explicit TrackReader(const TAV::Frames& take, HiddenStretch hidden = HiddenStretch())
        : frames(take), hide(hidden) {}

    int frameCount() const { return frames.size(); }
    bool valid(uint32_t id, int frame) const;
    // Valid in every frame from first to last.
    bool validThrough(uint32_t id, int first, int last) const;
    Eigen::Vector3d position(uint32_t id, int frame) const;
    const TAV::Frames& take() const { return frames; }

private:
    const TAV::Frames& frames;
    HiddenStretch hide;
};
