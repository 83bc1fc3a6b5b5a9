#pragma once
// The graph in a view, wired and loaded the way tavview's graph panel does it, and
// the view settings each paint benchmark uses. The window is optional: without one
// the view is a free-standing 1600 x 600 view for GL calls that go elsewhere.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "host/tavview/trackselection.h"
#include "modules/tavgraph.h"

#include <QImage>
#include <QRectF>
#include <QString>

#include <memory>
#include <vector>

enum : int { PaintWidth = 1600, PaintHeight = 600, ZoomedInFrames = 500 };

enum class PaintStyle {
    Points, // the defaults: points, and lines only where the level of detail allows
    Lines,  // lines at every zoom ("linesLODpx" raised), and the points
    Runs,   // no tracks: the shaded runs and the cursor alone
};

// How a paint benchmark sets up the graph and its view.
struct PaintCase {
    bool fast; // the "fastDraw" property
    PaintStyle style;
    bool zoomedIn; // ZoomedInFrames in the middle of the take, else the whole take
};
// "fast/points/out" and the like: the middle of a benchmark's name.
QString caseName(const PaintCase& c);
// The paint cases of the benchmarks, in the order they run. The runs alone are
// painted the same either way, so only fast.
std::vector<PaintCase> paintCases();

class GraphView {
public:
    // withWindow: a real GLWindow of PaintWidth x PaintHeight, not yet shown.
    explicit GraphView(bool withWindow);
    ~GraphView();

    TAVGraph& graph() { return *graphObject; }
    GLW& view() { return *glView; }
    GLWindow* window() { return glWindow.get(); }

    // As the panel hands over a take: frame range, the two selections, then the
    // tracks, which the graph shares rather than copies.
    void load(TAV::Frames& tracks, int frames, const TrackSelection& selection);
    // Graph properties and view for one paint.
    void setUp(const PaintCase& c);
    // The data rectangle of the whole take, as a fit to all frames shows it.
    QRectF wholeTake() const { return whole; }
    // Shows exactly this data rectangle: x from left() to right(), y from top() (the
    // smaller) to bottom().
    void showData(const QRectF& data);
    // The data rectangle the view shows, from its viewport, in the same form.
    QRectF shown() const;
    // Paints the window and returns the picture as the graph left it, read back
    // before the buffers swap. Needs the window, shown.
    QImage grab();

private:
    std::unique_ptr<GLWindow> glWindow;
    std::unique_ptr<GLW> glView;
    std::unique_ptr<TAVGraph> graphObject;
    FramesInfo info;
    QRectF whole;
    int frameCount = 0;
    float defaultLinesLOD = 0;
};
