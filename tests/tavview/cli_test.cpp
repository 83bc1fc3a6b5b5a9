// The built tavview executable, run as a user runs it.
#include "host/tavview/graphpanel.h"
#include "host/tavview/take.h"
#include "host/tavview/viewcamera.h"
#include "tests/support/data.h"
#include "utils/regions.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace {

struct Outcome {
    int exitCode = -1;
    QString out, err;
};

// gl: the run opens a GL context. Mesa's software driver is unloaded when the
// display closes, before a sanitizer build's leak check, which then cannot name
// (and so not suppress) the driver's one-time allocation: such runs skip the leak
// check. The window suite checks the same code for leaks in-process.
Outcome tavview(const QStringList& args, bool gl = false)
{
    QProcess p;
    if (gl) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        const QString asan = env.value(QStringLiteral("ASAN_OPTIONS"));
        env.insert(QStringLiteral("ASAN_OPTIONS"),
                   asan.isEmpty() ? QStringLiteral("detect_leaks=0") : asan + QStringLiteral(":detect_leaks=0"));
        p.setProcessEnvironment(env);
    }
    p.start(QStringLiteral(TAVVIEW_EXECUTABLE), args);
    Outcome r;
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        r.err = QStringLiteral("tavview did not finish within a minute");
        return r;
    }
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

#define TAV_REQUIRE_DISPLAY_FOR_CHILD()                                                                      \
    do {                                                                                                     \
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))                                   \
            GTEST_SKIP() << "tavview --snapshot needs a display with OpenGL (run under xvfb-run -a)";       \
    } while (0)

// Where frame f of a take of n frames lands in a snapshot w pixels wide: tavview
// fits its centred view to the whole take (the selection it starts with).
int columnOf(double f, int n, int w, int h)
{
    GL::Viewport vp;
    vp.align = GL::AlignHCenter | GL::AlignBottom;
    fitViewport(vp, QRectF(0, 1, n - 1, -1), w, h);
    return int(std::lround((f - vp.pos.x) * vp.scale.x + w * 0.5));
}

// Share of a column's pixels within 14 of a colour in every channel.
double shareOf(const QImage& image, int column, const QColor& c)
{
    int hits = 0;
    for (int y = 0; y < image.height(); ++y) {
        const QColor p = image.pixelColor(column, y);
        hits += std::abs(p.red() - c.red()) <= 14 && std::abs(p.green() - c.green()) <= 14 &&
                std::abs(p.blue() - c.blue()) <= 14;
    }
    return double(hits) / image.height();
}

// Run colours at alpha 0.5 over the window's clear colour 0.15.
QColor over(double r, double g, double b)
{
    return QColor::fromRgbF(0.5 * r + 0.075, 0.5 * g + 0.075, 0.5 * b + 0.075);
}
const QColor gapColour = over(0.3, 0.3, 0.3);
const QColor goodColour = over(0.345, 0.6, 0.85);

class Snapshot : public testing::Test {
protected:
    QTemporaryDir dir;
    QImage take(const QStringList& args, const QString& name = QStringLiteral("shot.png"))
    {
        const QString png = dir.filePath(name);
        const Outcome r = tavview(QStringList{QStringLiteral("--snapshot"), png} << args, true);
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_TRUE(r.out.contains(png)) << "says where the picture is: " << r.out.toStdString();
        return QImage(png);
    }
};

TEST_F(Snapshot, OfTheBuiltInTakeShadesItsGaps)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    const QImage image = take({QStringLiteral("--size"), QStringLiteral("600x200"), QStringLiteral("--select"),
                               QStringLiteral("1")});
    ASSERT_EQ(image.size(), QSize(600, 200));
    // Marker 1 misses frames 100..139 and is good from 140 to 399.
    EXPECT_GT(shareOf(image, columnOf(120, 600, 600, 200), gapColour), 0.6);
    EXPECT_GT(shareOf(image, columnOf(250, 600, 600, 200), goodColour), 0.6);
    EXPECT_LT(shareOf(image, columnOf(250, 600, 600, 200), gapColour), 0.1);
}

TEST_F(Snapshot, AtAFrameDrawsTheCursorThere)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    // The built-in take starts at frame 1, so frame 301 is index 300.
    const QImage image = take({QStringLiteral("--size"), QStringLiteral("600x200"), QStringLiteral("--frame"),
                               QStringLiteral("301")});
    const int c = columnOf(300, 600, 600, 200);
    double cursor = 0;
    for (int x = c - 1; x <= c + 1; ++x)
        cursor = std::max(cursor, shareOf(image, x, Qt::white));
    EXPECT_GT(cursor, 0.5);
    EXPECT_LT(shareOf(image, columnOf(200, 600, 600, 200), Qt::white), 0.1);
}

