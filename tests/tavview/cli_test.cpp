// The built tavview executable, run as a user runs it.
#include "host/c3d/c3dtake.h"
#include "host/tavview/take.h"
#include "host/tavview/viewcamera.h"
#include "tests/support/data.h"
#include "tests/support/pixels.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

// Where frame index f lands in a snapshot's graph w pixels wide that shows the
// indices first..last: tavview fits its centred view to them (to the whole take
// unless --range says otherwise).
int columnOf(double f, int first, int last, int w, int h)
{
    GL::Viewport vp;
    vp.align = GL::AlignHCenter | GL::AlignBottom;
    fitViewport(vp, QRectF(first, 1, last - first, -1), w, h);
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

// A snapshot holds the graph with axes, legend and title around it; tavview
// says where the graph lies, and take() gives that part. Runs that open a
// display need one with OpenGL.
class Snapshot : public testing::Test {
protected:
    QTemporaryDir dir;
    QImage whole;
    QRect graph;
    void SetUp() override
    {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            GTEST_SKIP() << "tavview needs a display with OpenGL here (run under xvfb-run -a)";
    }
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
using CommandLine = Snapshot;

// Marker 1 of the built-in take misses indices 100..139 and is good from 140 to
// 399; the take starts at frame 1, so --range 91-160 shows indices 90..159 and
// the cursor at frame 151 stands at index 150. --rgb colours x apart, and the
// file's suffix names its format.
TEST_F(Snapshot, OfTheBuiltInTakeShadesGapsAndDrawsTheCursorAsAsked)
{
    const QStringList marker1 = words("--select 1 --size 600x240");
    const QImage image = take(marker1 + words("--range 91-160 --frame 151"));
    ASSERT_EQ(whole.size(), QSize(600, 240));
    // Room for the title and legend above, the value axis left, the time axis below.
    EXPECT_TRUE(QRect(21, 21, 579, 209).contains(graph)) << graph.x() << "," << graph.y();
    const auto column = [&](double f) { return columnOf(f, 90, 159, image.width(), image.height()); };
    for (double f : {105, 135})
        EXPECT_GT(shareOf(image, column(f), gapColour), 0.6) << f;
    for (double f : {95, 155})
        EXPECT_GT(shareOf(image, column(f), goodColour), 0.6) << f;
    double cursor = 0;
    for (int x = column(150) - 1; x <= column(150) + 1; ++x)
        cursor = std::max(cursor, shareOf(image, x, Qt::white));
    EXPECT_GT(cursor, 0.5);
    EXPECT_LT(shareOf(image, column(95), Qt::white), 0.1);
    EXPECT_EQ(strongRedPixels(image), 0) << "grey unless asked";
    EXPECT_GT(strongRedPixels(take(marker1 + words("--rgb"))), 100);
    EXPECT_EQ(strongRedPixels(take(marker1 + words("--rgb --axes yz"))), 0) << "x hidden";
    take(marker1, QStringLiteral("shot.jpg"));
    QFile jpg(dir.filePath(QStringLiteral("shot.jpg")));
    ASSERT_TRUE(jpg.open(QIODevice::ReadOnly));
    EXPECT_TRUE(jpg.read(3).startsWith("\xff\xd8\xff")) << "JPEG bytes in a .jpg";
}

// Usage errors exit with 2, failures with 1, each with one line saying why (the
// toolkit may add warnings of its own once a display is opened). A file that is
// no take is named (a report's too: see below).
TEST_F(CommandLine, RefusalsSayWhyInOneLine)
{
    const QStringList snapshot{QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("a.png"))};
    const QString text = dir.filePath(QStringLiteral("text.c3d")), folder = dir.filePath(QStringLiteral("folder.c3d"));
    QFile textFile(text);
    ASSERT_TRUE(textFile.open(QIODevice::WriteOnly) && textFile.write("not a capture at all\n") > 0);
    textFile.close();
    ASSERT_TRUE(QDir().mkdir(folder));
    const struct {
        const char* name;
        QStringList args;
        int exitCode;
        const char* says;
    } rows[] = {
        {"unknown picture format", {QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("a.xyz"))}, 2,
         "cannot write .xyz pictures"},
        {"range outside the take", snapshot + words("--range 700-800"), 2, "--range 700-800 is outside the take"},
        {"range backwards", snapshot + words("--range 9-3"), 2, "--range wants FIRST-LAST"},
        {"range without a snapshot", words("--range 1-3"), 2, "apply to --snapshot"},
        {"no such marker", words("--select 6"), 2, "no marker 6"},
        {"backwards marker range", words("--select 4-2"), 2, "backwards"},
        {"unknown label", words("--select NOSE"), 2, "\"NOSE\""},
        {"unknown option", words("--bogus"), 2, "bogus"},
        {"size too small", words("--size 8x8"), 2, "between 16 and 16384"},
        {"frame not a number", words("--frame 12a"), 2, "--frame"},
        {"two takes without report", words("a.c3d b.c3d"), 2, "one take at a time"},
        {"csv without report", words("--csv a.c3d"), 2, "--csv"},
        {"report and snapshot", words("--report a.c3d --snapshot x.png"), 2, "cannot be combined"},
        {"fill without save", words("a.c3d --fill linear"), 2, "need --save"},
        {"max gap without fill", words("a.c3d --max-gap 5 --save b.c3d"), 2, "only applies to --fill"},
        {"spike threshold not positive", words("a.c3d --delete-spikes 0 --save b.c3d"), 2, "positive threshold"},
        {"save without input", words("--save b.c3d"), 2, "exactly one input file"},
        {"frame outside the take", words("--frame -9223372036854775808"), 2, "is outside the take"},
        {"unwritable picture", {QStringLiteral("--snapshot"), dir.filePath(QStringLiteral("none/a.png"))}, 1,
         "cannot write the picture"},
        {"no such module", words("--module /nonexistent/tavgraph.so"), 1,
         "cannot load the graph module /nonexistent/tavgraph.so: no such file"},
        {"not a module", {QStringLiteral("--module"), QStringLiteral(NOT_A_MODULE)}, 1, "it exports no init()"},
        {"a text file", {text}, 1, "text.c3d"},
        {"saving over the input", QStringList{text} + words("--fill linear --save") << text, 1, "--overwrite"},
        {"a folder", {folder}, 1, "folder.c3d"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Outcome r = tavview(row.args, true);
        EXPECT_EQ(r.exitCode, row.exitCode);
        EXPECT_TRUE(r.err.contains(QLatin1String(row.says))) << r.err.toStdString();
        EXPECT_EQ(r.err.count(QStringLiteral("tavview: ")), 1) << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    }
}

// The summary counts gaps only of markers valid somewhere; the CSV lists every
// take but an unreadable one (a cut-off sample), which is reported.
TEST(Report, OfSampleTakesAsTextAndCsv)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const Outcome text = tavview({QStringLiteral("--report"), sampleC3D(QStringLiteral("MACsample.c3d"))});
    EXPECT_EQ(text.exitCode, 0) << text.err.toStdString();
    EXPECT_TRUE(text.out.contains(QLatin1String(
        "markers 33 (8 never valid)  valid 40.0 %  missing 3565  filled 8  gaps 50  longest gap 69")))
        << text.out.toStdString();
    EXPECT_TRUE(text.out.contains(QLatin1String("\nnever valid: "))) << text.out.toStdString();

    QTemporaryDir dir;
    QFile sample(sampleC3D(QStringLiteral("Eb015pi.c3d"))), bad(dir.filePath(QStringLiteral("bad.c3d")));
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly) && bad.open(QIODevice::WriteOnly));
    bad.write(sample.read(3000));
    bad.close();
    const Outcome r = tavview({QStringLiteral("--report"), QStringLiteral("--csv"), sample.fileName(), bad.fileName(),
                               sampleC3D(QStringLiteral("gait-raw.c3d"))});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("bad.c3d"))) << r.err.toStdString();
    EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << r.err.toStdString();
    const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.first().startsWith(QStringLiteral("take,marker,"))) << "a header";
    EXPECT_EQ(lines.filter(QRegularExpression(QStringLiteral("^Eb015pi\\.c3d,"))).size(), 27) << "total + 26 markers";
    EXPECT_FALSE(lines.filter(QRegularExpression(QStringLiteral("^gait-raw\\.c3d,"))).isEmpty());
}

// Headless cleaning: spikes deleted and gaps filled in a copy (never in the input
// unless asked: see the refusals).
TEST(CleanCommand, FillsASampleIntoACopy)
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

    const Outcome cubic = tavview(QStringList{in} + words("--fill cubic --save") << out);
    EXPECT_EQ(cubic.exitCode, 1);
    EXPECT_TRUE(cubic.err.contains(QLatin1String("cubic"))) << cubic.err.toStdString();
}

} // namespace
