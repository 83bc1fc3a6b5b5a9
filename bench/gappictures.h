#pragma once
#include <QString>

// Saves pictures of one marker's lines around an occlusion gap, drawn by the graph
// ("tavgraph-gap.png") and by each peer ("qcustomplot-gap.png", "qwt-gap.png"),
// to tell whether each breaks the lines at a missing stretch or bridges it. False
// when there is no display to draw on.
bool saveGapPictures(const QString& dir);
