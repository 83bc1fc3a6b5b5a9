#include "host/tavview/areas.h"

#include "host/edit/spikes.h"
#include "host/tavview/trackselection.h"
#include "modules/core/sampleflags.h"
#include "modules/core/trackruns.h"

#include <QStringList>

#include <algorithm>

Regions areasOfInterest(const Regions& runs, int jumpMask)
{
    Regions areas;
    std::copy_if(runs.begin(), runs.end(), std::back_inserter(areas),
                 [jumpMask](const Pair& p) { return (p.type & jumpMask) != 0; });
    return areas;
}

Regions spikeAreas(const TAV::Frames& take, const QList<int>& markers, double threshold)
{
    Regions spikes;
    for (int id : markers)
        for (const FrameSpan& s : spikeSpans(spikeFrames(take, uint32_t(id), threshold)))
            spikes.push_back(Pair(s.first, s.last, SpikeRun));
    return spikes;
}

namespace {

// Stretches of consecutive samples that carry the filled flag, by position in the track.
template <class Samples>
void addFilled(QVector<TrackArea>& out, const QString& track, const Samples& samples)
{
    int start = -1;
    for (int i = 0; i <= samples.size(); ++i) {
        const bool filled = i < samples.size() && isFilled(samples[i]);
        if (filled && start < 0)
            start = i;
        if (!filled && start >= 0) {
            out.append({track, FilledRun, start, i - 1});
            start = -1;
        }
    }
}

} // namespace

QVector<TrackArea> trackAreas(const Take& take, const TAV::Frames& tracks, const QList<int>& markers,
                              const QList<int>& rigids, int jumpMask)
{
    QVector<TrackArea> out;
    const RegionsSet runs = trackRuns(tracks, markers, rigids);
    for (const TAV::Frame& track : tracks) {
        const int id = int(track.id);
        for (const bool rigid : {false, true}) {
            if (!(rigid ? rigids : markers).contains(id))
                continue;
            const QString name = rigid ? rigidLabel(take, id) : markerLabel(take, id);
            const auto own = runs.find(id | (rigid ? RigidTrackKey : MarkerTrackKey));
            if (own != runs.end())
                for (const Pair& r : own->second)
                    if (r.type & jumpMask)
                        out.append({name, r.type, r.begin(), r.end()});
            if (rigid)
                addFilled(out, name, track.rigids);
            else
                addFilled(out, name, track.markers);
        }
    }
    return out;
}

Regions filledStretches(const TAV::Frames& tracks)
{
    std::vector<int> filled;
    const auto mark = [&filled](const auto& samples) {
        if (filled.size() < size_t(samples.size()))
            filled.resize(size_t(samples.size()), 0);
        for (int i = 0; i < samples.size(); ++i)
            filled[size_t(i)] |= isFilled(samples[i]);
    };
    for (const TAV::Frame& track : tracks) {
        mark(track.markers);
        mark(track.rigids);
    }
    Regions out;
    for (size_t i = 0; i < filled.size(); ++i) {
        if (!filled[i])
            continue;
        if (!out.empty() && out.back().end() == int(i) - 1)
            out.back().second = int(i);
        else
            out.push_back(Pair(int(i), int(i), FilledRun));
    }
    return out;
}

QString runTypeName(int type)
{
    if (type == SpikeRun)
        return QStringLiteral("spike");
    if (type == FilledRun)
        return QStringLiteral("filled");
    QStringList parts;
    if (type & RegionMissing)
        parts << QStringLiteral("gap");
    if (type & RegionPoor)
        parts << QStringLiteral("poor");
    if (type & RegionFair)
        parts << QStringLiteral("fair");
    if (type & RegionMixed)
        parts << QStringLiteral("mixed");
    if (parts.isEmpty())
        parts << (type & RegionGood ? QStringLiteral("good") : QStringLiteral("none"));
    return parts.join(QStringLiteral(", "));
}
