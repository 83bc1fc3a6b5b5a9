#include "tests/store/samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace {

double frequencyOf(const TAV::Frames& s)
{
    const QVariant v = s._properties.value("frequency");
    EXPECT_EQ(v.userType(), int(QMetaType::Double));
    return v.toDouble();
}

TEST(FramesFrequency, CopiesAndMovesResetItAssignmentKeepsIt)
{
    TAV::Frames source = denseStore(2, 1);
    source.setProperty<double>("frequency", 120.0);
    source.markerInfo.emplace_back(1, 2, "head", "");

    const TAV::Frames copied(source);
    TAV::Frames assigned;
    assigned = source;
    TAV::Frames moveSource = source;
    const TAV::Frames moved = std::move(moveSource);

    EXPECT_EQ(frequencyOf(TAV::Frames()), 0.0);
    EXPECT_EQ(frequencyOf(copied), 0.0);
    EXPECT_EQ(frequencyOf(moved), 0.0);
    EXPECT_EQ(frequencyOf(assigned), 120.0);
    for (const TAV::Frames* s : {&copied, static_cast<const TAV::Frames*>(&assigned)}) {
        EXPECT_TRUE(s->isSharedWith(source)) << "the frame vector is shared, not rebuilt";
        EXPECT_EQ(s->markerInfo.at(0).name, "head");
    }
}

// The store fuzz corpus checks indices from -2 (reads from 0) up against a model;
// here the far negative ones and every kind of access.
TEST(FrameAccess, RefusesIndicesOutsideTheStore)
{
    TAV::Frames s = denseStore(2, 2);
    for (int n : {-1, 2, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(n);
        TAV::Frame f;
        TAV::Markers m;
        TAV::Rigids r;
        EXPECT_FALSE(s.GetFrame(f, n));
        EXPECT_FALSE(s.SetFrame(f, n));
        EXPECT_FALSE(s.GetMarkers(m, n, {}, false));
        EXPECT_FALSE(s.GetRigids(r, n, {}, false));
        EXPECT_TRUE(f.markers.isEmpty() && m.isEmpty() && r.isEmpty());
    }
}

// Only the kinds in the mask are written, and only into the frames they name.
TEST(FramesSetData, WritesTheMaskedKindsBackIntoTheirFrames)
{
    TAV::Frames s = denseStore(3, 3);
    const TAV::Frames other = s;
    TAV::Frame track;
    track.markers = {marker(1, 0, 2.0f), marker(1, 2, 5.0f)};
    track.rigids.append(rigid(1, 0, 9.0f));

    EXPECT_TRUE(s.SetData(track, TAV::MaskMarkers));

    EXPECT_EQ(s.at(0).markers.at(1).x, 2.0f);
    EXPECT_EQ(s.at(2).markers.at(1).x, 5.0f);
    EXPECT_EQ(s.at(0).rigids.at(1).pose[0], 1.0f) << "rigids are outside the mask";
    EXPECT_TRUE(s.at(1).markers.isSharedWith(other.at(1).markers)) << "an unwritten frame stays shared";
}

TEST(FramesProperty, ReadsExactConvertedOrDefault)
{
    TAV::Frames s;
    s.setProperty<int>("count", 3);
    s.setProperty<QString>("label", QString("not a number"));
    bool ok = true;

    EXPECT_EQ(s.property<double>("count", &ok), 3.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(s.property<double>("label", &ok), 0.0);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(s.property<QList<qint64>>("absent").isEmpty()) << "the flag pointer may be left out";
}

} // namespace
