#pragma once
// Registration of the benchmarks, in the order they run: the fixed-size cases
// first, then every case of one take length before the next length, so that only
// one length's data is in memory at a time.
#include <QString>

#include <vector>

struct BenchOptions {
    std::vector<int> lengths; // take lengths in frames
    QString pictureDir;       // where pictures of the paints go; none when empty
    int pictureLength = 0;    // the take length whose paints are pictured
};

// Names are "measure/variant.../size": "extract/host/100000", "limit/read-tracks/100000".
void registerNavigation();
void registerBlankPaint();
void registerC3D();
void registerTakeWork(int frames);
// tavview's edits of a selection on a take of that length.
void registerEdits(int frames);
void registerPaints(int frames, const BenchOptions& options);
// tavview's answers to a user's input, through its real window.
void registerViewer(int frames);
// Closes the window of the last length measured, if one is left open.
void releaseViewer();