// A real file: its first gap shades as a gap, the frames before it as good.
TEST_F(Snapshot, OfASampleFileShadesItsGaps)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    TAV_REQUIRE_SAMPLE_DATA();
    const QString file = sampleC3D(QStringLiteral("Eb015pi.c3d"));
    Take t;
    QString error;
    ASSERT_TRUE(loadTake(file, t, error)) << error.toStdString();
    // The first marker with a gap that follows a good run.
    int marker = -1;
    Pair gap(0, 0, 0), before(0, 0, 0);
    for (int id = 0; id < t.frames.constFirst().markers.size() && marker < 0; ++id) {
        TAV::Markers track;
        for (const TAV::Frame& f : t.frames)
            track.append(f.markers.at(id));
        const Regions runs(track);
        for (size_t i = 1; i < runs.size() && marker < 0; ++i)
            if (runs[i].type == RegionMissing && runs[i].size() > 4 && runs[i - 1].type == RegionGood &&
                runs[i - 1].size() > 6) {
                marker = id;
                gap = runs[i];
                before = runs[i - 1];
            }
    }
    ASSERT_GE(marker, 0) << "the sample has a gap after a good run";

    const QImage image = take({file, QStringLiteral("--size"), QStringLiteral("900x300"), QStringLiteral("--select"),
                               QString::number(marker)});
    const int n = t.frameCount();
    EXPECT_GT(shareOf(image, columnOf((gap.begin() + gap.end()) / 2.0, n, 900, 300), gapColour), 0.6);
    EXPECT_GT(shareOf(image, columnOf((before.begin() + before.end()) / 2.0, n, 900, 300), goodColour), 0.6);
}

struct BadFileRow {
    const char* name;
    QByteArray content; // written to the file; null: the file is not created
    bool directory;
    const char* truncate; // a sample file whose first 3000 bytes make the content
};
void PrintTo(const BadFileRow& row, std::ostream* os) { *os << row.name; }

class BadFile : public testing::TestWithParam<BadFileRow> {};

TEST_P(BadFile, EndsWithOneLineNamingItAndAnError)
{
    const BadFileRow& row = GetParam();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("take_%1.c3d").arg(QLatin1String(row.name)));
    QByteArray content = row.content;
    if (row.truncate) {
        TAV_REQUIRE_SAMPLE_DATA();
        QFile sample(sampleC3D(QLatin1String(row.truncate)));
        ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
        content = sample.read(3000);
    }
    if (row.directory) {
        ASSERT_TRUE(QDir().mkdir(path));
    } else if (!content.isNull()) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    for (const QStringList& args : {QStringList{path}, QStringList{QStringLiteral("--report"), path}}) {
        const Outcome r = tavview(args);
        EXPECT_EQ(r.exitCode, 1) << r.err.toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("tavview: "))) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("take_%1.c3d").arg(QLatin1String(row.name)))) << r.err.toStdString();
        EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    }
}

// A C3D header block that promises parameters and points far beyond the file.
QByteArray brokenHeader()
{
    QByteArray b(512, '\0');
    b[0] = 2;
    b[1] = 0x50;
    b[2] = 3;    // 3 points
    b[8] = 1;    // first frame 1
    b[10] = 100; // last frame 100
    return b;
}

const BadFileRow badFiles[] = {
    {"text", QByteArray("not a capture at all\n"), false, nullptr},
    {"empty", QByteArray(""), false, nullptr},
    {"header_only", brokenHeader(), false, nullptr},
    {"truncated_sample", QByteArray(), false, "Eb015pi.c3d"},
    {"missing", QByteArray(), false, nullptr},
    {"folder", QByteArray(), true, nullptr},
};

INSTANTIATE_TEST_SUITE_P(Rows, BadFile, testing::ValuesIn(badFiles),
                         [](const testing::TestParamInfo<BadFileRow>& i) { return std::string(i.param.name); });

TEST(ModuleOption, AWrongPathIsReportedClearly)
{
    const struct {
        QString path;
        const char* says;
    } rows[] = {
        {QStringLiteral("/nonexistent/tavgraph.so"),
         "cannot load the graph module /nonexistent/tavgraph.so: no such file"},
        {QStringLiteral(NOT_A_MODULE), "it exports no init()"},
    };
    for (const auto& row : rows) {
        const Outcome r = tavview({QStringLiteral("--module"), row.path});
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_TRUE(r.err.contains(QLatin1String(row.says))) << r.err.toStdString();
        EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << r.err.toStdString();
    }
}

TEST(Report, OfManyTakesAsCsvAndSkipsOnlyTheBadOne)
{
    TAV_REQUIRE_SAMPLE_DATA();
    QTemporaryDir dir;
    const QString bad = dir.filePath(QStringLiteral("bad.c3d"));
    QFile f(bad);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("nope");
    f.close();
    const QString eb015 = sampleC3D(QStringLiteral("Eb015pi.c3d")), gait = sampleC3D(QStringLiteral("gait-raw.c3d"));
    const Outcome r = tavview({QStringLiteral("--report"), QStringLiteral("--csv"), eb015, bad, gait});
    EXPECT_EQ(r.exitCode, 1) << "one file could not be read";
    EXPECT_TRUE(r.err.contains(QStringLiteral("bad.c3d"))) << r.err.toStdString();
    const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.first(), QStringLiteral("take,marker,frames,valid_percent,gaps,longest_gap,poor"));
    EXPECT_EQ(lines.filter(QRegularExpression(QStringLiteral("^Eb015pi\\.c3d,"))).size(), 27) << "total + 26 markers";
    EXPECT_EQ(lines.filter(QRegularExpression(QStringLiteral("^gait-raw\\.c3d,"))).isEmpty(), false);
}

} // namespace
