#pragma once
// A graph connected to a real view in a real GL window, and builders of tracks and runs.
#include "modules/core/contract.h"
#include "modules/tavgraph.h"

#include <gtest/gtest.h>

#include <QPointer>

#include <initializer_list>
#include <memory>
#include <string>

// One marker track (and optionally the rigid track of the same id): sample i sits
// at frame i, with the given condition and coordinates (i, 10 * id + i, -i).
inline TAV::Frame makeTrack(uint32_t id, std::initializer_list<float> markerConds,
                            std::initializer_list<float> rigidConds = {})
{
    TAV::Frame f;
    f.id = id;
    for (float c : markerConds) {
        const int64_t i = f.markers.size();
        f.markers.append(TAV::Marker{id, 0, i, float(i), float(10 * id + i), float(-i), c});
    }
    for (float c : rigidConds) {
        const int64_t i = f.rigids.size();
        f.rigids.append(TAV::Rigid{id, 0, i, {float(i), float(10 * id + i), float(-i), 0, 0, 0, 1}, c});
    }
    return f;
}

inline TAV::Frames makeTracks(std::initializer_list<TAV::Frame> tracks)
{
    TAV::Frames frames;
    for (const TAV::Frame& f : tracks)
        frames.append(f);
    return frames;
}

inline Regions runsOf(std::initializer_list<Pair> runs)
{
    Regions r;
    r.assign(runs.begin(), runs.end());
    return r;
}

// Runs as "first-last:type ..." for readable comparisons.
inline std::string runsText(const Regions& regions)
{
    std::string text;
    for (const Pair& r : regions)
        text += (text.empty() ? "" : " ") + std::to_string(r.begin()) + "-" + std::to_string(r.end()) + ":" +
                std::to_string(r.type);
    return text;
}

// A fresh graph, window and view. The view fills an 800 x 600 window, one pixel per
// frame from pos.x on; tests may destroy the view.
struct GraphOnView {
    GraphOnView()
    {
        window->resize(800, 600);
        view->rect = QRectF(0, 0, 1, 1);
        window->AddView(view);
        window->update = 0;
    }
    ~GraphOnView()
    {
        delete view.data();
        delete graph.data();
    }

    // Frames [start, finish). Without a rate the period is 1, so the offsets' time
    // tolerance (half a period) is 0.
    void setFrames(qint64 start, qint64 finish, qint64 head = 0, qint64 tail = 0, float freq = 0.0f,
                   qint64 current = -1)
    {
        FramesInfo info(start, finish, head, tail, current < 0 ? start : current, freq);
        graph->SetFramesInfo(&info);
    }

    QPointer<TAVGraph> graph = new TAVGraph();
    std::unique_ptr<GLWindow> window = std::make_unique<GLWindow>();
    QPointer<GLW> view = new GLW();
};

class GraphWithView : public testing::Test, public GraphOnView {};
