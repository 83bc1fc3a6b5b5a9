#include "bench/glcount.h"

#include <GL/gl.h>

#include <algorithm>

namespace {
glcount::Counts tally;

struct Window {
    bool set = false;
    GLdouble projection[16] = {};
    GLint viewport[4] = {};
} window;
} // namespace

namespace glcount {

void reset() { tally = Counts(); }
Counts counts() { return tally; }

void setWindow(double left, double right, double bottom, double top, int x, int y, int w, int h)
{
    const double nearZ = -10, farZ = 10; // as the host's window sets it
    GLdouble* p = window.projection;
    std::fill(p, p + 16, 0.0);
    p[0] = 2 / (right - left);
    p[5] = 2 / (top - bottom);
    p[10] = -2 / (farZ - nearZ);
    p[12] = -(right + left) / (right - left);
    p[13] = -(top + bottom) / (top - bottom);
    p[14] = -(farZ + nearZ) / (farZ - nearZ);
    p[15] = 1;
    window.viewport[0] = x;
    window.viewport[1] = y;
    window.viewport[2] = w;
    window.viewport[3] = h;
    window.set = true;
}

} // namespace glcount

// The entry points the graph paints with: same names and C signatures as libGL's.
extern "C" {

void glBegin(GLenum)
{
    ++tally.calls;
    ++tally.blocks;
}

void glEnd()
{
    ++tally.calls;
    ++tally.ends;
}

void glVertex3d(GLdouble, GLdouble, GLdouble)
{
    ++tally.calls;
    ++tally.vertices;
}

void glVertex3f(GLfloat, GLfloat, GLfloat)
{
    ++tally.calls;
    ++tally.vertices;
}

void glColor3f(GLfloat, GLfloat, GLfloat) { ++tally.calls; }
void glColor4f(GLfloat, GLfloat, GLfloat, GLfloat) { ++tally.calls; }
void glPointSize(GLfloat) { ++tally.calls; }
void glPolygonMode(GLenum, GLenum) { ++tally.calls; }
void glPushAttrib(GLbitfield) { ++tally.calls; }
void glPopAttrib() { ++tally.calls; }
void glEnable(GLenum) { ++tally.calls; }
void glDisable(GLenum) { ++tally.calls; }
void glShadeModel(GLenum) { ++tally.calls; }
void glBlendFunc(GLenum, GLenum) { ++tally.calls; }

// A vertex array drawn is one block of its vertices.
void glPushClientAttrib(GLbitfield) { ++tally.calls; }
void glPopClientAttrib() { ++tally.calls; }
void glEnableClientState(GLenum) { ++tally.calls; }
void glDisableClientState(GLenum) { ++tally.calls; }
void glVertexPointer(GLint, GLenum, GLsizei, const void*) { ++tally.calls; }
void glColorPointer(GLint, GLenum, GLsizei, const void*) { ++tally.calls; }
void glDrawArrays(GLenum, GLint, GLsizei count)
{
    ++tally.calls;
    ++tally.blocks;
    ++tally.ends;
    tally.vertices += count;
}

// Queries: not counted, answered from the modelled window.
void glGetIntegerv(GLenum name, GLint* data)
{
    data[0] = 0;
    if (!window.set)
        return;
    if (name == GL_DEPTH_FUNC)
        data[0] = GL_LESS;
    else if (name == GL_DEPTH_BITS)
        data[0] = 24;
    else if (name == GL_SUBPIXEL_BITS)
        data[0] = 8;
    else if (name == GL_VIEWPORT)
        std::copy(window.viewport, window.viewport + 4, data);
}
void glGetBooleanv(GLenum name, GLboolean* data) { data[0] = window.set && name == GL_DEPTH_WRITEMASK; }
GLboolean glIsEnabled(GLenum cap) { return window.set && cap == GL_DEPTH_TEST; }
void glGetFloatv(GLenum name, GLfloat* data)
{
    data[0] = 0;
    if (name == GL_LINE_WIDTH)
        data[0] = 1;
    else if (name == GL_ALIASED_POINT_SIZE_RANGE) {
        data[0] = 1;
        data[1] = 255;
    }
}
void glGetDoublev(GLenum name, GLdouble* data)
{
    if (name == GL_PROJECTION_MATRIX) {
        std::copy(window.projection, window.projection + 16, data);
        return;
    }
    std::fill(data, data + 16, 0.0);
    for (int i = 0; i < 4; ++i)
        data[i * 5] = 1; // the modelview: identity
}

} // extern "C"
