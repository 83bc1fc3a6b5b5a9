#include "bench/gappictures.h"

#include "bench/graphview.h"
#include "bench/peers.h"
#include "bench/synthtake.h"

#include <QDir>
#include <QGuiApplication>
#include <QTest>

#include <algorithm>

namespace {

const int minGap = 30, context = 100;

struct Gap {
    int first = -1, last = -1; // frames of the missing stretch
};

Gap firstGap(const QVector<TAV::Marker>& samples)
{
    Gap g;
    for (int i = 0; i < samples.size(); ++i) {
        if (samples.at(i).cond > 0) {
            if (g.first >= 0 && i - g.first >= minGap) {
                g.last = i - 1;
                return g;
            }
            g.first = -1;
        } else if (g.first < 0) {
            g.first = i;
        }
    }
    return Gap();
}

// The frames around the gap and the heights of the valid samples there.
QRectF around(const QVector<TAV::Marker>& samples, const Gap& gap)
{
    const int from = std::max(0, gap.first - context), to = std::min(samples.size() - 1, gap.last + context);
    float lo = 1e30f, hi = -1e30f;
    for (int i = from; i <= to; ++i) {
        const TAV::Marker& m = samples.at(i);
        if (m.cond > 0) {
            lo = std::min({lo, m.x, m.y, m.z});
            hi = std::max({hi, m.x, m.y, m.z});
        }
    }
    const double pad = (hi - lo) * 0.1 + 1;
    return QRectF(from, lo - pad, to - from, hi - lo + 2 * pad);
}

} // namespace

bool saveGapPictures(const QString& dir)
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return false;
    TakeShape shape;
    shape.frames = 20000;
    TAV::Frames all;
    synthTracks(shape, all);
    TAV::Frames one;
    Gap gap;
    for (const TAV::Frame& t : all) {
        gap = firstGap(t.markers);
        if (gap.first >= 0) {
            TAV::Frame marker = t;
            marker.rigids.clear();
            one.append(marker);
            break;
        }
    }
    if (one.isEmpty())
        return false;
    TrackSelection selection;
    selection.markers.append(int(one.constFirst().id));
    const QRectF data = around(one.constFirst().markers, gap);

    GraphView g(true);
    g.load(one, shape.frames, selection);
    g.window()->show();
    if (!QTest::qWaitForWindowExposed(g.window()))
        return false;
    g.setUp(PaintCase{true, PaintStyle::Lines, false});
    g.showData(data);
    g.grab().save(QDir(dir).filePath("tavgraph-gap.png"));

    for (auto make : {makeCustomPlot, makeQwtPlot}) {
        std::unique_ptr<PeerPlot> peer = make(one, selection);
        if (!peer->show())
            return false;
        peer->setRange(data);
        peer->paint();
        peer->picture().save(QDir(dir).filePath(peer->name() + "-gap.png"));
    }
    return true;
}
