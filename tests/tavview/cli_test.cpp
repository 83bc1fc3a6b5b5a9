// The built tavview executable, run as a user runs it.
#include "host/c3d/c3dtake.h"
#include "host/tavview/graphpanel.h"
#include "host/tavview/take.h"
#include "host/tavview/viewcamera.h"
#include "tests/support/data.h"
#include "tests/support/pixels.h"
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

// Command-line words written as one string.
QStringList words(const char* line)
{
    return QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

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

// Where frame index f lands in a snapshot's graph w pixels wide that shows the
// indices first..last: tavview fits its centred view to them (to the whole take,
// the selection it starts with, unless --range says otherwise).
int columnOf(double f, int first, int last, int w, int h)
{
    GL::Viewport vp;
    vp.align = GL::AlignHCenter | GL::AlignBottom;
    fitViewport(vp, QRectF(first, 1, last - first, -1), w, h);
    return int(std::lround((f - vp.pos.x) * vp.scale.x + w * 0.5));
}
int columnOf(double f, int n, int w, int h) { return columnOf(f, 0, n - 1, w, h); }

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

// A snapshot holds the graph with axes, legend and title around it; tavview
// says where the graph lies, and take() gives that part.
class Snapshot : public testing::Test {
protected:
    QTemporaryDir dir;
    QImage whole;
    QRect graph;
    QImage take(const QStringList& args, const QString& name = QStringLiteral("shot.png"))
    {
        const QString path = dir.filePath(name);
        const Outcome r = tavview(QStringList{QStringLiteral("--snapshot"), path} << args, true);
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_TRUE(r.out.contains(path)) << "says where the picture is: " << r.out.toStdString();
        static const QRegularExpression at(QStringLiteral("graph (\\d+)x(\\d+) at (\\d+),(\\d+)"));
        const QRegularExpressionMatch m = at.match(r.out);
        EXPECT_TRUE(m.hasMatch()) << r.out.toStdString();
        graph = QRect(m.captured(3).toInt(), m.captured(4).toInt(), m.captured(1).toInt(), m.captured(2).toInt());
        whole = QImage(path);
        return whole.copy(graph);
    }
};

// Marker 1 misses frames 100..139 and is good from 140 to 399; the take starts at
// frame 1, so the cursor at frame 301 stands at index 300.
TEST_F(Snapshot, OfTheBuiltInTakeShadesItsGapsAndDrawsTheCursor)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    const QImage image = take(words("--size 600x200 --select 1 --frame 301"));
    ASSERT_EQ(whole.size(), QSize(600, 200));
    // Room for the title and legend above, the value axis left, the time axis below.
    EXPECT_GT(graph.top(), 20);
    EXPECT_GT(graph.left(), 20);
    EXPECT_LT(graph.bottom(), 200 - 10);
    const int w = image.width(), h = image.height();
    const auto column = [&](double f) { return columnOf(f, 600, w, h); };
    EXPECT_GT(shareOf(image, column(120), gapColour), 0.6);
    EXPECT_GT(shareOf(image, column(250), goodColour), 0.6);
    EXPECT_LT(shareOf(image, column(250), gapColour), 0.1);
    double cursor = 0;
    for (int x = column(300) - 1; x <= column(300) + 1; ++x)
        cursor = std::max(cursor, shareOf(image, x, Qt::white));
    EXPECT_GT(cursor, 0.5);
    EXPECT_LT(shareOf(image, column(200), Qt::white), 0.1);
}

