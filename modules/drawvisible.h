#pragma once
// The fast drawing of tracks, chosen by the graph's "fastDraw" property: the same
// picture as drawTrackPoints and drawTrackLines, sending only what can be seen.
class GLW;
class TAVGraph;

// Points pass the level-of-detail filter in the same order as in the exact drawing,
// so the same ones are accepted; only those within half a point of the view are
// sent. The walk starts near the view when the filter's state there is certain.
void drawVisibleTrackPoints(const TAVGraph& graph, const GLW& glw);
// The segments of the exact drawing, all in one glBegin/glEnd block.
void drawVisibleTrackLines(const TAVGraph& graph, const GLW& glw);
