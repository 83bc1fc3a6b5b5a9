// Takes written by the writer read back as written, at the sizes where the format
// changes shape: frame counts past 16 bits, label lists past one parameter.
#include "c3dtestfiles.h"
#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dlabels.h"
#include "host/c3d/c3dtake.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

// More frames than the header's 16 bits hold, and over a million samples, which load
// in two halves at once: every sample lands in its frame, graded by the residuals of
// the whole take; a missing sample (by its fourth word or a non-finite coordinate)
// loses its coordinates.
TEST_F(RoundTrip, ALargeTakeReadsBackSampleForSample)
{
    const int points = 16, frames = 70000;
    const auto steps = [](int64_t n, int k) { return int((n * 7 + k) % 23 + (n < frames / 2 ? 1 : 9)); };
    const auto flagged = [](int64_t n, int k) { return (n + k) % 97 == 0; };
    const auto notFinite = [](int64_t n, int k) { return (n + k) % 89 == 0; };
    C3D::WriterSetup setup = testSetup(points, frames);
    setup.firstFrame = 100000;
    ASSERT_TRUE(writeTestTake(path, setup, [&](int64_t n, float* v) {
        for (int k = 0; k < points; ++k, v += 4) {
            v[0] = float(n), v[1] = float(k), v[2] = 0.5f;
            v[3] = flagged(n, k) ? C3D::MissingFourthWord : C3D::fourthWord(1, steps(n, k));
            if (notFinite(n, k))
                v[n % 3] = n % 2 ? NAN : INFINITY;
        }
    }));
    C3D::ResidualRule rule;
    for (int64_t n = 0; n < frames; ++n)
        for (int k = 0; k < points; ++k)
            if (!flagged(n, k) && !notFinite(n, k))
                rule.count(steps(n, k));
    rule.settle();

    const TAV::Frames take = load();
    ASSERT_EQ(take.size(), frames);
    EXPECT_EQ(take.property<qint64>("firstFrame"), 100000);
    int wrong = 0;
    for (int64_t n = 0; n < frames; ++n)
        for (int k = 0; k < points; ++k) {
            const TAV::Marker& m = take[int(n)].markers[k];
            const bool missing = flagged(n, k) || notFinite(n, k);
            wrong += m.id != uint32_t(k) || m.time != n || m.x != (missing ? 0.0f : float(n)) ||
                     m.y != (missing ? 0.0f : float(k)) ||
                     m.cond != (missing ? C3D::MissingCondition : rule.condition(steps(n, k)));
        }
    EXPECT_EQ(wrong, 0);
}

// A take of no frames is still a take of its points; the writer takes no frame
// beyond the count it was opened with.
TEST_F(RoundTrip, TakeWithoutFramesLoadsEmpty)
{
    C3D::Writer w;
    ASSERT_TRUE(w.open(path, testSetup(2, 0), nullptr));
    const float values[8] = {};
    EXPECT_FALSE(w.writeFrame(values));
    ASSERT_TRUE(w.close(nullptr));
    const TAV::Frames take = load();
    EXPECT_EQ(take.size(), 0);
    EXPECT_EQ(take.markerInfo.size(), 2u);
}

// One label on every point but the last of the largest file: each gets its own
// suffix, at once; the point beyond the labels is numbered.
TEST(PointNames, RepeatedLabelsGetSuffixesInOrder)
{
    const int labels = 65534;
    C3D::Parameters params;
    params.add({"POINT", "LABELS", C3D::TypeChar, {1, labels}, {}, std::vector<std::string>(labels, "A")});
    const std::vector<C3D::PointDescription> names = C3D::describePoints(params, labels + 1);
    ASSERT_EQ(names.size(), size_t(labels + 1));
    EXPECT_EQ(names[0].name, "A");
    EXPECT_EQ(names[1].name, "A#2");
    EXPECT_EQ(names[labels - 1].name, "A#65534");
    EXPECT_EQ(names.back().name, "P65535");
}