// A real file: the first gap after a good run of some marker shades as a gap, the
// run before it as good.
TEST_F(Snapshot, OfASampleFileShadesItsGaps)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    TAV_REQUIRE_SAMPLE_DATA();
    const QString file = sampleC3D(QStringLiteral("Eb015pi.c3d"));
    Take t;
    QString error;
    ASSERT_TRUE(loadTake(file, t, error)) << error.toStdString();
    for (int id = 0; id < t.frames.constFirst().markers.size(); ++id) {
        TAV::Markers track;
        for (const TAV::Frame& f : t.frames)
            track.append(f.markers.at(id));
        const Regions runs(track);
        for (size_t i = 1; i < runs.size(); ++i) {
            const Pair &gap = runs[i], &before = runs[i - 1];
            if (gap.type != RegionMissing || gap.size() <= 4 || before.type != RegionGood || before.size() <= 6)
                continue;
            const QImage image = take(QStringList{file} + words("--size 900x300 --select") << QString::number(id));
            const auto column = [&](const Pair& run) {
                return columnOf((run.begin() + run.end()) / 2.0, t.frameCount(), image.width(), image.height());
            };
            EXPECT_GT(shareOf(image, column(gap), gapColour), 0.6);
            EXPECT_GT(shareOf(image, column(before), goodColour), 0.6);
            return;
        }
    }
    FAIL() << "the sample has no gap after a good run";
}

// --range shows those frames (the take's numbering), --rgb colours x apart, and
// the file's suffix names its format.
TEST_F(Snapshot, RangeColoursAndFormatAsAsked)
{
    TAV_REQUIRE_DISPLAY_FOR_CHILD();
    const QStringList marker1 = words("--select 1 --size 600x240");
    // Marker 1 misses indices 100..139: from 91 to 160 (indices 90..159) the gap fills the middle.
    QImage image = take(marker1 + words("--range 91-160"));
    const auto column = [&](double f) { return columnOf(f, 90, 159, image.width(), image.height()); };
    EXPECT_GT(shareOf(image, column(105), gapColour), 0.6);
    EXPECT_GT(shareOf(image, column(135), gapColour), 0.6);
    EXPECT_GT(shareOf(image, column(95), goodColour), 0.6);
    EXPECT_GT(shareOf(image, column(150), goodColour), 0.6);
    EXPECT_EQ(strongRedPixels(image), 0) << "grey unless asked";
    image = take(marker1 + words("--rgb"));
    EXPECT_GT(strongRedPixels(image), 100);
    image = take(marker1 + words("--rgb --axes yz"));
    EXPECT_EQ(strongRedPixels(image), 0) << "x hidden";

    take(marker1, QStringLiteral("shot.jpg"));
    QFile jpg(dir.filePath(QStringLiteral("shot.jpg")));
    ASSERT_TRUE(jpg.open(QIODevice::ReadOnly));
    EXPECT_TRUE(jpg.read(3).startsWith("\xff\xd8\xff")) << "JPEG bytes in a .jpg";

    const struct {
        QStringList args;
        const char* says;
    } refused[] = {
        {{QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("shot.xyz"))}, "cannot write .xyz pictures"},
        {QStringList{QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("a.png"))} + words("--range 700-800"),
         "--range 700-800 is outside the take"},
        {QStringList{QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("a.png"))} + words("--range 9-3"),
         "--range wants FIRST-LAST"},
        {words("--range 1-3"), "apply to --snapshot"},
        {words("--frame -9223372036854775808"), "is outside the take"},
    };
    for (const auto& row : refused) {
        const Outcome r = tavview(row.args);
        EXPECT_EQ(r.exitCode, 2) << row.says;
        EXPECT_TRUE(r.err.contains(QLatin1String(row.says))) << r.err.toStdString();
    }
    const Outcome unwritable = tavview({QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("none/a.png"))}, true);
    EXPECT_EQ(unwritable.exitCode, 1);
    EXPECT_TRUE(unwritable.err.contains(QLatin1String("cannot write the picture"))) << unwritable.err.toStdString();
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
    for (const auto& row : {std::make_pair(QStringLiteral("/nonexistent/tavgraph.so"),
                                           "cannot load the graph module /nonexistent/tavgraph.so: no such file"),
                            std::make_pair(QStringLiteral(NOT_A_MODULE), "it exports no init()")}) {
        const Outcome r = tavview({QStringLiteral("--module"), row.first});
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_TRUE(r.err.contains(QLatin1String(row.second))) << r.err.toStdString();
        EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << r.err.toStdString();
    }
}

