// Files the reader cannot use end in one message naming the file and the problem,
// never in a crash or a hang.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

// Offset of the value of parameter name in group id (a scalar: no dimensions).
int scalarAt(const QByteArray& bytes, const QByteArray& name, int group)
{
    const QByteArray key = QByteArray(1, char(name.size())) + char(group) + name;
    const int at = bytes.indexOf(key);
    return at < 0 ? -1 : at + key.size() + 2 + 2;
}

void setWord(QByteArray& b, int at, int value)
{
    b[at] = char(value & 0xFF);
    b[at + 1] = char(value >> 8 & 0xFF);
}

void setFloat(QByteArray& b, int at, float value)
{
    C3D::writeFloatLE(reinterpret_cast<uint8_t*>(b.data() + at), value);
}

struct Damage {
    const char* name;
    std::function<void(QByteArray&)> apply;
    const char* problem;
};

void PrintTo(const Damage& row, std::ostream* os) { *os << row.name; }

class DamagedFiles : public testing::TestWithParam<Damage> {
protected:
    QTemporaryDir dir;
    QString good = dir.filePath("good.c3d");
    QString bad = dir.filePath("bad.c3d");

    void SetUp() override
    {
        // Point 0 of frame 0 sits at the origin, so the data's first bytes are zero.
        ASSERT_TRUE(writeTestTake(good, testSetup(2, 10), [](int64_t n, float* v) {
            for (int k = 0; k < 8; ++k)
                v[k] = float(n * k);
            v[3] = v[7] = C3D::fourthWord(1, 3);
        }));
    }
};

TEST_P(DamagedFiles, EndInOneClearMessage)
{
    QByteArray bytes = readBytes(good);
    GetParam().apply(bytes);
    writeBytes(bad, bytes);
    TAV::Frames take;
    QString error;
    EXPECT_FALSE(C3D::loadTake(bad, take, &error));
    EXPECT_TRUE(error.startsWith("bad.c3d: ")) << error.toStdString();
    EXPECT_TRUE(error.contains(GetParam().problem)) << error.toStdString();
    EXPECT_TRUE(take.isEmpty());
    EXPECT_TRUE(take.markerInfo.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DamagedFiles,
    testing::Values(
        Damage{"EmptyFile", [](QByteArray& b) { b.clear(); }, "is too short to be a C3D file (0 bytes)"},
        Damage{"TextFile", [](QByteArray& b) { b = QByteArray(2000, 'x'); }, "is not a C3D file"},
        Damage{"CutInTheHeader", [](QByteArray& b) { b.truncate(300); }, "is too short"},
        Damage{"CutInTheParameters", [](QByteArray& b) { b.truncate(530); }, "is truncated"},
        Damage{"CutInTheData", [](QByteArray& b) { b.truncate(b.size() - 512 + 100); }, "is truncated: 10 frames"},
        Damage{"ParameterPointerZero", [](QByteArray& b) { b[0] = 0; }, "bad parameter block pointer (0;"},
        Damage{"ParameterPointerPastTheEnd", [](QByteArray& b) { b[0] = char(200); },
               "bad parameter block pointer (200; the file has"},
        Damage{"ParameterPointerIntoTheData",
               [](QByteArray& b) { b[0] = char(b[scalarAt(b, "DATA_START", 1)]); },
               "has no parameter section at block"},
        Damage{"AbsurdPointCount",
               [](QByteArray& b) {
                   setWord(b, 2, 60000);
                   setWord(b, scalarAt(b, "USED", 1), 60000);
               },
               "is truncated: 10 frames of 60000 points"},
        Damage{"NoPoints", [](QByteArray& b) { setWord(b, scalarAt(b, "USED", 1), 0); }, "holds no 3D points"},
        Damage{"ZeroRate", [](QByteArray& b) { setFloat(b, scalarAt(b, "RATE", 1), 0.0f); }, "no usable frame rate"},
        Damage{"NaNScale", [](QByteArray& b) { setFloat(b, scalarAt(b, "SCALE", 1), NAN); }, "unusable point scale"},
        Damage{"DataPointerZero",
               [](QByteArray& b) {
                   setWord(b, 16, 0);
                   setWord(b, scalarAt(b, "DATA_START", 1), 0);
               },
               "bad data block pointer (0)"}),
    [](const testing::TestParamInfo<Damage>& i) { return std::string(i.param.name); });

TEST(DamagedFile, MissingFileNamesItself)
{
    TAV::Frames take;
    QString error;
    EXPECT_FALSE(C3D::loadTake("/nonexistent/gone.c3d", take, &error));
    EXPECT_TRUE(error.startsWith("gone.c3d: cannot be opened")) << error.toStdString();
}

// Cut at every length and scrambled at random: each load ends, cleanly, either way.
TEST_F(DamagedFiles, AnyCutOrScrambleEndsCleanly)
{
    const QByteArray original = readBytes(good);
    for (int length = 0; length < original.size(); length += 5) {
        writeBytes(bad, original.left(length));
        TAV::Frames take;
        QString error;
        if (!C3D::loadTake(bad, take, &error)) {
            EXPECT_TRUE(error.startsWith("bad.c3d: ")) << length;
        }
    }
    std::mt19937 rng(7);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = original;
        const int changes = 1 + int(rng() % 8);
        for (int i = 0; i < changes; ++i)
            bytes[int(rng() % 1100)] = char(rng());
        writeBytes(bad, bytes);
        TAV::Frames take;
        QString error;
        if (!C3D::loadTake(bad, take, &error)) {
            EXPECT_TRUE(error.startsWith("bad.c3d: ")) << round;
        } else {
            for (const TAV::Frame& f : take)
                ASSERT_EQ(size_t(f.markers.size()), take.markerInfo.size()) << round;
        }
    }
}

} // namespace
