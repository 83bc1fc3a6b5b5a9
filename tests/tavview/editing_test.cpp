// Editing a take in the main window: the view's actions, undo, the fill method, saving.
#include "host/c3d/c3dtake.h"
#include "host/tavview/editing.h"
#include "tests/tavview/viewer.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

// Delete empties the selection, Ctrl+Z brings it back, "Original Tracks" shows the
// unedited samples while on, and the tool fills by the method checked in the Fill
// Method menu: one check mark, the fixed method's or "best".
TEST_F(Viewer, DeleteUndoOriginalTracksAndFillThroughTheViewsActions)
{
    show();
    // The cond of frame f's sample of marker 1, the one track shown.
    const auto shownCond = [&](int f) { return panel->tracks().at(0).markers.at(f).cond; };
    panel->SelectFrames(200, 209);
    const float before = shownCond(205);
    ASSERT_GT(before, 0.0f) << "the built-in take's marker 1 is valid there";
    QTest::keyClick(gl, Qt::Key_Delete);
    EXPECT_EQ(shownCond(205), 0.0f);
    EXPECT_GT(shownCond(199), 0.0f) << "only the selection";

    viewAction("enable_original")->trigger();
    EXPECT_EQ(shownCond(205), before);
    viewAction("enable_original")->trigger();

    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shownCond(205), before);
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shownCond(205), 0.0f);

    Editing* editing = window->editing();
    const auto checked = [&] {
        QStringList names;
        for (const char* name : {"fill_linear", "fill_spline", "fill_pattern", "fill_rigid", "fill_best"})
            if (windowAction(name)->isChecked())
                names << QLatin1String(name);
        return names;
    };
    EXPECT_EQ(checked(), QStringList{"fill_linear"});
    windowAction("fill_spline")->trigger();
    EXPECT_EQ(editing->fillChoice().method, FillMethod::Spline);
    EXPECT_EQ(checked(), QStringList{"fill_spline"});
    windowAction("fill_best")->trigger();
    EXPECT_TRUE(editing->fillChoice().best);
    EXPECT_EQ(checked(), QStringList{"fill_best"});
    editing->SetBestMethod(false);
    EXPECT_EQ(checked(), QStringList{"fill_spline"});
    viewAction("applytool")->trigger();
    EXPECT_EQ(shownCond(205), C3D::FilledCondition);
}

// Saving over the file the take came from makes the saved edits what Revert
// returns to; saving a copy does not. The built-in take has no file.
TEST_F(Viewer, SavingOverItsFileMakesTheEditsTheOriginal)
{
    TAV_REQUIRE_SAMPLE_DATA();
    show();
    Editing* editing = window->editing();
    QString error;
    EXPECT_FALSE(editing->Save(QStringLiteral("/tmp/never.c3d"), error));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("take.c3d"));
    ASSERT_TRUE(QFile::copy(sampleC3D(QStringLiteral("Eb015pi.c3d")), path));
    ASSERT_TRUE(window->OpenPath(path));
    TakeEditor* editor = editing->editor();
    const auto validInOriginal = [&] {
        int n = 0;
        for (const TAV::Frame& f : editor->original())
            n += f.markers.at(0).cond > 0;
        return n;
    };
    const int valid = validInOriginal();
    ASSERT_GT(valid, 0);
    ASSERT_EQ(editor->Delete({0}, FrameSpan{0, panel->take().frameCount() - 1}), valid);
    ASSERT_TRUE(editing->Save(dir.filePath(QStringLiteral("copy.c3d")), error)) << error.toStdString();
    EXPECT_EQ(validInOriginal(), valid);
    ASSERT_TRUE(editing->Save(path, error)) << error.toStdString();
    EXPECT_EQ(validInOriginal(), 0);
}

} // namespace
