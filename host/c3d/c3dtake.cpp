#include "host/c3d/c3dtake.h"

#include "modules/core/frametimes.h"
#include "host/c3d/c3dlabels.h"

#include <QFileInfo>
#include <QList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <limits>
#include <new>
#include <thread>

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
    take.setProperty<double>(TAV::StoreProperty::frequency, l.frameRate);
    take.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, frameTimes(l.frameCount, l.frameRate));
    take.setProperty<qint64>(TAV::StoreProperty::firstFrame, l.firstFrame);
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

// Frames [from, to) into frames, their residuals counted by rule. Until the whole
// take's residuals are known, each sample's residual steps wait in cond (-1 when
// missing).
bool readFrames(const File& file, TAV::Frame* frames, int64_t from, int64_t to, ResidualRule& rule, QString* error)
{
    const int points = file.layout().pointCount;
    return file.readPoints(
        from, to,
        [&](int64_t frame, const PointSample* samples) {
            TAV::Frame& f = frames[frame];
            f.id = uint32_t(frame);
            f.time = frame;
            f.markers.resize(points); // within the reserved storage, zeroed just before it is written
            TAV::Marker* m = f.markers.data();
            for (int i = 0; i < points; ++i) {
                const PointSample& s = samples[i];
                if (isMissing(s)) {
                    m[i] = TAV::Marker{uint32_t(i), 0, frame, 0.0f, 0.0f, 0.0f, -1.0f};
                } else {
                    const int steps = residualSteps(s);
                    rule.count(steps);
                    m[i] = TAV::Marker{uint32_t(i), 0, frame, s.x, s.y, s.z, float(steps)};
                }
            }
        },
        error);
}

// Condition and flags of a sample by its residual steps (one byte).
struct Grades {
    std::array<float, 256> condition;
    std::array<uint32_t, 256> flags;

    explicit Grades(const ResidualRule& rule)
    {
        for (int steps = 0; steps < 256; ++steps) {
            condition[size_t(steps)] = rule.condition(steps);
            flags[size_t(steps)] = rule.isFilled(steps) ? FilledFlag : 0;
        }
    }
};

void gradeFrames(TAV::Frame* frames, int64_t from, int64_t to, const Grades& grades)
{
    for (int64_t f = from; f < to; ++f) {
        TAV::Marker* m = frames[f].markers.data();
        for (int i = 0, n = frames[f].markers.size(); i < n; ++i) {
            if (m[i].cond < 0.0f) {
                m[i].cond = MissingCondition;
                continue;
            }
            const size_t steps = size_t(m[i].cond);
            m[i].flags |= grades.flags[steps];
            m[i].cond = grades.condition[steps];
        }
    }
}

// Runs work(from, to) over [0, n): on two threads in halves when the take is big
// enough to pay for the second, else at once. An exception on either thread comes
// out here.
template <class Work>
void inHalves(int64_t n, int64_t samples, const Work& work)
{
    if (samples < (int64_t(1) << 20) || n < 2 || std::thread::hardware_concurrency() < 2) {
        work(0, n, 0);
        return;
    }
    const int64_t middle = n / 2;
    std::exception_ptr failure;
    std::thread second([&] {
        try {
            work(middle, n, 1);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    try {
        work(0, middle, 0);
    } catch (...) {
        second.join();
        throw;
    }
    second.join();
    if (failure)
        std::rethrow_exception(failure);
}

bool readTake(const File& file, TAV::Frames& take, QString* error)
{
    const Layout& l = file.layout();
    take.resize(int(l.frameCount));
    TAV::Frame* frames = take.data();
    const int64_t samples = l.frameCount * l.pointCount;

    // Storage for every frame from this thread: what a second thread allocates comes
    // from its own malloc arena, which glibc gives back to the system when the take
    // is freed, so that each later load would fault all of it in again.
    for (int64_t f = 0; f < l.frameCount; ++f)
        frames[f].markers.reserve(l.pointCount);
    ResidualRule rules[2];
    bool read[2] = {true, true};
    QString problems[2];
    inHalves(l.frameCount, samples, [&](int64_t from, int64_t to, int half) {
        read[half] = readFrames(file, frames, from, to, rules[half], &problems[half]);
    });
    if (!read[0] || !read[1]) {
        if (error)
            *error = read[0] ? problems[1] : problems[0];
        take = TAV::Frames();
        return false;
    }
    rules[0].add(rules[1]);
    rules[0].settle();
    const Grades grades(rules[0]);
    inHalves(l.frameCount, samples, [&](int64_t from, int64_t to, int) { gradeFrames(frames, from, to, grades); });

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
