#pragma once
// Where the shown tracks hold filled samples: a strip along the bottom of the graph
// in a colour of its own. The graph shades a filled sample as fair, so without the
// strip a filled gap and a fair stretch look alike. Drawn after the graph, in its
// coordinates.
#include "GL/glw.h"
#include "utils/regions.h"

// The strip's colour, also the legend's.
constexpr float filledMarkColour[3] = {0.2f, 0.8f, 0.8f};
// Its height in pixels.
constexpr int filledMarkHeight = 5;

void drawFilledMarks(GLW* view, const Regions& stretches);
