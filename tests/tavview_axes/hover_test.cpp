#include "modules/core/sampleflags.h"
#include "host/tavview/hover.h"
#include "host/tavview/preferences.h"
#include "host/tavview/rotations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>

namespace {

const int trackId = 3;
const int frames = 10;

// One marker track: sample i at frame i, x = 10 i, y = 100, z = -50. Drawn ten
// pixels per frame and one pixel per unit, sample i's y sits at pixel (10 i, 100).
TAV::Frames markerTrack()
{
    TAV::Frames store;
    TAV::Frame t;
    t.id = trackId;
    for (int i = 0; i < frames; ++i)
        t.markers.append(TAV::Marker{trackId, 0, i, 10.f * i, 100, -50, 1});
    store.append(t);
    return store;
}

void rigidTrack(TAV::Frames& f, ShownTracks&)
{
    f[0].markers.clear();
    for (int i = 0; i < frames; ++i)
        f[0].rigids.append(TAV::Rigid{trackId, 0, i, {0, 100, 0, 0, 0, 0, 1}, 1});
}

TEST(Pick, FindsTheDrawnSampleWithinTheDistance)
{
    using Setup = void (*)(TAV::Frames&, ShownTracks&);
    const struct {
        const char* name;
        Setup setup;
        QPointF mouse;
        bool found;
        int axis;
        float value;
    } rows[] = {
        {"at the distance", [](TAV::Frames&, ShownTracks&) {}, {50, 108}, true, 1, 100},
        {"just beyond the distance", [](TAV::Frames&, ShownTracks&) {}, {50, 108.01}, false, 0, 0},
        {"the nearer axis", [](TAV::Frames&, ShownTracks&) {}, {52, 52}, true, 0, 50},
        {"axis not drawn", [](TAV::Frames&, ShownTracks& s) { s.axisMask = 5; }, {50, 104}, false, 0, 0},
        {"markers switched off", [](TAV::Frames&, ShownTracks& s) { s.enableMarkers = false; }, {50, 100}, false, 0,
         0},
        {"track not selected", [](TAV::Frames&, ShownTracks& s) { s.markers = {4}; }, {50, 100}, false, 0, 0},
        // The neighbours are ten pixels away: nothing is drawn there.
        {"missing sample", [](TAV::Frames& f, ShownTracks&) { f[0].markers[5].cond = 0; }, {50, 100}, false, 0, 0},
        {"filled sample hidden without fill",
         [](TAV::Frames& f, ShownTracks& s) {
             f[0].markers[5].flags = FilledFlag;
             s.enableFill = false;
         },
         {50, 100}, false, 0, 0},
        // The track is drawn shifted; the tip still gives the sample's own value.
        {"offset track", [](TAV::Frames&, ShownTracks& s) { s.offsets.markers[trackId] = Vector(0, 100, 0); }, {50, 3},
         true, 1, 100},
        {"rigid body", rigidTrack, {50, 101}, true, 1, 100},
        {"rigid bodies switched off",
         [](TAV::Frames& f, ShownTracks& s) {
             rigidTrack(f, s);
             s.enableRigids = false;
         },
         {50, 101}, false, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAV::Frames store = markerTrack();
        ShownTracks shown;
        row.setup(store, shown);
        PixelMap tenPixelsPerFrame;
        tenPixelsPerFrame.sx = 10;
        const HoverHit hit = pickSample(store, shown, tenPixelsPerFrame, row.mouse, 8.0);
        ASSERT_EQ(hit.found, row.found);
        if (row.found) {
            EXPECT_EQ(hit.id, trackId);
            EXPECT_EQ(hit.rigid, row.setup == rigidTrack);
            EXPECT_EQ(hit.index, 5);
            EXPECT_EQ(hit.axis, row.axis);
            EXPECT_FLOAT_EQ(hit.value, row.value);
        }
    }
}

TEST(HoverText, NamesTheTrackItsValueAndTheFrame)
{
    const HoverHit hit{true, true, 1, 0, 0, 5};
    EXPECT_EQ(hoverText(hit, QStringLiteral("pelvis"), QStringLiteral("mm"), {100, 50, TimeLabels::Timecode}),
              QStringLiteral("pelvis (rigid body 1)\nx = 5.00 mm\nframe 100, 00:00:02:00"));
    EXPECT_EQ(hoverText(hit, QStringLiteral("pelvis"), QString(), {100, 0, TimeLabels::Frames}),
              QStringLiteral("pelvis (rigid body 1)\nx = 5.00\nframe 100"));
}

const float h = float(std::sqrt(0.5));

// Each rigid body's pose becomes its rotation in axis-angle degrees; markers go.
TEST(RotationTake, KeepsTheRigidBodiesWithTheirRotationsInPlaceOfPositions)
{
    const struct {
        const char* name;
        float q[4];
        Vector expected;
    } rows[] = {
        {"identity", {0, 0, 0, 1}, {0, 0, 0}},
        {"quarter turn about z", {0, 0, h, h}, {0, 0, 90}},
        {"negated quaternion, same rotation", {0, 0, -h, -h}, {0, 0, 90}},
        {"half turn about x", {1, 0, 0, 0}, {180, 0, 0}},
        {"unnormalised", {0, 0, 2, 2}, {0, 0, 90}},
        {"zero quaternion", {0, 0, 0, 0}, {0, 0, 0}},
    };
    Take take;
    take.firstFrame = 7;
    for (const auto& row : rows) {
        TAV::Frame f;
        f.markers.append(TAV::Marker{0, 0, 0, 1, 2, 3, 1});
        f.rigids.append(TAV::Rigid{2, 0, 0, {500, 600, 700, row.q[0], row.q[1], row.q[2], row.q[3]}, 1});
        take.frames.append(f);
    }
    const Take r = rotationTake(take);
    EXPECT_EQ(r.units, QStringLiteral("deg"));
    EXPECT_EQ(r.firstFrame, 7);
    for (int i = 0; i < int(std::size(rows)); ++i) {
        SCOPED_TRACE(rows[i].name);
        EXPECT_TRUE(r.frames.at(i).markers.isEmpty());
        const float* pose = r.frames.at(i).rigids.at(0).pose;
        EXPECT_NEAR(pose[0], rows[i].expected.x, 1e-3);
        EXPECT_NEAR(pose[1], rows[i].expected.y, 1e-3);
        EXPECT_NEAR(pose[2], rows[i].expected.z, 1e-3);
    }
}

TEST(RecentFiles, NewestFirstWithoutRepeatsAndBounded)
{
    const QStringList list = {QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/c")};
    EXPECT_EQ(withRecentFile(list, QStringLiteral("/b")),
              (QStringList{QStringLiteral("/b"), QStringLiteral("/a"), QStringLiteral("/c")}));
    EXPECT_EQ(withRecentFile(list, QStringLiteral("/d"), 3),
              (QStringList{QStringLiteral("/d"), QStringLiteral("/a"), QStringLiteral("/b")}));
}

} // namespace
