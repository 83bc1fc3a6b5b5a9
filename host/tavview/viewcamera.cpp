#include "host/tavview/viewcamera.h"

#include <algorithm>
#include <cmath>

namespace {

// Room around the data so that the half-frame wings of runs and the points at the
// edges stay inside the view.
const double marginX = 0.02, marginY = 0.06;

double clampScale(double s, float lo, float hi) { return std::clamp(s, double(lo), double(hi)); }

} // namespace

void fitViewport(GL::Viewport& viewport, const QRectF& data, int w, int h)
{
    double x0 = data.left(), x1 = data.right();
    double y0 = std::min(data.top(), data.bottom()), y1 = std::max(data.top(), data.bottom());
    if (!(x1 > x0))
        x0 -= 0.5, x1 += 0.5;
    if (!(y1 > y0))
        y0 -= 1.0, y1 += 1.0;
    const double padX = (x1 - x0) * marginX + 0.5, padY = (y1 - y0) * marginY;
    x0 -= padX, x1 += padX, y0 -= padY, y1 += padY;

    fitViewportExact(viewport, x0, x1, y0, y1, w, h);
}

void fitViewportExact(GL::Viewport& viewport, double x0, double x1, double y0, double y1, int w, int h)
{
    // The edges are linear in pos and in 1/scale whatever the alignment: measure
    // the pixel span at scale 1 and the edges at pos 0, then solve for both.
    viewport.scale.x = viewport.scale.y = 1;
    viewport.pos.x = viewport.pos.y = 0;
    const double spanX = std::max(double(viewport.Right(w) - viewport.Left(w)), 1.0);
    const double spanY = std::max(double(viewport.Top(h) - viewport.Bottom(h)), 1.0);
    viewport.scale.x = float(clampScale(spanX / std::max(x1 - x0, 1e-9), viewport.minScale.x, viewport.maxScale.x));
    viewport.scale.y = float(clampScale(spanY / std::max(y1 - y0, 1e-9), viewport.minScale.y, viewport.maxScale.y));
    // Centred: the range fills the view unless a scale limit stopped it.
    viewport.pos.x = float((x0 + x1) / 2 - (double(viewport.Left(w)) + viewport.Right(w)) / 2);
    viewport.pos.y = float((y0 + y1) / 2 - (double(viewport.Bottom(h)) + viewport.Top(h)) / 2);
}

void zoomViewport(GL::Viewport& viewport, double fx, double fy, const QPointF& at, int w, int h)
{
    const Vector anchor = viewport.Cursor(float(at.x()), float(at.y()), w, h);
    const double sx = clampScale(viewport.scale.x * fx, viewport.minScale.x, viewport.maxScale.x);
    const double sy = clampScale(viewport.scale.y * fy, viewport.minScale.y, viewport.maxScale.y);
    viewport.scale.x = float(sx);
    viewport.scale.y = float(sy);
    // The anchor's data point stays under the same pixel.
    const Vector moved = viewport.Cursor(float(at.x()), float(at.y()), w, h);
    viewport.pos.x += anchor.x - moved.x;
    viewport.pos.y += anchor.y - moved.y;
}

void panViewport(GL::Viewport& viewport, double dx, double dy)
{
    viewport.pos.x = float(viewport.pos.x - dx / viewport.scale.x);
    viewport.pos.y = float(viewport.pos.y - dy / viewport.scale.y);
}

void revealRange(GL::Viewport& viewport, double first, double last, int w)
{
    const double left = viewport.Left(w), right = viewport.Right(w);
    if (first >= left && last <= right)
        return;
    viewport.pos.x = float(viewport.pos.x + (first - (right - left) * 0.1) - left);
}
