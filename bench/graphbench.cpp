// The graph's work apart from painting: the host's track extraction, new tracks,
// the data rectangle and jumps between runs, each beside its plain read.
#include "bench/benchmarks.h"
#include "bench/graphview.h"
#include "bench/limits.h"
#include "bench/stage.h"

#include "host/tavview/tracks.h"
#include "modules/core/contract.h"
#include "modules/trackindex.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

const int aoiRuns = 10000;

benchmark::Counter samples(const TAV::Frames& store)
{
    double n = 0;
    for (const TAV::Frame& f : store)
        n += f.markers.size() + f.rigids.size();
    return benchmark::Counter(n);
}

// The share of samples of each run type, to say what the take is like.
void describeSamples(benchmark::State& state, const TAV::Frames& tracks)
{
    double n = 0, missing = 0, poor = 0, fair = 0;
    const auto count = [&](const auto& samples) {
        for (const auto& s : samples) {
            const int type = condition_type(s.cond);
            ++n;
            missing += type == RegionMissing;
            poor += type == RegionPoor;
            fair += type == RegionFair;
        }
    };
    for (const TAV::Frame& t : tracks) {
        count(t.markers);
        count(t.rigids);
    }
    state.counters["missing_share"] = missing / n;
    state.counters["poor_share"] = poor / n;
    state.counters["fair_share"] = fair / n;
}

void extract(benchmark::State& state, int frames)
{
    const Take& take = Stage::instance().take(frames);
    const TrackSelection all = allTracks(Stage::shape(frames));
    TAV::Frames tracks;
    for (auto _ : state) {
        buildTracks(take, all, tracks);
        benchmark::DoNotOptimize(tracks.constData());
    }
    state.counters["samples"] = samples(tracks);
}

void readTake(benchmark::State& state, int frames)
{
    const Take& take = Stage::instance().take(frames);
    for (auto _ : state)
        benchmark::DoNotOptimize(readStore(take.frames));
    state.counters["samples"] = samples(take.frames);
}

void setTracks(benchmark::State& state, int frames)
{
    TAV::Frames& tracks = Stage::instance().tracks(frames);
    GraphView g(false);
    g.load(tracks, frames, allTracks(Stage::shape(frames)));
    for (auto _ : state)
        g.graph().SetTracks(&tracks);
    state.counters["samples"] = samples(tracks);
    state.counters["runs"] = benchmark::Counter(double(g.graph().regions.size()));
    describeSamples(state, tracks);
}

void readTracks(benchmark::State& state, int frames)
{
    const TAV::Frames& tracks = Stage::instance().tracks(frames);
    for (auto _ : state)
        benchmark::DoNotOptimize(readStore(tracks));
    state.counters["samples"] = samples(tracks);
}

void range2D(benchmark::State& state, int frames, int mode)
{
    TAV::Frames& tracks = Stage::instance().tracks(frames);
    GraphView g(false);
    g.load(tracks, frames, allTracks(Stage::shape(frames)));
    if (mode == 2) // a selection of the zoomed-in length, as a rubber band makes it
        g.graph().Selected(QRectF(frames / 2 - ZoomedInFrames / 2, 0, ZoomedInFrames - 1, 0));
    for (auto _ : state) {
        QRectF rect;
        g.graph().Range2D(&rect, mode);
        benchmark::DoNotOptimize(rect);
    }
    state.counters["samples"] = samples(tracks);
}

// The data rectangle as a host that has the graph draw fast gets it: from the
// tracks' index, built by the call before the timed ones.
void range2DIndexed(benchmark::State& state, int frames)
{
    TAV::Frames& tracks = Stage::instance().tracks(frames);
    GraphView g(false);
    g.load(tracks, frames, allTracks(Stage::shape(frames)));
    g.graph().setProperty<bool>(GraphProperty::fastDraw, true);
    QRectF first;
    g.graph().Range2D(&first, 1);
    for (auto _ : state) {
        QRectF rect;
        g.graph().Range2D(&rect, 1);
        benchmark::DoNotOptimize(rect);
    }
    state.counters["samples"] = samples(tracks);
}

// What the first fast paint after new tracks adds: an index of every track.
void buildIndex(benchmark::State& state, int frames)
{
    const TAV::Frames& tracks = Stage::instance().tracks(frames);
    for (auto _ : state)
        for (const TAV::Frame& f : tracks) {
            benchmark::DoNotOptimize(TrackIndex(f.markers).levels());
            benchmark::DoNotOptimize(TrackIndex(f.rigids).levels());
        }
    state.counters["samples"] = samples(tracks);
}

// One call per iteration, each going on from where the last one left the view,
// so the average covers every position in the list.
void jump(benchmark::State& state, bool forward)
{
    TAV::Frames track = runTrack(aoiRuns);
    GraphView g(false);
    TrackSelection one;
    one.markers.append(0);
    g.load(track, track.constFirst().markers.size(), one);
    if (g.graph().regions.size() != size_t(aoiRuns)) {
        state.SkipWithError("the run list does not have the intended length");
        return;
    }
    g.view().viewport.pos.x = 0;
    for (auto _ : state) {
        if (forward)
            g.graph().NextAOI();
        else
            g.graph().PrevAOI();
    }
    state.counters["runs"] = benchmark::Counter(aoiRuns);
}

void readRunList(benchmark::State& state)
{
    TAV::Frames track = runTrack(aoiRuns);
    GraphView g(false);
    TrackSelection one;
    one.markers.append(0);
    g.load(track, track.constFirst().markers.size(), one);
    for (auto _ : state)
        benchmark::DoNotOptimize(readRuns(g.graph().regions));
    state.counters["runs"] = benchmark::Counter(double(g.graph().regions.size()));
}

benchmark::internal::Benchmark* timed(benchmark::internal::Benchmark* b, benchmark::TimeUnit unit)
{
    return b->UseRealTime()->MeasureProcessCPUTime()->Unit(unit);
}

} // namespace

void registerNavigation()
{
    const std::string runs = "/" + std::to_string(aoiRuns) + "-runs";
    timed(benchmark::RegisterBenchmark(("aoi/next" + runs).c_str(), jump, true), benchmark::kMicrosecond);
    timed(benchmark::RegisterBenchmark(("aoi/prev" + runs).c_str(), jump, false), benchmark::kMicrosecond);
    timed(benchmark::RegisterBenchmark(("limit/read-runs" + runs).c_str(), readRunList), benchmark::kMicrosecond);
}

void registerTakeWork(int frames)
{
    const std::string n = "/" + std::to_string(frames);
    const auto ms = benchmark::kMillisecond;
    // The take's frames are needed only here; the tracks replace them from here on.
    timed(benchmark::RegisterBenchmark(("extract/host" + n).c_str(), extract, frames), ms);
    timed(benchmark::RegisterBenchmark(("limit/read-take" + n).c_str(), readTake, frames), ms);
    timed(benchmark::RegisterBenchmark(("settracks/all" + n).c_str(), setTracks, frames), ms);
    timed(benchmark::RegisterBenchmark(("limit/read-tracks" + n).c_str(), readTracks, frames), ms);
    timed(benchmark::RegisterBenchmark(("range2d/mode1" + n).c_str(), range2D, frames, 1), ms);
    timed(benchmark::RegisterBenchmark(("range2d/mode2" + n).c_str(), range2D, frames, 2), ms);
    timed(benchmark::RegisterBenchmark(("range2d/mode1-indexed" + n).c_str(), range2DIndexed, frames), ms);
    timed(benchmark::RegisterBenchmark(("index/build" + n).c_str(), buildIndex, frames), ms);
}
