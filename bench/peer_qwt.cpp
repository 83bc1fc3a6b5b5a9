#include "bench/graphview.h"
#include "bench/peers.h"

#include "math/vector.h"

#include <QTest>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_layout.h>

#include <deque>
#include <vector>

namespace {

class QwtPeer : public PeerPlot {
public:
    QwtPeer(const TAV::Frames& tracks, const TrackSelection& selection) : plot(new QwtPlot)
    {
        plot->resize(PaintWidth, PaintHeight);
        plot->setAutoReplot(false);
        auto* canvas = new QwtPlotCanvas;
        canvas->setFrameStyle(QFrame::NoFrame);
        canvas->setBorderRadius(0);
        canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, true);
        // replot() paints at once instead of posting an update.
        canvas->setPaintAttribute(QwtPlotCanvas::ImmediatePaint, true);
        plot->setCanvas(canvas);
        plot->setCanvasBackground(QColor(38, 38, 38));
        plot->setContentsMargins(0, 0, 0, 0);
        plot->plotLayout()->setCanvasMargin(0);
        plot->plotLayout()->setAlignCanvasToScales(true);
        for (int axis = 0; axis < QwtPlot::axisCnt; ++axis)
            plot->enableAxis(axis, false);

        // The samples of a track without its missing ones, x shared by its three axes.
        const void* lastTrack = nullptr;
        forEachCurve(tracks, selection, [&](const auto& samples, int axis) {
            if (lastTrack != &samples) {
                lastTrack = &samples;
                xs.emplace_back();
                xs.back().reserve(size_t(samples.size()));
                for (const auto& s : samples)
                    if (s.cond > 0)
                        xs.back().push_back(double(s.time));
            }
            ys.emplace_back();
            std::vector<double>& y = ys.back();
            y.reserve(xs.back().size());
            for (const auto& s : samples)
                if (s.cond > 0)
                    y.push_back(double(Vector(s)[axis]));

            auto* curve = new QwtPlotCurve;
            curve->setStyle(QwtPlotCurve::Lines);
            curve->setPen(axisColour(axis), 0);
            // Its advice for many points: clip, filter, no antialiasing, raw arrays,
            // and no bounding rectangles for autoscaling when the scales are fixed.
            curve->setPaintAttribute(QwtPlotCurve::ClipPolygons, true);
            curve->setPaintAttribute(QwtPlotCurve::FilterPoints, true);
            curve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
            curve->setItemAttribute(QwtPlotItem::AutoScale, false);
            curve->setRawSamples(xs.back().data(), y.data(), int(y.size()));
            curve->attach(plot.get());
        });
    }

    QString name() const override { return QStringLiteral("qwt"); }

    bool show() override
    {
        plot->show();
        const QWidget* canvas = plot->canvas();
        return QTest::qWaitForWindowExposed(plot.get()) && canvas->width() == PaintWidth &&
               canvas->height() == PaintHeight;
    }

    void setRange(const QRectF& data) override
    {
        plot->setAxisScale(QwtPlot::xBottom, data.left(), data.right());
        plot->setAxisScale(QwtPlot::yLeft, data.top(), data.bottom());
    }

    void paint() override { plot->replot(); }

    QImage picture() override { return plot->grab().toImage(); }

    bool showsGaps() const override { return false; }

private:
    // Raw arrays the curves point into: declared first so they outlive the plot.
    std::deque<std::vector<double>> xs, ys;
    std::unique_ptr<QwtPlot> plot;
};

} // namespace

std::unique_ptr<PeerPlot> makeQwtPlot(const TAV::Frames& tracks, const TrackSelection& selection)
{
    return std::make_unique<QwtPeer>(tracks, selection);
}
