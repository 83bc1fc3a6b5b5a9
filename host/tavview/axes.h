#pragma once
// Tick marks for the graph's axes: where they go and what they say. Plain
// functions of the visible range and its pixel size, so every zoom level gets
// ticks at least a label's width apart, on round values.
#include <QString>
#include <QVector>

// How the time axis numbers the frames.
enum class TimeLabels { Frames, Seconds, Timecode };

// The take's numbering of graph x (the 0-based frame index).
struct TimeScale {
    qint64 firstFrame = 0; // the take's own number of index 0
    double rate = 0;       // frames per second; 0 when unknown
    TimeLabels labels = TimeLabels::Frames;
};

struct Tick {
    double pos; // in graph units: frame index along x, value along y
    QString text;
};

// The smallest of 1, 2, 5 times a power of ten that is at least minStep (> 0).
double niceStep(double minStep);
// Multiples of step in [lo, hi], lowest first.
QVector<double> multiplesIn(double lo, double hi, double step);
// Text of a value on an axis whose ticks are step apart: as many decimals as
// the step needs, never "-0".
QString valueText(double v, double step);
// Timecode counts whole frames per second: the rate rounded, at least 1 and at
// most maxTimecodeFps, so that any rate a file claims gives defined labels.
constexpr qint64 maxTimecodeFps = 1000000000;
qint64 timecodeFps(double rate);
// hh:mm:ss:ff of a frame number at rate frames per second (rounded to whole
// frames per second); negative frames get a leading "-".
QString timecodeText(qint64 frame, double rate);
// A step in frames for timecode ticks: whole frames of 1-2-5 below one second,
// then 1, 2, 5, 10, 15, 30 seconds, minutes and hours.
qint64 timecodeStep(double minFrames, qint64 fps);

// Ticks for the visible index range [left, right], minPixels apart at least,
// with pixelsPerFrame pixels per index unit.
QVector<Tick> timeTicks(double left, double right, double pixelsPerFrame, double minPixels, const TimeScale& scale);
// Ticks for the visible values [bottom, top].
QVector<Tick> valueTicks(double bottom, double top, double pixelsPerUnit, double minPixels);
