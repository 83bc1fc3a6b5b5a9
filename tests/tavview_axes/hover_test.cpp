#include "modules/core/sampleflags.h"
#include "host/tavview/hover.h"
#include "host/tavview/preferences.h"
#include "host/tavview/rotations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

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

PixelMap tenPixelsPerFrame()
{
    PixelMap m;
    m.sx = 10;
    return m;
}

struct PickRow {
    const char* name;
    void (*setup)(TAV::Frames&, ShownTracks&);
    QPointF mouse;
    bool found;
    int axis;
    float value;
};
void PrintTo(const PickRow& r, std::ostream* os) { *os << r.name; }

void nothing(TAV::Frames&, ShownTracks&) {}

class Pick : public testing::TestWithParam<PickRow> {};

TEST_P(Pick, FindsTheDrawnSampleWithinTheDistance)
{
    const PickRow& r = GetParam();
    TAV::Frames store = markerTrack();
    ShownTracks shown;
    r.setup(store, shown);
    const HoverHit hit = pickSample(store, shown, tenPixelsPerFrame(), r.mouse, 8.0);
    ASSERT_EQ(hit.found, r.found);
    if (!r.found)
        return;
    EXPECT_EQ(hit.id, trackId);
    EXPECT_EQ(hit.index, 5);
    EXPECT_EQ(hit.axis, r.axis);
    EXPECT_FLOAT_EQ(hit.value, r.value);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Pick,
    testing::Values(
        PickRow{"atTheDistance", nothing, {50, 108}, true, 1, 100},
        PickRow{"justBeyondTheDistance", nothing, {50, 108.01}, false, 0, 0},
        PickRow{"theNearerAxis", nothing, {52, 52}, true, 0, 50},
        PickRow{"axisNotDrawn", [](TAV::Frames&, ShownTracks& s) { s.axisMask = 5; }, {50, 104}, false, 0, 0},
        PickRow{"markersSwitchedOff", [](TAV::Frames&, ShownTracks& s) { s.enableMarkers = false; }, {50, 100},
                false, 0, 0},
        PickRow{"trackNotSelected", [](TAV::Frames&, ShownTracks& s) { s.markers = {4}; }, {50, 100}, false, 0, 0},
        // The neighbours are ten pixels away: nothing is drawn there.
        PickRow{"missingSample", [](TAV::Frames& f, ShownTracks&) { f[0].markers[5].cond = 0; }, {50, 100}, false,
                0, 0},
        PickRow{"filledSampleHiddenWithoutFill",
                [](TAV::Frames& f, ShownTracks& s) {
                    f[0].markers[5].flags = FilledFlag;
                    s.enableFill = false;
                },
                {50, 100}, false, 0, 0},
        // The track is drawn shifted; the tip still gives the sample's own value.
        PickRow{"offsetTrack",
                [](TAV::Frames&, ShownTracks& s) { s.offsets.markers[trackId] = Vector(0, 100, 0); }, {50, 3}, true,
                1, 100},
        PickRow{"rigidBody",
                [](TAV::Frames& f, ShownTracks&) {
                    f[0].markers.clear();
                    for (int i = 0; i < frames; ++i)
                        f[0].rigids.append(TAV::Rigid{trackId, 0, i, {0, 100, 0, 0, 0, 0, 1}, 1});
                },
                {50, 101}, true, 1, 100}),
    [](const testing::TestParamInfo<PickRow>& i) { return std::string(i.param.name); });

TEST(Pick, NamesRigidBodiesAsSuch)
{
    TAV::Frames store;
    TAV::Frame t;
    t.id = 1;
    t.rigids.append(TAV::Rigid{1, 0, 0, {5, 0, 0, 0, 0, 0, 1}, 1});
    store.append(t);
    const HoverHit hit = pickSample(store, ShownTracks(), PixelMap(), QPointF(0, 5), 1);
    ASSERT_TRUE(hit.found);
    EXPECT_TRUE(hit.rigid);
    EXPECT_EQ(hoverText(hit, QStringLiteral("pelvis"), QStringLiteral("mm"), {100, 50, TimeLabels::Timecode}),
              QStringLiteral("pelvis (rigid body 1)\nx = 5.00 mm\nframe 100, 00:00:02:00"));
    EXPECT_EQ(hoverText(hit, QStringLiteral("pelvis"), QString(), {100, 0, TimeLabels::Frames}),
              QStringLiteral("pelvis (rigid body 1)\nx = 5.00\nframe 100"));
}

struct AngleRow {
    const char* name;
    float q[4];
    Vector expected;
};
void PrintTo(const AngleRow& r, std::ostream* os) { *os << r.name; }

class AxisAngle : public testing::TestWithParam<AngleRow> {};

TEST_P(AxisAngle, InDegrees)
{
    const AngleRow& r = GetParam();
    const Vector v = axisAngleDegrees(r.q[0], r.q[1], r.q[2], r.q[3]);
    EXPECT_NEAR(v.x, r.expected.x, 1e-3);
    EXPECT_NEAR(v.y, r.expected.y, 1e-3);
    EXPECT_NEAR(v.z, r.expected.z, 1e-3);
}

const float h = float(std::sqrt(0.5));
INSTANTIATE_TEST_SUITE_P(Rotations, AxisAngle,
                         testing::Values(AngleRow{"identity", {0, 0, 0, 1}, {0, 0, 0}},
                                         AngleRow{"quarterTurnAboutZ", {0, 0, h, h}, {0, 0, 90}},
                                         AngleRow{"negatedQuaternionSameRotation", {0, 0, -h, -h}, {0, 0, 90}},
                                         AngleRow{"halfTurnAboutX", {1, 0, 0, 0}, {180, 0, 0}},
                                         AngleRow{"unnormalised", {0, 0, 2, 2}, {0, 0, 90}},
                                         AngleRow{"zeroQuaternion", {0, 0, 0, 0}, {0, 0, 0}}),
                         [](const testing::TestParamInfo<AngleRow>& i) { return std::string(i.param.name); });

TEST(RotationTake, KeepsTheRigidBodiesWithTheirRotationsInPlaceOfPositions)
{
    Take take;
    take.rate = 100;
    take.firstFrame = 7;
    take.units = QStringLiteral("mm");
    TAV::Frame f;
    f.time = 0;
    f.markers.append(TAV::Marker{0, 0, 0, 1, 2, 3, 1});
    f.rigids.append(TAV::Rigid{2, 0, 0, {500, 600, 700, 0, 0, h, h}, 1});
    take.frames.append(f);
    const Take r = rotationTake(take);
    ASSERT_EQ(r.frameCount(), 1);
    EXPECT_TRUE(r.frames[0].markers.isEmpty());
    ASSERT_EQ(r.frames[0].rigids.size(), 1);
    EXPECT_NEAR(r.frames[0].rigids[0].pose[2], 90, 1e-3);
    EXPECT_NEAR(r.frames[0].rigids[0].pose[0], 0, 1e-3);
    EXPECT_EQ(r.frames[0].rigids[0].id, 2u);
    EXPECT_EQ(r.units, QStringLiteral("deg"));
    EXPECT_EQ(r.firstFrame, 7);
    EXPECT_EQ(r.rate, 100);
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