// One unreadable take among several: reported, the others still listed.
TEST(Report, OfManyTakesAsCsvAndSkipsOnlyTheBadOne)
{
    TAV_REQUIRE_SAMPLE_DATA();
    QTemporaryDir dir;
    QFile bad(dir.filePath(QStringLiteral("bad.c3d")));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly) && bad.write("nope") == 4);
    bad.close();
    const Outcome r = tavview({QStringLiteral("--report"), QStringLiteral("--csv"),
                               sampleC3D(QStringLiteral("Eb015pi.c3d")), bad.fileName(),
                               sampleC3D(QStringLiteral("gait-raw.c3d"))});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("bad.c3d"))) << r.err.toStdString();
    const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.first(), QStringLiteral("take,marker,frames,valid_percent,gaps,longest_gap,poor,missing,filled,never_valid"));
    EXPECT_EQ(lines.filter(QRegularExpression(QStringLiteral("^Eb015pi\\.c3d,"))).size(), 27) << "total + 26 markers";
    EXPECT_FALSE(lines.filter(QRegularExpression(QStringLiteral("^gait-raw\\.c3d,"))).isEmpty());
}

// Markers that are never valid are counted apart, not as take-long gaps.
TEST(Report, CountsGapsOfMarkersThatAreValidSomewhere)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const struct {
        const char* file;
        const char* says;
    } rows[] = {
        {"MACsample.c3d", "markers 33 (8 never valid)  valid 40.0 %  missing 3565  filled 8  gaps 50  longest gap 69"},
        {"gait-raw.c3d", "markers 27 (14 never valid)  valid 45.5 %  missing 2089  filled 24  gaps 6  longest gap 28"},
    };
    for (const auto& row : rows) {
        const Outcome r = tavview({QStringLiteral("--report"), sampleC3D(QLatin1String(row.file))});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_TRUE(r.out.contains(QLatin1String(row.says))) << r.out.toStdString();
        EXPECT_TRUE(r.out.contains(QLatin1String("\nnever valid: "))) << row.file;
    }
}

// Headless cleaning: spikes deleted and gaps filled in a copy, never in the input
// unless asked.
TEST(CleanCommand, FillsAndSavesACopyAndGuardsTheInput)
{
    TAV_REQUIRE_SAMPLE_DATA();
    QTemporaryDir dir;
    const QString in = dir.filePath(QStringLiteral("in.c3d")), out = dir.filePath(QStringLiteral("out.c3d"));
    ASSERT_TRUE(QFile::copy(sampleC3D(QStringLiteral("Eb015pi.c3d")), in));
    const Outcome r = tavview(QStringList{in} + words("--delete-spikes 50 --fill spline --max-gap 20 --save") << out);
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("filled "))) << r.out.toStdString();
    Take before, after;
    QString error;
    ASSERT_TRUE(loadTake(in, before, error) && loadTake(out, after, error)) << error.toStdString();
    const auto filled = [](const Take& t) {
        int n = 0;
        for (const TAV::Frame& f : t.frames)
            n += int(std::count_if(f.markers.begin(), f.markers.end(), [](const TAV::Marker& m) { return isFilled(m); }));
        return n;
    };
    EXPECT_GT(filled(after), filled(before)) << r.out.toStdString();

    const Outcome refused = tavview(QStringList{in} + words("--fill linear --save") << in);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("--overwrite"))) << refused.err.toStdString();
    const Outcome unknown = tavview(QStringList{in} + words("--fill cubic --save") << out);
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(unknown.err.contains(QStringLiteral("cubic"))) << unknown.err.toStdString();
}

} // namespace
