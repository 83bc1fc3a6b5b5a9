#include "bench/glcount.h"

#include <GL/gl.h>

namespace {
glcount::Counts tally;
} // namespace

namespace glcount {

void reset() { tally = Counts(); }
Counts counts() { return tally; }

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

} // extern "C"
