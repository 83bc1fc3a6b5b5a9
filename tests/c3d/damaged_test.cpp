// Files the reader cannot use end in one message naming the file and the problem,
// never in a crash or a hang; fields some writers leave at 0 are filled in.
#include "c3dtestfiles.h"

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

using DamagedFiles = TakeFiles;

TEST_F(DamagedFiles, EndInOneClearMessageOrAreRepaired)
{
    ASSERT_TRUE(writeTestTake(path, testSetup(2, 10), [](int64_t n, float* v) {
        for (int k = 0; k < 8; ++k)
            v[k] = k % 4 == 3 ? C3D::fourthWord(1, 3) : float(n * k);
    }));
    const QByteArray good = bytesOf(path);
    QFile file(path);

    const struct {
        const char* name;
        std::function<void(QByteArray&)> apply;
        const char* problem; // none: the take loads as written
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
        {"ZeroRate", [](QByteArray& b) { setWord(b, scalarAt(b, "RATE", 1) + 2, 0); }, "no usable frame rate"},
        // The trial's start stands in for the header's first frame.
        {"HeaderFirstFrameZero", [](QByteArray& b) { setWord(b, 6, 0); }, nullptr},
        // The section then runs on to its end.
        {"ParameterBlockCountZero", [](QByteArray& b) { b[512 + 2] = 0; }, nullptr}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray bytes = good;
        row.apply(bytes);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        QString error;
        TAV::Frames take;
        const bool loaded = C3D::loadTake(path, take, &error);
        EXPECT_EQ(take.isEmpty(), !loaded);
        if (row.problem) {
            EXPECT_FALSE(loaded);
            EXPECT_TRUE(error.startsWith("take.c3d: ") && error.contains(row.problem)) << error.toStdString();
            continue;
        }
        ASSERT_TRUE(loaded) << error.toStdString();
        EXPECT_EQ(take.property<qint64>("firstFrame"), 1);
        ASSERT_EQ(take.markerInfo.size(), 2u);
        EXPECT_EQ(take.markerInfo[1].name, "M2");
    }
}

} // namespace
