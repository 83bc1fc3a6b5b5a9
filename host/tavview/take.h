#pragma once
// A take as tavview holds it: the dense frame store plus what the store's copy
// rules would lose. Copy-constructing TAV::Frames resets its "frequency", so the
// rate is kept here, read once when the take is made.
#include "tav/tavframes.h"

#include <QList>
#include <QString>

struct Take {
    QString name;          // file name, or a description of the built-in take
    TAV::Frames frames;    // every frame holds every id; a sample's time is its frame index
    double rate = 0;       // frames per second
    qint64 firstFrame = 0; // the take's own number of frame index 0
    QString units;         // of the coordinates, e.g. "mm"

    int frameCount() const { return frames.size(); }
    // Frame times in microseconds from the first frame: the store's "timeLut" when
    // it has one per frame, else computed from the rate.
    QList<qint64> timeLut() const;
};

// Reads a capture file into a take. On failure returns false with one line in error
// that names the file and the problem.
bool loadTake(const QString& path, Take& take, QString& error);
// The problem as one line that names the file (prefixed unless it already does).
QString namingFile(const QString& path, const QString& problem);

// The built-in synthetic take: markers and rigid bodies with occlusion gaps, poor
// and fair runs and filled samples, so every feature of the graph has something to show.
Take defaultTake();
