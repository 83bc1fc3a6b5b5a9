// Paints of the whole take and of ZoomedInFrames frames: the graph in a real GL
// window, exact and fast, points only and with lines; the same curves in the two
// peer widgets; and the plain read of the zoomed-in samples.
#include "bench/benchmarks.h"
#include "bench/graphview.h"
#include "bench/limits.h"
#include "bench/stage.h"

#include "host/tavview/viewcamera.h"
#include "modules/core/contract.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

const char* const noDisplay = "needs a display with OpenGL (run under xvfb-run, as bench.sh does)";

void save(const QImage& image, const BenchOptions& options, const QString& name)
{
    if (!options.pictureDir.isEmpty())
        image.save(QDir(options.pictureDir).filePath(name + ".png"));
}

// The first paint with new settings may build GL state: paint ten frames once.
void warmUp(GraphView& g)
{
    GL::Viewport& vp = g.view().viewport;
    const GL::Viewport keep = vp;
    const double mid = (vp.Left(PaintWidth) + vp.Right(PaintWidth)) / 2;
    fitViewportExact(vp, mid, mid + 9, vp.Bottom(PaintHeight), vp.Top(PaintHeight), PaintWidth, PaintHeight);
    g.window()->updateGL();
    glFinish();
    vp = keep;
}

void paintGraph(benchmark::State& state, int frames, PaintCase c, BenchOptions options)
{
    GraphView* g = Stage::instance().window(frames);
    if (!g) {
        state.SkipWithError(noDisplay);
        return;
    }
    g->setUp(c);
    warmUp(*g);
    for (auto _ : state) {
        g->graph().forgetFastPaint(); // each paint walks the take, as after a change of view
        g->window()->updateGL();
        glFinish(); // the GL work, not only its queueing
    }
    state.counters["runs"] = benchmark::Counter(double(g->graph().regions.size()));
    if (frames == options.pictureLength)
        save(g->grab(), options, "tavgraph-" + caseName(c).replace('/', '-'));
}

// Playback or seeking zoomed out: only the cursor moves between paints, so the
// fast paint replays the last one.
void paintCursor(benchmark::State& state, int frames)
{
    GraphView* g = Stage::instance().window(frames);
    if (!g) {
        state.SkipWithError(noDisplay);
        return;
    }
    g->setUp(PaintCase{true, PaintStyle::Points, false});
    g->window()->updateGL(); // the paint a change of view makes
    g->window()->updateGL(); // the first repaint without one: kept for the next ones
    FramesInfo info = g->graph().framesInfo;
    for (auto _ : state) {
        info.Step(1);
        g->graph().SetFramesInfo(&info);
        g->window()->updateGL();
        glFinish();
    }
}

void paintPeer(benchmark::State& state, int frames, QString name, bool zoomedIn, BenchOptions options)
{
    GraphView* g = Stage::instance().window(frames);
    PeerPlot* peer = g ? Stage::instance().peer(frames, name) : nullptr;
    if (!peer) {
        state.SkipWithError(noDisplay);
        return;
    }
    // The data rectangle the graph shows in the same case.
    g->setUp(PaintCase{true, PaintStyle::Points, zoomedIn});
    const QRectF shown = g->shown();
    const double mid = shown.center().x();
    peer->setRange(QRectF(mid, shown.top(), 9, shown.height()));
    peer->paint();
    peer->setRange(shown);
    for (auto _ : state)
        peer->paint();
    state.counters["gaps_shown"] = peer->showsGaps() ? 1 : 0;
    if (frames == options.pictureLength)
        save(peer->picture(), options, name + (zoomedIn ? "-in" : "-out"));
}

// The window repainted with the graph holding no tracks: clearing, the state block
// and the swap, the floor under every paint.
void paintBlank(benchmark::State& state)
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        state.SkipWithError(noDisplay);
        return;
    }
    GraphView g(true);
    TAV::Frames none;
    g.load(none, ZoomedInFrames, TrackSelection());
    g.window()->show();
    if (!QTest::qWaitForWindowExposed(g.window()) || !g.window()->isValid()) {
        state.SkipWithError(noDisplay);
        return;
    }
    g.setUp(PaintCase{true, PaintStyle::Points, false});
    warmUp(g);
    for (auto _ : state) {
        g.window()->updateGL();
        glFinish();
    }
}

