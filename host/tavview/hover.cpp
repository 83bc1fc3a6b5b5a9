#include "host/tavview/hover.h"

#include "modules/core/framex.h"
#include "modules/core/shown.h"

#include <cmath>

namespace {

template <class T>
void pickIn(const QVector<T>& samples, bool rigid, const IdMap<Vector>& offsets, const ShownTracks& shown,
            const PixelMap& map, QPointF mouse, double maxPixels, HoverHit& best)
{
    OffsetOf offset(offsets);
    // Only the samples near the mouse need a look.
    const T* begin = samples.constData();
    const T* end = begin + samples.size();
    if (map.sx > 0) {
        const auto pixel = [&](double x) { return map.toPixel(x, 0).x(); };
        pointStretch(begin, end, shown.offsetX, pixel, mouse.x() - maxPixels, mouse.x() + maxPixels);
    }
    for (const T* it = begin; it != end; ++it) {
        const T& s = *it;
        if (!pointShown(s, shown.enableFill))
            continue;
        const double x = pointX(s, shown.offsetX);
        const QPointF p0 = map.toPixel(x, 0);
        if (std::fabs(p0.x() - mouse.x()) > maxPixels)
            continue;
        const Vector v(s), o = offset(s.id);
        const float coord[3] = {v.x, v.y, v.z}, off[3] = {o.x, o.y, o.z};
        for (int axis = 0; axis < 3; ++axis) {
            if (!(shown.axisMask & (1 << axis)))
                continue;
            const QPointF p = map.toPixel(x, double(coord[axis] - off[axis]));
            const double d = std::hypot(p.x() - mouse.x(), p.y() - mouse.y());
            if (d <= maxPixels && (!best.found || d < best.distance))
                best = HoverHit{true, rigid, int(s.id), axis, s.time, coord[axis], d};
        }
    }
}

} // namespace

PixelMap pixelMap(const GL::Viewport& viewport, int w, int h)
{
    PixelMap m;
    const Vector o = viewport.Cursor(0, 0, w, h), one = viewport.Cursor(1, 1, w, h);
    m.x0 = o.x;
    m.y0 = o.y;
    m.sx = 1.0 / (double(one.x) - o.x);
    m.sy = 1.0 / (double(one.y) - o.y);
    return m;
}

HoverHit pickSample(const TAV::Frames& tracks, const ShownTracks& shown, const PixelMap& map, QPointF mouse,
                    double maxPixels)
{
    HoverHit best;
    for (const TAV::Frame& t : tracks) {
        if (shown.enableMarkers && trackShown(shown.markers, shown.markers, shown.rigids, t.id))
            pickIn(t.markers, false, shown.offsets.markers, shown, map, mouse, maxPixels, best);
        if (shown.enableRigids && trackShown(shown.rigids, shown.markers, shown.rigids, t.id))
            pickIn(t.rigids, true, shown.offsets.rigids, shown, map, mouse, maxPixels, best);
    }
    return best;
}

QString hoverText(const HoverHit& hit, const QString& name, const QString& units, const TimeScale& scale)
{
    const qint64 frame = scale.firstFrame + hit.index;
    QString when;
    if (scale.rate > 0)
        when = scale.labels == TimeLabels::Timecode
                   ? timecodeText(frame, scale.rate)
                   : QStringLiteral("%1 s").arg(double(hit.index) / scale.rate, 0, 'f', 3);
    return QStringLiteral("%1 (%2 %3)\n%4 = %5%6\nframe %7%8")
        .arg(name, hit.rigid ? QStringLiteral("rigid body") : QStringLiteral("marker"))
        .arg(hit.id)
        .arg(QLatin1Char("xyz"[hit.axis]))
        .arg(double(hit.value), 0, 'f', 2)
        .arg(units.isEmpty() ? QString() : QLatin1Char(' ') + units)
        .arg(frame)
        .arg(when.isEmpty() ? QString() : QStringLiteral(", ") + when);
}
