#pragma once
// Boxes around a track's valid samples, over blocks of 64, 256, 1024, ...
// samples: a fast paint asks whether a whole block can still add a pixel without
// visiting its samples. Built from the samples alone, so one index serves every
// view until the tracks change.
#include "tav/tavframes.h"

#include <QVector>

#include <cstdint>
#include <memory>
#include <vector>

struct SampleBlock {
    float lo[3], hi[3];         // coordinates of the valid samples, before any offset
    int64_t timeLo, timeHi;     // their times
    uint32_t id;                // the first valid sample's id
    bool oneId;                 // every valid sample carries that id
    bool finite;                // every coordinate of every valid sample is finite
    bool ascending;             // the valid samples' times never decrease

    bool empty() const { return timeLo > timeHi; }
};

// The block of samples [m, end).
template <class T>
SampleBlock blockOf(const T* m, const T* end);

class TrackIndex {
public:
    static constexpr int leaf = 64; // samples in a block of level 0
    static constexpr int fan = 4;  // blocks of one level in a block of the next

    template <class T>
    explicit TrackIndex(const QVector<T>& samples);

    int levels() const { return int(blocks.size()); }
    // Samples in a block of this level.
    static int64_t span(int level)
    {
        int64_t n = leaf;
        while (level-- > 0)
            n *= fan;
        return n;
    }
    const SampleBlock& block(int level, int i) const { return blocks[size_t(level)][size_t(i)]; }
    int count(int level) const { return int(blocks[size_t(level)].size()); }

private:
    std::vector<std::vector<SampleBlock>> blocks; // by level, the top one a single block
};

// One index per shown kind of each track, built when a paint first asks for it
// and kept while the tracks are the same ones.
class TrackIndexes {
public:
    const TrackIndex& markers(const TAV::Frames& tracks, int i);
    const TrackIndex& rigids(const TAV::Frames& tracks, int i);

private:
    // Shared with the graph: while it is held, the same data means the same samples.
    TAV::Frames held;
    std::vector<std::unique_ptr<TrackIndex>> markerIndex, rigidIndex;

    void follow(const TAV::Frames& tracks);
    template <class T>
    const TrackIndex& indexOf(std::vector<std::unique_ptr<TrackIndex>>& kind, const QVector<T>& samples,
                              const TAV::Frames& tracks, int i);
};
