#pragma once
// Runs of frames that carry the same type value, and lists of such runs.
#include "utils/saturate.h"

#include <cstdint>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

// Run types (bit sets).
enum RegionType : int { RegionGood = 1, RegionMissing = 2, RegionFair = 4, RegionPoor = 8, RegionMixed = 16 };

// Type of one sample from its condition value.
int condition_type(float cond);

struct Pair : public std::pair<int, int> {
    Pair(int s, int e, int t) : std::pair<int, int>(s, e), type(t) {}
    int type;

    int begin() const { return first; }
    int end() const { return second; }
    // Closed bounds; a run over every int index saturates rather than overflows.
    int size() const { return (first < 0 || second < 0) ? 0 : saturate_cast<int>(int64_t(second) - first + 1); }
};

class Regions : public std::vector<Pair> {
    // Sample tracks: any indexable container of records with a cond field.
    template <class T>
    using IfSampleTrack = decltype(std::declval<const T&>()[0].cond, void());

public:
    Regions() = default;
    explicit Regions(const std::vector<int>& typeTrack) { Update(typeTrack); }
    template <class T, class = IfSampleTrack<T>>
    explicit Regions(const T& track) { Update(track); }

    void Update(const std::vector<int>& typeTrack);
    template <class T, class = IfSampleTrack<T>>
    void Update(const T& track);

    void Apply(std::vector<int>& flagTrack) const;
    void Remove(int mask, int maxSize);
    void Extend(int left, int right, int mask);
    void Merge(int mask);
    void Info() const;
};

// Per-track run lists, keyed by id | 0x1000000 (marker) or id | 0x2000000 (rigid).
// Ids at or above 0x1000000 would collide with the kind bits: tracks are limited
// to ids below that.
typedef std::map<int, Regions> RegionsSet;
enum : int { MarkerTrackKey = 0x1000000, RigidTrackKey = 0x2000000 };

template <class T, class>
void Regions::Update(const T& track)
{
    const int n = int(track.size());
    if (n == 0)
        return;
    if (n == 1) {
        push_back(Pair(0, 1, condition_type(track[0].cond)));
        return;
    }
    int type = condition_type(track[0].cond);
    int start = 0;
    for (int i = 1; i < int(track.size()); ++i) {
        const int t = condition_type(track[i].cond);
        if (t != type) {
            push_back(Pair(start, i - 1, type));
            start = i;
        }
        type = t;
    }
    push_back(Pair(start, int(track.size()) - 1, type));
}
