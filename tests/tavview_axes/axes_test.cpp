#include "host/tavview/axes.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

namespace {

TEST(NiceStep, RoundsUpToOneTwoOrFiveTimesAPowerOfTen)
{
    EXPECT_DOUBLE_EQ(niceStep(0.3), 0.5);
    EXPECT_DOUBLE_EQ(niceStep(1), 1);
    EXPECT_DOUBLE_EQ(niceStep(1.01), 2);
    EXPECT_DOUBLE_EQ(niceStep(7), 10);
    EXPECT_DOUBLE_EQ(niceStep(0.0012), 0.002);
    EXPECT_DOUBLE_EQ(niceStep(250), 500);
    EXPECT_DOUBLE_EQ(niceStep(0), 1);
}

TEST(ValueText, HasTheDecimalsOfTheStepAndNoNegativeZero)
{
    EXPECT_EQ(valueText(1500, 100), QStringLiteral("1500"));
    EXPECT_EQ(valueText(-1.5, 0.5), QStringLiteral("-1.5"));
    EXPECT_EQ(valueText(0.02, 0.02), QStringLiteral("0.02"));
    EXPECT_EQ(valueText(-0.0001, 0.1), QStringLiteral("0.0"));
}

struct TimecodeRow {
    const char* name;
    qint64 frame;
    double rate;
    const char* text;
};
void PrintTo(const TimecodeRow& r, std::ostream* os) { *os << r.name; }

class Timecode : public testing::TestWithParam<TimecodeRow> {};

TEST_P(Timecode, Text)
{
    const TimecodeRow& r = GetParam();
    EXPECT_EQ(timecodeText(r.frame, r.rate), QString::fromLatin1(r.text));
}

INSTANTIATE_TEST_SUITE_P(
    Rates, Timecode,
    testing::Values(TimecodeRow{"zero", 0, 25, "00:00:00:00"}, TimecodeRow{"lastFrameOfASecond", 24, 25, "00:00:00:24"},
                    TimecodeRow{"wholeSecond", 25, 25, "00:00:01:00"},
                    TimecodeRow{"hoursMinutesSeconds", 3661 * 30 + 5, 30, "01:01:01:05"},
                    TimecodeRow{"threeDigitFrames", 119, 120, "00:00:00:119"},
                    TimecodeRow{"threeDigitSecond", 120, 120, "00:00:01:000"},
                    TimecodeRow{"negative", -26, 25, "-00:00:01:01"},
                    TimecodeRow{"fractionalRateRounds", 30, 29.97, "00:00:01:00"},
                    TimecodeRow{"mostNegativeFrame", std::numeric_limits<qint64>::min(), 25,
                                "-102481911520608:37:12:08"},
                    TimecodeRow{"absurdRateIsCapped", 5, 1e19, "00:00:00:000000005"}),
    [](const testing::TestParamInfo<TimecodeRow>& i) { return std::string(i.param.name); });

struct TickRow {
    const char* name;
    double left, right, pixelsPerFrame;
    TimeScale scale;
    int count;
    double firstPos;
    const char* firstText;
    const char* lastText;
};
void PrintTo(const TickRow& r, std::ostream* os) { *os << r.name; }

class TimeTicks : public testing::TestWithParam<TickRow> {};

const double minPixels = 100;

TEST_P(TimeTicks, PlacesAndLabels)
{
    const TickRow& r = GetParam();
    const QVector<Tick> t = timeTicks(r.left, r.right, r.pixelsPerFrame, minPixels, r.scale);
    ASSERT_EQ(t.size(), r.count);
    EXPECT_DOUBLE_EQ(t.first().pos, r.firstPos);
    EXPECT_EQ(t.first().text, QString::fromLatin1(r.firstText));
    EXPECT_EQ(t.last().text, QString::fromLatin1(r.lastText));
}

INSTANTIATE_TEST_SUITE_P(
    Zooms, TimeTicks,
    testing::Values(
        // The take's own frame numbers: index 9 is frame 10 when the take starts at 1.
        TickRow{"framesFromTheFirstFrame", 0, 100, 10, {1, 100, TimeLabels::Frames}, 10, 9, "10", "100"},
        TickRow{"framesZoomedInStayWhole", 0, 3, 200, {1, 100, TimeLabels::Frames}, 4, 0, "1", "4"},
        TickRow{"framesZoomedOut", 0, 100000, 0.01, {0, 100, TimeLabels::Frames}, 11, 0, "0", "100000"},
        TickRow{"seconds", 0, 1000, 1, {0, 100, TimeLabels::Seconds}, 11, 0, "0", "10"},
        TickRow{"secondsZoomedIn", 0, 12, 50, {0, 120, TimeLabels::Seconds}, 6, 0, "0.00", "0.10"},
        TickRow{"timecodeWholeSeconds", 0, 100, 4, {0, 25, TimeLabels::Timecode}, 5, 0, "00:00:00:00", "00:00:04:00"},
        TickRow{"timecodeFramesOfASecond", 0, 60, 10, {10, 30, TimeLabels::Timecode}, 7, 0, "00:00:00:10",
                "00:00:02:10"},
        TickRow{"timecodeWithoutARateIsFrames", 0, 100, 10, {1, 0, TimeLabels::Timecode}, 10, 9, "10", "100"},
        TickRow{"timecodeAtTwoGigahertz", 0, 100, 10, {0, 2e9, TimeLabels::Timecode}, 11, 0, "00:00:00:000000000",
                "00:00:00:000000100"}),
    [](const testing::TestParamInfo<TickRow>& i) { return std::string(i.param.name); });

// At every zoom the ticks are far enough apart for their labels and there is one
// at least every few label widths.
TEST(TimeTicksAtEveryZoom, StayReadable)
{
    for (TimeLabels labels : {TimeLabels::Frames, TimeLabels::Seconds, TimeLabels::Timecode})
        for (double ppf = 1e-4; ppf < 1e3; ppf *= 3.7) {
            const double width = 1000; // pixels
            const QVector<Tick> t = timeTicks(-3, -3 + width / ppf, ppf, minPixels, {7, 60, labels});
            SCOPED_TRACE(testing::Message() << "labels " << int(labels) << " at " << ppf << " px per frame");
            ASSERT_FALSE(t.isEmpty());
            for (int i = 1; i < t.size(); ++i)
                EXPECT_GE((t[i].pos - t[i - 1].pos) * ppf, minPixels - 1e-6);
            EXPECT_GE(t.size(), 2);
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
    EXPECT_TRUE(valueTicks(3, -2, 100, 30).isEmpty());
    EXPECT_TRUE(valueTicks(0, 1, 0, 30).isEmpty());
}

} // namespace
