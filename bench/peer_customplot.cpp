#include "bench/graphview.h"
#include "bench/peers.h"

#include "math/vector.h"

#include <QTest>
#include <qcustomplot.h>

#include <limits>

namespace {

class CustomPlotPeer : public PeerPlot {
public:
    CustomPlotPeer(const TAV::Frames& tracks, const TrackSelection& selection)
    {
        plot.resize(PaintWidth, PaintHeight);
        plot.setBackground(QColor(38, 38, 38));
        // Its advice for many points: no antialiasing, thin pens, fast polylines,
        // adaptive sampling (on by default, set anyway), data handed over sorted.
        plot.setNotAntialiasedElements(QCP::aeAll);
        plot.setPlottingHints(QCP::phFastPolylines | QCP::phCacheLabels);
        plot.axisRect()->setAutoMargins(QCP::msNone);
        plot.axisRect()->setMargins(QMargins());
        plot.plotLayout()->setMargins(QMargins());
        plot.xAxis->setVisible(false);
        plot.yAxis->setVisible(false);

        const double gap = std::numeric_limits<double>::quiet_NaN();
        forEachCurve(tracks, selection, [&](const auto& samples, int axis) {
            QVector<QCPGraphData> data(samples.size());
            for (int i = 0; i < samples.size(); ++i) {
                const auto& s = samples.at(i);
                // A NaN value is how it breaks a line.
                data[i] = QCPGraphData(double(s.time), s.cond > 0 ? double(Vector(s)[axis]) : gap);
            }
            QCPGraph* g = plot.addGraph();
            g->setPen(QPen(axisColour(axis), 1));
            g->setLineStyle(QCPGraph::lsLine);
            g->setAdaptiveSampling(true);
            g->data()->set(data, true);
        });
    }

    QString name() const override { return QStringLiteral("qcustomplot"); }

    bool show() override
    {
        plot.show();
        return QTest::qWaitForWindowExposed(&plot) && plot.width() == PaintWidth && plot.height() == PaintHeight;
    }

    void setRange(const QRectF& data) override
    {
        plot.xAxis->setRange(data.left(), data.right());
        plot.yAxis->setRange(data.top(), data.bottom());
    }

    void paint() override { plot.replot(QCustomPlot::rpImmediateRefresh); }

    QImage picture() override { return plot.grab().toImage(); }

    bool showsGaps() const override { return true; }

private:
    QCustomPlot plot;
};

} // namespace

std::unique_ptr<PeerPlot> makeCustomPlot(const TAV::Frames& tracks, const TrackSelection& selection)
{
    return std::make_unique<CustomPlotPeer>(tracks, selection);
}
