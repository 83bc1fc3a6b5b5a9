#include "tests/regions/runs.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

struct Application {
    const char* name;
    std::vector<Span> runs;
    std::vector<int> before;
    std::vector<int> after;
    std::string printed;
};

void PrintTo(const Application& row, std::ostream* os) { *os << row.name; }

class Apply : public testing::TestWithParam<Application> {};

TEST_P(Apply, OrsRunTypesIntoFrames)
{
    std::vector<int> flags = GetParam().before;
    StdoutCapture out;
    regionsOf(GetParam().runs).Apply(flags);
    EXPECT_EQ(flags, GetParam().after);
    EXPECT_EQ(out.text(), GetParam().printed);
}

const std::string invalid4 = "error: attempting to modify an invalid index (4)\n";

INSTANTIATE_TEST_SUITE_P(
    Runs, Apply,
    testing::Values(
        Application{"NoRuns", {}, {7}, {7}, ""},
        Application{"NegativeLastEnd", {{0, -1, 1}}, {7}, {7}, ""},
        Application{"GrowsWithMissingFill", {{0, 4, 1}}, {}, {3, 3, 3, 3, 3}, ""},
        Application{"OneShortMarksMixedMissing", {{0, 4, 2}}, {0, 0, 0, 0}, {18, 18, 18, 18}, invalid4},
        Application{"OneShortAgreeingMissingBits", {{0, 4, 1}}, {0, 0, 0, 0}, {1, 1, 1, 1}, invalid4},
        Application{"TruncatesToTheLastRun", {{0, 1, 1}, {2, 3, 4}}, std::vector<int>(10, 0), {1, 1, 4, 4}, ""},
        Application{"ExactLengthNeitherGrowsNorMarks", {{0, 1, 2}, {2, 2, 1}}, {0, 0, 0}, {2, 2, 1}, ""},
        Application{"LaterRunsStillApplied", {{0, 9, 8}, {0, 3, 1}}, {}, {11, 11, 11, 11}, invalid4},
        Application{"ReversedRunWritesNothing", {{3, 1, 8}, {0, 1, 1}}, {0, 0}, {1, 1}, ""},
        Application{"NegativeIndexReportedNotWritten",
                    {{-2, 0, 1}},
                    {},
                    {},
                    "error: attempting to modify an invalid index (-2)\n"},
        Application{"RunBeyondTheLargestIntStopsAtItsFirstInvalidIndex",
                    {{std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max(), 1}, {0, 0, 1}},
                    {0},
                    {1},
                    "error: attempting to modify an invalid index (2147483646)\n"}),
    [](const testing::TestParamInfo<Application>& i) { return std::string(i.param.name); });

TEST(RegionsRemove, ByTypeAndByLength)
{
    const Regions all = regionsOf({{0, 9, 1}, {10, 12, 2}, {13, 14, 8}, {15, 15, 3}, {-1, 4, 1}});

    const struct {
        int mask, maxSize;
        std::vector<Span> kept;
    } cases[] = {
        {2, 0, {{0, 9, 1}, {13, 14, 8}, {-1, 4, 1}}},
        {0, 5, {{10, 12, 2}, {13, 14, 8}, {15, 15, 3}, {-1, 4, 1}}},
        {0, 0, runsOf(all)},
        {0, -1, {}},
        {8, 2, {{15, 15, 3}, {-1, 4, 1}}},
    };
    for (const auto& c : cases) {
        Regions r = all;
        r.Remove(c.mask, c.maxSize);
        EXPECT_EQ(runsOf(r), c.kept) << "Remove(" << c.mask << ", " << c.maxSize << ")";
    }
}

TEST(RegionsExtend, GrowsMaskedRunsAwayFromMissingNeighbours)
{
    Regions r = regionsOf({{0, 9, 1}, {10, 12, 8}, {13, 20, 1}});
    r.Extend(2, 3, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 9, 1}, {8, 15, 8}, {13, 20, 1}}));

    r = regionsOf({{0, 9, 1}, {10, 12, 8}, {13, 20, 2}});
    r.Extend(2, 3, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 9, 1}, {8, 12, 8}, {13, 20, 2}}));
}

TEST(RegionsExtend, StaysInsideTheListAndSaturates)
{
    const int big = std::numeric_limits<int>::max();
    Regions r = regionsOf({{-3, 1, 8}, {2, 3, 1}, {4, 6, 8}});
    r.Extend(big, big, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 6, 8}, {2, 3, 1}, {0, 6, 8}}));

    r = regionsOf({{0, 1, 1}, {2, 3, 8}, {4, 6, 1}});
    r.Extend(-big, 0, 8);
    EXPECT_EQ(r[1].first, big) << "saturated, not wrapped";
}

struct Merging {
    const char* name;
    int mask;
    std::vector<Span> runs;
    std::vector<Span> merged;
};

void PrintTo(const Merging& row, std::ostream* os) { *os << row.name; }

class Merge : public testing::TestWithParam<Merging> {};

TEST_P(Merge, FusesTouchingMaskedRuns)
{
    Regions r = regionsOf(GetParam().runs);
    r.Merge(GetParam().mask);
    EXPECT_EQ(runsOf(r), GetParam().merged);
}

INSTANTIATE_TEST_SUITE_P(
    Runs, Merge,
    testing::Values(Merging{"Table", 10, {{0, 4, 8}, {5, 9, 2}, {10, 19, 1}, {20, 22, 8}},
                            {{0, 9, 10}, {10, 19, 1}, {20, 22, 10}}},
                    Merging{"SingleRunKeepsItsType", 10, {{0, 4, 8}}, {{0, 4, 8}}},
                    Merging{"OneMissingFrameKeepsApart", 8, {{0, 4, 8}, {6, 9, 8}}, {{0, 4, 8}, {6, 9, 8}}},
                    Merging{"OverlapTakesTheLaterEnd", 8, {{0, 9, 8}, {3, 5, 8}, {6, 7, 1}}, {{0, 5, 8}, {6, 7, 1}}},
                    Merging{"UnmaskedPassThrough", 2, {{0, 1, 1}, {2, 3, 1}}, {{0, 1, 1}, {2, 3, 1}}},
                    Merging{"ExtremeStartsDoNotOverflow",
                            8,
                            {{0, std::numeric_limits<int>::min(), 8},
                             {std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), 8}},
                            {{0, std::numeric_limits<int>::min(), 8},
                             {std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), 8}}}),
    [](const testing::TestParamInfo<Merging>& i) { return std::string(i.param.name); });

TEST(RegionsInfo, PrintsRunsWithHexTypes)
{
    StdoutCapture out;
    regionsOf({{0, 9, 1}, {10, 12, 2}, {13, 40, 26}}).Info();
    Regions().Info();
    std::cout << 26 << "\n";
    EXPECT_EQ(out.text(), "[0 9 (0x1)] [10 12 (0x2)] [13 40 (0x1a)] \n\n26\n");
}

} // namespace
