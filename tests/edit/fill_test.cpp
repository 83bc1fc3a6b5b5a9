// Fills against known smooth motion: the true error of each method and gap length,
// and the estimate of that error made from the marker's own valid stretches.
#include "motion.h"

#include "host/edit/donors.h"
#include "host/edit/fillerror.h"
#include "host/edit/takeedits.h"

#include <gtest/gtest.h>

namespace {

struct FillRow {
    const char* name;
    FillMethod method;
    int gap;
    double trueBound; // mm, RMS
};

class FillAccuracy : public testing::TestWithParam<FillRow> {};

TEST_P(FillAccuracy, TrueErrorIsSmallAndTheEstimateFollowsIt)
{
    const FillRow& row = GetParam();
    TAV::Frames t = motion::take(1500);
    const TAV::Frames truth = t;
    const Gap gap{0, 700, 700 + row.gap - 1};
    applyChanges(t, deletion(t, {0}, FrameSpan{gap.first, gap.last}), false);

    const TrackReader reader(t);
    const std::vector<uint32_t> donors = chooseDonors(reader, gap, donorsNeeded(row.method));
    const FillResult r = fillGap(reader, gap, row.method, donors);
    ASSERT_TRUE(r.ok) << r.problem.toStdString();
    std::vector<Eigen::Vector3d> expected;
    for (int f = gap.first; f <= gap.last; ++f)
        expected.push_back(TrackReader(truth).position(0, f));
    double sumSq = 0, max = 0;
    int n = 0;
    addErrors(r.positions, expected, sumSq, max, n);
    const double trueRms = std::sqrt(sumSq / n);
    const FillError estimate = estimateFillError(t, gap, row.method, donors);
    EXPECT_LT(trueRms, row.trueBound);
    ASSERT_TRUE(estimate.known());
    EXPECT_EQ(estimate.trials, FillErrorTrials) << "this long a take has room for every trial";
    // The estimate comes from other stretches of the same motion: the same order of
    // size as the truth (or both negligible).
    if (trueRms > 0.01 || estimate.rms > 0.01) {
        EXPECT_GT(estimate.rms, trueRms / 3);
        EXPECT_LT(estimate.rms, trueRms * 3);
    }
}

// Bounds about twice the true error of a correct fill of this motion.
const FillRow fillRows[] = {
    {"linear5", FillMethod::Linear, 5, 2.0},     {"linear10", FillMethod::Linear, 10, 8.0},
    {"linear20", FillMethod::Linear, 20, 25.0},  {"linear50", FillMethod::Linear, 50, 60.0},
    {"spline5", FillMethod::Spline, 5, 0.05},    {"spline10", FillMethod::Spline, 10, 0.3},
    {"spline20", FillMethod::Spline, 20, 3.0},   {"spline50", FillMethod::Spline, 50, 20.0},
    {"pattern5", FillMethod::Pattern, 5, 0.2},   {"pattern10", FillMethod::Pattern, 10, 0.6},
    {"pattern20", FillMethod::Pattern, 20, 2.0}, {"pattern50", FillMethod::Pattern, 50, 10.0},
    {"rigid5", FillMethod::Rigid, 5, 0.01},      {"rigid10", FillMethod::Rigid, 10, 0.01},
    {"rigid20", FillMethod::Rigid, 20, 0.01},    {"rigid50", FillMethod::Rigid, 50, 0.01},
};
INSTANTIATE_TEST_SUITE_P(Rows, FillAccuracy, testing::ValuesIn(fillRows),
                         [](const testing::TestParamInfo<FillRow>& i) { return std::string(i.param.name); });

// Errors are summed over the frames both lists have. A short take has room for
// fewer trial stretches than the estimate would like (two on each side of this
// gap): it uses those and ends.
TEST(FillError, AddsOnlyFramesBothListsHaveAndUsesTheStretchesAShortTakeHas)
{
    const std::vector<Eigen::Vector3d> one{{3, 4, 0}}, two{{0, 0, 0}, {0, 0, 0}};
    for (const auto& pair : {std::make_pair(one, two), std::make_pair(two, one)}) {
        double sumSq = 0, max = 0;
        int n = 0;
        addErrors(pair.first, pair.second, sumSq, max, n);
        EXPECT_EQ(n, 1);
        EXPECT_DOUBLE_EQ(sumSq, 25);
        EXPECT_DOUBLE_EQ(max, 5);
    }
    TAV::Frames t = motion::take(60);
    const Gap gap{0, 25, 34};
    applyChanges(t, deletion(t, {0}, FrameSpan{gap.first, gap.last}), false);
    EXPECT_EQ(estimateFillError(t, gap, FillMethod::Linear, {}).trials, 4);
}

// Marker 0 has valid samples from 100 - validBefore on and a gap at 100..109;
// donor 3 misses the frame before the gap, an edge the fills start from.
TEST(FillRefusal, SaysWhy)
{
    const struct {
        const char* name;
        FillMethod method;
        int validBefore;
        std::vector<uint32_t> donors;
        const char* problem;
    } rows[] = {
        {"spline with one sample before", FillMethod::Spline, 1, {}, "too little context"},
        {"pattern without donor", FillMethod::Pattern, 50, {}, "needs a donor"},
        {"pattern from itself", FillMethod::Pattern, 50, {0}, "donor is the marker"},
        {"pattern from a gapped donor", FillMethod::Pattern, 50, {3}, "donor marker 3 is not valid"},
        {"rigid with two donors", FillMethod::Rigid, 50, {1, 2}, "needs 3 donor markers"},
        {"rigid with a gapped donor", FillMethod::Rigid, 50, {1, 2, 3}, "donor marker 3 is not valid"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames t = motion::take(200);
        applyChanges(t, deletion(t, {0}, FrameSpan{0, 99 - row.validBefore}), false);
        applyChanges(t, deletion(t, {0}, FrameSpan{100, 109}), false);
        applyChanges(t, deletion(t, {3}, FrameSpan{99, 99}), false);
        const FillResult r = fillGap(TrackReader(t), Gap{0, 100, 109}, row.method, row.donors);
        EXPECT_FALSE(r.ok);
        EXPECT_TRUE(r.problem.contains(QLatin1String(row.problem))) << r.problem.toStdString();
    }
}

TEST(Donors, AreTheMarkersThatMoveRigidlyWithTheTarget)
{
    TAV::Frames t = motion::take(400);
    // Marker 4 wobbles against the body: the worst donor.
    for (int f = 0; f < t.size(); ++f)
        t[f].markers[4].z += float(30 * std::sin(f * 0.3));
    applyChanges(t, deletion(t, {0}, FrameSpan{200, 219}), false);
    std::vector<uint32_t> donors = chooseDonors(TrackReader(t), Gap{0, 200, 219}, 3);
    std::sort(donors.begin(), donors.end());
    EXPECT_EQ(donors, (std::vector<uint32_t>{1, 2, 3}));
    EXPECT_EQ(chooseDonors(TrackReader(t), Gap{0, 200, 219}, 10).size(), 4u) << "every candidate, no more";
}

} // namespace
