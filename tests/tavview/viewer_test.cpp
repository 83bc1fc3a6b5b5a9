#include "host/tavview/areaspanel.h"
#include "host/tavview/playback.h"
#include "tests/support/data.h"
#include "tests/tavview/viewer.h"

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTreeWidget>
#include <QWheelEvent>

#include <cmath>

namespace {

const TrackSelection markerOne{{1}, {}};

QPair<qint64, qint64> pair(const QList<QVariant>& args)
{
    return {args.at(0).toLongLong(), args.at(1).toLongLong()};
}

QStringList actionNames(const QMenu& menu)
{
    QStringList names;
    for (QAction* a : menu.actions())
        names << (a->menu() ? a->menu()->objectName() : a->objectName());
    return names;
}

TEST_F(Viewer, OpeningAFileShowsFrameAndTimeInTheTakesOwnNumbering)
{
    TAV_REQUIRE_SAMPLE_DATA();
    show(defaultTake(), markerOne);
    ASSERT_TRUE(window->OpenPath(sampleC3D(QStringLiteral("Walking_Hybrid_1_1.c3d"))));
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Walking_Hybrid_1_1.c3d")));
    EXPECT_EQ(window->rigidList()->count(), 0);
    EXPECT_EQ(panel->framesInfo().finish, 672);
    EXPECT_EQ(window->cursorLabel()->text(), QStringLiteral("Frame 290 (1 of 672)   0.000 s"));
    EXPECT_EQ(window->selectionLabel()->text(), QStringLiteral("Selection 290 to 961 (672 frames)"));
    panel->SeekFrame(240);
    EXPECT_EQ(window->cursorLabel()->text(), QStringLiteral("Frame 530 (241 of 672)   1.000 s"));
}

// Marker 1 of the built-in take has gaps at 100..139 and 400..405.
TEST_F(Viewer, NextAndPreviousAreaKeysJumpAndSelectTheGap)
{
    show(defaultTake(), markerOne);
    QSignalSpy select(graph, SIGNAL(Select(QRectF)));
    QSignalSpy selection(graph, SIGNAL(SelectionChanged(qint64, qint64)));
    QSignalSpy region(graph, SIGNAL(RegionChanged(qint64, qint64)));
    view->viewport.pos.x = 250.25f;

    QTest::keyClick(gl, Qt::Key_Period, Qt::ControlModifier);
    ASSERT_EQ(select.count(), 1);
    EXPECT_EQ(select.last().at(0).toRectF(), QRectF(398, 0, 9, 0)) << "the run widened by two frames";
    EXPECT_FLOAT_EQ(view->viewport.pos.x, 400.25f);
    ASSERT_EQ(selection.count(), 1);
    EXPECT_EQ(pair(selection.last()), qMakePair(qint64(398), qint64(407)));
    EXPECT_EQ(pair(region.last()), qMakePair(qint64(398), qint64(407)));
    EXPECT_EQ(window->selectionLabel()->text(), QStringLiteral("Selection 399 to 408 (10 frames)"));
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Region 399 to 408 (10 frames)"));

    QTest::keyClick(gl, Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view->viewport.pos.x, 100.25f) << "wraps to the first gap";
    EXPECT_EQ(pair(selection.last()), qMakePair(qint64(98), qint64(141)));

    QTest::keyClick(gl, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view->viewport.pos.x, 400.25f);
    EXPECT_EQ(select.count(), 3);
}

TEST_F(Viewer, LeftClickSeeksAndDragScrubs)
{
    show(defaultTake(), markerOne);
    QSignalSpy seek(graph, SIGNAL(Seek(qint64, int)));
    QSignalSpy moved(panel, &GraphPanel::CursorMoved);
    const QPoint at = pixelAt(123.2);
    const qint64 expected = qint64(std::floor(xAt(at) + 0.5));
    QTest::mouseClick(gl, Qt::LeftButton, Qt::NoModifier, at);
    ASSERT_GE(seek.count(), 1);
    EXPECT_EQ(seek.first().at(0).toLongLong(), expected);
    EXPECT_EQ(panel->current(), expected);
    EXPECT_EQ(moved.last().at(0).toLongLong(), expected);
    EXPECT_TRUE(window->cursorLabel()->text().startsWith(QStringLiteral("Frame %1 ").arg(expected + 1)));
}

TEST_F(Viewer, SelectRegionKeyTakesTheRunUnderTheMouse)
{
    show(defaultTake(), markerOne);
    QSignalSpy selection(graph, SIGNAL(SelectionChanged(qint64, qint64)));
    const QPoint at = pixelAt(120);
    QCursor::setPos(gl->mapToGlobal(at));
    QTest::mouseMove(gl, at);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gl->mouse.x == at.x(); }));
    QTest::keyClick(gl, Qt::Key_R);
    ASSERT_EQ(selection.count(), 1);
    EXPECT_EQ(pair(selection.last()), qMakePair(qint64(98), qint64(141)));
}

