// Saving: every shared sample file round-trips, unedited bit for bit and edited
// sample for sample (which bytes an edit may change is the C3D suite's); a save
// that fails half-way leaves the old file as it was.
#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dsave.h"
#include "host/edit/takeeditor.h"
#include "host/tavview/take.h"
#include "support/data.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

TEST(SaveSampleFiles, RoundTripEveryFile)
{
    TAV_REQUIRE_SAMPLE_DATA();
    QTemporaryDir dir;
    const QStringList files = QDir(sampleDataDir() + "/c3d").entryList({"*.c3d"}, QDir::Files, QDir::Name);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        const QString source = sampleC3D(name);
        Take take;
        QString error;
        ASSERT_TRUE(loadTake(source, take, error)) << error.toStdString();
        TakeEditor editor;
        editor.Attach(&take.frames);

        const QString same = dir.filePath("same.c3d");
        ASSERT_TRUE(C3D::saveEditedTake(source, editor.original(), take.frames, same, &error)) << error.toStdString();
        EXPECT_EQ(bytesOf(same), bytesOf(source)) << "an unedited take is saved bit for bit";

        // Delete a stretch of every marker, fill what was deleted of the first ones.
        const int n = take.frameCount(), markers = take.frames.at(0).markers.size();
        QList<int> all;
        for (int i = 0; i < markers; ++i)
            all.append(i);
        const FrameSpan cut{n / 3, n / 3 + std::min(9, n / 4)};
        editor.Delete(all, cut);
        FillChoice linear;
        editor.Fill(all.mid(0, 2), cut, linear, 0);

        const QString edited = dir.filePath("edited.c3d");
        ASSERT_TRUE(C3D::saveEditedTake(source, editor.original(), take.frames, edited, &error)) << error.toStdString();
        Take back;
        ASSERT_TRUE(loadTake(edited, back, error)) << error.toStdString();
        ASSERT_EQ(back.frameCount(), n);

        C3D::File file;
        ASSERT_TRUE(file.open(source, &error));
        const float step = file.layout().floats() ? 0.0f : std::abs(file.layout().scale) / 2;
        int differing = 0;
        for (int f = 0; f < n; ++f)
            for (int i = 0; i < markers; ++i) {
                const TAV::Marker &a = take.frames.at(f).markers.at(i), &b = back.frames.at(f).markers.at(i);
                const bool same = (a.cond > 0) == (b.cond > 0) && std::abs(a.x - b.x) <= step &&
                                  std::abs(a.y - b.y) <= step && std::abs(a.z - b.z) <= step;
                differing += same ? 0 : 1;
            }
        EXPECT_EQ(differing, 0) << "samples that did not come back as saved";
    }
}

// A folder that does not exist is reported and nothing is written; running out
// of room half-way leaves the old file as it was and no temporary one.
TEST(SaveFailure, IsReportedAndLeavesTheOldFileIntact)
{
    TAV_REQUIRE_SAMPLE_DATA();
    const QString source = sampleC3D("Eb015pi.c3d");
    Take take;
    QString error;
    ASSERT_TRUE(loadTake(source, take, error));
    QTemporaryDir dir;
    const QString nowhere = dir.filePath("no/such/folder/out.c3d");
    EXPECT_FALSE(C3D::saveEditedTake(source, take.frames, take.frames, nowhere, &error));
    EXPECT_TRUE(error.contains("cannot be written")) << error.toStdString();
    EXPECT_FALSE(QFile::exists(nowhere));

    const QString out = dir.filePath("kept.c3d");
    const QByteArray old("an older file that must survive");
    {
        QFile f(out);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(old);
    }
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = saved;
    limited.rlim_cur = rlim_t(bytesOf(source).size() / 2);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const bool saved_ok = C3D::saveEditedTake(source, take.frames, take.frames, out, &error);
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(saved_ok);
    EXPECT_TRUE(error.contains("old file is left as it was")) << error.toStdString();
    EXPECT_EQ(bytesOf(out), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"kept.c3d"}) << "no temporary file is left";
}

} // namespace
