#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr int64_t kMin = std::numeric_limits<int64_t>::min();

struct Search {
    const char* name;
    std::vector<int64_t> times;
    int64_t time;
    int tolerance;
    int index;
};

void PrintTo(const Search& row, std::ostream* os) { *os << row.name; }

class FindIndex : public testing::TestWithParam<Search> {};

TEST_P(FindIndex, FindsTheSampleAtATime)
{
    TAV::Markers track;
    for (int64_t t : GetParam().times)
        track.append(marker(0, t));
    const TAV::Markers shared = track;

    EXPECT_EQ(TAV::findIndex(track, GetParam().time, GetParam().tolerance), GetParam().index);
    EXPECT_TRUE(track.isSharedWith(shared)) << "a search never detaches the track";
}

INSTANTIATE_TEST_SUITE_P(
    Store, FindIndex,
    testing::Values(Search{"Exact", {0, 10, 20, 30}, 20, 0, 2}, Search{"WithinTolerance", {0, 10, 20, 30}, 14, 5, 1},
                    Search{"NoneWithinGivesLastProbe", {0, 10, 20, 30}, 14, 2, 2},
                    Search{"AfterTheLast", {0, 10, 20, 30}, 31, 100, -1},
                    Search{"BeforeTheFirst", {0, 10, 20, 30}, -1, 100, -1}, Search{"EmptyTrack", {}, 0, 0, -1},
                    Search{"ExtremeTimes", {kMin, 0, kMax}, kMax, 1000, 2},
                    Search{"ExtremeTimesMiss", {kMin, kMax}, 0, 1000, 1}),
    [](const testing::TestParamInfo<Search>& i) { return std::string(i.param.name); });

struct Fuzzy {
    const char* name;
    long a, b;
    int tolerance;
    bool equal;
};

void PrintTo(const Fuzzy& row, std::ostream* os) { *os << row.name; }

class FuzzyCmp : public testing::TestWithParam<Fuzzy> {};

TEST_P(FuzzyCmp, StrictlyWithinTolerance)
{
    EXPECT_EQ(TAV::fuzzyCmp<long>(GetParam().a, GetParam().b, GetParam().tolerance), GetParam().equal);
    EXPECT_EQ(TAV::fuzzyCmp<long>(GetParam().b, GetParam().a, GetParam().tolerance), GetParam().equal);
}

INSTANTIATE_TEST_SUITE_P(Store, FuzzyCmp,
                         testing::Values(Fuzzy{"EqualWithZeroTolerance", 5, 5, 0, true},
                                         Fuzzy{"ZeroToleranceOnlyEquality", 5, 6, 0, false},
                                         Fuzzy{"Inside", 5, 7, 3, true}, Fuzzy{"OnTheEdgeIsOutside", 5, 8, 3, false},
                                         Fuzzy{"NegativeToleranceOnlyEquality", 5, 6, -3, false},
                                         Fuzzy{"AcrossTheWholeRange", kMin, kMax, 1000, false},
                                         Fuzzy{"NearTheTop", kMax, kMax - 1, 2, true},
                                         Fuzzy{"NearTheBottom", kMin, kMin + 1, 2, true}),
                         [](const testing::TestParamInfo<Fuzzy>& i) { return std::string(i.param.name); });

} // namespace