// Building the menu sets check marks on the checkable "nextaoi" and "prevaoi":
// that must not run them. Each menu gets a fresh tree, so it shows what the graph
// inserts now ("clearoffsets" once there are offsets), each entry once.
TEST_F(Viewer, OpeningTheContextMenuRunsNoSlotAndShowsTheGraphsCurrentEntries)
{
    show(defaultTake(), markerOne);
    QSignalSpy select(graph, SIGNAL(Select(QRectF)));
    view->viewport.pos.x = 250.25f;
    const auto menuNames = [&] {
        QMenu menu;
        EXPECT_GT(gl->FillContextMenu(&menu, view, nullptr), 0);
        return actionNames(menu);
    };
    QStringList names = menuNames();
    EXPECT_TRUE(names.contains(QStringLiteral("display")));
    EXPECT_FALSE(names.contains(QStringLiteral("clearoffsets")));
    EXPECT_EQ(select.count(), 0);
    EXPECT_FLOAT_EQ(view->viewport.pos.x, 250.25f);

    QTest::mouseMove(gl, pixelAt(50));
    QTest::keyClick(gl, Qt::Key_T);
    names = menuNames();
    EXPECT_EQ(names.count(QStringLiteral("nextaoi")), 1);
    EXPECT_TRUE(names.contains(QStringLiteral("clearoffsets")));
}

TEST_F(Viewer, ShiftDragSelectsFramesAndTheSelectionSurvivesCursorMoves)
{
    show(defaultTake(), markerOne);
    QSignalSpy selection(panel, &GraphPanel::SelectionChanged);
    const QPoint a = pixelAt(200.3), b = pixelAt(260.6);
    QTest::mousePress(gl, Qt::LeftButton, Qt::ShiftModifier, a);
    QTest::mouseRelease(gl, Qt::LeftButton, Qt::ShiftModifier, b);
    ASSERT_EQ(selection.count(), 1);
    const qint64 first = qint64(xAt(a) + 0.5), last = qint64(xAt(b) + 0.5);
    EXPECT_EQ(pair(selection.last()), qMakePair(first, last));

    panel->SeekFrame(10);
    EXPECT_EQ(panel->selectionFirst(), first) << "the working range is not taken again";
    EXPECT_EQ(panel->selectionLast(), last);
}

