#pragma once
// What a fill is likely to be off by: gaps of the same length are cut into valid
// stretches of the same marker near the real gap, filled by the same method, and
// compared with the samples they hid.
#include "host/edit/gapfill.h"

struct FillError {
    int trials = 0;  // stretches that could be filled and compared
    double rms = 0;  // over every compared sample, in the take's units
    double max = 0;
    bool known() const { return trials > 0; }
};

// Stretches tried per estimate, and how far from the gap they may lie (in gap lengths,
// plus a fixed margin).
constexpr int FillErrorTrials = 6;
constexpr int FillErrorReach = 20;
constexpr int FillErrorMargin = 200;

FillError estimateFillError(const TAV::Frames& take, const Gap& gap, FillMethod method,
                            const std::vector<uint32_t>& donors);

// Error of filled positions against the truth, sample by sample.
void addErrors(const std::vector<Eigen::Vector3d>& filled, const std::vector<Eigen::Vector3d>& truth, double& sumSq,
               double& max, int& count);
