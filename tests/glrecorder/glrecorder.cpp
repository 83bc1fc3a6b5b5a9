#include "glrecorder.h"

#include <dlfcn.h>

#include <cstdio>
#include <fstream>

namespace glrec {
namespace {

Calls& log()
{
    static Calls calls;
    return calls;
}

void record(const char* name, std::initializer_list<double> args)
{
    log().push_back(Call{name, std::vector<double>(args)});
}

std::string number(double v)
{
    // Shortest exact form: a value that is a float prints as that float.
    char buf[40];
    std::snprintf(buf, sizeof buf, double(float(v)) == v ? "%.9g" : "%.17g", v);
    return buf;
}

} // namespace

std::string toString(const Call& c)
{
    std::string s = c.name + "(";
    for (size_t i = 0; i < c.args.size(); ++i) {
        if (i)
            s += ", ";
        s += number(c.args[i]);
    }
    return s + ")";
}

std::string toString(const Calls& calls)
{
    std::string s;
    for (const Call& c : calls)
        s += toString(c) + "\n";
    return s;
}

const Calls& calls() { return log(); }

void reset() { log().clear(); }

int count(const Calls& calls, const std::string& name)
{
    int n = 0;
    for (const Call& c : calls)
        n += c.name == name;
    return n;
}

} // namespace glrec

// The entry points. They keep the system header's declarations (C linkage), so a
// test executable that links this file resolves the module's calls here.
extern "C" {

void GLAPIENTRY glBegin(GLenum mode) { glrec::record("glBegin", {double(mode)}); }
void GLAPIENTRY glEnd(void) { glrec::record("glEnd", {}); }
void GLAPIENTRY glVertex3f(GLfloat x, GLfloat y, GLfloat z) { glrec::record("glVertex3f", {x, y, z}); }
void GLAPIENTRY glVertex3d(GLdouble x, GLdouble y, GLdouble z) { glrec::record("glVertex3d", {x, y, z}); }
void GLAPIENTRY glColor3f(GLfloat r, GLfloat g, GLfloat b) { glrec::record("glColor3f", {r, g, b}); }
void GLAPIENTRY glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) { glrec::record("glColor4f", {r, g, b, a}); }
void GLAPIENTRY glPointSize(GLfloat size) { glrec::record("glPointSize", {size}); }
void GLAPIENTRY glPolygonMode(GLenum face, GLenum mode)
{
    glrec::record("glPolygonMode", {double(face), double(mode)});
}
void GLAPIENTRY glPushAttrib(GLbitfield mask) { glrec::record("glPushAttrib", {double(mask)}); }
void GLAPIENTRY glPopAttrib(void) { glrec::record("glPopAttrib", {}); }
void GLAPIENTRY glEnable(GLenum cap) { glrec::record("glEnable", {double(cap)}); }
void GLAPIENTRY glDisable(GLenum cap) { glrec::record("glDisable", {double(cap)}); }
void GLAPIENTRY glShadeModel(GLenum mode) { glrec::record("glShadeModel", {double(mode)}); }
void GLAPIENTRY glBlendFunc(GLenum sfactor, GLenum dfactor)
{
    glrec::record("glBlendFunc", {double(sfactor), double(dfactor)});
}

// Vertex arrays are recorded as the immediate-mode block they draw: begin, each
// vertex preceded by its colour where that changed, end.
namespace {
struct ClientArrays {
    const GLfloat* vertices = nullptr;
    const GLfloat* colours = nullptr;
} arrays;
} // namespace

void GLAPIENTRY glPushClientAttrib(GLbitfield) {}
void GLAPIENTRY glPopClientAttrib(void) { arrays = ClientArrays(); }
void GLAPIENTRY glEnableClientState(GLenum) {}
void GLAPIENTRY glDisableClientState(GLenum) {}
void GLAPIENTRY glVertexPointer(GLint, GLenum, GLsizei, const void* p) { arrays.vertices = static_cast<const GLfloat*>(p); }
void GLAPIENTRY glColorPointer(GLint, GLenum, GLsizei, const void* p) { arrays.colours = static_cast<const GLfloat*>(p); }
void GLAPIENTRY glDrawArrays(GLenum mode, GLint first, GLsizei count)
{
    glrec::record("glBegin", {double(mode)});
    for (GLsizei i = first; i < first + count; ++i) {
        const GLfloat* c = arrays.colours + 3 * i;
        if (i == first || c[0] != c[-3] || c[1] != c[-2] || c[2] != c[-1])
            glrec::record("glColor3f", {c[0], c[1], c[2]});
        const GLfloat* v = arrays.vertices + 3 * i;
        glrec::record("glVertex3f", {v[0], v[1], v[2]});
    }
    glrec::record("glEnd", {});
}

// Queries are not drawing: they go unrecorded and find no state set, as in a
// context that has no depth buffer, so the fast paint sends everything.
void GLAPIENTRY glGetIntegerv(GLenum, GLint* data) { data[0] = 0; }
void GLAPIENTRY glGetFloatv(GLenum, GLfloat* data) { data[0] = 0; }
void GLAPIENTRY glGetDoublev(GLenum, GLdouble* data) { data[0] = 0; }
void GLAPIENTRY glGetBooleanv(GLenum, GLboolean* data) { data[0] = GL_FALSE; }
GLboolean GLAPIENTRY glIsEnabled(GLenum) { return GL_FALSE; }

} // extern "C"

namespace glrec {

bool bound(std::string* which)
{
    // Each name the dynamic list exports must resolve into the object that holds
    // this recorder.
    Dl_info self{}, found{};
    dladdr(reinterpret_cast<void*>(&glBegin), &self);
    std::ifstream list(TAV_GLRECORDER_LIST);
    std::string name;
    int names = 0;
    while (std::getline(list, name, ';')) {
        name.erase(0, name.find_first_of("g"));
        if (name.empty())
            continue;
        ++names;
        void* entry = dlsym(RTLD_DEFAULT, name.c_str());
        if (!entry || !dladdr(entry, &found) || found.dli_fbase != self.dli_fbase) {
            if (which)
                *which = name;
            return false;
        }
    }
    if (which && !names)
        *which = "the dynamic list " TAV_GLRECORDER_LIST;
    return names > 0;
}

} // namespace glrec
