#pragma once
// Small dense takes written as letters: G good, F fair, P poor, M missing, L good
// but filled by a gap filler.
#include "tav/tavframes.h"

#include <string>
#include <vector>

inline float condOf(char letter)
{
    return letter == 'G' || letter == 'L' ? 1.5f : letter == 'F' ? 0.8f : letter == 'P' ? 0.3f : 0.0f;
}

inline uint32_t flagsOf(char letter) { return letter == 'L' ? 0x10 : 0; }

inline TAV::Markers letterTrack(const std::string& conds)
{
    TAV::Markers track;
    for (char c : conds)
        track.append(TAV::Marker{0, flagsOf(c), track.size(), 0, 0, 0, condOf(c)});
    return track;
}

struct LetterMarker {
    std::string name;
    std::string conds; // one letter per frame, all of the same length
    std::string options = "kind=marker";
};

inline TAV::Frames letterTake(const std::vector<LetterMarker>& markers, double rate)
{
    TAV::Frames take;
    for (size_t n = 0; !markers.empty() && n < markers.front().conds.size(); ++n) {
        TAV::Frame f;
        f.time = int64_t(n);
        for (size_t k = 0; k < markers.size(); ++k)
            f.markers.append(TAV::Marker{uint32_t(k), flagsOf(markers[k].conds[n]), int64_t(n), 0, 0, 0,
                                         condOf(markers[k].conds[n])});
        take.append(f);
    }
    for (size_t k = 0; k < markers.size(); ++k)
        take.markerInfo.emplace_back(uint32_t(k), 0, markers[k].name, markers[k].options);
    take.setProperty<double>("frequency", rate);
    return take;
}
