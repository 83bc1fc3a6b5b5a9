// The coverage of one fast paint, from the state GL is in: the cull is exact only
// under the depth rule it relies on and for the transform GL really applies.
#include "GL/gl.h"
#include "modules/drawvisible.h"

#include <algorithm>
#include <cmath>

namespace {

// Every fragment of a track keeps the first one at its pixel only when the depth
// test runs with GL_LESS, writes depth into a real depth buffer, and nothing else
// decides per fragment (stencil, smoothing, multisampling, a program).
bool firstFragmentWins()
{
    GLint func = 0, depthBits = 0, program = 0, sampleBuffers = 0;
    GLboolean writes = GL_FALSE;
    glGetIntegerv(GL_DEPTH_FUNC, &func);
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glGetIntegerv(GL_SAMPLE_BUFFERS, &sampleBuffers);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &writes);
    return glIsEnabled(GL_DEPTH_TEST) && func == GL_LESS && writes && depthBits > 0 && program == 0 &&
           !glIsEnabled(GL_STENCIL_TEST) && !glIsEnabled(GL_POINT_SMOOTH) && !glIsEnabled(GL_LINE_SMOOTH) &&
           !(sampleBuffers > 0 && glIsEnabled(GL_MULTISAMPLE));
}

// column-major 4x4 product a * b
void multiply(const GLdouble* a, const GLdouble* b, GLdouble* out)
{
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r) {
            double s = 0;
            for (int k = 0; k < 4; ++k)
                s += a[k * 4 + r] * b[c * 4 + k];
            out[c * 4 + r] = s;
        }
}

} // namespace

bool pointSizeExact(int size)
{
    GLfloat sizes[2] = {0, 0};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, sizes);
    return float(size) >= sizes[0] && float(size) <= sizes[1];
}

std::optional<Coverage> paintCoverage(const ViewEdges& e)
{
    GLfloat lineWidth = 0;
    glGetFloatv(GL_LINE_WIDTH, &lineWidth);
    if (!firstFragmentWins() || lineWidth != 1.0f)
        return std::nullopt;

    GLdouble projection[16] = {}, modelview[16] = {}, t[16] = {};
    GLint vp[4] = {0, 0, 0, 0};
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetIntegerv(GL_VIEWPORT, vp);
    multiply(projection, modelview, t);
    // Affine only: clip w must be 1 wherever a track vertex lies (z = 1), and the
    // tracks' depth must be inside the depth range.
    if (t[3] != 0 || t[7] != 0 || t[11] + t[15] != 1 || vp[2] <= 0 || vp[3] <= 0)
        return std::nullopt;
    if (t[2] != 0 || t[6] != 0 || !(std::fabs(t[10] + t[14]) < 0.999))
        return std::nullopt;

    const double hw = vp[2] * 0.5, hh = vp[3] * 0.5;
    WindowMap map;
    map.ax = t[0] * hw;
    map.bx = t[4] * hw;
    map.cx = (t[8] + t[12] + 1) * hw + vp[0];
    map.ay = t[1] * hh;
    map.by = t[5] * hh;
    map.cy = (t[9] + t[13] + 1) * hh + vp[1];
    for (double v : {map.ax, map.bx, map.cx, map.ay, map.by, map.cy})
        if (!std::isfinite(v))
            return std::nullopt;

    const double X = std::max(std::fabs(double(e.left)), std::fabs(double(e.right)));
    const double Y = std::max(std::fabs(double(e.top)), std::fabs(double(e.bottom)));
    const double magnitude = std::fabs(map.ax) * X + std::fabs(map.bx) * Y + std::fabs(map.cx) +
                             std::fabs(map.ay) * X + std::fabs(map.by) * Y + std::fabs(map.cy) +
                             std::abs(vp[0]) + std::abs(vp[1]) + vp[2] + vp[3];
    GLint subpixelBits = 0;
    glGetIntegerv(GL_SUBPIXEL_BITS, &subpixelBits);
    return Coverage(map, PixelRect{vp[0], vp[1], vp[2], vp[3]}, coverageMargin(magnitude, subpixelBits));
}
