#include "host/tavview/options.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct ParseRow {
    const char* name;
    QStringList args;
    ParseResult result;
    const char* messagePart; // in the message of Help and Error rows
};

void PrintTo(const ParseRow& row, std::ostream* os) { *os << row.name; }

class ParseCommandLine : public testing::TestWithParam<ParseRow> {};

TEST_P(ParseCommandLine, RefusesWithOneLineSayingWhy)
{
    const ParseRow& row = GetParam();
    ViewOptions options;
    QString message;
    ASSERT_EQ(parseCommandLine(QStringList{"tavview"} + row.args, options, message), row.result)
        << message.toStdString();
    EXPECT_TRUE(message.contains(QLatin1String(row.messagePart))) << message.toStdString();
    if (row.result == ParseResult::Error) {
        EXPECT_FALSE(message.contains(QLatin1Char('\n'))) << message.toStdString();
    }
}

const ParseRow rows[] = {
    {"Help", {"--help"}, ParseResult::Help, "--snapshot <file>"},
    {"UnknownOption", {"--bogus"}, ParseResult::Error, "bogus"},
    {"SizeTooSmall", {"--size", "8x8"}, ParseResult::Error, "between 16 and 16384"},
    {"FrameNotANumber", {"--frame", "12a"}, ParseResult::Error, "--frame"},
    {"TwoTakesWithoutReport", {"a.c3d", "b.c3d"}, ParseResult::Error, "one take at a time"},
    {"CsvWithoutReport", {"--csv", "a.c3d"}, ParseResult::Error, "--csv"},
    {"ReportAndSnapshot", {"--report", "a.c3d", "--snapshot", "x.png"}, ParseResult::Error, "cannot be combined"},
    {"FillWithoutSave", {"a.c3d", "--fill", "linear"}, ParseResult::Error, "need --save"},
    {"MaxGapWithoutFill", {"a.c3d", "--max-gap", "5", "--save", "b.c3d"}, ParseResult::Error, "only applies to --fill"},
    {"SpikeThresholdNotPositive", {"a.c3d", "--delete-spikes", "0", "--save", "b.c3d"}, ParseResult::Error,
     "positive threshold"},
    {"SaveWithoutInput", {"--save", "b.c3d"}, ParseResult::Error, "exactly one input file"},
};

INSTANTIATE_TEST_SUITE_P(Rows, ParseCommandLine, testing::ValuesIn(rows),
                         [](const testing::TestParamInfo<ParseRow>& i) { return std::string(i.param.name); });

TEST(ParseCommandLine, ReadsEveryOptionAndAddsUpRepeatedSelections)
{
    ViewOptions o;
    QString message;
    ASSERT_EQ(parseCommandLine({"tavview", "take.c3d", "--snapshot", "out.png", "--size", "640x200", "--select",
                                "1,3-4,", "--select", "LASI", "--frame", "-5", "--module", "/m/tavgraph.so"},
                               o, message),
              ParseResult::Run)
        << message.toStdString();
    EXPECT_EQ(o.files, QStringList{"take.c3d"});
    EXPECT_EQ(o.snapshotPath, "out.png");
    EXPECT_EQ(o.size, QSize(640, 200));
    EXPECT_EQ(o.select, (QStringList{"1", "3-4", "LASI"}));
    EXPECT_EQ(o.frame.value_or(0), -5);
    EXPECT_EQ(o.modulePath, "/m/tavgraph.so");
}

} // namespace
