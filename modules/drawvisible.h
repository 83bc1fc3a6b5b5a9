#pragma once
// What the fast drawing needs of the GL state, and its region layer.
#include "modules/coverage.h"
#include "modules/drawprimitives.h"

#include <optional>

class GLW;
class TAVGraph;

// The pixels the paint has certainly written, read from the GL state it runs in;
// none when that state is not one the cull is exact under.
std::optional<Coverage> paintCoverage(const ViewEdges& e);
// Whether GL draws points of this size as asked rather than clamped.
bool pointSizeExact(int size);

// The region layer with the runs' bands culled by pixel column and sent in one
// block. False, having drawn nothing, where the runs' outlines are drawn or x is
// not a pixel column: the exact region layer is drawn then.
bool drawVisibleRegions(const TAVGraph& graph, const GLW& glw, const Coverage& coverage);
