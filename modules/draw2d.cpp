// The paint entry: the state block around points, lines, runs and cursor.
#include "modules/drawprimitives.h"
#include "modules/drawvisible.h"
#include "modules/fasttracks.h"
#include "modules/paintcache.h"
#include "modules/tavgraph.h"
#include "modules/trackindex.h"
#include "utils/saturate.h"

#include "modules/core/contract.h"

#include <optional>

#include <cmath>

ViewEdges viewEdges(const GLW& glw)
{
    ViewEdges e;
    e.w = saturate_cast<int>(glw.width());
    e.h = saturate_cast<int>(glw.height());
    e.left = glw.viewport.Left(e.w);
    e.right = glw.viewport.Right(e.w);
    e.top = glw.viewport.Top(e.h);
    e.bottom = glw.viewport.Bottom(e.h);
    return e;
}

bool drawable(const ViewEdges& e)
{
    return e.w > 0 && e.h > 0 && std::isfinite(e.left) && std::isfinite(e.right) && std::isfinite(e.top) &&
           std::isfinite(e.bottom);
}

void TAVGraph::Draw2D(GLW* glw)
{
    if (!glw)
        return;
    if (!glw->property<bool>("visible"))
        return;
    if (!drawable(viewEdges(*glw)))
        return;
    const bool fast = property<bool>(GraphProperty::fastDraw);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_LIGHTING);
    glShadeModel(GL_FLAT);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    // Points first, then lines: the lines are culled against what points wrote.
    // Where the state allows the cull, a repaint with only the cursor moved
    // replays the last one.
    std::optional<Coverage> coverage;
    bool replayed = false;
    if (fast) {
        coverage = paintCoverage(viewEdges(*glw));
        if (coverage) {
            if (!fastPaint)
                fastPaint = std::make_unique<FastPaintCache>();
            replayed = fastPaint->replayOrRecord(FastPaintInputs::of(*this, *glw, *coverage));
        }
    }
    if (!replayed) {
        if (fast) {
            if (!trackIndexes)
                trackIndexes = std::make_unique<TrackIndexes>();
            drawFastTracks(*this, *glw, coverage ? &*coverage : nullptr, *trackIndexes);
        } else {
            drawTrackPoints(glw);
            drawTrackLines(glw);
        }
        if (!(coverage && drawVisibleRegions(*this, *glw, *coverage)))
            drawRegions(glw);
        if (coverage)
            fastPaint->endRecording();
    }
    drawCursor(glw);

    glPopAttrib();
}
