#pragma once
// Filling gaps of a marker: linear, cubic spline through the samples on both
// sides, pattern (follow a donor marker, blended to meet both edges) and rigid
// (follow three or more donors that move rigidly with the target).
#include "host/edit/samplechange.h"
#include "host/edit/trackreader.h"

#include <QString>

#include <Eigen/Core>

#include <cstdint>
#include <vector>

enum class FillMethod { Linear, Spline, Pattern, Rigid };

const std::vector<FillMethod>& allFillMethods();
QString fillMethodName(FillMethod method);
bool fillMethodFromName(const QString& name, FillMethod& method);

// A run of invalid samples with a valid sample just before and just after it.
struct Gap {
    uint32_t id = 0;
    int first = 0;
    int last = -1;
    int length() const { return last - first + 1; }
};

// The gaps of marker id that overlap span, at most maxLength frames long (0: any length).
// Runs at either end of the take have no edge to fill towards and are left out.
std::vector<Gap> gapsOf(const TrackReader& reader, uint32_t id, FrameSpan span, int maxLength);

// Samples on each side that the spline goes through, and the fewest it needs.
constexpr int SplineContext = 8;
constexpr int SplineMinimumContext = 2;
constexpr int RigidMinimumDonors = 3;

struct FillResult {
    bool ok = false;
    QString problem; // why the gap could not be filled
    std::vector<Eigen::Vector3d> positions; // one per frame of the gap
};

// donors: the pattern method follows the first, the rigid method all of them.
FillResult fillGap(const TrackReader& reader, const Gap& gap, FillMethod method,
                   const std::vector<uint32_t>& donors);

// The changes that write positions into the gap as filled samples.
SampleChanges filledSamples(const TAV::Frames& take, const Gap& gap, const std::vector<Eigen::Vector3d>& positions);
