// Edits saved into a copy of their source: only the changed samples' bytes change,
// and a take that does not match its source is refused.
#include "c3dtestfiles.h"
#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dsave.h"

#include <QFile>

#include <utility>

namespace {

class SaveEdits : public TakeFiles {
protected:
    QString out = dir.filePath("out.c3d");
    TAV::Frames original;

    void SetUp() override
    {
        ASSERT_TRUE(writeTestTake(path, testSetup(2, 3), [](int64_t n, float* v) {
            for (int k = 0; k < 8; ++k)
                v[k] = k % 4 == 3 ? C3D::fourthWord(1, 3) : float(n + k);
        }));
        original = load(path);
    }
};

// The other sample of the edited frame keeps its bytes, residual word included.
TEST_F(SaveEdits, OnlyTheChangedSampleIsRewritten)
{
    TAV::Frames edited = original;
    edited[1].markers[0].x = 42.0f;
    QString error;
    ASSERT_TRUE(C3D::saveEditedTake(path, original, edited, out, &error)) << error.toStdString();

    C3D::File file;
    ASSERT_TRUE(file.open(path, &error));
    const int64_t sample = file.layout().dataOffset + file.layout().frameBytes();
    const QByteArray was = bytesOf(path), now = bytesOf(out);
    ASSERT_EQ(was.size(), now.size());
    int foreign = 0;
    for (int b = 0; b < was.size(); ++b)
        foreign += was[b] != now[b] && (b < sample || b >= sample + 16);
    EXPECT_EQ(foreign, 0);
    EXPECT_EQ(load(out)[1].markers[0].x, 42.0f);
}

TEST_F(SaveEdits, ATakeOfAnotherLengthIsRefused)
{
    TAV::Frames shorter = original;
    shorter.removeLast();
    for (const auto& takes : {std::make_pair(original, shorter), std::make_pair(shorter, original)}) {
        QString error;
        EXPECT_FALSE(C3D::saveEditedTake(path, takes.first, takes.second, out, &error));
        EXPECT_TRUE(error.contains("take.c3d holds 3")) << error.toStdString();
        EXPECT_FALSE(QFile::exists(out));
    }
}

} // namespace
