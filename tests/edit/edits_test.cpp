// Edits of real takes end to end: delete, fill by each method, revert, undo and
// redo through the editor; gaps and spikes found in known tracks.
#include "motion.h"

#include "host/edit/spikes.h"
#include "host/edit/takeedits.h"
#include "host/edit/takeeditor.h"
#include "host/tavview/take.h"
#include "support/data.h"

#include <QSignalSpy>
#include <QUndoStack>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

bool sameTake(const TAV::Frames& a, const TAV::Frames& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const TAV::Frame& fa, const TAV::Frame& fb) {
        return std::equal(fa.markers.begin(), fa.markers.end(), fb.markers.begin(), fb.markers.end(), sameSample);
    });
}

TEST(EditsOfASampleTake, DeleteFillRevertUndoAndRedo)
{
    TAV_REQUIRE_SAMPLE_DATA();
    Take take;
    QString error;
    ASSERT_TRUE(loadTake(sampleC3D("Eb015pi.c3d"), take, error)) << error.toStdString();
    TakeEditor editor;
    editor.Attach(&take.frames);
    QSignalSpy edited(&editor, &TakeEditor::Edited);
    // Ten frames inside a long valid run of marker 0.
    int start = 0;
    while (start + 60 < take.frameCount() && !TrackReader(take.frames).validThrough(0, start, start + 59))
        ++start;
    ASSERT_LT(start + 60, take.frameCount()) << "marker 0 needs a long valid run";
    const FrameSpan cut{start + 25, start + 34};

    EXPECT_EQ(editor.Delete({0}, cut), 10);
    EXPECT_EQ(edited.takeLast(), (QList<QVariant>{cut.first, cut.last}));
    const TAV::Frames deleted = take.frames;
    EXPECT_EQ(markerAt(deleted, deleted.size(), 0), nullptr) << "no frame past the take";

    for (FillMethod m : allFillMethods()) {
        SCOPED_TRACE(fillMethodName(m).toStdString());
        FillChoice choice;
        choice.method = m;
        const FillReport r = editor.Fill({0}, cut, choice, 0);
        ASSERT_EQ(r.filled.size(), 1u) << r.problems.join(QLatin1Char(';')).toStdString();
        EXPECT_EQ(r.samples, 10);
        for (int f = cut.first; f <= cut.last; ++f) {
            const TAV::Marker *s = markerAt(take.frames, f, 0), *was = markerAt(editor.original(), f, 0);
            EXPECT_TRUE(isFilled(*s));
            EXPECT_EQ(s->cond, C3D::FilledCondition);
            EXPECT_LT(std::hypot(s->x - was->x, s->y - was->y, s->z - was->z), 50.0f) << "frame " << f;
        }
        editor.undoStack()->undo();
        EXPECT_TRUE(sameTake(take.frames, deleted)) << "undoing the fill restores the gap";
    }

    editor.undoStack()->undo();
    EXPECT_TRUE(sameTake(take.frames, editor.original())) << "undoing the delete";
    editor.undoStack()->redo();
    EXPECT_TRUE(sameTake(take.frames, deleted)) << "redoing it";
    const FrameSpan all{0, take.frameCount() - 1};
    EXPECT_EQ(editor.Revert({0}, all), 10);
    EXPECT_TRUE(sameTake(take.frames, editor.original()));
    EXPECT_EQ(editor.Revert({0}, all), 0) << "nothing left to revert";
    EXPECT_EQ(editor.undoStack()->count(), 2) << "a revert that changes nothing makes no step";
}

TEST(Gaps, AreRunsWithAValidSampleOnBothSides)
{
    TAV::Frames t = motion::take(100);
    for (FrameSpan s : {FrameSpan{0, 4}, FrameSpan{20, 22}, FrameSpan{40, 59}, FrameSpan{95, 99}})
        applyChanges(t, deletion(t, {1}, s), false);
    const struct {
        const char* name;
        FrameSpan span;
        int maxLength;
        std::vector<std::pair<int, int>> gaps;
    } rows[] = {
        {"the whole take leaves out both ends", {0, 99}, 0, {{20, 22}, {40, 59}}},
        {"a span inside a gap takes all of it", {45, 50}, 0, {{40, 59}}},
        {"long gaps are left out", {0, 99}, 10, {{20, 22}}},
    };
    for (const auto& row : rows) {
        std::vector<std::pair<int, int>> found;
        for (const Gap& g : gapsOf(TrackReader(t), 1, row.span, row.maxLength))
            found.emplace_back(g.first, g.last);
        EXPECT_EQ(found, row.gaps) << row.name;
    }
}

// Marker 0 of smooth motion displaced by 20 mm at frame 300 bends its track by
// 40 mm per frame² there and its neighbours by half that: only the displaced
// sample is a spike above 30, none is above 45. Deleting and filling the spikes
// is one undo step.
TEST(Spikes, AreDeletedAndFilledInOneUndoStep)
{
    TAV::Frames t = motion::take(600);
    const float clean = t[300].markers[0].y;
    t[300].markers[0].y += 20;
    EXPECT_EQ(spikeFrames(t, 0, 30), std::vector<int>{300});
    EXPECT_TRUE(spikeFrames(t, 0, 45).empty());
    const TAV::Frames spiky = t;
    TakeEditor editor;
    editor.Attach(&t);
    FillChoice spline;
    spline.method = FillMethod::Spline;
    EXPECT_EQ(editor.DeleteSpikes({0}, 10, &spline), 1);
    EXPECT_NEAR(t[300].markers[0].y, clean, 0.05f);
    editor.undoStack()->undo();
    EXPECT_TRUE(sameTake(t, spiky));
}

} // namespace
