#include "host/tavview/options.h"

#include <gtest/gtest.h>

namespace {

TEST(ParseCommandLine, RefusesWithOneLineSayingWhy)
{
    const struct {
        const char* name;
        QStringList args;
        ParseResult result;
        const char* messagePart;
    } rows[] = {
        {"help", {"--help"}, ParseResult::Help, "--snapshot <file>"},
        {"unknown option", {"--bogus"}, ParseResult::Error, "bogus"},
        {"size too small", {"--size", "8x8"}, ParseResult::Error, "between 16 and 16384"},
        {"frame not a number", {"--frame", "12a"}, ParseResult::Error, "--frame"},
        {"two takes without report", {"a.c3d", "b.c3d"}, ParseResult::Error, "one take at a time"},
        {"csv without report", {"--csv", "a.c3d"}, ParseResult::Error, "--csv"},
        {"report and snapshot", {"--report", "a.c3d", "--snapshot", "x.png"}, ParseResult::Error, "cannot be combined"},
        {"fill without save", {"a.c3d", "--fill", "linear"}, ParseResult::Error, "need --save"},
        {"max gap without fill", {"a.c3d", "--max-gap", "5", "--save", "b.c3d"}, ParseResult::Error,
         "only applies to --fill"},
        {"spike threshold not positive", {"a.c3d", "--delete-spikes", "0", "--save", "b.c3d"}, ParseResult::Error,
         "positive threshold"},
        {"save without input", {"--save", "b.c3d"}, ParseResult::Error, "exactly one input file"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ViewOptions options;
        QString message;
        EXPECT_EQ(parseCommandLine(QStringList{"tavview"} + row.args, options, message), row.result);
        EXPECT_TRUE(message.contains(QLatin1String(row.messagePart))) << message.toStdString();
        if (row.result == ParseResult::Error) {
            EXPECT_FALSE(message.contains(QLatin1Char('\n'))) << message.toStdString();
        }
    }
}

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
