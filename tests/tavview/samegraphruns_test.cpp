// The areas panel rebuilds the graph's merged runs in the host; this suite holds
// the rebuild against the graph's own list, on the built-in take and on real files.
#include "host/c3d/c3dtake.h"
#include "host/tavview/areas.h"
#include "host/tavview/take.h"
#include "host/tavview/tracks.h"
#include "modules/tavgraph.h"
#include "tests/support/data.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct SameRunsRow {
    const char* name;
    const char* file; // null: the built-in take
    TrackSelection selection;
};
void PrintTo(const SameRunsRow& row, std::ostream* os) { *os << row.name; }

class SameRunsAsTheGraph : public testing::TestWithParam<SameRunsRow> {};

TEST_P(SameRunsAsTheGraph, ForEverySelection)
{
    const SameRunsRow& row = GetParam();
    Take take;
    if (row.file) {
        TAV_REQUIRE_SAMPLE_DATA();
        QString error;
        ASSERT_TRUE(loadTake(sampleC3D(QString::fromLatin1(row.file)), take, error)) << error.toStdString();
    } else {
        take = defaultTake();
    }
    TrackSelection s = row.selection;
    if (s.isEmpty())
        for (int id = 0; id < take.frames.constFirst().markers.size(); ++id)
            s.markers.append(id);

    TAV::Frames tracks;
    buildTracks(take, s, tracks);
    TAVGraph graph;
    graph.SetTrackSelection(s.markers, QStringLiteral("markers"));
    graph.SetTrackSelection(s.rigids, QStringLiteral("rigids"));
    graph.SetTracks(&tracks);

    const Regions ours = mergedRuns(tracks, s.markers, s.rigids);
    ASSERT_EQ(ours.size(), graph.regions.size());
    for (size_t i = 0; i < ours.size(); ++i) {
        EXPECT_EQ(ours[i].begin(), graph.regions[i].begin()) << "run " << i;
        EXPECT_EQ(ours[i].end(), graph.regions[i].end()) << "run " << i;
        EXPECT_EQ(ours[i].type, graph.regions[i].type) << "run " << i;
    }
}

// An empty selection below stands for every point of the file.
const SameRunsRow sameRunsRows[] = {
    {"BuiltInSelectionOrderDiffersFromIdOrder", nullptr, {{5, 0, 3}, {1}}},
    {"GaitAllPoints", "gait-raw.c3d", {}},
    {"DuplicateLabels", "MACsample.c3d", {}},
    {"LateFirstFrame", "Walking_Hybrid_1_1.c3d", {{0, 7, 13}, {}}},
};

INSTANTIATE_TEST_SUITE_P(Rows, SameRunsAsTheGraph, testing::ValuesIn(sameRunsRows),
                         [](const testing::TestParamInfo<SameRunsRow>& i) { return std::string(i.param.name); });

} // namespace
