#pragma once
// Moving a view's 2-D camera: fitting a data rectangle, zooming about a pixel,
// panning by pixels. Plain functions on the viewport; pixels are counted in the
// view with y up, as the viewport's own arithmetic counts them.
#include "GL/gl.h"

#include <QPointF>
#include <QRectF>

// Shows the data rectangle (y up: top() is the larger y) in a view of w x h
// pixels, with a margin around it. A rectangle without width or height gets a
// small extent around its position.
void fitViewport(GL::Viewport& viewport, const QRectF& data, int w, int h);

// Shows exactly [x0, x1] x [y0, y1], edge pixel to edge pixel.
void fitViewportExact(GL::Viewport& viewport, double x0, double x1, double y0, double y1, int w, int h);

// Scales by fx along x and fy along y, keeping the data point under pixel at in place.
void zoomViewport(GL::Viewport& viewport, double fx, double fy, const QPointF& at, int w, int h);

// Moves the picture by dx, dy pixels (the data under the mouse follows a drag).
void panViewport(GL::Viewport& viewport, double dx, double dy);

// Pans along x only when [first, last] is not wholly in view, putting first a
// tenth of the width in from the left edge.
void revealRange(GL::Viewport& viewport, double first, double last, int w);