// A valid file with more frames than the store can hold is refused with a reason;
// the file is sparse, so the test needs no gigabytes.
TEST_F(RoundTrip, TakeBeyondWhatTheStoreHoldsIsRefused)
{
    const int64_t frames = 30000000;
    {
        C3D::Writer w;
        ASSERT_TRUE(w.open(path, testSetup(1, frames), nullptr));
    }
    QFile file(path);
    ASSERT_TRUE(file.resize(file.size() + frames * 16));
    TAV::Frames take;
    QString error;
    EXPECT_FALSE(C3D::loadTake(path, take, &error));
    EXPECT_TRUE(error.startsWith("take.c3d: has 30000000 frames, more than one take holds")) << error.toStdString();
    EXPECT_TRUE(take.isEmpty());
}

// Counts and rates are scalars: other readers take an array's shape for a list of
// values and refuse the file.
TEST_F(RoundTrip, CountsAndRatesAreWrittenAsScalars)
{
    ASSERT_TRUE(writeTestTake(path, testSetup(2, 3), [](int64_t, float* v) { std::fill(v, v + 8, 1.0f); }));
    C3D::File file;
    QString error;
    ASSERT_TRUE(file.open(path, &error)) << error.toStdString();
    for (const char* name : {"USED", "SCALE", "RATE", "DATA_START", "FRAMES"}) {
        const C3D::Parameter* p = file.parameters().find("POINT", name);
        ASSERT_NE(p, nullptr) << name;
        EXPECT_TRUE(p->dims.empty()) << name;
    }
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

// Setups the format cannot hold, or that would write a take no reader can use.
TEST_F(RoundTrip, WriterRefusesWhatItCannotWrite)
{
    const struct {
        const char* name;
        int points;
        int64_t firstFrame;
        double rate, residualScale;
    } rows[] = {{"no points", 0, 1, 100, 1},
                {"more points than 16 bits", 65536, 1, 100, 1},
                {"frame 0", 1, 0, 100, 1},
                {"zero rate", 1, 1, 0, 1},
                {"NaN rate", 1, 1, std::numeric_limits<double>::quiet_NaN(), 1},
                {"zero residual scale", 1, 1, 100, 0}};
    for (const auto& r : rows) {
        C3D::WriterSetup s = testSetup(r.points, 3);
        s.firstFrame = r.firstFrame;
        s.frameRate = r.rate;
        s.residualScale = float(r.residualScale);
        C3D::Writer w;
        QString error;
        EXPECT_FALSE(w.open(path, s, &error)) << r.name;
        EXPECT_TRUE(error.startsWith("take.c3d: ")) << r.name << ": " << error.toStdString();
    }
}

// c3dgen, which writes the load benchmarks' takes: what it writes loads, and a
// command line it cannot use ends with exit status 2 and the usage.
TEST_F(RoundTrip, GeneratorWritesATakeTheReaderLoads)
{
    const auto c3dgen = [](const QStringList& args) {
        QProcess p;
        p.start(QStringLiteral(C3DGEN_EXECUTABLE), args);
        EXPECT_TRUE(p.waitForFinished(60000));
        return std::make_pair(p.exitCode(), QString::fromUtf8(p.readAllStandardError()));
    };
    ASSERT_EQ(c3dgen({path, "--markers", "3", "--frames", "40", "--rate", "250"}).first, 0);
    const TAV::Frames take = load();
    EXPECT_EQ(take.size(), 40);
    EXPECT_EQ(take.markerInfo.size(), 3u);
    EXPECT_EQ(take.property<double>("frequency"), 250.0);

    for (const QStringList& bad : {QStringList{path, "--frames", "4", "--markers"}, {path, "--bogus"},
                                   {path, "other.c3d", "--markers", "1", "--frames", "1"}}) {
        const auto result = c3dgen(bad);
        EXPECT_EQ(result.first, 2) << bad.join(' ').toStdString();
        EXPECT_TRUE(result.second.contains("usage: c3dgen")) << result.second.toStdString();
    }
}

} // namespace
