#pragma once
// The store's "timeLut": each frame's time in microseconds from the first frame.
#include <QList>
#include <QtGlobal>

// count frames at rate frames per second, rounded to whole microseconds; without a
// rate (zero or less) the frame indices themselves.
QList<qint64> frameTimes(qint64 count, double rate);
