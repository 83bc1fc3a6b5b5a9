// Takes written by the writer read back as written, at the sizes where the format
// changes shape: frame counts past 16 bits, label lists past one parameter.
#include "c3dtestfiles.h"
#include "host/c3d/c3dfile.h"

#include <QProcess>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

using RoundTrip = TakeFiles;

// More frames than the header's 16 bits hold, and over a million samples, which load
// in two halves at once: every sample lands in its frame, graded by the residuals of
// the whole take (residual 0 is filled); a missing sample (by its fourth word or a
// non-finite coordinate) loses its coordinates.
TEST_F(RoundTrip, ALargeTakeReadsBackSampleForSample)
{
    const int points = 16, frames = 70000;
    const auto steps = [](int64_t n, int k) { return int((n * 7 + k) % 23 + (n < frames / 2 ? 0 : 9)); };
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

    const TAV::Frames take = load(path);
    ASSERT_EQ(take.size(), frames);
    EXPECT_EQ(take.property<qint64>("firstFrame"), 100000);
    int wrong = 0;
    for (int64_t n = 0; n < frames; ++n)
        for (int k = 0; k < points; ++k) {
            const TAV::Marker& m = take[int(n)].markers[k];
            const bool missing = flagged(n, k) || notFinite(n, k);
            wrong += m.id != uint32_t(k) || m.time != n || m.x != (missing ? 0.0f : float(n)) ||
                     m.y != (missing ? 0.0f : float(k)) ||
                     m.cond != (missing ? C3D::MissingCondition : rule.condition(steps(n, k))) ||
                     isFilled(m) != (!missing && steps(n, k) == 0);
        }
    EXPECT_EQ(wrong, 0);
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

// Padded, repeated and empty labels, model outputs named in the point lists, and
// labels continued past one parameter's 255 entries. Counts and rates are scalars:
// other readers take an array's shape for a list of values and refuse the file.
TEST_F(RoundTrip, NamesKindsAndScalarsOfPoints)
{
    C3D::WriterSetup s = testSetup(300, 1);
    const char* const labels[] = {"  RKNE ", "RKNE", "KneeAngle", "", "Grf", "RKNE"};
    std::copy(std::begin(labels), std::end(labels), s.labels.begin());
    s.pointStrings = {{"ANGLES", {"KneeAngle"}}, {"ANGLE_UNITS", {"deg"}}, {"FORCES", {"Grf"}}};
    ASSERT_TRUE(writeTestTake(path, s, [](int64_t, float* v) { std::fill(v, v + 1200, 1.0f); }));

    const TAV::Frames take = load(path);
    ASSERT_EQ(take.markerInfo.size(), 300u);
    const std::pair<std::string, std::string> expected[] = {
        {"RKNE", "kind=marker;units=mm"}, {"RKNE#2", "kind=marker;units=mm"}, {"KneeAngle", "kind=angle;units=deg"},
        {"P4", "kind=marker;units=mm"},   {"Grf", "kind=force"},              {"RKNE#3", "kind=marker;units=mm"}};
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(take.markerInfo[i].name, expected[i].first);
        EXPECT_EQ(take.markerInfo[i].options, expected[i].second);
    }
    EXPECT_EQ(take.markerInfo[255].name, "M256");
    EXPECT_EQ(take.markerInfo[299].name, "M300");

    C3D::File file;
    ASSERT_TRUE(file.open(path, nullptr));
    for (const char* name : {"USED", "SCALE", "RATE", "DATA_START", "FRAMES"}) {
        const C3D::Parameter* p = file.parameters().find("POINT", name);
        ASSERT_NE(p, nullptr) << name;
        EXPECT_TRUE(p->dims.empty()) << name;
    }
}

// Setups the format cannot hold, or that would write a take no reader can use, are
// refused, and so is a frame beyond the count the writer was opened with; a take
// of no frames is still a take of its points.
TEST_F(RoundTrip, WriterRefusesWhatItCannotWrite)
{
    C3D::WriterSetup bad[6];
    std::fill(std::begin(bad), std::end(bad), testSetup(1, 3));
    bad[0].pointCount = 0;
    bad[1] = testSetup(65536, 3);
    bad[2].firstFrame = 0;
    bad[3].frameRate = 0;
    bad[4].frameRate = NAN;
    bad[5].residualScale = 0;
    for (const C3D::WriterSetup& s : bad) {
        C3D::Writer w;
        QString error;
        EXPECT_FALSE(w.open(path, s, &error));
        EXPECT_TRUE(error.startsWith("take.c3d: ")) << error.toStdString();
    }

    C3D::Writer w;
    ASSERT_TRUE(w.open(path, testSetup(2, 0), nullptr));
    const float values[8] = {};
    EXPECT_FALSE(w.writeFrame(values));
    ASSERT_TRUE(w.close(nullptr));
    const TAV::Frames take = load(path);
    EXPECT_EQ(take.size(), 0);
    EXPECT_EQ(take.markerInfo.size(), 2u);
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
    const TAV::Frames take = load(path);
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
