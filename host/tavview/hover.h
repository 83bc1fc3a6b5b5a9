#pragma once
// Which drawn sample is under the mouse. The graph draws a sample of a shown
// track at (frame index, coordinate less the track's offset) for each drawn axis;
// picking measures the same points in the view's pixels.
#include "GL/gl.h"
#include "modules/core/trackoffsets.h"
#include "host/tavview/axes.h"
#include "tav/tavframes.h"

#include <QList>
#include <QPointF>
#include <QString>

// Graph units to the view's pixels (y up), pixel centres as the GL window draws them.
struct PixelMap {
    double x0 = 0, y0 = 0; // graph point at the centre of pixel (0, 0)
    double sx = 1, sy = 1; // pixels per unit
    QPointF toPixel(double x, double y) const { return {(x - x0) * sx, (y - y0) * sy}; }
};
PixelMap pixelMap(const GL::Viewport& viewport, int w, int h);

// What the graph draws: its selection lists and switches.
struct ShownTracks {
    QList<int> markers, rigids; // both empty: every track
    bool enableMarkers = true, enableRigids = true, enableFill = true;
    int axisMask = 7;
    qint64 offsetX = 0; // the graph's frame range start
    TrackOffsets offsets;
};

struct HoverHit {
    bool found = false;
    bool rigid = false;
    int id = -1;
    int axis = 0; // 0 x, 1 y, 2 z
    qint64 index = 0;
    float value = 0; // the sample's own coordinate, without offset
    double distance = 0;
};

// The drawn sample nearest to mouse (view pixels, y up) no farther than maxPixels.
HoverHit pickSample(const TAV::Frames& tracks, const ShownTracks& shown, const PixelMap& map, QPointF mouse,
                    double maxPixels);

// The tooltip for a hit: the track's name and kind, the axis and value with its
// units, the take's frame number and its time (or timecode).
QString hoverText(const HoverHit& hit, const QString& name, const QString& units, const TimeScale& scale);
