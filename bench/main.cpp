// tavbench: every benchmark in one process, so that the graph, its plain-read
// limits and the peer widgets are measured side by side on the same data.
//   TAV_BENCH_FRAMES    take lengths, default "10000,100000,1000000"
//   TAV_BENCH_PICTURES  folder for pictures of the paints at TAV_BENCH_PICTURE_FRAMES
//                       (default 100000)
#include "bench/benchmarks.h"
#include "bench/gappictures.h"
#include "bench/stage.h"

#include <QApplication>
#include <QGLWidget>
#include <QTest>
#include <qcustomplot.h>
#include <qwt_global.h>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

BenchOptions options()
{
    BenchOptions o;
    const QString lengths = qEnvironmentVariable("TAV_BENCH_FRAMES", QStringLiteral("10000,100000,1000000"));
    for (const QString& s : lengths.split(',', Qt::SkipEmptyParts))
        if (s.toInt() > 0)
            o.lengths.push_back(s.toInt());
    o.pictureDir = qEnvironmentVariable("TAV_BENCH_PICTURES");
    o.pictureLength = qEnvironmentVariable("TAV_BENCH_PICTURE_FRAMES", QStringLiteral("100000")).toInt();
    return o;
}

// What draws the GL pictures, from a context of a shown window.
void describeGL()
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        benchmark::AddCustomContext("gl_renderer", "none (no display)");
        return;
    }
    QGLWidget probe;
    probe.resize(16, 16);
    probe.show();
    if (!QTest::qWaitForWindowExposed(&probe) || !probe.isValid())
        return;
    probe.makeCurrent();
    benchmark::AddCustomContext("gl_renderer", reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    benchmark::AddCustomContext("gl_version", reinterpret_cast<const char*>(glGetString(GL_VERSION)));
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // the paints then skip with a reason
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    const BenchOptions o = options();
    describeGL();
    benchmark::AddCustomContext("qt", qVersion());
    benchmark::AddCustomContext("qcustomplot", QCUSTOMPLOT_VERSION_STR);
    benchmark::AddCustomContext("qwt", QWT_VERSION_STR);
    benchmark::AddCustomContext("qt_platform", QGuiApplication::platformName().toStdString());

    if (!o.pictureDir.isEmpty() && !saveGapPictures(o.pictureDir))
        std::fprintf(stderr, "tavbench: no pictures of a gap: they need a display with OpenGL\n");

    registerNavigation();
    registerBlankPaint();
    registerC3D();
    for (int frames : o.lengths) {
        registerEdits(frames);
        registerViewer(frames);
        registerTakeWork(frames);
        registerPaints(frames, o);
    }
    benchmark::RunSpecifiedBenchmarks();
    releaseViewer();
    Stage::instance().release();
    benchmark::Shutdown();
    return 0;
}
