// Painting entry points; the drawing itself comes with the drawing code.
#include "modules/tavgraph.h"

void TAVGraph::Draw2D(GLW*) {}
void TAVGraph::drawTrackPoints(GLW*) {}
void TAVGraph::drawTrackLines(GLW*) {}
void TAVGraph::drawRegions(GLW*) {}
void TAVGraph::drawCursor(GLW*) {}
