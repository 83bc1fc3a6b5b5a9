// The paint entry: the state block around points, lines, runs and cursor.
#include "modules/drawprimitives.h"
#include "modules/drawvisible.h"
#include "modules/tavgraph.h"
#include "utils/saturate.h"

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
    const bool fast = property<bool>("fastDraw");

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_LIGHTING);
    glShadeModel(GL_FLAT);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    if (fast) {
        drawVisibleTrackPoints(*this, *glw);
        drawVisibleTrackLines(*this, *glw);
    } else {
        drawTrackPoints(glw);
        drawTrackLines(glw);
    }
    drawRegions(glw);
    drawCursor(glw);

    glPopAttrib();
}
