// Files the reader cannot use end in one message naming the file and the problem,
// never in a crash or a hang.
#include "c3dtestfiles.h"
#include "host/c3d/c3dtake.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace {

// Offset of the value of parameter name in group id (a scalar: no dimensions).
int scalarAt(const QByteArray& bytes, const QByteArray& name, int group)
{
    const QByteArray key = QByteArray(1, char(name.size())) + char(group) + name;
    return bytes.indexOf(key) + key.size() + 4;
}

void setWord(QByteArray& b, int at, int value)
{
    b[at] = char(value & 0xFF);
    b[at + 1] = char(value >> 8 & 0xFF);
}

class DamagedFiles : public testing::Test {
protected:
    QTemporaryDir dir;
    QByteArray good;

    void SetUp() override
    {
        const QString path = dir.filePath("good.c3d");
        ASSERT_TRUE(writeTestTake(path, testSetup(2, 10), [](int64_t n, float* v) {
            for (int k = 0; k < 8; ++k)
                v[k] = k % 4 == 3 ? C3D::fourthWord(1, 3) : float(n * k);
        }));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        good = file.readAll();
    }

    // The bytes as bad.c3d: a take, or none and the reason.
    bool load(const QByteArray& bytes, QString& error, TAV::Frames& take)
    {
        QFile file(dir.filePath("bad.c3d"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        const bool ok = C3D::loadTake(file.fileName(), take, &error);
        EXPECT_EQ(take.isEmpty(), !ok);
        return ok;
    }
};

TEST_F(DamagedFiles, EndInOneClearMessage)
{
    const struct {
        const char* name;
        std::function<void(QByteArray&)> apply;
        const char* problem;
    } rows[] = {
        {"TextFile", [](QByteArray& b) { b = QByteArray(2000, 'x'); }, "is not a C3D file"},
        {"CutInTheData", [](QByteArray& b) { b.truncate(b.size() - 412); }, "is truncated: 10 frames"},
        {"ParameterPointerIntoTheData", [](QByteArray& b) { b[0] = b[scalarAt(b, "DATA_START", 1)]; },
         "has no parameter section at block"},
        {"AbsurdPointCount",
         [](QByteArray& b) {
             setWord(b, 2, 60000);
             setWord(b, scalarAt(b, "USED", 1), 60000);
         },
         "is truncated: 10 frames of 60000 points"},
        // The pointer is good; what follows it is missing.
        {"EndsFourBytesIntoTheParameters", [](QByteArray& b) { b.truncate(512 + 4); },
         "is truncated: 10 frames of 2 points"},
        {"ZeroRate", [](QByteArray& b) { setWord(b, scalarAt(b, "RATE", 1) + 2, 0); }, "no usable frame rate"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray bytes = good;
        row.apply(bytes);
        QString error;
        TAV::Frames take;
        EXPECT_FALSE(load(bytes, error, take));
        EXPECT_TRUE(error.startsWith("bad.c3d: ") && error.contains(row.problem)) << error.toStdString();
    }
}

// Fields some writers leave at 0: the header's first frame (the trial's start
// stands in) and the parameter section's block count (it runs on to its end).
TEST_F(DamagedFiles, WritersZeroesAreFilledIn)
{
    const struct {
        const char* name;
        int at, bytes;
    } rows[] = {{"HeaderFirstFrame", 6, 2}, {"ParameterBlockCount", 512 + 2, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray bytes = good;
        bytes.replace(row.at, row.bytes, QByteArray(row.bytes, '\0'));
        QString error;
        TAV::Frames take;
        ASSERT_TRUE(load(bytes, error, take)) << error.toStdString();
        EXPECT_EQ(take.property<qint64>("firstFrame"), 1);
        ASSERT_EQ(take.markerInfo.size(), 2u);
        EXPECT_EQ(take.markerInfo[1].name, "M2");
    }
}

} // namespace
