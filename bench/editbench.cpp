// tavview's edits on a long take: delete, revert, fill and undo of a selection of
// eight markers by 1,000 frames, each beside a plain pass over the same samples.
// The editor gets its own copy of the take, as a window holds its own.
#include "bench/benchmarks.h"
#include "bench/stage.h"

#include "host/edit/takeeditor.h"

#include <QUndoStack>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

const QList<int> editedMarkers{0, 1, 2, 3, 4, 5, 6, 7};
const int editedFrames = 1000;

// A copy of the take of that length, attached to an editor: the first edit on a
// fresh editor is measured apart, as it is the one a user waits for.
struct Editing {
    Take take;
    TakeEditor editor;
    explicit Editing(int frames) : take(Stage::instance().take(frames))
    {
        editor.Attach(&take.frames);
    }
};

FrameSpan selection(int frames)
{
    const int first = frames / 2 - editedFrames / 2;
    return {first, first + editedFrames - 1};
}

void setCounters(benchmark::State& state)
{
    state.counters["samples"] = double(editedMarkers.size() * editedFrames);
}

// Deleting on a freshly attached editor, each time: the cost of the first edit.
void firstDelete(benchmark::State& state, int frames)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto e = std::make_unique<Editing>(frames);
        state.ResumeTiming();
        benchmark::DoNotOptimize(e->editor.Delete(editedMarkers, selection(frames)));
        state.PauseTiming();
        e.reset();
        state.ResumeTiming();
    }
    setCounters(state);
}

// Attaching a copy of the take, which copies its array of frame records once.
void attach(benchmark::State& state, int frames)
{
    Stage::instance().take(frames); // made once, out of the timing
    for (auto _ : state) {
        auto e = std::make_unique<Editing>(frames);
        benchmark::DoNotOptimize(e->editor.take());
        state.PauseTiming();
        e.reset();
        state.ResumeTiming();
    }
}

// The edit, then its undo out of the timing (or the reverse): later edits.
enum class Step { Delete, UndoDelete, Revert, Fill };

// filledGap: the length of the gap a fill closes, in frames.
void edit(benchmark::State& state, int frames, Step step, int filledGap)
{
    Editing e(frames);
    const FrameSpan span = selection(frames);
    const FrameSpan gap{span.first + editedFrames / 4, span.first + editedFrames / 4 + filledGap - 1};
    QUndoStack* undo = e.editor.undoStack();
    FillChoice linear;
    linear.estimate = false;
    e.editor.Delete(editedMarkers, span); // the first edit, out of the timing
    undo->undo();
    for (auto _ : state) {
        switch (step) {
        case Step::Delete:
            benchmark::DoNotOptimize(e.editor.Delete(editedMarkers, span));
            state.PauseTiming();
            undo->undo();
            state.ResumeTiming();
            break;
        case Step::UndoDelete:
            state.PauseTiming();
            e.editor.Delete(editedMarkers, span);
            state.ResumeTiming();
            undo->undo();
            break;
        case Step::Revert:
            state.PauseTiming();
            e.editor.Delete(editedMarkers, span);
            state.ResumeTiming();
            benchmark::DoNotOptimize(e.editor.Revert(editedMarkers, span));
            state.PauseTiming();
            undo->undo();
            undo->undo();
            state.ResumeTiming();
            break;
        case Step::Fill:
            state.PauseTiming();
            e.editor.Delete(editedMarkers, gap);
            state.ResumeTiming();
            benchmark::DoNotOptimize(e.editor.Fill(editedMarkers, gap, linear, 0).samples);
            state.PauseTiming();
            undo->undo();
            undo->undo();
            state.ResumeTiming();
            break;
        }
    }
    setCounters(state);
    if (step == Step::Fill)
        state.counters["samples"] = double(editedMarkers.size() * filledGap);
}

// The least any edit of the selection costs: its samples read once.
void readSelection(benchmark::State& state, int frames)
{
    const Take& take = Stage::instance().take(frames);
    const FrameSpan span = selection(frames);
    for (auto _ : state) {
        double sum = 0;
        for (int f = span.first; f <= span.last; ++f) {
            const TAV::Marker* m = take.frames[f].markers.constData();
            for (int id : editedMarkers)
                sum += double(m[id].x) + m[id].y + m[id].z + m[id].cond;
        }
        benchmark::DoNotOptimize(sum);
    }
    setCounters(state);
}

benchmark::internal::Benchmark* timed(benchmark::internal::Benchmark* b)
{
    return b->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
}

} // namespace

void registerEdits(int frames)
{
    const std::string n = "/" + std::to_string(frames);
    timed(benchmark::RegisterBenchmark(("edit/attach" + n).c_str(), attach, frames))->Iterations(3);
    timed(benchmark::RegisterBenchmark(("edit/first-delete" + n).c_str(), firstDelete, frames))->Iterations(3);
    timed(benchmark::RegisterBenchmark(("edit/delete" + n).c_str(), edit, frames, Step::Delete, 0));
    timed(benchmark::RegisterBenchmark(("edit/undo-delete" + n).c_str(), edit, frames, Step::UndoDelete, 0));
    timed(benchmark::RegisterBenchmark(("edit/revert" + n).c_str(), edit, frames, Step::Revert, 0));
    for (int gap : {50, 500})
        timed(benchmark::RegisterBenchmark(("edit/fill-linear-" + std::to_string(gap) + n).c_str(), edit, frames,
                                           Step::Fill, gap));
    timed(benchmark::RegisterBenchmark(("limit/read-selection" + n).c_str(), readSelection, frames));
}
