// tavview on a long take, through its real main window with the graph loaded from
// tavgraph.so: how long a user waits from an input (a wheel notch, a click, a jump
// to the next area, fitting every frame) to the finished repaint it asks for, and
// how long showing another choice of tracks takes beside copying their samples.
#include "bench/benchmarks.h"
#include "bench/stage.h"

#include "host/tavview/graphpanel.h"
#include "host/tavview/mainwindow.h"
#include "host/tavview/moduleregistry.h"

#include <QGuiApplication>
#include <QTest>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

const char* const noDisplay = "needs a display with OpenGL (run under xvfb-run, as bench.sh does)";

// The window of one take length, every marker shown. It goes after that length's
// last measure, so that it neither holds memory nor polls its timers during the
// benchmarks that follow.
struct Session {
    int frames = 0;
    ModuleRegistry registry;
    std::unique_ptr<MainWindow> window;
    GraphPanel* panel = nullptr;
    GLWindow* gl = nullptr;
};
std::unique_ptr<Session> session;

TrackSelection everyMarker(int frames)
{
    TrackSelection s;
    for (int id = 0; id < Stage::shape(frames).markers; ++id)
        s.markers.append(id);
    return s;
}

// What the window does after an input: the work queued by it, then one repaint,
// done now instead of at the window's next look at its requests (every 10 ms),
// and finished. The requests are cleared first so that a look during the queued
// work does not paint as well.
void answer(Session& s)
{
    s.gl->update = 0;
    QCoreApplication::processEvents();
    s.gl->update = 0;
    s.gl->updateGL();
    glFinish();
}

Session* open(benchmark::State& state, int frames)
{
    if (session && session->frames == frames)
        return session.get();
    session.reset();
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        state.SkipWithError(noDisplay);
        return nullptr;
    }
    auto s = std::make_unique<Session>();
    s->frames = frames;
    QString error;
    if (!s->registry.Load(QStringLiteral(TAVGRAPH_MODULE), error)) {
        state.SkipWithError(error.toStdString().c_str());
        return nullptr;
    }
    s->window = std::make_unique<MainWindow>(s->registry);
    s->window->resize(1800, 900);
    s->window->ShowTake(Stage::instance().take(frames), everyMarker(frames));
    s->window->show();
    s->window->activateWindow();
    s->panel = s->window->panel();
    s->gl = s->panel->window();
    s->gl->setFocus();
    if (!QTest::qWaitForWindowActive(s->window.get(), 60000)) {
        state.SkipWithError("the window did not become active");
        return nullptr;
    }
    s->panel->Fit(1);
    answer(*s);
    session = std::move(s);
    return session.get();
}

void setCounters(benchmark::State& state, const Session& s)
{
    state.counters["graph_width"] = double(s.gl->width());
    state.counters["tracks"] = double(s.panel->tracks().size());
}

// Each iteration one input, `input(session, i)`, and the window's answer to it;
// afterwards the cursor must have moved if `movesCursor`. The first input is not
// timed: the second repaint after a change of view also records the paint for the
// repaints that only move the cursor, which a user pays once per view.
template <class Input>
void inputs(benchmark::State& state, int frames, bool movesCursor, Input input)
{
    Session* s = open(state, frames);
    if (!s)
        return;
    const qint64 before = s->panel->current();
    int i = 0;
    input(*s, i++);
    answer(*s);
    for (auto _ : state) {
        input(*s, i++);
        answer(*s);
    }
    if (movesCursor && s->panel->current() == before)
        state.SkipWithError("the inputs did not move the cursor");
    setCounters(state, *s);
}

