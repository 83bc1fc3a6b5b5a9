#include "host/tavview/axes.h"
#include "utils/saturate.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// Keeps a broken range (a view zoomed out to nothing) from making millions of ticks.
const double maxTicks = 1000;
// Rounding slack, so a value that is a multiple up to float noise still counts.
const double slack = 1e-9;

bool usable(double lo, double hi, double pixelsPerUnit)
{
    return std::isfinite(lo) && std::isfinite(hi) && lo <= hi && std::isfinite(pixelsPerUnit) && pixelsPerUnit > 0;
}

// The divisors of n below n, ascending; in pairs up to the square root, as rates
// from a file can be in the billions.
QVector<qint64> divisorsOf(qint64 n)
{
    QVector<qint64> low, high;
    for (qint64 i = 1; i * i <= n; ++i)
        if (n % i == 0) {
            low.append(i);
            if (i != n / i && i != 1)
                high.prepend(n / i);
        }
    return low + high;
}

} // namespace

double niceStep(double minStep)
{
    if (!std::isfinite(minStep) || minStep <= 0)
        return 1;
    const double p = std::pow(10.0, std::floor(std::log10(minStep)));
    for (double m : {1.0, 2.0, 5.0, 10.0})
        if (m * p >= minStep * (1 - slack))
            return m * p;
    return 10 * p;
}

QVector<double> multiplesIn(double lo, double hi, double step)
{
    QVector<double> v;
    if (!(step > 0) || !std::isfinite(lo) || !std::isfinite(hi) || (hi - lo) / step > maxTicks)
        return v;
    const double k0 = std::ceil(lo / step - slack), k1 = std::floor(hi / step + slack);
    for (double k = k0; k <= k1; ++k)
        v.append(k * step);
    return v;
}

QString valueText(double v, double step)
{
    const int decimals = step >= 1 || !(step > 0) ? 0 : int(std::ceil(-std::log10(step) - slack));
    if (std::fabs(v) < 0.5 * std::pow(10.0, -decimals))
        v = 0; // no "-0" from a tick just below zero
    return QString::number(v, 'f', decimals);
}

qint64 timecodeFps(double rate)
{
    return rate >= 1 ? saturate_cast<qint64>(std::min(std::round(rate), double(maxTimecodeFps))) : 1;
}

QString timecodeText(qint64 frame, double rate)
{
    const qint64 fps = timecodeFps(rate);
    const quint64 f = frame < 0 ? 0 - quint64(frame) : quint64(frame);
    const quint64 seconds = f / quint64(fps);
    const int frameDigits = qMax(2, int(QString::number(fps - 1).size()));
    return QStringLiteral("%1%2:%3:%4:%5")
        .arg(frame < 0 ? QStringLiteral("-") : QString())
        .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'))
        .arg(f % quint64(fps), frameDigits, 10, QLatin1Char('0'));
}

qint64 timecodeStep(double minFrames, qint64 fps)
{
    if (fps < 1)
        fps = 1;
    if (!(minFrames > 1))
        return 1;
    // Divisors of the rate put a tick on every whole second.
    for (qint64 d : divisorsOf(fps))
        if (double(d) >= minFrames)
            return d;
    for (qint64 s : {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600})
        if (double(s * fps) >= minFrames)
            return s * fps;
    return saturate_cast<qint64>(std::round(niceStep(minFrames / (3600.0 * double(fps)))) * 3600.0 * double(fps));
}

QVector<Tick> timeTicks(double left, double right, double pixelsPerFrame, double minPixels, const TimeScale& scale)
{
    QVector<Tick> ticks;
    if (!usable(left, right, pixelsPerFrame))
        return ticks;
    const double minFrames = minPixels / pixelsPerFrame;
    const double first = double(scale.firstFrame);
    TimeLabels labels = scale.labels;
    if (scale.rate <= 0)
        labels = TimeLabels::Frames;

    switch (labels) {
    case TimeLabels::Seconds: {
        const double step = niceStep(minFrames / scale.rate);
        for (double s : multiplesIn(left / scale.rate, right / scale.rate, step))
            ticks.append({s * scale.rate, valueText(s, step)});
        break;
    }
    case TimeLabels::Timecode: {
        const double step = double(timecodeStep(minFrames, timecodeFps(scale.rate)));
        for (double f : multiplesIn(left + first, right + first, step))
            ticks.append({f - first, timecodeText(qint64(std::llround(f)), scale.rate)});
        break;
    }
    case TimeLabels::Frames: {
        const double step = qMax(1.0, niceStep(minFrames));
        for (double f : multiplesIn(left + first, right + first, step))
            ticks.append({f - first, QString::number(qint64(std::llround(f)))});
        break;
    }
    }
    return ticks;
}

QVector<Tick> valueTicks(double bottom, double top, double pixelsPerUnit, double minPixels)
{
    QVector<Tick> ticks;
    if (!usable(bottom, top, pixelsPerUnit))
        return ticks;
    const double step = niceStep(minPixels / pixelsPerUnit);
    for (double v : multiplesIn(bottom, top, step))
        ticks.append({v, valueText(v, step)});
    return ticks;
}
