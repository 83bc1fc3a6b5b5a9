#include "host/tavview/axes.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace {

TEST(AxisNumbers, NiceStepsAndValueTexts)
{
    // Rounded up to one, two or five times a power of ten.
    for (const auto& row : {std::make_pair(0.3, 0.5), std::make_pair(1.0, 1.0), std::make_pair(1.01, 2.0),
                            std::make_pair(7.0, 10.0), std::make_pair(0.0012, 0.002), std::make_pair(250.0, 500.0),
                            std::make_pair(0.0, 1.0)})
        EXPECT_DOUBLE_EQ(niceStep(row.first), row.second) << row.first;
    // The decimals of the step, and no negative zero.
    EXPECT_EQ(valueText(1500, 100), QStringLiteral("1500"));
    EXPECT_EQ(valueText(-1.5, 0.5), QStringLiteral("-1.5"));
    EXPECT_EQ(valueText(0.02, 0.02), QStringLiteral("0.02"));
    EXPECT_EQ(valueText(-0.0001, 0.1), QStringLiteral("0.0"));
}

TEST(Timecode, HoursMinutesSecondsAndFramesOfTheSecond)
{
    const struct {
        const char* name;
        qint64 frame;
        double rate;
        const char* text;
    } rows[] = {
        {"last frame of a second", 24, 25, "00:00:00:24"},
        {"whole second", 25, 25, "00:00:01:00"},
        {"hours minutes seconds", 3661 * 30 + 5, 30, "01:01:01:05"},
        {"three digit frames", 119, 120, "00:00:00:119"},
        {"negative", -26, 25, "-00:00:01:01"},
        {"fractional rate rounds", 30, 29.97, "00:00:01:00"},
        {"most negative frame", std::numeric_limits<qint64>::min(), 25, "-102481911520608:37:12:08"},
        {"absurd rate is capped", 5, 1e19, "00:00:00:000000005"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(timecodeText(row.frame, row.rate), QString::fromLatin1(row.text)) << row.name;
}

const double minPixels = 100;

TEST(TimeTicks, PlacesAndLabels)
{
    const struct {
        const char* name;
        double left, right, pixelsPerFrame;
        TimeScale scale;
        int count;
        double firstPos;
        const char *firstText, *lastText;
    } rows[] = {
        // The take's own frame numbers: index 9 is frame 10 when the take starts at 1.
        {"frames from the first frame", 0, 100, 10, {1, 100, TimeLabels::Frames}, 10, 9, "10", "100"},
        {"frames zoomed in stay whole", 0, 3, 200, {1, 100, TimeLabels::Frames}, 4, 0, "1", "4"},
        {"frames zoomed out", 0, 100000, 0.01, {0, 100, TimeLabels::Frames}, 11, 0, "0", "100000"},
        {"seconds", 0, 1000, 1, {0, 100, TimeLabels::Seconds}, 11, 0, "0", "10"},
        {"seconds zoomed in", 0, 12, 50, {0, 120, TimeLabels::Seconds}, 6, 0, "0.00", "0.10"},
        {"timecode whole seconds", 0, 100, 4, {0, 25, TimeLabels::Timecode}, 5, 0, "00:00:00:00", "00:00:04:00"},
        {"timecode frames of a second", 0, 60, 10, {10, 30, TimeLabels::Timecode}, 7, 0, "00:00:00:10", "00:00:02:10"},
        {"timecode without a rate is frames", 0, 100, 10, {1, 0, TimeLabels::Timecode}, 10, 9, "10", "100"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QVector<Tick> t = timeTicks(row.left, row.right, row.pixelsPerFrame, minPixels, row.scale);
        ASSERT_EQ(t.size(), row.count);
        EXPECT_DOUBLE_EQ(t.first().pos, row.firstPos);
        EXPECT_EQ(t.first().text, QString::fromLatin1(row.firstText));
        EXPECT_EQ(t.last().text, QString::fromLatin1(row.lastText));
    }
}

// At every zoom the ticks are far enough apart for their labels and there is one
// at least every few label widths.
TEST(TimeTicks, StayReadableAtEveryZoom)
{
    for (TimeLabels labels : {TimeLabels::Frames, TimeLabels::Seconds, TimeLabels::Timecode})
        for (double ppf = 1e-4; ppf < 1e3; ppf *= 3.7) {
            const double width = 1000; // pixels
            const QVector<Tick> t = timeTicks(-3, -3 + width / ppf, ppf, minPixels, {7, 60, labels});
            SCOPED_TRACE(testing::Message() << "labels " << int(labels) << " at " << ppf << " px per frame");
            ASSERT_GE(t.size(), 2);
            for (int i = 1; i < t.size(); ++i)
                EXPECT_GE((t[i].pos - t[i - 1].pos) * ppf, minPixels - 1e-6);
        }
}

TEST(ValueTicks, CoverTheRangeOnRoundValues)
{
    QVector<Tick> t = valueTicks(-2, 3, 100, 30);
    ASSERT_EQ(t.size(), 11);
    EXPECT_EQ(t.first().text, QStringLiteral("-2.0"));
    EXPECT_EQ(t.at(4).text, QStringLiteral("0.0"));
    t = valueTicks(1000, 2000, 0.5, 30);
    ASSERT_EQ(t.size(), 11);
    EXPECT_EQ(t.last().text, QStringLiteral("2000"));
    // Nothing for a broken range or scale.
    const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& bad : {std::make_tuple(3.0, -2.0, 100.0), std::make_tuple(nan, 1.0, 100.0),
                            std::make_tuple(0.0, inf, 100.0), std::make_tuple(0.0, 1.0, 0.0),
                            std::make_tuple(0.0, 1.0, inf)})
        EXPECT_TRUE(valueTicks(std::get<0>(bad), std::get<1>(bad), std::get<2>(bad), 30).isEmpty())
            << std::get<0>(bad) << " " << std::get<1>(bad) << " " << std::get<2>(bad);
}

} // namespace
