#include "host/tavview/filledmarks.h"

#include "GL/gl.h"

void drawFilledMarks(GLW* view, const Regions& stretches)
{
    const int h = int(view->height());
    if (stretches.empty() || h <= 0)
        return;
    const double y0 = view->viewport.Bottom(h), y1 = y0 + (view->viewport.Top(h) - y0) * filledMarkHeight / h;
    glPushAttrib(GL_CURRENT_BIT);
    glColor3fv(filledMarkColour);
    glBegin(GL_QUADS);
    for (const Pair& s : stretches) {
        // Half a frame wider on each side, as the runs are drawn.
        const double x0 = s.begin() - 0.5, x1 = s.end() + 0.5;
        glVertex3d(x0, y0, 0);
        glVertex3d(x1, y0, 0);
        glVertex3d(x1, y1, 0);
        glVertex3d(x0, y1, 0);
    }
    glEnd();
    glPopAttrib();
}
