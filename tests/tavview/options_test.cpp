#include "host/tavview/options.h"

#include <gtest/gtest.h>

namespace {

// What the command line refuses is checked through the executable, in cli_test.
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
    EXPECT_EQ(parseCommandLine({"tavview", "--help"}, o, message), ParseResult::Help);
    EXPECT_TRUE(message.contains(QLatin1String("--snapshot <file>"))) << message.toStdString();
}

} // namespace
