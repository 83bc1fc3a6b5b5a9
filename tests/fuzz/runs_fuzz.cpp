// Random operation sequences on run lists and on the frame store, each checked
// after every step against a small model written from the rules the graph relies
// on: the last element of a type track joins the last run; Apply fills new
// elements with the missing type and marks a changed missing bit only when the
// vector was one short; Remove, Extend and Merge as the navigation uses them.
#include "tav/tavframes.h"
#include "utils/regions.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace {

struct Run {
    int first, second, type;
    bool operator==(const Run& o) const { return std::tie(first, second, type) == std::tie(o.first, o.second, o.type); }
};
using Model = std::vector<Run>;

void check(bool ok, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "model and code differ: %s\n", what);
        std::abort();
    }
}

void modelUpdate(Model& m, const std::vector<int>& t)
{
    if (t.empty())
        return;
    int start = 0, type = t[0];
    for (size_t i = 1; i + 1 < t.size(); ++i)
        if (t[i] != type) {
            m.push_back({start, int(i) - 1, type});
            type = t[i];
            start = int(i);
        }
    m.push_back({start, int(t.size()) - 1, type});
}

void modelApply(const Model& m, std::vector<int>& flags)
{
    if (m.empty() || m.back().second < 0)
        return;
    const int s = m.back().second;
    bool firstTime = true;
    if (int64_t(s) != int64_t(flags.size())) {
        flags.resize(size_t(s) + 1, 2);
        firstTime = false;
    }
    for (const Run& r : m)
        for (int j = r.first; j <= r.second && j < int(flags.size()); ++j) {
            const bool changed = (flags[size_t(j)] & 2) != (r.type & 2);
            flags[size_t(j)] |= r.type | (changed && firstTime ? 16 : 0);
        }
}

int64_t runSize(const Run& r) { return r.first < 0 || r.second < 0 ? 0 : int64_t(r.second) - r.first + 1; }

void modelRemove(Model& m, int mask, int maxSize)
{
    for (size_t i = 0; i < m.size();)
        if ((mask && (m[i].type & mask)) || (maxSize && runSize(m[i]) > maxSize))
            m.erase(m.begin() + long(i));
        else
            ++i;
}

void modelExtend(Model& m, int left, int right, int mask)
{
    for (size_t i = 0; i < m.size(); ++i) {
        Run& r = m[i];
        if (!(r.type & mask))
            continue;
        if (i > 0 && !(m[i - 1].type & 2))
            r.first -= left;
        r.first = std::max(r.first, 0);
        if (i + 1 < m.size() && !(m[i + 1].type & 2))
            r.second += right;
        r.second = std::min(r.second, m.back().second);
    }
}

void modelMerge(Model& m, int mask)
{
    if (m.size() < 2)
        return;
    const Model src = m;
    m.clear();
    Run r = src[0];
    for (size_t i = 1; i < src.size(); ++i) {
        if (int64_t(src[i].first) - r.second <= 1 && (r.type & mask) && (src[i].type & mask)) {
            r.second = src[i].second;
            continue;
        }
        if (r.type & mask)
            r.type = mask;
        m.push_back(r);
        r = src[i];
    }
    if (r.type & mask)
        r.type = mask;
    m.push_back(r);
}

bool same(const Regions& code, const Model& model)
{
    if (code.size() != model.size())
        return false;
    for (size_t i = 0; i < model.size(); ++i)
        if (!(Run{code[i].first, code[i].second, code[i].type} == model[i]))
            return false;
    return true;
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
            std::vector<int> flags(in.ConsumeIntegralInRange<size_t>(0, 300), in.ConsumeIntegralInRange(0, 2) * 2);
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
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i)
        if (a[i].id != b[i].id || a[i].time != b[i].time || a[i].x != b[i].x)
            return false;
    return true;
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
                if (m.time < 0 || m.time >= n)
                    continue;
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
    if (!std::freopen("/dev/null", "w", stdout))
        return 1;
    return 0;
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
