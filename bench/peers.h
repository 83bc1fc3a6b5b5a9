#pragma once
// The same curves drawn by the plotting widgets people would use instead of the
// graph: the x, y and z of every selected marker and rigid body as one line each,
// in a shown widget of the graph's size holding nothing else (no axes, no margins),
// configured as each widget's documentation advises for large data.
#include "host/tavview/trackselection.h"
#include "tav/tavframes.h"

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

#include <memory>

class PeerPlot {
public:
    virtual ~PeerPlot() = default;
    virtual QString name() const = 0;
    // Shows the widget at PaintWidth x PaintHeight; false when it could not be shown.
    virtual bool show() = 0;
    // Axis ranges: x from left to right, y from top() (the smaller) to bottom().
    virtual void setRange(const QRectF& data) = 0;
    // A full synchronous repaint of the widget, as after new data or a new range.
    virtual void paint() = 0;
    virtual QImage picture() = 0;
    // Whether a gap (a sample with cond <= 0) breaks the line.
    virtual bool showsGaps() const = 0;
};

// Adaptive sampling on, no antialiasing, fast polylines; gaps as NaN values.
std::unique_ptr<PeerPlot> makeCustomPlot(const TAV::Frames& tracks, const TrackSelection& selection);
// Clipped and filtered curves over raw arrays (no copies), no antialiasing, fixed
// scales. It has no way to break a line, so missing samples are left out.
std::unique_ptr<PeerPlot> makeQwtPlot(const TAV::Frames& tracks, const TrackSelection& selection);

// Calls f(samples, axis) for each axis of every shown track in id order, marker
// before rigid body; samples is the track's QVector of markers or of rigid bodies.
template <class F>
void forEachCurve(const TAV::Frames& tracks, const TrackSelection& selection, F f)
{
    for (const TAV::Frame& t : tracks) {
        for (int axis = 0; axis < 3 && selection.markers.contains(int(t.id)) && !t.markers.isEmpty(); ++axis)
            f(t.markers, axis);
        for (int axis = 0; axis < 3 && selection.rigids.contains(int(t.id)) && !t.rigids.isEmpty(); ++axis)
            f(t.rigids, axis);
    }
}

// The colour of an axis in the peers' pictures: light, to show on the dark ground.
inline QColor axisColour(int axis)
{
    const QColor colours[3] = {QColor(255, 96, 96), QColor(96, 255, 96), QColor(96, 160, 255)};
    return colours[axis];
}
