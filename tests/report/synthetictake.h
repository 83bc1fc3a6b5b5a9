#pragma once
// Small dense takes written as letters: G good, F fair, P poor, M missing.
#include "tav/tavframes.h"

#include <string>
#include <vector>

TAV::Markers letterTrack(const std::string& conds);

struct LetterMarker {
    std::string name;
    std::string conds; // one letter per frame, all of the same length
    std::string options = "kind=marker";
};

TAV::Frames letterTake(const std::vector<LetterMarker>& markers, double rate);
