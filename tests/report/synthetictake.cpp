#include "synthetictake.h"

static float condOf(char letter)
{
    switch (letter) {
    case 'G':
        return 1.5f;
    case 'F':
        return 0.8f;
    case 'P':
        return 0.3f;
    default:
        return 0.0f;
    }
}

TAV::Markers letterTrack(const std::string& conds)
{
    TAV::Markers track;
    for (size_t i = 0; i < conds.size(); ++i)
        track.append(TAV::Marker{0, 0, int64_t(i), 1.0f, 2.0f, 3.0f, condOf(conds[i])});
    return track;
}

TAV::Frames letterTake(const std::vector<LetterMarker>& markers, double rate)
{
    TAV::Frames take;
    const size_t frames = markers.empty() ? 0 : markers.front().conds.size();
    for (size_t n = 0; n < frames; ++n) {
        TAV::Frame f;
        f.id = uint32_t(n);
        f.time = int64_t(n);
        for (size_t k = 0; k < markers.size(); ++k)
            f.markers.append(TAV::Marker{uint32_t(k), 0, int64_t(n), 0, 0, 0, condOf(markers[k].conds[n])});
        take.append(f);
    }
    for (size_t k = 0; k < markers.size(); ++k)
        take.markerInfo.emplace_back(uint32_t(k), 0, markers[k].name, markers[k].options);
    take.setProperty<double>("frequency", rate);
    return take;
}
