// Run lists: building runs from per-frame types, painting them back onto a
// per-frame vector, and trimming, widening and fusing them.
#include "utils/regions.h"

#include "utils/saturate.h"

#include <algorithm>
#include <iostream>

int condition_type(float cond)
{
    // The thresholds are single-precision offsets added in double precision.
    const float fudge = 0.001f;
    if (!(cond > 0))
        return RegionMissing;
    const double c = cond;
    if (c < 0.5 + double(fudge))
        return RegionPoor;
    if (c < 1.0 + double(fudge))
        return RegionFair;
    return RegionGood;
}

// The last element is never compared: it always joins the last run.
void Regions::Update(const std::vector<int>& typeTrack)
{
    if (typeTrack.empty())
        return;
    const size_t n = typeTrack.size();
    int start = 0;
    int type = typeTrack[0];
    for (size_t i = 1; i < n - 1; ++i) {
        if (typeTrack[i] != type) {
            push_back(Pair(start, int(i) - 1, type));
            type = typeTrack[i];
            start = int(i);
        }
    }
    push_back(Pair(start, int(n - 1), type));
}

// Indices run in 64 bits: a run may end at the largest int.
void Regions::Apply(std::vector<int>& flagTrack) const
{
    if (empty())
        return;
    const int64_t s = back().end();
    if (s < 0)
        return;
    // Only a vector exactly one short of the last run marks mismatched missing bits.
    bool firstTime = true;
    if (s != int64_t(flagTrack.size())) {
        flagTrack.resize(size_t(s + 1), RegionMissing);
        firstTime = false;
    }
    for (const Pair& r : *this) {
        for (int64_t j = r.begin(); j <= r.end(); ++j) {
            if (j < 0 || j >= int64_t(flagTrack.size())) {
                std::cout << "error: attempting to modify an invalid index (" << j << ")" << std::endl;
                break;
            }
            int& flag = flagTrack[size_t(j)];
            const bool a = flag & RegionMissing, b = r.type & RegionMissing;
            flag |= r.type;
            if (a != b && firstTime)
                flag |= RegionMixed;
        }
    }
}

void Regions::Remove(int mask, int maxSize)
{
    const auto gone = [mask, maxSize](const Pair& r) {
        return (mask != 0 && (r.type & mask) != 0) || (maxSize != 0 && r.size() > maxSize);
    };
    erase(std::remove_if(begin(), end(), gone), end());
}

// Runs never grow towards a missing neighbour, nor past the list's ends.
void Regions::Extend(int left, int right, int mask)
{
    const size_t n = size();
    for (size_t i = 0; i < n; ++i) {
        Pair& r = (*this)[i];
        if (!(r.type & mask))
            continue;
        if (i > 0 && !((*this)[i - 1].type & RegionMissing))
            r.first = saturate_cast<int>(int64_t(r.first) - left);
        if (r.first < 0)
            r.first = 0;
        if (i + 1 < n && !((*this)[i + 1].type & RegionMissing))
            r.second = saturate_cast<int>(int64_t(r.second) + right);
        if (r.second > back().second)
            r.second = back().second;
    }
}

// Masked runs that touch or overlap (next start at most one past the current end)
// fuse; a single missing frame between them keeps them apart.
void Regions::Merge(int mask)
{
    if (size() < 2)
        return;
    Regions src;
    src.swap(*this);
    reserve(src.size());
    Pair r = src[0];
    for (size_t i = 1; i < src.size(); ++i) {
        const Pair& next = src[i];
        if (int64_t(next.first) - r.second <= 1 && (r.type & mask) && (next.type & mask)) {
            r.second = next.second;
            continue;
        }
        if (r.type & mask)
            r.type = mask;
        push_back(r);
        r = next;
    }
    if (r.type & mask)
        r.type = mask;
    push_back(r);
}

void Regions::Info() const
{
    for (const Pair& r : *this)
        std::cout << "[" << r.first << " " << r.second << " (0x" << std::hex << r.type << std::dec << ")] ";
    std::cout << std::endl;
}
