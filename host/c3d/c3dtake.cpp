#include "host/c3d/c3dtake.h"

#include "host/c3d/c3dlabels.h"

#include <QFileInfo>
#include <QList>

#include <cmath>
#include <limits>

namespace C3D {

void ResidualRule::settle()
{
    int64_t total = 0;
    for (size_t s = 1; s < histogram.size(); ++s)
        total += histogram[s];
    median = 0;
    int64_t seen = 0;
    for (size_t s = 1; s < histogram.size() && total > 0; ++s) {
        seen += histogram[s];
        if (2 * seen >= total) {
            median = int(s);
            break;
        }
    }
}

float ResidualRule::condition(int steps) const
{
    if (!gradesResiduals())
        return UngradedCondition;
    if (steps == 0)
        return FilledCondition;
    return 2.0f * float(median) / float(steps);
}

namespace {

void setTakeProperties(const File& file, TAV::Frames& take)
{
    const Layout& l = file.layout();
    take.setProperty<double>("frequency", l.frameRate);
    QList<qint64> lut;
    lut.reserve(int(l.frameCount));
    for (int64_t i = 0; i < l.frameCount; ++i)
        lut.append(std::llround(double(i) * 1e6 / l.frameRate));
    take.setProperty<QList<qint64>>("timeLut", lut);
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

} // namespace

bool loadTake(const File& file, TAV::Frames& take, QString* error)
{
    take = TAV::Frames();
    const Layout& l = file.layout();
    const int points = l.pointCount;
    if (l.frameCount > std::numeric_limits<int>::max()) {
        if (error)
            *error = QFileInfo(file.path()).fileName() + QString(": has too many frames for one take (%1)").arg(l.frameCount);
        return false;
    }
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