// One notch towards the take's middle and one back, in turn, from every frame shown.
void wheel(benchmark::State& state, int frames)
{
    inputs(state, frames, false, [](Session& s, int i) {
        const QPoint at(s.gl->width() / 2, s.gl->height() / 2);
        QWheelEvent e(at, s.gl->mapToGlobal(at), QPoint(), QPoint(0, i % 2 ? -120 : 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(s.gl, &e);
    });
}

// A click seeks to the frame under the mouse: the cursor moves, the tracks do not.
void click(benchmark::State& state, int frames)
{
    inputs(state, frames, true, [](Session& s, int i) {
        const int third = s.gl->width() / 3;
        QTest::mouseClick(s.gl, Qt::LeftButton, Qt::NoModifier, QPoint(third * (1 + i % 2), s.gl->height() / 2));
    });
}

// Ctrl+. puts the cursor on the next area and brings it into the view.
void jump(benchmark::State& state, int frames)
{
    inputs(state, frames, true,
           [](Session& s, int) { QTest::keyClick(s.gl, Qt::Key_Period, Qt::ControlModifier); });
}

// Home from 500 frames in the middle of the take.
void fit(benchmark::State& state, int frames)
{
    Session* s = open(state, frames);
    if (!s)
        return;
    const qint64 middle = frames / 2;
    for (auto _ : state) {
        state.PauseTiming();
        s->panel->ShowFrames(middle, middle + 499);
        answer(*s);
        state.ResumeTiming();
        QTest::keyClick(s->gl, Qt::Key_Home);
        answer(*s);
    }
    const GLW* view = s->panel->view();
    if (view->viewport.Right(int(view->width())) - view->viewport.Left(int(view->width())) < frames / 2)
        state.SkipWithError("Home did not show the take");
    setCounters(state, *s);
}

// Every marker shown, from one; the window goes afterwards (the last measure of
// this length).
void selectTracks(benchmark::State& state, int frames)
{
    Session* s = open(state, frames);
    if (!s)
        return;
    const TrackSelection all = everyMarker(frames), one{{0}, {}};
    for (auto _ : state) {
        state.PauseTiming();
        s->window->SelectTracks(one);
        answer(*s);
        state.ResumeTiming();
        s->window->SelectTracks(all);
        answer(*s);
    }
    setCounters(state, *s);
    state.counters["samples"] = double(all.markers.size()) * frames;
    session.reset();
}

// The least that showing those tracks costs: their samples copied out of the frames
// into a track each, with the tracks' storage allocated as any copy must.
void copySelection(benchmark::State& state, int frames)
{
    const Take& take = Stage::instance().take(frames);
    const int markers = Stage::shape(frames).markers;
    for (auto _ : state) {
        TAV::Frames tracks;
        tracks.resize(markers);
        for (TAV::Frame& t : tracks)
            t.markers.reserve(take.frames.size());
        for (const TAV::Frame& f : take.frames)
            for (int m = 0; m < markers; ++m)
                tracks[m].markers.append(f.markers.at(m));
        benchmark::DoNotOptimize(tracks.data());
        benchmark::ClobberMemory();
    }
    state.counters["samples"] = double(markers) * frames;
}

benchmark::internal::Benchmark* timed(benchmark::internal::Benchmark* b, int iterations)
{
    return b->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->Iterations(iterations);
}

} // namespace

void releaseViewer() { session.reset(); }

void registerViewer(int frames)
{
    const std::string n = "/" + std::to_string(frames);
    timed(benchmark::RegisterBenchmark(("tavview/wheel" + n).c_str(), wheel, frames), 10);
    timed(benchmark::RegisterBenchmark(("tavview/click" + n).c_str(), click, frames), 10);
    timed(benchmark::RegisterBenchmark(("tavview/jump" + n).c_str(), jump, frames), 10);
    timed(benchmark::RegisterBenchmark(("tavview/fit" + n).c_str(), fit, frames), 5);
    timed(benchmark::RegisterBenchmark(("tavview/select" + n).c_str(), selectTracks, frames), 3);
    timed(benchmark::RegisterBenchmark(("limit/copy-selection" + n).c_str(), copySelection, frames), 3);
}
