#pragma once
// Turning a C3D file into a dense frame store: every frame holds every point, a
// sample's time is its frame index, and each sample's cond grades its residual.
#include "modules/core/sampleflags.h"
#include "host/c3d/c3dfile.h"
#include "tav/tavframes.h"

#include <QString>

#include <array>
#include <cstdint>

namespace C3D {

// Condition values given to samples without a graded residual.
constexpr float FilledCondition = 1.0f;     // fair: a usable position that was not measured
constexpr float UngradedCondition = 2.0f;   // good: the writer records no residuals
constexpr float MissingCondition = 0.0f;

// The residual rule of one take, settled from all its valid samples.
//
// Filled: the format marks an interpolated sample by residual 0, but some writers
// store 0 for every valid sample. So residual 0 means "filled" only in a take where
// some valid sample has a positive residual; in a take without any, no sample is
// filled and every valid sample is ungraded (good).
//
// Grading: a residual is judged against the take's positive residuals, as its
// absolute size depends on the system and units. With their median m and median
// absolute deviation d, a sample is good below g = max(2 m, m + 3 * 1.4826 d) (three
// robust standard deviations), fair below 2 g and poor beyond: cond = g / r.
class ResidualRule {
public:
    // Residuals in steps of |scale|, the low byte of the fourth word.
    void count(int steps) { ++histogram[size_t(steps & 0xFF)]; }
    // Counts what another rule counted (of other frames).
    void add(const ResidualRule& other)
    {
        for (size_t s = 0; s < histogram.size(); ++s)
            histogram[s] += other.histogram[s];
    }
    void settle();

    bool gradesResiduals() const { return median > 0; }
    float condition(int steps) const;
    bool isFilled(int steps) const { return steps == 0 && gradesResiduals(); }
    int medianSteps() const { return median; }
    // Residuals below this many steps are good, below twice it fair, beyond poor.
    float goodBelowSteps() const { return goodBelow; }

private:
    std::array<int64_t, 256> histogram{};
    int median = 0;
    float goodBelow = 0;
};

// Loads the file into take (cleared first). Properties: "frequency" (POINT:RATE),
// "timeLut" (microseconds from the first frame), "firstFrame" (the header's first
// frame number), "units" (POINT:UNITS). markerInfo names each point and says its kind
// in options. On failure take is left empty and error says what went wrong.
bool loadTake(const QString& path, TAV::Frames& take, QString* error);
bool loadTake(const File& file, TAV::Frames& take, QString* error);

} // namespace C3D
