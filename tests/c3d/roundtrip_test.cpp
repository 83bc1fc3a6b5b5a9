// Takes written by the writer read back as written, at the sizes where the format
// changes shape: frame counts past 16 bits, label lists past one parameter.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class RoundTrip : public testing::Test {
protected:
    QTemporaryDir dir;
    QString path(const char* name) const { return dir.filePath(name); }
    TAV::Frames load(const QString& file)
    {
        TAV::Frames take;
        QString error;
        EXPECT_TRUE(C3D::loadTake(file, take, &error)) << error.toStdString();
        return take;
    }
};

TEST_F(RoundTrip, SmallTakeReadsBackAsWritten)
{
    C3D::WriterSetup s = testSetup(3, 5);
    s.firstFrame = 7;
    s.frameRate = 120.0;
    s.units = "m";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    ASSERT_TRUE(writeTestTake(path("small.c3d"), s, [&](int64_t n, float* v) {
        for (int k = 0; k < 3; ++k) {
            v[k * 4 + 0] = float(n) * 10.5f + float(k);
            v[k * 4 + 1] = -float(k) - 0.25f;
            v[k * 4 + 2] = 1e-3f * float(n);
            v[k * 4 + 3] = C3D::fourthWord(3, 4);
        }
        if (n == 2)
            v[1 * 4 + 3] = C3D::MissingFourthWord;
        if (n == 3)
            v[2 * 4 + 1] = nan;
    }));

    const TAV::Frames take = load(path("small.c3d"));
    ASSERT_EQ(take.size(), 5);
    EXPECT_EQ(take.property<double>("frequency"), 120.0);
    EXPECT_EQ(take.property<qint64>("firstFrame"), 7);
    EXPECT_EQ(take.property<QString>("units"), "m");
    EXPECT_EQ(take.property<QList<qint64>>("timeLut"), (QList<qint64>{0, 8333, 16667, 25000, 33333}));
    ASSERT_EQ(take.markerInfo.size(), 3u);
    EXPECT_EQ(take.markerInfo[2].name, "M3");
    EXPECT_EQ(take.markerInfo[2].id, 2u);
    for (int n = 0; n < 5; ++n)
        for (int k = 0; k < 3; ++k) {
            const TAV::Marker& m = take[n].markers[k];
            if ((n == 2 && k == 1) || (n == 3 && k == 2)) {
                EXPECT_EQ(m.cond, 0.0f);
                EXPECT_EQ(m.x, 0.0f);
                continue;
            }
            EXPECT_EQ(m.x, float(n) * 10.5f + float(k));
            EXPECT_EQ(m.y, -float(k) - 0.25f);
            EXPECT_EQ(m.z, 1e-3f * float(n));
            EXPECT_GE(m.cond, 1.001f) << "equal residuals are all good";
        }
}

TEST_F(RoundTrip, FrameCountsPast16BitsComeFromTheParameters)
{
    const int64_t frames = 70000;
    C3D::WriterSetup s = testSetup(2, frames);
    s.firstFrame = 100000;
    ASSERT_TRUE(writeTestTake(path("long.c3d"), s, [](int64_t n, float* v) {
        for (int k = 0; k < 2; ++k) {
            v[k * 4 + 0] = float(n);
            v[k * 4 + 1] = float(k);
            v[k * 4 + 2] = 0.0f;
            v[k * 4 + 3] = C3D::fourthWord(1, 1);
        }
    }));
    const TAV::Frames take = load(path("long.c3d"));
    ASSERT_EQ(take.size(), frames);
    EXPECT_EQ(take.property<qint64>("firstFrame"), 100000);
    EXPECT_EQ(take.last().time, frames - 1);
    EXPECT_EQ(take.last().markers[1].x, float(frames - 1));
    EXPECT_EQ(take.last().markers[1].time, frames - 1);
}

TEST_F(RoundTrip, LabelsContinuePastOneParameter)
{
    const int points = 600;
    ASSERT_TRUE(writeTestTake(path("wide.c3d"), testSetup(points, 2), [](int64_t, float* v) {
        for (int k = 0; k < points * 4; ++k)
            v[k] = 1.0f;
    }));
    const TAV::Frames take = load(path("wide.c3d"));
    ASSERT_EQ(take.markerInfo.size(), size_t(points));
    EXPECT_EQ(take.markerInfo[254].name, "M255");
    EXPECT_EQ(take.markerInfo[255].name, "M256");
    EXPECT_EQ(take.markerInfo[599].name, "M600");
    EXPECT_EQ(take[1].markers.size(), points);
}

TEST_F(RoundTrip, KindsAndNamesOfPoints)
{
    C3D::WriterSetup s = testSetup(5, 1);
    s.labels = {"  RKNE ", "RKNE", "KneeAngle", "", "Grf"};
    s.pointStrings = {{"ANGLES", {"KneeAngle"}}, {"ANGLE_UNITS", {"deg"}}, {"FORCES", {"Grf"}}};
    ASSERT_TRUE(writeTestTake(path("kinds.c3d"), s, [](int64_t, float* v) {
        for (int k = 0; k < 20; ++k)
            v[k] = 1.0f;
    }));
    const TAV::Frames take = load(path("kinds.c3d"));
    ASSERT_EQ(take.markerInfo.size(), 5u);
    const std::pair<std::string, std::string> expected[] = {{"RKNE", "kind=marker;units=mm"},
                                                            {"RKNE#2", "kind=marker;units=mm"},
                                                            {"KneeAngle", "kind=angle;units=deg"},
                                                            {"P4", "kind=marker;units=mm"},
                                                            {"Grf", "kind=force"}};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(take.markerInfo[i].name, expected[i].first);
        EXPECT_EQ(take.markerInfo[i].options, expected[i].second);
    }
}

TEST_F(RoundTrip, WriterRefusesWhatItCannotStoreOrFinish)
{
    C3D::Writer w;
    QString error;
    EXPECT_FALSE(w.open(path("none.c3d"), testSetup(0, 1), &error));
    EXPECT_TRUE(error.startsWith("none.c3d: ")) << error.toStdString();

    ASSERT_TRUE(w.open(path("short.c3d"), testSetup(1, 3), &error));
    const float v[4] = {0, 0, 0, 0};
    EXPECT_TRUE(w.writeFrame(v));
    EXPECT_FALSE(w.close(&error));
    EXPECT_EQ(error, "short.c3d: got 1 of 3 frames");
}

} // namespace
