#pragma once
// The data of one take length, made when a benchmark first needs it and dropped as
// soon as a benchmark needs another length, or a part that need not sit beside it:
// a million-frame take is about 2.6 GB as frames and 2.4 GB again as tracks, and
// each peer's copy of the curves is as large.
#include "bench/graphview.h"
#include "bench/peers.h"
#include "bench/synthtake.h"

#include <QString>

#include <memory>

class Stage {
public:
    static Stage& instance();

    static TakeShape shape(int frames);
    // The take as frames.
    const Take& take(int frames);
    // Its tracks with every id selected: extracted as the host does when the take
    // is at hand (else made directly, with the same samples). Drops the take.
    TAV::Frames& tracks(int frames);
    // The graph with those tracks in a shown window; null without OpenGL.
    GraphView* window(int frames);
    // "qcustomplot" or "qwt" with the same curves, shown; null when it cannot be
    // shown. One peer lives at a time.
    PeerPlot* peer(int frames, const QString& name);
    // Drops everything; widgets must go while the application still exists.
    void release();

private:
    void switchTo(int frames);

    int current = -1;
    std::unique_ptr<Take> takeData;
    std::unique_ptr<TAV::Frames> trackData;
    std::unique_ptr<GraphView> graphWindow;
    bool windowFailed = false;
    std::unique_ptr<PeerPlot> peerPlot;
};
