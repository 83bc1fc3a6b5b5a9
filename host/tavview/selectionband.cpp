#include "host/tavview/selectionband.h"

#include "GL/gl.h"

void drawSelectionBand(GLW* view, double first, double last)
{
    const int h = int(view->height());
    const double x0 = first - 0.5, x1 = last + 0.5;
    const double y0 = view->viewport.Bottom(h), y1 = view->viewport.Top(h);
    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.55f, 0.75f, 1.0f, 0.22f);
    glBegin(GL_QUADS);
    glVertex3d(x0, y0, 0);
    glVertex3d(x1, y0, 0);
    glVertex3d(x1, y1, 0);
    glVertex3d(x0, y1, 0);
    glEnd();
    glColor4f(0.55f, 0.75f, 1.0f, 0.9f);
    glBegin(GL_LINES);
    for (double x : {x0, x1}) {
        glVertex3d(x, y0, 0);
        glVertex3d(x, y1, 0);
    }
    glEnd();
    glPopAttrib();
}
