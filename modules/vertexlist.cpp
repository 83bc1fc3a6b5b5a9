#include "modules/vertexlist.h"

#include <GL/glext.h>

namespace {

// Client arrays point into our memory only while no buffer is bound for them.
bool arraysFromMemory()
{
    GLint buffer = 0;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &buffer);
    return buffer == 0;
}

} // namespace

void VertexList::draw(GLenum mode) const
{
    const GLsizei n = GLsizei(xyz.size() / 3);
    if (n == 0)
        return;
    if (arraysFromMemory()) {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        // Arrays a host left enabled would be read for our vertices too.
        for (GLenum array : {GLenum(GL_NORMAL_ARRAY), GLenum(GL_TEXTURE_COORD_ARRAY), GLenum(GL_INDEX_ARRAY),
                             GLenum(GL_EDGE_FLAG_ARRAY), GLenum(GL_FOG_COORD_ARRAY), GLenum(GL_SECONDARY_COLOR_ARRAY)})
            glDisableClientState(array);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, xyz.data());
        glColorPointer(3, GL_FLOAT, 0, rgb.data());
        glDrawArrays(mode, 0, n);
        glPopClientAttrib();
        return;
    }
    glBegin(mode);
    for (GLsizei i = 0; i < n; ++i) {
        glColor3f(rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2]);
        glVertex3f(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]);
    }
    glEnd();
}
