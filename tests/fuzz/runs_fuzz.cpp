// Random operation sequences on run lists and on the frame store, each checked
// after every step against a small model written from the rules the graph relies
// on: the last element of a type track joins the last run; Apply fills new
// elements with the missing type and marks a changed missing bit only when the
// vector was one short; Remove, Extend and Merge as the navigation uses them.
// The order in which inputs are consumed is what the kept corpus was found with.
#include "tav/tavframes.h"
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

// Frames hold markers sorted by id, as the store's look-up requires.
TAV::Frame randomFrame(FuzzedDataProvider& in)
{
    TAV::Frame f;
    f.time = in.ConsumeIntegralInRange<int64_t>(-2, 20);
    for (uint32_t id = 0; id < 6; ++id)
        if (in.ConsumeBool())
            f.markers.push_back({id, 0, f.time, float(in.ConsumeIntegral<int8_t>()), 0, 0, 1});
    return f;
}

bool sameMarkers(const TAV::Markers& a, const TAV::Markers& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const TAV::Marker& p, const TAV::Marker& q) {
        return p.id == q.id && p.time == q.time && p.x == q.x;
    });
}

void frameStore(FuzzedDataProvider& in)
{
    TAV::Frames code;
    std::vector<TAV::Frame> model;
    const int n = in.ConsumeIntegralInRange(0, 12);
    for (int i = 0; i < n; ++i) {
        model.push_back(randomFrame(in));
        code.push_back(model.back());
    }
    while (in.remaining_bytes() > 0) {
        switch (in.ConsumeIntegralInRange(0, 3)) {
        case 0: {
            const TAV::Frame f = randomFrame(in);
            const int at = in.ConsumeIntegralInRange(-2, n + 1);
            const bool inRange = at >= 0 && at < n;
            check(code.SetFrame(f, at) == inRange, "SetFrame's result");
            if (inRange)
                model[size_t(at)] = f;
            break;
        }
        case 1: {
            TAV::Frame got;
            const int at = in.ConsumeIntegralInRange(0, n + 1);
            check(code.GetFrame(got, at) == (at < n), "GetFrame's result");
            if (at < n)
                check(sameMarkers(got.markers, model[size_t(at)].markers), "GetFrame's frame");
            break;
        }
        case 2: {
            // A track's samples carry their frame index in time.
            TAV::Frame track;
            const int count = in.ConsumeIntegralInRange(0, 8);
            for (int k = 0; k < count; ++k) {
                const TAV::Marker m{in.ConsumeIntegralInRange<uint32_t>(0, 7), 0,
                                    in.ConsumeIntegralInRange<int64_t>(-2, n + 1), float(in.ConsumeIntegral<int8_t>()),
                                    0, 0, 1};
                track.markers.push_back(m);
                if (m.time >= 0 && m.time < n)
                    for (TAV::Marker& s : model[size_t(m.time)].markers)
                        if (s.id == m.id)
                            s = m;
            }
            check(code.SetData(track, TAV::MaskMarkers), "SetData's result");
            break;
        }
        case 3: {
            const QList<qint64> times = code.GetTime();
            check(times.size() == n, "GetTime's length");
            for (int i = 0; i < n; ++i)
                check(times[i] == model[size_t(i)].time, "GetTime");
            break;
        }
        }
        for (int i = 0; i < n; ++i)
            check(sameMarkers(code[i].markers, model[size_t(i)].markers), "frames");
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
    if (in.ConsumeBool())
        runLists(in);
    else
        frameStore(in);
    return 0;
}
