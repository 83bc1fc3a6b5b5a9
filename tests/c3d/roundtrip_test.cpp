// Takes written by the writer read back as written, at the sizes where the format
// changes shape: frame counts past 16 bits, label lists past one parameter.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>

namespace {

class RoundTrip : public testing::Test {
protected:
    QTemporaryDir dir;
    QString path = dir.filePath("take.c3d");
    TAV::Frames load()
    {
        TAV::Frames take;
        QString error;
        EXPECT_TRUE(C3D::loadTake(path, take, &error)) << error.toStdString();
        return take;
    }
};

TEST_F(RoundTrip, MissingSamplesLoseTheirCoordinates)
{
    ASSERT_TRUE(writeTestTake(path, testSetup(2, 4), [&](int64_t n, float* v) {
        for (int k = 0; k < 8; ++k)
            v[k] = k % 4 == 3 ? C3D::fourthWord(3, 4) : float(n) * 10.5f - float(k);
        if (n == 2)
            v[7] = C3D::MissingFourthWord;
        if (n == 3)
            v[5] = NAN;
    }));

    const TAV::Frames take = load();
    ASSERT_EQ(take.size(), 4);
    for (int n = 0; n < 4; ++n) {
        const TAV::Marker& m = take[n].markers[1];
        const bool missing = n >= 2;
        EXPECT_EQ(m.cond > 0, !missing) << n;
        EXPECT_EQ(m.x, missing ? 0.0f : float(n) * 10.5f - 4.0f) << n;
        EXPECT_EQ(take[n].markers[0].z, float(n) * 10.5f - 2.0f) << n;
    }
}

TEST_F(RoundTrip, FrameCountsPast16BitsComeFromTheParameters)
{
    const int64_t frames = 70000;
    C3D::WriterSetup s = testSetup(1, frames);
    s.firstFrame = 100000;
    ASSERT_TRUE(writeTestTake(path, s, [](int64_t n, float* v) {
        v[0] = float(n);
        v[1] = v[2] = 0.0f;
        v[3] = C3D::fourthWord(1, 1);
    }));
    const TAV::Frames take = load();
    ASSERT_EQ(take.size(), frames);
    EXPECT_EQ(take.property<qint64>("firstFrame"), 100000);
    EXPECT_EQ(take.last().markers[0].x, float(frames - 1));
    EXPECT_EQ(take.last().markers[0].time, frames - 1);
}

// Padded, repeated and empty labels, model outputs named in the point lists, and
// labels continued past one parameter's 255 entries.
TEST_F(RoundTrip, NamesAndKindsOfPoints)
{
    C3D::WriterSetup s = testSetup(300, 1);
    s.labels[0] = "  RKNE ";
    s.labels[1] = "RKNE";
    s.labels[2] = "KneeAngle";
    s.labels[3] = "";
    s.labels[4] = "Grf";
    s.pointStrings = {{"ANGLES", {"KneeAngle"}}, {"ANGLE_UNITS", {"deg"}}, {"FORCES", {"Grf"}}};
    ASSERT_TRUE(writeTestTake(path, s, [](int64_t, float* v) { std::fill(v, v + 1200, 1.0f); }));

    const TAV::Frames take = load();
    ASSERT_EQ(take.markerInfo.size(), 300u);
    const std::pair<std::string, std::string> expected[] = {
        {"RKNE", "kind=marker;units=mm"}, {"RKNE#2", "kind=marker;units=mm"}, {"KneeAngle", "kind=angle;units=deg"},
        {"P4", "kind=marker;units=mm"},   {"Grf", "kind=force"}};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(take.markerInfo[i].name, expected[i].first);
        EXPECT_EQ(take.markerInfo[i].options, expected[i].second);
    }
    EXPECT_EQ(take.markerInfo[255].name, "M256");
    EXPECT_EQ(take.markerInfo[299].name, "M300");
}

} // namespace
