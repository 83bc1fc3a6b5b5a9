// A long scripted session of host calls: playback at the frame rate, track and
// selection changes, paints, navigation, menu rebuilds, and tavview's editing
// with undo and redo. The heap in use after warm-up must stay flat.
// TAV_SOAK_CALLS sets the number of calls (default 20,000; the reliability
// report's figures come from 100,000).
#include "host/edit/takeeditor.h"
#include "host/tavview/take.h"
#include "host/tavview/tracks.h"
#include "host/tavview/trackselection.h"
#include "tests/plugin/pluginhost.h"

#include <QUndoStack>

#include <cstdio>
#include <functional>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace {

// Resident set size in KiB, printed for the report: it moves in whole chunks of the
// allocator and the GL driver, so the test holds the heap instead.
long residentKiB()
{
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// Bytes the allocator has handed out and not had back.
long heapInUse()
{
    const struct mallinfo2 m = mallinfo2();
    return long(m.uordblks + m.hblkhd);
}

using Soak = PluginHost;

TEST_F(Soak, MemoryStaysFlatOverALongSession)
{
    const long calls = qEnvironmentVariableIsSet("TAV_SOAK_CALLS") ? qEnvironmentVariableIntValue("TAV_SOAK_CALLS")
                                                                   : 20000;
    Take take = defaultTake();
    TakeEditor editor;
    editor.Attach(&take.frames);
    const int frameCount = take.frameCount();
    const QList<int> selections[] = {{0, 1}, {2}, {0, 3, 4}, {1, 2, 3}};
    TrackSelection selection;
    TAV::Frames store;
    const auto handOver = [&](const QList<int>& markers) {
        selection.markers = markers;
        buildTracks(take, selection, store);
        tracks(&store);
        select(selection.markers);
    };
    // The graph keeps its last fast paint for cursor-only repaints, as much memory as
    // that paint sent: memory is compared in one state, the first selection shown
    // and painted twice.
    const auto settle = [&] {
        handOver(selections[0]);
        paint();
        paint();
    };

    // What the host does every so many played frames, and how many calls that is.
    long done = 0, warm = 0, before = 0, heapBefore = 0, painted = 0;
    const struct {
        int every, calls;
        std::function<void(int)> run;
    } steps[] = {{1, 1, [&](int frame) { frames(FramesInfo(0, frameCount, 0, 0, frame, 0)); }},
                 {7, 2, [&](int) { painted += paint(); }},
                 {50, 2, [&](int frame) { handOver(selections[(frame / 50) % 4]); }},
                 {60, 13, [&](int) { navigate(); }},
                 {90, 1, [&](int) { menu(); }},
                 // Edit, undo, redo, undo: the history stays one step deep, as memory
                 // held by undo steps is wanted, not a leak.
                 {120, 8, [&](int frame) {
                      const FrameSpan span{frame % (frameCount - 20), frame % (frameCount - 20) + 10};
                      editor.Delete(selection.markers, span);
                      editor.Fill(selection.markers, span, FillChoice{}, 0);
                      for (bool undo : {true, false, true, true})
                          undo ? editor.undoStack()->undo() : editor.undoStack()->redo();
                      handOver(selection.markers);
                  }}};
    for (int frame = 0; done < calls; frame = (frame + 1) % frameCount) {
        for (const auto& step : steps)
            if (frame % step.every == 0) {
                step.run(frame);
                done += step.calls;
            }
        if (!warm && done >= calls / 4) {
            warm = done;
            settle();
            before = residentKiB();
            heapBefore = heapInUse();
        }
    }
    settle();
    const long after = residentKiB(), heapAfter = heapInUse();
    const double heapGrowth = 100.0 * double(heapAfter - heapBefore) / double(heapBefore);
    EXPECT_GT(painted, done / 10);
    std::printf("soak: %ld host calls, %ld paints; after %ld calls of warm-up and at the end: resident %ld and %ld KiB "
                "(%+.3f %%), heap in use %ld and %ld KiB (%+.3f %%)\n",
                done, painted, warm, before, after, 100.0 * double(after - before) / double(before),
                heapBefore / 1024, heapAfter / 1024, heapGrowth);
#ifndef __SANITIZE_ADDRESS__
    // The sanitizer's quarantine holds freed memory back on purpose: its build
    // checks the session for faults, and the normal build checks the memory.
    EXPECT_LT(heapGrowth, 1.0);
#endif
}

} // namespace