// A middle drag pans with the scale kept; the wheel zooms time about the mouse,
// with Ctrl the values too.
TEST_F(Viewer, MiddleDragPansAndTheWheelZooms)
{
    show(defaultTake(), markerOne);
    const Vector scale = view->viewport.scale;
    const QPoint a = pixelAt(300), b = a + QPoint(-60, 25);
    const double x = xAt(a);
    QTest::mousePress(gl, Qt::MiddleButton, Qt::NoModifier, a);
    QTest::mouseMove(gl, b);
    QTest::mouseRelease(gl, Qt::MiddleButton, Qt::NoModifier, b);
    EXPECT_NEAR(xAt(b), x, 1e-3);
    EXPECT_EQ(view->viewport.scale, scale);

    auto wheel = [&](Qt::KeyboardModifiers mods) {
        QWheelEvent e(b, gl->mapToGlobal(b), QPoint(), QPoint(0, 120), Qt::NoButton, mods, Qt::NoScrollPhase, false);
        QApplication::sendEvent(gl, &e);
    };
    wheel(Qt::NoModifier);
    EXPECT_FLOAT_EQ(view->viewport.scale.x, scale.x * 1.25f);
    EXPECT_FLOAT_EQ(view->viewport.scale.y, scale.y);
    EXPECT_NEAR(xAt(b), x, 1e-3);
    wheel(Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view->viewport.scale.y, scale.y * 1.25f);
}

TEST_F(Viewer, FitKeysShowTheSelectionOrEveryFrame)
{
    show(defaultTake(), markerOne);
    const int w = int(view->width());
    panel->SelectFrames(100, 139);
    QTest::keyClick(gl, Qt::Key_F);
    EXPECT_LT(view->viewport.Left(w), 100);
    EXPECT_GT(view->viewport.Left(w), 95);
    EXPECT_GT(view->viewport.Right(w), 139);
    EXPECT_LT(view->viewport.Right(w), 144);
    QTest::keyClick(gl, Qt::Key_Home);
    EXPECT_LT(view->viewport.Left(w), 0);
    EXPECT_GT(view->viewport.Right(w), 600);
}

TEST_F(Viewer, SpacePlaysAndStops)
{
    show(defaultTake(), markerOne);
    QTest::keyClick(gl, Qt::Key_Space);
    EXPECT_TRUE(window->playback()->isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel->current() > 5; }, 5000));
    QTest::keyClick(gl, Qt::Key_Space);
    EXPECT_FALSE(window->playback()->isPlaying());
    const qint64 stopped = panel->current();
    QTest::qWait(100);
    EXPECT_EQ(panel->current(), stopped);
}

TEST_F(Viewer, AreasPanelListsTheGapsAndJumpsOnDoubleClick)
{
    show(defaultTake(), markerOne);
    QTreeWidget* list = window->areas()->list();
    ASSERT_EQ(list->topLevelItemCount(), 2);
    const QTreeWidgetItem* second = list->topLevelItem(1);
    EXPECT_EQ(second->text(0), QStringLiteral("gap"));
    EXPECT_EQ(second->text(1), QStringLiteral("401")) << "numbered from the take's first frame";
    EXPECT_EQ(second->text(2), QStringLiteral("406"));
    EXPECT_EQ(second->text(3), QStringLiteral("6"));

    QSignalSpy selection(panel, &GraphPanel::SelectionChanged);
    view->viewport.pos.x = 50;
    const QRect row = list->visualItemRect(second);
    // As a real double click arrives: a click, then the double click.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    EXPECT_EQ(panel->current(), 400);
    ASSERT_GE(selection.count(), 1);
    EXPECT_EQ(pair(selection.last()), qMakePair(qint64(400), qint64(405)));
    const int w = int(view->width());
    EXPECT_LE(view->viewport.Left(w), 400);
    EXPECT_GE(view->viewport.Right(w), 405);
}

TEST_F(Viewer, TrackListsDriveTheGraphsSelection)
{
    show(defaultTake(), markerOne);
    window->rigidList()->item(0)->setSelected(true);
    EXPECT_EQ(panel->trackSelection().rigids, QList<int>{0});
    EXPECT_EQ(panel->tracks().size(), 2);
    // The rigid body's gap (250..289) joins the list.
    QTreeWidget* list = window->areas()->list();
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItem(1)->text(1), QStringLiteral("251"));

    window->markerList()->clearSelection();
    window->rigidList()->clearSelection();
    EXPECT_TRUE(panel->trackSelection().isEmpty());
    EXPECT_EQ(list->topLevelItemCount(), 0);
}

} // namespace
