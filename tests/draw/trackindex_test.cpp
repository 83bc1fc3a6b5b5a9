// A track's index holds every valid sample of its blocks, and the data rectangle
// read from it is the one the samples give.
#include "modules/tavgraph.h"
#include "modules/trackindex.h"
#include "tests/draw/takes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace {

// Every block of every level against its samples: the box of the valid ones, their
// times and ids, whether they are finite and in time order.
TEST(TrackIndex, BoxesEveryValidSampleOfEachBlock)
{
    QVector<TAV::Marker> s;
    for (int i = 0; i < 1000; ++i) {
        const float a = i / 37.f;
        s.append(TAV::Marker{i < 700 ? 3u : 4u, 0, i, std::sin(a), std::cos(a), a, (i % 97 < 9) ? 0.f : 1.f});
    }
    for (int i = 192; i < 256; ++i)
        s[i].cond = 0; // a block without a valid sample
    s[300].y = NAN;
    s[500].time = 420; // back in time
    s[800].x = -50;    // beyond the others, but not valid
    s[800].cond = 0;
    const TrackIndex index(s);
    ASSERT_EQ(index.levels(), 3); // 16 blocks of 64, then 4, then 1
    for (int level = 0; level < index.levels(); ++level)
        for (int b = 0; b < index.count(level); ++b) {
            SCOPED_TRACE(testing::Message() << "level " << level << " block " << b);
            const int from = int(b * TrackIndex::span(level));
            const int to = int(std::min<int64_t>(s.size(), from + TrackIndex::span(level)));
            const SampleBlock& block = index.block(level, b);
            SampleBlock want{{HUGE_VALF, HUGE_VALF, HUGE_VALF}, {-HUGE_VALF, -HUGE_VALF, -HUGE_VALF},
                             std::numeric_limits<int64_t>::max(), std::numeric_limits<int64_t>::min(), 0, true, true, true};
            int64_t last = 0;
            for (int i = from; i < to; ++i) {
                const TAV::Marker& m = s[i];
                if (m.cond <= 0)
                    continue;
                want.id = want.empty() ? m.id : want.id;
                want.oneId = want.oneId && m.id == want.id;
                want.ascending = want.ascending && (want.empty() || m.time >= last);
                last = m.time;
                want.timeLo = std::min(want.timeLo, m.time);
                want.timeHi = std::max(want.timeHi, m.time);
                const Vector v(m);
                for (int axis = 0; axis < 3; ++axis) {
                    want.finite = want.finite && std::isfinite(v[axis]);
                    want.lo[axis] = std::isfinite(v[axis]) ? std::min(want.lo[axis], v[axis]) : want.lo[axis];
                    want.hi[axis] = std::isfinite(v[axis]) ? std::max(want.hi[axis], v[axis]) : want.hi[axis];
                }
            }
            ASSERT_EQ(block.empty(), want.empty());
            if (want.empty())
                continue;
            EXPECT_EQ(std::make_tuple(block.timeLo, block.timeHi, block.id, block.oneId, block.finite, block.ascending),
                      std::make_tuple(want.timeLo, want.timeHi, want.id, want.oneId, want.finite, want.ascending));
            for (int axis = 0; axis < 3; ++axis)
                EXPECT_EQ(std::make_pair(block.lo[axis], block.hi[axis]), std::make_pair(want.lo[axis], want.hi[axis]))
                    << "axis " << axis;
        }
}

// With "fastDraw" the data rectangle is read from the tracks' index where it can
// be: it must be the rectangle the samples give.
TEST(FastRange, IsTheRectangleTheSamplesGive)
{
    TAV::Frames take = takes::generated({3, 1, 5000, 4, 2000, 2100});
    // Spikes just outside a selection of frames 1000 to 4000; zeros of both signs
    // on different axes in a track whose id changes half way, with another offset;
    // a track with no number on one axis at all.
    take[0].markers[4010].y = 500;
    take[0].markers[4010].cond = 2;
    take[1].markers[990].z = -500;
    take[1].markers[990].cond = 2;
    QVector<TAV::Marker> zeros, noY;
    for (int i = 0; i < 5000; ++i) {
        zeros.append(i % 2 ? takes::marker(i, -0.f, -7, -7) : takes::marker(i, -7, 0, -7));
        noY.append(takes::marker(i, 1, NAN, 2));
    }
    take << takes::track(9, zeros) << takes::track(7, noY);
    for (int i = 2500; i < 5000; ++i)
        take[4].markers[i].id = 19;
    const struct {
        const char* name;
        int mode;
        QList<int> markers, rigids;
        Vector offset;
        QRectF start;
    } rows[] = {{"AllFrames", 1, {0, 1, 2}, {3}, {}, {}},
                {"Selection", 2, {0, 1}, {3}, {}, {}},
                {"Zeros of both signs", 1, {9}, {}, {}, QRectF(0, -5, 0, -5)},
                {"An axis without numbers", 1, {7}, {}, {}, {}},
                {"Offsets", 1, {0, 2, 9}, {3}, {2.5f, -1, 3}, {}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QRectF plain = row.start, fast = row.start;
        for (QRectF* r : {&plain, &fast}) {
            TAVGraph g;
            FramesInfo info(0, 5000, 300, 4300, 0);
            g.SetFramesInfo(&info);
            g.SetTracks(&take);
            g.SetTrackSelection(row.markers, "markers");
            g.SetTrackSelection(row.rigids, "rigids");
            g.selectStart = 1000;
            g.selectEnd = 4000;
            for (int id : {0, 2, 9})
                g.trackOffsets[id] = row.offset;
            g.trackOffsets[19] = Vector(-40, 0, 0);
            g.rbtrackOffsets[3] = row.offset;
            g.setProperty<bool>("fastDraw", r == &fast);
            g.Range2D(r, row.mode);
        }
        const auto edges = [](const QRectF& r) { return std::make_tuple(r.left(), r.top(), r.right(), r.bottom()); };
        EXPECT_EQ(edges(fast), edges(plain));
    }
}

} // namespace
