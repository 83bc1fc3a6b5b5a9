#include "host/tavview/axisstrip.h"

#include "GL/glw.h"
#include "host/tavview/hover.h"

#include <QPainter>

#include <cmath>

namespace {
const int tickLength = 5;
const QColor stripBackground(38, 38, 38);
const QColor ink(200, 200, 200);
// As the band over the graph.
const QColor selectionColour(140, 190, 255, 110);
} // namespace

AxisStrip::AxisStrip(Qt::Orientation o, GLW* v, QWidget* parent) : QWidget(parent), orientation(o), view(v)
{
    const QFontMetrics fm(font());
    if (orientation == Qt::Horizontal)
        setFixedHeight(fm.height() + tickLength + 6);
    else
        setFixedWidth(fm.horizontalAdvance(QStringLiteral("-000000.0")) + tickLength + 6);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, stripBackground);
    setPalette(p);
}

void AxisStrip::SetTimeScale(const TimeScale& s)
{
    scale = s;
    QWidget::update();
}

void AxisStrip::SetTitle(const QString& t)
{
    axisTitle = t;
    QWidget::update();
}

void AxisStrip::SetSelection(qint64 first, qint64 last)
{
    selectedFirst = first;
    selectedLast = last;
    QWidget::update();
}

QVector<Tick> AxisStrip::Ticks() const
{
    if (!view || view->width() < 2 || view->height() < 2)
        return {};
    const int w = int(view->width()), h = int(view->height());
    const PixelMap m = pixelMap(view->viewport, w, h);
    const Vector low = view->viewport.Cursor(-0.5f, -0.5f, w, h), high = view->viewport.Cursor(w - 0.5f, h - 0.5f, w, h);
    const QFontMetrics fm(font());
    if (orientation == Qt::Horizontal) {
        const QString widest = scale.labels == TimeLabels::Timecode ? QStringLiteral("00:00:00:00")
                                                                    : QStringLiteral("-000000");
        return timeTicks(low.x, high.x, m.sx, fm.horizontalAdvance(widest) + 2 * fm.height(), scale);
    }
    return valueTicks(low.y, high.y, m.sy, 2.5 * fm.height());
}

void AxisStrip::paintEvent(QPaintEvent*)
{
    if (!view)
        return;
    QPainter p(this);
    p.setPen(ink);
    const QFontMetrics fm(font());
    // The title sits in a corner; labels that would run into it are left out.
    const QRect box = fm.boundingRect(axisTitle).adjusted(-3, -1, 3, 1);
    const QRect titleAt =
        axisTitle.isEmpty() ? QRect()
        : orientation == Qt::Horizontal
            ? QRect(width() - box.width(), height() - box.height(), box.width(), box.height())
            : QRect(0, 0, box.width(), box.height());
    const PixelMap m = pixelMap(view->viewport, int(view->width()), int(view->height()));
    const int h = int(view->height());
    if (orientation == Qt::Horizontal && selectedLast >= selectedFirst) {
        const double x0 = m.toPixel(selectedFirst - 0.5, 0).x(), x1 = m.toPixel(selectedLast + 0.5, 0).x();
        p.fillRect(QRectF(x0, 0, std::max(x1 - x0, 1.0), height()), selectionColour);
    }
    for (const Tick& t : Ticks()) {
        if (orientation == Qt::Horizontal) {
            const int x = int(std::lround(m.toPixel(t.pos, 0).x()));
            p.drawLine(x, 0, x, tickLength);
            const int tw = fm.horizontalAdvance(t.text);
            const int left = qBound(0, x - tw / 2, width() - tw);
            if (!titleAt.intersects(QRect(left, tickLength, tw, fm.height() + 1)))
                p.drawText(left, tickLength + fm.ascent() + 1, t.text);
        } else {
            const int y = h - 1 - int(std::lround(m.toPixel(0, t.pos).y()));
            p.drawLine(width() - tickLength, y, width(), y);
            const int tw = fm.horizontalAdvance(t.text);
            const int baseline = qBound(fm.ascent(), y + fm.ascent() / 2, height() - fm.descent());
            if (!titleAt.intersects(QRect(width() - tickLength - 3 - tw, baseline - fm.ascent(), tw, fm.height())))
                p.drawText(width() - tickLength - 3 - tw, baseline, t.text);
        }
    }
    if (axisTitle.isEmpty())
        return;
    p.setPen(ink.lighter(130));
    p.drawText(titleAt, Qt::AlignCenter, axisTitle);
}
