#pragma once
// A recorder of the OpenGL 1.x immediate-mode calls that the graph module makes.
//
// Linked into a test executable, it defines those entry points itself, so the
// module's calls land here instead of in libGL: each call is appended, with its
// arguments, to one process-wide log that a test reads back and compares whole.
#include <GL/gl.h>

#include <string>
#include <vector>

namespace glrec {

// One recorded call: the entry point's name and its arguments widened to double
// (exact for every GLenum, GLbitfield, GLfloat and GLdouble).
struct Call {
    std::string name;
    std::vector<double> args;
};
typedef std::vector<Call> Calls;

// "glBegin(0)", "glVertex3f(12, 0.5, 1)": every argument as its exact number.
std::string toString(const Call& c);
// One call per line, so a failed comparison shows a line diff.
std::string toString(const Calls& calls);

// The log since the last reset().
const Calls& calls();
void reset();
// How many recorded calls have this name.
int count(const Calls& calls, const std::string& name);

// True when every entry point of this recorder is the one the process resolves
// by name, i.e. no call can slip past to libGL. Otherwise names the first one that
// does not in *which.
bool bound(std::string* which = nullptr);

// Builders for expected streams. They take the entry point's own argument types,
// so an expected value rounds exactly as the recorded one did.
inline Call Begin(GLenum mode) { return {"glBegin", {double(mode)}}; }
inline Call End() { return {"glEnd", {}}; }
inline Call Vertex3f(GLfloat x, GLfloat y, GLfloat z) { return {"glVertex3f", {x, y, z}}; }
inline Call Vertex3d(GLdouble x, GLdouble y, GLdouble z) { return {"glVertex3d", {x, y, z}}; }
inline Call Color3f(GLfloat r, GLfloat g, GLfloat b) { return {"glColor3f", {r, g, b}}; }
inline Call Color4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) { return {"glColor4f", {r, g, b, a}}; }
inline Call PointSize(GLfloat s) { return {"glPointSize", {s}}; }
inline Call PolygonMode(GLenum face, GLenum mode) { return {"glPolygonMode", {double(face), double(mode)}}; }
inline Call PushAttrib(GLbitfield mask) { return {"glPushAttrib", {double(mask)}}; }
inline Call PopAttrib() { return {"glPopAttrib", {}}; }
inline Call Enable(GLenum cap) { return {"glEnable", {double(cap)}}; }
inline Call Disable(GLenum cap) { return {"glDisable", {double(cap)}}; }
inline Call ShadeModel(GLenum mode) { return {"glShadeModel", {double(mode)}}; }
inline Call BlendFunc(GLenum s, GLenum d) { return {"glBlendFunc", {double(s), double(d)}}; }

} // namespace glrec
