#include "host/tavview/legend.h"

#include "host/tavview/filledmarks.h"

#include <QPainter>

namespace {

QColor rgbF(double r, double g, double b) { return QColor::fromRgbF(r, g, b); }

// Runs are shaded at half opacity over the graph's background (0.15 grey).
QColor shaded(const QColor& c)
{
    const double bg = 0.15;
    return rgbF(0.5 * c.redF() + 0.5 * bg, 0.5 * c.greenF() + 0.5 * bg, 0.5 * c.blueF() + 0.5 * bg);
}

const int swatch = 10;
const int gap = 6;

} // namespace

QVector<LegendEntry> axisLegend(bool rgb)
{
    if (rgb)
        return {{QStringLiteral("x"), rgbF(0.8, 0, 0)},
                {QStringLiteral("y"), rgbF(0, 0.8, 0)},
                {QStringLiteral("z"), rgbF(0, 0, 0.8)}};
    const QColor grey = rgbF(0.8, 0.8, 0.8);
    return {{QStringLiteral("x"), grey},
            {QStringLiteral("y"), grey},
            {QStringLiteral("z"), grey},
            {QStringLiteral("rigid points"), rgbF(1.0, 0.8, 0.2)}};
}

QVector<LegendEntry> runLegend()
{
    return {{QStringLiteral("good"), rgbF(0.345, 0.6, 0.85)},
            {QStringLiteral("missing"), rgbF(0.3, 0.3, 0.3)},
            {QStringLiteral("fair"), rgbF(0.8, 0.6, 0.3)},
            {QStringLiteral("poor"), rgbF(0.3, 0.8, 0.3)},
            {QStringLiteral("mixed"), rgbF(0.5, 0.5, 0.5)},
            {QStringLiteral("other mix"), rgbF(0.6, 0.4, 0.6)}};
}

Legend::Legend(QWidget* parent) : QWidget(parent)
{
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(38, 38, 38));
    setPalette(p);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void Legend::SetRgb(bool rgb)
{
    rgbAxes = rgb;
    QWidget::update();
}

void Legend::SetTracks(const QStringList& names)
{
    trackNames = names;
    QWidget::update();
}

QSize Legend::sizeHint() const { return QSize(600, fontMetrics().height() + 6); }

void Legend::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QFontMetrics fm = fontMetrics();
    const int mid = height() / 2;
    int x = gap;
    if (!trackNames.isEmpty()) {
        const QString names = trackNames.join(QStringLiteral(", "));
        p.setPen(QColor(235, 235, 235));
        p.drawText(x, mid + fm.ascent() / 2 - 1, names);
        x += fm.horizontalAdvance(names) + 4 * gap;
    }
    auto draw = [&](const LegendEntry& e, const QColor& fill) {
        p.fillRect(x, mid - swatch / 2, swatch, swatch, fill);
        x += swatch + 3;
        p.setPen(QColor(200, 200, 200));
        p.drawText(x, mid + fm.ascent() / 2 - 1, e.name);
        x += fm.horizontalAdvance(e.name) + 2 * gap;
    };
    for (const LegendEntry& e : axisLegend(rgbAxes))
        draw(e, e.colour);
    x += 2 * gap;
    for (const LegendEntry& e : runLegend())
        draw(e, shaded(e.colour));
    // The filled strip is drawn opaque, unlike the runs.
    const QColor filled = rgbF(filledMarkColour[0], filledMarkColour[1], filledMarkColour[2]);
    draw({QStringLiteral("filled"), filled}, filled);
}
