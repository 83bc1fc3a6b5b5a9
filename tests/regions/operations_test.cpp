#include "tests/regions/runs.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr int kIntMax = std::numeric_limits<int>::max();

// How Apply grows, truncates and marks flags is replayed against a model by the
// run-list fuzz corpus; these are the runs that no Update makes.
TEST(Apply, OrsRunTypesIntoFrames)
{
    const struct {
        const char* name;
        std::vector<Span> runs;
        std::vector<int> before, after;
        std::string printed;
    } rows[] = {{"LaterRunsStillApplied", {{0, 9, 8}, {0, 3, 1}}, {}, {11, 11, 11, 11},
                 "error: attempting to modify an invalid index (4)\n"},
                {"NegativeIndexReportedNotWritten", {{-2, 0, 1}}, {}, {},
                 "error: attempting to modify an invalid index (-2)\n"},
                {"RunEndingAtTheLargestIntCountsIn64Bits", {{kIntMax - 1, kIntMax, 1}, {0, 0, 1}}, {0}, {1},
                 "error: attempting to modify an invalid index (2147483646)\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<int> flags = row.before;
        StdoutCapture out;
        regionsOf(row.runs).Apply(flags);
        EXPECT_EQ(flags, row.after);
        EXPECT_EQ(out.text(), row.printed);
    }
}

// Runs that start before 0 and a growth of the largest int: clipped to the list,
// saturating (the fuzz model covers ordinary growth).
TEST(RegionsExtend, SaturatesInsideTheList)
{
    Regions r = regionsOf({{-3, 1, 8}, {2, 3, 1}, {4, 6, 8}});
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
