#include "host/report/takequality.h"

#include "modules/core/sampleflags.h"
#include "utils/regions.h"

#include <algorithm>

MarkerQuality markerQuality(const TAV::Markers& track, const std::string& name)
{
    MarkerQuality q;
    q.name = name;
    q.frames = track.size();
    int missing = 0;
    for (const Pair& run : Regions(track)) {
        // A one-sample track yields a run one frame longer than the track.
        const int size = std::max(0, std::min(run.second, q.frames - 1) - run.first + 1);
        if (run.type == RegionMissing) {
            ++q.gaps;
            q.longestGap = std::max(q.longestGap, size);
            missing += size;
        } else if (run.type == RegionPoor) {
            q.poor += size;
        }
    }
    q.valid = q.frames - missing;
    q.filled = int(std::count_if(track.begin(), track.end(),
                                 [](const TAV::Marker& m) { return m.cond > 0 && isFilled(m); }));
    return q;
}

MarkerQuality TakeQuality::total() const
{
    MarkerQuality t;
    t.name = name;
    for (const MarkerQuality& m : markers) {
        t.frames += m.frames;
        t.valid += m.valid;
        t.poor += m.poor;
        t.filled += m.filled;
        if (m.neverValid())
            continue;
        t.gaps += m.gaps;
        t.longestGap = std::max(t.longestGap, m.longestGap);
    }
    return t;
}

int TakeQuality::neverValid() const
{
    return int(std::count_if(markers.begin(), markers.end(), [](const MarkerQuality& m) { return m.neverValid(); }));
}

namespace {

bool isMarker(const std::string& options)
{
    size_t at = 0;
    while (at <= options.size()) {
        const size_t end = std::min(options.find(';', at), options.size());
        const std::string item = options.substr(at, end - at);
        if (item.compare(0, 5, "kind=") == 0)
            return item.substr(5) == "marker";
        at = end + 1;
    }
    return true;
}

} // namespace

TakeQuality takeQuality(const TAV::Frames& take, const std::string& name, bool allPoints)
{
    TakeQuality q;
    q.name = name;
    q.frames = take.size();
    q.rate = take.property<double>(TAV::StoreProperty::frequency);

    std::vector<std::pair<uint32_t, std::string>> points;
    if (!take.markerInfo.empty()) {
        for (const TAV::MarkerInfo& info : take.markerInfo)
            if (allPoints || isMarker(info.options))
                points.emplace_back(info.id, info.name);
    } else if (!take.isEmpty()) {
        for (const TAV::Marker& m : take.constFirst().markers)
            points.emplace_back(m.id, std::to_string(m.id));
    }
    for (const auto& p : points) {
        TAV::Frame track;
        take.GetTrack(track, p.first, TAV::MaskMarkers);
        q.markers.push_back(markerQuality(track.markers, p.second));
    }
    return q;
}
