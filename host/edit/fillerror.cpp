#include "host/edit/fillerror.h"

#include <algorithm>
#include <cmath>

void addErrors(const std::vector<Eigen::Vector3d>& filled, const std::vector<Eigen::Vector3d>& truth, double& sumSq,
               double& max, int& count)
{
    for (size_t i = 0; i < filled.size() && i < truth.size(); ++i) {
        const double e = (filled[i] - truth[i]).norm();
        sumSq += e * e;
        max = std::max(max, e);
        ++count;
    }
}

namespace {

// Context a trial stretch keeps valid on each side, so the fill sees what it would at the real gap.
int contextFor(FillMethod method) { return method == FillMethod::Spline ? SplineContext : 1; }

} // namespace

FillError estimateFillError(const TAV::Frames& take, const Gap& gap, FillMethod method,
                            const std::vector<uint32_t>& donors)
{
    const TrackReader whole(take);
    const int len = gap.length(), context = contextFor(method);
    const int reach = FillErrorReach * len + FillErrorMargin;
    FillError estimate;
    double sumSq = 0;
    int count = 0;
    // Alternate after and before the gap, moving outwards one stretch at a time.
    int after = gap.last + 1 + context, before = gap.first - context - len;
    while (estimate.trials < FillErrorTrials && (after <= gap.last + reach || before >= gap.first - reach)) {
        for (int* start : {&after, &before}) {
            const bool forward = start == &after;
            const int s = *start;
            if (forward ? s > gap.last + reach : s < gap.first - reach)
                continue;
            const int e = s + len - 1;
            bool usable = s - context >= 0 && e + context < take.size() &&
                          whole.validThrough(gap.id, s - context, e + context);
            if (usable) {
                const TrackReader hidden(take, HiddenStretch{gap.id, s, e});
                const FillResult r = fillGap(hidden, Gap{gap.id, s, e}, method, donors);
                if (r.ok) {
                    std::vector<Eigen::Vector3d> truth;
                    for (int f = s; f <= e; ++f)
                        truth.push_back(whole.position(gap.id, f));
                    addErrors(r.positions, truth, sumSq, estimate.max, count);
                    ++estimate.trials;
                }
            }
            // Next stretch: clear of this one when it was used, else one frame on.
            const int step = usable ? len + context : 1;
            *start += forward ? step : -step;
            if (estimate.trials >= FillErrorTrials)
                break;
        }
    }
    estimate.rms = count > 0 ? std::sqrt(sumSq / count) : 0.0;
    return estimate;
}