// The floor under a zoomed-in paint on this GL: the window repainted with every
// point (or every segment) of the ZoomedInFrames frames sent in one vertex array,
// grey, at the paint's point size, depth rule and blending, and no graph drawing.
void paintFloor(benchmark::State& state, int frames, PaintStyle style)
{
    GraphView* g = Stage::instance().window(frames);
    if (!g) {
        state.SkipWithError(noDisplay);
        return;
    }
    g->setUp(PaintCase{true, style, true});
    const QRectF shown = g->shown();
    std::vector<GLfloat> xyz;
    for (const TAV::Frame& f : qAsConst(g->graph().tracks)) {
        const auto add = [&](const auto& samples) {
            for (int i = 1; i < samples.size(); ++i) {
                const auto &a = samples.at(i - 1), &b = samples.at(i);
                if (a.time < shown.left() || b.time > shown.right() || a.cond <= 0 || b.cond <= 0)
                    continue;
                const Vector va(a), vb(b);
                for (int axis = 0; axis < 3; ++axis) {
                    if (style == PaintStyle::Lines)
                        xyz.insert(xyz.end(), {GLfloat(a.time), va[axis], 1.f});
                    xyz.insert(xyz.end(), {GLfloat(b.time), vb[axis], 1.f});
                }
            }
        };
        add(f.markers);
        add(f.rigids);
    }
    const int size = g->graph().property<int>(GraphProperty::pointSizeMin);
    g->view().setProperty("visible", false); // the graph draws nothing
    const auto draw = QObject::connect(g->window(), &GLWindow::Paint2D, [&](GLW*) {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glPointSize(GLfloat(size));
        glColor3f(0.8f, 0.8f, 0.8f);
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, xyz.data());
        glDrawArrays(style == PaintStyle::Lines ? GL_LINES : GL_POINTS, 0, GLsizei(xyz.size() / 3));
        glDisableClientState(GL_VERTEX_ARRAY);
        glPopAttrib();
    });
    g->window()->updateGL();
    for (auto _ : state) {
        g->window()->updateGL();
        glFinish();
    }
    QObject::disconnect(draw);
    g->view().setProperty("visible", true);
    state.counters["vertices"] = double(xyz.size() / 3);
}

void readWindow(benchmark::State& state, int frames)
{
    const TAV::Frames& tracks = Stage::instance().tracks(frames);
    const int first = frames / 2 - ZoomedInFrames / 2;
    for (auto _ : state)
        benchmark::DoNotOptimize(readTrackWindow(tracks, first, ZoomedInFrames));
    state.counters["samples"] = benchmark::Counter(double(tracks.size()) * ZoomedInFrames);
}

benchmark::internal::Benchmark* timed(benchmark::internal::Benchmark* b)
{
    return b->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
}

} // namespace

void registerBlankPaint() { timed(benchmark::RegisterBenchmark("paint/blank", paintBlank)); }

void registerPaints(int frames, const BenchOptions& options)
{
    const std::string n = "/" + std::to_string(frames);
    for (const PaintCase& c : paintCases()) {
        const std::string name = "paint/" + caseName(c).toStdString() + n;
        timed(benchmark::RegisterBenchmark(name.c_str(), paintGraph, frames, c, options));
    }
    timed(benchmark::RegisterBenchmark(("paint/fast/cursor/out" + n).c_str(), paintCursor, frames));
    timed(benchmark::RegisterBenchmark(("limit/read-window" + n).c_str(), readWindow, frames));
    timed(benchmark::RegisterBenchmark(("limit/gl-points-in" + n).c_str(), paintFloor, frames, PaintStyle::Points));
    timed(benchmark::RegisterBenchmark(("limit/gl-lines-in" + n).c_str(), paintFloor, frames, PaintStyle::Lines));
    for (const QString& peer : {QStringLiteral("qcustomplot"), QStringLiteral("qwt")})
        for (bool zoomedIn : {false, true}) {
            const std::string name =
                "peer/" + peer.toStdString() + "/" + (zoomedIn ? "in" : "out") + n;
            timed(benchmark::RegisterBenchmark(name.c_str(), paintPeer, frames, peer, zoomedIn, options));
        }
}
