#include "host/c3d/c3dtake.h"

#include "modules/core/frametimes.h"
#include "host/c3d/c3dlabels.h"

#include <QFileInfo>
#include <QList>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>

namespace C3D {

namespace {

// The median of a histogram of non-negative values, from index first on; 0 when empty.
int histogramMedian(const std::array<int64_t, 256>& histogram, size_t first)
{
    int64_t total = 0;
    for (size_t s = first; s < histogram.size(); ++s)
        total += histogram[s];
    int64_t seen = 0;
    for (size_t s = first; s < histogram.size() && total > 0; ++s) {
        seen += histogram[s];
        if (2 * seen >= total)
            return int(s);
    }
    return 0;
}

} // namespace

void ResidualRule::settle()
{
    median = histogramMedian(histogram, 1);
    std::array<int64_t, 256> deviations{};
    for (size_t s = 1; s < histogram.size(); ++s)
        deviations[size_t(std::abs(int(s) - median))] += histogram[s];
    const int mad = histogramMedian(deviations, 0);
    // Three robust standard deviations above the median: residuals of a clean
    // marker spread well past twice the median, and only outliers should stand out.
    goodBelow = std::max(2.0f * float(median), float(median) + 3.0f * 1.4826f * float(mad));
}

float ResidualRule::condition(int steps) const
{
    if (!gradesResiduals())
        return UngradedCondition;
    if (steps == 0)
        return FilledCondition;
    return goodBelow / float(steps);
}

namespace {

void setTakeProperties(const File& file, TAV::Frames& take)
{
    const Layout& l = file.layout();
    take.setProperty<double>("frequency", l.frameRate);
    take.setProperty<QList<qint64>>("timeLut", frameTimes(l.frameCount, l.frameRate));
    take.setProperty<qint64>("firstFrame", l.firstFrame);
    const std::vector<std::string> units = file.parameters().strings("POINT", "UNITS");
    take.setProperty<QString>("units", units.empty() ? QString() : QString::fromStdString(units.front()));
}

void setMarkerInfo(const File& file, TAV::Frames& take)
{
    const std::vector<PointDescription> points = describePoints(file.parameters(), file.layout().pointCount);
    take.markerInfo.reserve(points.size());
    for (size_t i = 0; i < points.size(); ++i)
        take.markerInfo.emplace_back(uint32_t(i), 0, points[i].name, pointOptions(points[i]));
}

bool readTake(const File& file, TAV::Frames& take, QString* error)
{
    const Layout& l = file.layout();
    const int points = l.pointCount;
    take.resize(int(l.frameCount));

    // First pass: positions, and the residual steps parked in cond (-1 when missing)
    // until the whole take's residuals are known.
    ResidualRule rule;
    const bool read = file.readPoints(
        [&](int64_t frame, const PointSample* samples) {
            TAV::Frame& f = take[int(frame)];
            f.id = uint32_t(frame);
            f.time = frame;
            f.markers.resize(points);
            TAV::Marker* m = f.markers.data();
            for (int i = 0; i < points; ++i) {
                const PointSample& s = samples[i];
                m[i].id = uint32_t(i);
                m[i].flags = 0;
                m[i].time = frame;
                if (isMissing(s)) {
                    m[i].x = m[i].y = m[i].z = 0.0f;
                    m[i].cond = -1.0f;
                } else {
                    m[i].x = s.x;
                    m[i].y = s.y;
                    m[i].z = s.z;
                    m[i].cond = float(residualSteps(s));
                    rule.count(residualSteps(s));
                }
            }
        },
        error);
    if (!read) {
        take = TAV::Frames();
        return false;
    }

    // Second pass: grade the parked residuals.
    rule.settle();
    for (TAV::Frame& f : take) {
        TAV::Marker* m = f.markers.data();
        for (int i = 0; i < points; ++i) {
            if (m[i].cond < 0.0f) {
                m[i].cond = MissingCondition;
                continue;
            }
            const int steps = int(m[i].cond);
            if (rule.isFilled(steps))
                m[i].flags |= FilledFlag;
            m[i].cond = rule.condition(steps);
        }
    }

    setTakeProperties(file, take);
    setMarkerInfo(file, take);
    return true;
}

} // namespace

bool loadTake(const File& file, TAV::Frames& take, QString* error)
{
    take = TAV::Frames();
    const Layout& l = file.layout();
    // The store is one QVector, which holds at most 2 GiB and throws beyond.
    const int64_t maxFrames = (std::numeric_limits<int>::max() - 64) / int64_t(sizeof(TAV::Frame));
    if (l.frameCount > maxFrames) {
        if (error)
            *error = QFileInfo(file.path()).fileName() +
                     QString(": has %1 frames, more than one take holds (%2)").arg(l.frameCount).arg(maxFrames);
        return false;
    }
    // A file the size of the memory, or larger, is valid too: say so, do not abort.
    try {
        return readTake(file, take, error);
    } catch (const std::bad_alloc&) {
        take = TAV::Frames();
        if (error)
            *error = QFileInfo(file.path()).fileName() +
                     QString(": not enough memory for %1 frames of %2 points").arg(l.frameCount).arg(l.pointCount);
        return false;
    }
}

bool loadTake(const QString& path, TAV::Frames& take, QString* error)
{
    File file;
    if (!file.open(path, error)) {
        take = TAV::Frames();
        return false;
    }
    return loadTake(file, take, error);
}

} // namespace C3D
