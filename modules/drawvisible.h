#pragma once
// The fast drawing of tracks, chosen by the graph's "fastDraw" property: the same
// picture as drawTrackPoints and drawTrackLines, sending only what can be seen.
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

// Points pass the level-of-detail filter in the same order as in the exact drawing,
// so the same ones are accepted; only those within half a point of the view are
// sent, and of those only the ones that can still reach a pixel of `coverage`.
// The walk starts near the view when the filter's state there is certain.
void drawVisibleTrackPoints(const TAVGraph& graph, const GLW& glw, Coverage* coverage);
// The segments of the exact drawing that can still reach a pixel, all in one
// glBegin/glEnd block.
void drawVisibleTrackLines(const TAVGraph& graph, const GLW& glw, Coverage* coverage);
// The region layer with the runs' bands culled by pixel column and sent in one
// block. False, having drawn nothing, where the runs' outlines are drawn or x is
// not a pixel column: the exact region layer is drawn then.
bool drawVisibleRegions(const TAVGraph& graph, const GLW& glw, const Coverage& coverage);
