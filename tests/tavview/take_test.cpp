#include "host/tavview/take.h"
#include "tests/c3d/c3dtestfiles.h"
#include "host/tavview/tracks.h"
#include "host/tavview/trackselection.h"
#include "utils/regions.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>

namespace {

// Markers 1 to 3 have gaps, 5 poor samples, 4 fair ones, 0 nothing; points that
// are not markers (model outputs) and tracks without a valid sample are left out.
TEST(DefaultSelection, PrefersGapsThenPoorThenFairSamplesOfMarkers)
{
    Take take = defaultTake();
    EXPECT_EQ(defaultSelection(take).markers, (QList<int>{1, 2, 3}));
    EXPECT_EQ(defaultSelection(take).rigids, QList<int>{0});
    take.frames.markerInfo[1].options = "kind=angle;units=deg";
    take.frames.markerInfo[3].options = "kind=force";
    EXPECT_EQ(defaultSelection(take).markers, (QList<int>{2, 4, 5}));
    // A marker that is never valid has nothing to draw, gaps or not.
    for (TAV::Frame& f : take.frames)
        f.markers[2].cond = 0.f;
    EXPECT_EQ(defaultSelection(take).markers, (QList<int>{0, 4, 5}));
}

// Frame times are whole microseconds; a rate no capture runs at is refused
// with one line, a fast real one taken.
TEST(LoadTake, RefusesAbsurdFrameRates)
{
    const struct {
        double rate;
        bool loads;
    } rows[] = {{1e30, false}, {2e6, false}, {2000.0, true}};
    QTemporaryDir dir;
    for (const auto& row : rows) {
        const QString path = dir.filePath(QStringLiteral("rate.c3d"));
        C3D::WriterSetup setup = testSetup(1, 3);
        setup.frameRate = row.rate;
        ASSERT_TRUE(writeTestTake(path, setup, [](int64_t n, float* v) {
            v[0] = v[1] = v[2] = float(n);
            v[3] = C3D::fourthWord(1, 1);
        }));
        Take take;
        QString error;
        EXPECT_EQ(loadTake(path, take, error), row.loads) << row.rate;
        if (!row.loads) {
            EXPECT_TRUE(error.contains(QStringLiteral("frame rate"))) << error.toStdString();
            EXPECT_TRUE(error.contains(QStringLiteral("rate.c3d"))) << error.toStdString();
        }
    }
}

struct SelectRow {
    const char* name;
    QStringList tokens;
    QList<int> markers;
    QList<int> rigids;
    const char* errorPart; // null when the tokens resolve
};

void PrintTo(const SelectRow& row, std::ostream* os) { *os << row.name; }

class ResolveSelection : public testing::TestWithParam<SelectRow> {
protected:
    const Take take = defaultTake();
};

TEST_P(ResolveSelection, ReadsIdsRangesRigidsAndLabels)
{
    const SelectRow& row = GetParam();
    TrackSelection s;
    s.markers = {99};
    QString error;
    const bool ok = resolveSelection(row.tokens, take, s, error);
    if (row.errorPart) {
        EXPECT_FALSE(ok);
        EXPECT_TRUE(error.contains(QLatin1String(row.errorPart))) << error.toStdString();
        EXPECT_EQ(s.markers, QList<int>{99}) << "untouched on error";
        return;
    }
    ASSERT_TRUE(ok) << error.toStdString();
    EXPECT_EQ(s.markers, row.markers);
    EXPECT_EQ(s.rigids, row.rigids);
}

const SelectRow selectRows[] = {
    {"IdsRangesAndRigids", {"4", "1-2", "r1", "2"}, {4, 1, 2}, {1}, nullptr},
    {"LabelsIgnoringCase", {"relb", "PELVIS"}, {4}, {0}, nullptr},
    {"NoSuchMarker", {"6"}, {}, {}, "no marker 6"},
    {"BackwardsRange", {"4-2"}, {}, {}, "backwards"},
    {"UnknownLabel", {"NOSE"}, {}, {}, "\"NOSE\""},
};

INSTANTIATE_TEST_SUITE_P(Rows, ResolveSelection, testing::ValuesIn(selectRows),
                         [](const testing::TestParamInfo<SelectRow>& i) { return std::string(i.param.name); });

// A store in which frame 2 has no sample of marker 1 (its vector skips that id).
Take sparseTake()
{
    Take take;
    take.rate = 50;
    for (int f = 0; f < 4; ++f) {
        TAV::Frame frame;
        for (uint32_t id = 0; id < 3; ++id)
            if (!(f == 2 && id == 1))
                frame.markers.append(TAV::Marker{id, 0, f, float(id), float(f), 0, 2.f});
        frame.rigids.append(TAV::Rigid{0, 0, f, {1, 2, 3, 0, 0, 0, 1}, 2.f});
        take.frames.append(frame);
    }
    return take;
}

// The graph takes a sample's position as its frame: a frame without the id gets a
// missing sample at that frame, so the gap shades there.
TEST(BuildTracks, OneDenseTrackPerSelectedIdWithTheTakesTimes)
{
    TAV::Frames tracks;
    buildTracks(sparseTake(), TrackSelection{{1, 0}, {0}}, tracks);
    ASSERT_EQ(tracks.size(), 2);
    EXPECT_EQ(tracks.at(0).id, 0u) << "in id order";
    EXPECT_EQ(tracks.at(0).rigids.size(), 4);
    EXPECT_EQ(tracks.at(1).id, 1u);
    EXPECT_TRUE(tracks.at(1).rigids.isEmpty());
    const TAV::Markers& m = tracks.at(1).markers;
    ASSERT_EQ(m.size(), 4);
    for (int f = 0; f < 4; ++f)
        EXPECT_EQ(m.at(f).time, f);
    EXPECT_EQ(m.at(2).cond, 0.f);
    EXPECT_EQ(m.at(2).id, 1u);
    EXPECT_EQ(m.at(3).y, 3.f);
    const Regions runs(m);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[1].begin(), 2);
    EXPECT_EQ(runs[1].type, RegionMissing);
    EXPECT_EQ(tracks.property<double>("frequency"), 50.0);
    EXPECT_EQ(tracks.property<QList<qint64>>("timeLut"), (QList<qint64>{0, 20000, 40000, 60000}));
}

} // namespace
