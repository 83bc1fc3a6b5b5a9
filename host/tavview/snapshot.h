#pragma once
// One picture of the graph, rendered by the real GL window and read back.
#include <QImage>
#include <QSize>
#include <QString>

class GraphPanel;

// Shows the panel's window (a top-level one) at size, fits the view to the
// selection (the whole take unless one was made), paints once and reads the
// pixels back. A null image and error on failure.
QImage renderSnapshot(GraphPanel& panel, const QSize& size, QString& error);

// renderSnapshot, written as a PNG to path.
bool saveSnapshot(GraphPanel& panel, const QSize& size, const QString& path, QString& error);
