// The synthetic takes: the benchmarks use the track form or the frame form, so the
// track form must be exactly what the host extracts from the frame form.
#include "bench/synthtake.h"

#include "host/tavview/tracks.h"
#include "utils/regions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace {

template <class T>
bool sameBytes(const QVector<T>& a, const QVector<T>& b)
{
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), sizeof(T) * size_t(a.size())) == 0;
}

TEST(SynthTake, TrackFormIsWhatTheHostExtracts)
{
    for (const auto& counts : {std::pair<int, int>{64, 8}, {2, 5}}) {
        TakeShape s;
        s.markers = counts.first;
        s.rigids = counts.second;
        s.frames = 800;
        SCOPED_TRACE(s.markers);
        TAV::Frames extracted, made;
        buildTracks(synthTake(s), allTracks(s), extracted);
        synthTracks(s, made);

        ASSERT_EQ(made.size(), extracted.size());
        for (int i = 0; i < made.size(); ++i) {
            EXPECT_EQ(made[i].id, extracted[i].id) << i;
            EXPECT_TRUE(sameBytes(made[i].markers, extracted[i].markers)) << i;
            EXPECT_TRUE(sameBytes(made[i].rigids, extracted[i].rigids)) << i;
        }
        EXPECT_EQ(made.property<QList<qint64>>("timeLut"), extracted.property<QList<qint64>>("timeLut"));
        EXPECT_EQ(made.property<double>("frequency"), extracted.property<double>("frequency"));
    }
}

TEST(SynthTake, RunTrackHasExactlyTheRunsAskedFor)
{
    for (int runs : {1, 10000}) {
        const TAV::Frames t = runTrack(runs);
        ASSERT_EQ(t.size(), 1);
        const Regions found(t.constFirst().markers);
        EXPECT_EQ(int(found.size()), runs);
        for (size_t i = 1; i < found.size(); ++i)
            EXPECT_NE(found[i].type, found[i - 1].type) << i;
    }
}

} // namespace
