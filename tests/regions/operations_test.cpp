#include "tests/regions/runs.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr int kIntMax = std::numeric_limits<int>::max();

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
        Application{"GrowsWithMissingFill", {{0, 4, 1}}, {}, {3, 3, 3, 3, 3}, ""},
        Application{"OneShortMarksMixedMissing", {{0, 4, 2}}, {0, 0, 0, 0}, {18, 18, 18, 18}, invalid4},
        Application{"TruncatesToTheLastRun", {{0, 1, 1}, {2, 3, 4}}, std::vector<int>(10, 0), {1, 1, 4, 4}, ""},
        Application{"LaterRunsStillApplied", {{0, 9, 8}, {0, 3, 1}}, {}, {11, 11, 11, 11}, invalid4},
        Application{"NegativeIndexReportedNotWritten", {{-2, 0, 1}}, {}, {},
                    "error: attempting to modify an invalid index (-2)\n"},
        Application{"RunEndingAtTheLargestIntCountsIn64Bits", {{kIntMax - 1, kIntMax, 1}, {0, 0, 1}}, {0}, {1},
                    "error: attempting to modify an invalid index (2147483646)\n"}),
    [](const testing::TestParamInfo<Application>& i) { return std::string(i.param.name); });

// Runs grow away from missing neighbours only, inside the list, saturating.
TEST(RegionsExtend, GrowsMaskedRunsAwayFromMissingNeighbours)
{
    Regions r = regionsOf({{0, 9, 1}, {10, 12, 8}, {13, 20, 2}});
    r.Extend(2, 3, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 9, 1}, {8, 12, 8}, {13, 20, 2}}));

    r = regionsOf({{-3, 1, 8}, {2, 3, 1}, {4, 6, 8}});
    r.Extend(kIntMax, kIntMax, 8);
    EXPECT_EQ(runsOf(r), (std::vector<Span>{{0, 6, 8}, {2, 3, 1}, {0, 6, 8}}));
}

TEST(RegionsInfo, PrintsRunsWithHexTypes)
{
    StdoutCapture out;
    regionsOf({{0, 9, 1}, {13, 40, 26}}).Info();
    Regions().Info();
    std::cout << 26 << "\n";
    EXPECT_EQ(out.text(), "[0 9 (0x1)] [13 40 (0x1a)] \n\n26\n");
}

} // namespace
