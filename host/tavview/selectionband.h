#pragma once
// The selected frames drawn over the graph: a light band from the first to the
// last selected frame (half a frame wider on each side, as the runs are drawn),
// with a firmer edge on both sides. Drawn after the graph, in its coordinates.
#include "GL/glw.h"

void drawSelectionBand(GLW* view, double first, double last);
