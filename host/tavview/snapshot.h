#pragma once
// One picture as a report shows it, rendered by the real windows and read back:
// a title (file, rate, frames shown), the legend with the track names, and the
// graph with its value and time axes.
#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>

class GraphPanel;
class ModuleRegistry;

struct Snapshot {
    QImage image; // null on failure
    QRect graph;  // where the graph itself lies in the image
};

// The title line: the take's name, rate and the frames shown (its own numbering).
QString snapshotTitle(const GraphPanel& panel, qint64 firstIndex, qint64 lastIndex);

// Lays the panel's window out with axes, legend and title in a top-level widget
// of size, waits for the graph to paint with the view the panel was told to fit
// (the selection unless it was told otherwise) and reads the picture back.
Snapshot renderSnapshot(const ModuleRegistry& registry, GraphPanel& panel, const QSize& size, QString& error);

// The picture formats tavview can write ("png", "jpg", ...), and whether the
// name's suffix is one of them (false with error when not).
QStringList writableFormats();
bool canWritePicture(const QString& path, QString& error);

// renderSnapshot, written in the format that path's suffix names.
bool saveSnapshot(const ModuleRegistry& registry, GraphPanel& panel, const QSize& size, const QString& path,
                  QString& error, QRect* graph = nullptr);
