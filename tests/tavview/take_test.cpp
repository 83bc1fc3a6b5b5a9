// The take behind the window: loading it, choosing and building its tracks, and
// the areas navigation stops at.
#include "host/tavview/areas.h"
#include "host/tavview/take.h"
#include "host/tavview/tracks.h"
#include "host/tavview/trackselection.h"
#include "modules/core/trackruns.h"
#include "tests/c3d/c3dtestfiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

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
    for (TAV::Frame& f : take.frames)
        f.markers[2].cond = 0.f;
    EXPECT_EQ(defaultSelection(take).markers, (QList<int>{0, 4, 5}));
}

// Frame times are whole microseconds: a rate no capture runs at is refused with
// one line naming the file, a megahertz still taken.
TEST(LoadTake, RefusesAbsurdFrameRates)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("rate.c3d"));
    for (const auto& row : {std::make_pair(1e30, false), std::make_pair(2e6, false), std::make_pair(1e6, true),
                            std::make_pair(2000.0, true)}) {
        SCOPED_TRACE(row.first);
        C3D::WriterSetup setup = testSetup(1, 3);
        setup.frameRate = row.first;
        ASSERT_TRUE(writeTestTake(path, setup, [](int64_t n, float* v) {
            v[0] = v[1] = v[2] = float(n);
            v[3] = C3D::fourthWord(1, 1);
        }));
        Take take;
        QString error;
        EXPECT_EQ(loadTake(path, take, error), row.second);
        if (!row.second) {
            EXPECT_TRUE(error.contains(QStringLiteral("frame rate")) && error.contains(QStringLiteral("rate.c3d")))
                << error.toStdString();
        }
    }
}

// What cannot be resolved is refused through the executable (cli_test).
TEST(ResolveSelection, ReadsIdsRangesRigidsAndLabels)
{
    const Take take = defaultTake();
    TrackSelection s;
    QString error;
    ASSERT_TRUE(resolveSelection({"4", "1-2", "r1", "2"}, take, s, error)) << error.toStdString();
    EXPECT_EQ(s.markers, (QList<int>{4, 1, 2}));
    EXPECT_EQ(s.rigids, QList<int>{1});
    ASSERT_TRUE(resolveSelection({"relb", "PELVIS"}, take, s, error)) << error.toStdString();
    EXPECT_EQ(s.markers, QList<int>{4}) << "labels ignoring case, in place of the last choice";
    EXPECT_EQ(s.rigids, QList<int>{0});
}

// The graph takes a sample's position as its frame: a frame whose samples skip
// the id gets a missing sample at that frame, so the gap shades there.
TEST(BuildTracks, OneDenseTrackPerSelectedIdWithTheTakesTimes)
{
    Take take;
    take.rate = 50;
    for (int f = 0; f < 3; ++f) {
        TAV::Frame frame;
        for (uint32_t id = 0; id < 2; ++id)
            if (!(f == 1 && id == 1))
                frame.markers.append(TAV::Marker{id, 0, f, float(id), float(f), 0, 2.f});
        frame.rigids.append(TAV::Rigid{0, 0, f, {1, 2, 3, 0, 0, 0, 1}, 2.f});
        take.frames.append(frame);
    }
    TAV::Frames tracks;
    buildTracks(take, TrackSelection{{1, 0}, {0}}, tracks);
    ASSERT_EQ(tracks.size(), 2);
    EXPECT_EQ(tracks.at(0).id, 0u) << "in id order";
    EXPECT_EQ(tracks.at(0).rigids.size(), 3);
    EXPECT_TRUE(tracks.at(1).rigids.isEmpty());
    const TAV::Markers& m = tracks.at(1).markers;
    ASSERT_EQ(m.size(), 3);
    EXPECT_EQ(m.at(1).id, 1u);
    EXPECT_EQ(m.at(1).time, 1);
    EXPECT_EQ(m.at(1).cond, 0.f);
    EXPECT_EQ(m.at(2).y, 2.f);
    EXPECT_EQ(tracks.property<QList<qint64>>("timeLut"), (QList<qint64>{0, 20000, 40000}));
}

// The built-in take's events (see defaulttake.cpp), combined frame by frame.
TEST(AreasOfTheDefaultTake, AreTheRunsWhereNavigationStops)
{
    using Run = std::tuple<int, int, int>; // first, last, type
    const struct {
        const char* name;
        TrackSelection selection;
        int jumpMask;
        std::vector<Run> areas;
    } rows[] = {
        // With a good track beside it, a gap frame is good | missing: still a stop.
        {"gaps beside a good track", {{0, 1}, {}}, 10, {{100, 139, 3}, {400, 405, 3}}},
        {"poor runs but not fair ones", {{2}, {}}, 10, {{220, 259, 8}, {560, 575, 2}}},
        {"fair runs when the mask asks", {{2}, {}}, 4, {{300, 349, 4}}},
        {"filled samples are good", {{3}, {}}, 10, {{480, 519, 2}}},
        {"nothing selected", {{}, {}}, 10, {}},
    };
    const Take take = defaultTake();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames tracks;
        buildTracks(take, row.selection, tracks);
        std::vector<Run> found;
        for (const Pair& p : areasOfInterest(mergedRuns(tracks, row.selection.markers, row.selection.rigids), row.jumpMask))
            found.emplace_back(p.begin(), p.end(), p.type);
        EXPECT_EQ(found, row.areas);
    }
}

} // namespace
