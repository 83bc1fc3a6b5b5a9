#include "host/tavview/options.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace {

struct ParseRow {
    const char* name;
    QStringList args;
    ParseResult result;
    const char* messagePart; // in the message, for Help and Error rows
    std::function<void(const ViewOptions&)> check;
};

void PrintTo(const ParseRow& row, std::ostream* os) { *os << row.name; }

class ParseCommandLine : public testing::TestWithParam<ParseRow> {};

TEST_P(ParseCommandLine, ReadsOrRefuses)
{
    const ParseRow& row = GetParam();
    ViewOptions options;
    QString message;
    QStringList args = row.args;
    args.prepend(QStringLiteral("tavview"));
    ASSERT_EQ(parseCommandLine(args, options, message), row.result) << message.toStdString();
    if (row.messagePart) {
        EXPECT_TRUE(message.contains(QLatin1String(row.messagePart))) << message.toStdString();
    }
    if (row.result == ParseResult::Error) {
        EXPECT_FALSE(message.contains(QLatin1Char('\n'))) << "one line: " << message.toStdString();
    }
    if (row.check)
        row.check(options);
}

const ParseRow rows[] = {
    {"NothingOpensTheDefault", {}, ParseResult::Run, nullptr,
     [](const ViewOptions& o) {
         EXPECT_TRUE(o.files.isEmpty());
         EXPECT_EQ(o.size, QSize(1200, 480));
         EXPECT_FALSE(o.frame.has_value());
     }},
    {"SnapshotWithEverything",
     {"take.c3d", "--snapshot", "out.png", "--size", "640x200", "--select", "1,3-4,r0", "--frame", "-5",
      "--module", "/m/tavgraph.so"},
     ParseResult::Run, nullptr,
     [](const ViewOptions& o) {
         EXPECT_EQ(o.files, QStringList{"take.c3d"});
         EXPECT_EQ(o.snapshotPath, "out.png");
         EXPECT_EQ(o.size, QSize(640, 200));
         EXPECT_EQ(o.select, (QStringList{"1", "3-4", "r0"}));
         EXPECT_EQ(o.frame.value_or(0), -5);
         EXPECT_EQ(o.modulePath, "/m/tavgraph.so");
     }},
    {"SelectGivenTwiceAddsUp", {"--select", "LASI", "--select", "RASI,"}, ParseResult::Run, nullptr,
     [](const ViewOptions& o) { EXPECT_EQ(o.select, (QStringList{"LASI", "RASI"})); }},
    {"ReportTakesManyFiles", {"--report", "--csv", "a.c3d", "b.c3d"}, ParseResult::Run, nullptr,
     [](const ViewOptions& o) {
         EXPECT_TRUE(o.report);
         EXPECT_TRUE(o.csv);
         EXPECT_EQ(o.files.size(), 2);
     }},
    {"Help", {"--help"}, ParseResult::Help, "--snapshot <png>", nullptr},
    {"UnknownOption", {"--bogus"}, ParseResult::Error, "bogus", nullptr},
    {"SizeTooSmall", {"--size", "8x8"}, ParseResult::Error, "between 16 and 16384", nullptr},
    {"FrameNotANumber", {"--frame", "12a"}, ParseResult::Error, "--frame", nullptr},
    {"TwoTakesWithoutReport", {"a.c3d", "b.c3d"}, ParseResult::Error, "one take at a time", nullptr},
    {"CsvWithoutReport", {"--csv", "a.c3d"}, ParseResult::Error, "--csv", nullptr},
    {"ReportWithoutFiles", {"--report"}, ParseResult::Error, "at least one file", nullptr},
    {"ReportAndSnapshot", {"--report", "a.c3d", "--snapshot", "x.png"}, ParseResult::Error, "cannot be combined",
     nullptr},
};

INSTANTIATE_TEST_SUITE_P(Rows, ParseCommandLine, testing::ValuesIn(rows),
                         [](const testing::TestParamInfo<ParseRow>& i) { return std::string(i.param.name); });

} // namespace
