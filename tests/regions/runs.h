#pragma once
// Span lists compared by all three fields (std::pair's == would ignore the type).
#include "utils/regions.h"

#include <ostream>
#include <tuple>
#include <vector>

typedef std::tuple<int, int, int> Span;

inline std::vector<Span> runsOf(const Regions& r)
{
    std::vector<Span> out;
    for (const Pair& p : r)
        out.emplace_back(p.first, p.second, p.type);
    return out;
}

inline Regions regionsOf(const std::vector<Span>& runs)
{
    Regions r;
    for (const Span& x : runs)
        r.push_back(Pair(std::get<0>(x), std::get<1>(x), std::get<2>(x)));
    return r;
}
