// Random operation sequences on run lists, each checked after every step against
// a small model written from the rules the graph relies on: the last element of a
// type track joins the last run; Apply fills new elements with the missing type and
// marks a changed missing bit only when the vector was one short; Remove, Extend
// and Merge as the navigation uses them. The order in which inputs are consumed is
// what the kept corpus was found with.
#include "utils/regions.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace {

struct Run {
    int first, second, type;
};
using Model = std::vector<Run>;

void check(bool ok, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "model and code differ: %s\n", what);
        std::abort();
    }
}

// Runs of equal values, the last element taking the type of the one before it.
void modelUpdate(Model& m, std::vector<int> t)
{
    if (t.size() > 1)
        t.back() = t[t.size() - 2];
    for (size_t i = 0; i < t.size(); ++i)
        if (i == 0 || t[i] != t[i - 1])
            m.push_back({int(i), int(i), t[i]});
        else
            m.back().second = int(i);
}

void modelApply(const Model& m, std::vector<int>& flags)
{
    if (m.empty() || m.back().second < 0)
        return;
    const bool oneShort = int64_t(m.back().second) == int64_t(flags.size());
    if (!oneShort)
        flags.resize(size_t(m.back().second) + 1, RegionMissing);
    for (const Run& r : m)
        for (int j = r.first; j <= r.second && j < int(flags.size()); ++j) {
            const bool changed = (flags[size_t(j)] & RegionMissing) != (r.type & RegionMissing);
            flags[size_t(j)] |= r.type | (changed && oneShort ? RegionMixed : 0);
        }
}

void modelRemove(Model& m, int mask, int maxSize)
{
    const auto gone = [&](const Run& r) {
        const int64_t size = r.first < 0 || r.second < 0 ? 0 : int64_t(r.second) - r.first + 1;
        return (mask && (r.type & mask)) || (maxSize && size > maxSize);
    };
    m.erase(std::remove_if(m.begin(), m.end(), gone), m.end());
}

void modelExtend(Model& m, int left, int right, int mask)
{
    for (size_t i = 0; i < m.size(); ++i) {
        Run& r = m[i];
        if (!(r.type & mask))
            continue;
        if (i > 0 && !(m[i - 1].type & RegionMissing))
            r.first -= left;
        r.first = std::max(r.first, 0);
        if (i + 1 < m.size() && !(m[i + 1].type & RegionMissing))
            r.second += right;
        r.second = std::min(r.second, m.back().second);
    }
}

// Masked runs take the mask as their type and absorb a masked run that starts at
// most one past their end.
void modelMerge(Model& m, int mask)
{
    if (m.size() < 2)
        return;
    Model out;
    for (Run r : m) {
        if (r.type & mask)
            r.type = mask;
        if (!out.empty() && (out.back().type & mask) && (r.type & mask) && int64_t(r.first) - out.back().second <= 1)
            out.back().second = r.second;
        else
            out.push_back(r);
    }
    m = out;
}

bool same(const Regions& code, const Model& model)
{
    return std::equal(code.begin(), code.end(), model.begin(), model.end(), [](const Pair& c, const Run& r) {
        return std::tie(c.first, c.second, c.type) == std::tie(r.first, r.second, r.type);
    });
}

int typeBits(FuzzedDataProvider& in) { return in.ConsumeIntegralInRange(0, 31); }

void runLists(FuzzedDataProvider& in)
{
    Regions code;
    Model model;
    while (in.remaining_bytes() > 0 && code.size() < 4096) {
        switch (in.ConsumeIntegralInRange(0, 4)) {
        case 0: {
            std::vector<int> t(in.ConsumeIntegralInRange<size_t>(0, 64));
            for (int& v : t)
                v = typeBits(in) & 15;
            code.Update(t);
            modelUpdate(model, t);
            break;
        }
        case 1: {
            const size_t size = in.ConsumeIntegralInRange<size_t>(0, 300);
            std::vector<int> flags(size, in.ConsumeIntegralInRange(0, 2) * 2);
            std::vector<int> expected = flags;
            code.Apply(flags);
            modelApply(model, expected);
            check(flags == expected, "Apply");
            break;
        }
        case 2: {
            const int mask = typeBits(in), maxSize = in.ConsumeIntegralInRange(-2, 100);
            code.Remove(mask, maxSize);
            modelRemove(model, mask, maxSize);
            break;
        }
        case 3: {
            const int left = in.ConsumeIntegralInRange(0, 50), right = in.ConsumeIntegralInRange(0, 50);
            const int mask = typeBits(in);
            code.Extend(left, right, mask);
            modelExtend(model, left, right, mask);
            break;
        }
        case 4: {
            const int mask = typeBits(in);
            code.Merge(mask);
            modelMerge(model, mask);
            break;
        }
        }
        check(same(code, model), "run list");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Apply reports an out-of-range run on standard output; keep the log readable.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider in(data, size);
    runLists(in);
    return 0;
}
