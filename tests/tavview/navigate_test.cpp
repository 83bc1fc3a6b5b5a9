// Moving about the take in the main window: keys, mouse and playback.
#include "host/tavview/playback.h"
#include "tests/tavview/viewer.h"

#include <QSignalSpy>
#include <QStatusBar>
#include <QWheelEvent>

namespace {

// Each row starts zoomed in on indices 100..140. Marker 1 of the built-in take
// has gaps at 100..139 and 400..405: the area keys step from the cursor (not from
// the view), land on the area, select it widened by two frames and bring it into view.
TEST_F(Viewer, KeysMoveTheCursorAndZoomWithTheViewFollowing)
{
    show();
    const struct {
        const char* name;
        Qt::Key key;
        Qt::KeyboardModifiers mods;
        qint64 cursor;
        qint64 landsFrom, landsTo; // inclusive
        double zoom;               // the time scale after, relative to before
        qint64 selectFirst, selectLast; // -1: the key selects nothing
    } rows[] = {
        {"End goes to the last frame", Qt::Key_End, Qt::NoModifier, 120, 599, 599, 1.0, -1, -1},
        {"Page Down moves a view's width on", Qt::Key_PageDown, Qt::NoModifier, 120, 155, 165, 1.0, -1, -1},
        {"Page Up moves a view's width back", Qt::Key_PageUp, Qt::NoModifier, 120, 75, 85, 1.0, -1, -1},
        {"plus zooms in", Qt::Key_Plus, Qt::NoModifier, 120, 120, 120, 1.25, -1, -1},
        {"minus zooms out", Qt::Key_Minus, Qt::NoModifier, 120, 120, 120, 0.8, -1, -1},
        {"next area from a good stretch", Qt::Key_Period, Qt::ControlModifier, 250, 400, 400, 1.0, 398, 407},
        {"next area from before the first", Qt::Key_Period, Qt::ControlModifier, 50, 100, 100, 1.0, 98, 141},
        {"next area past the last wraps", Qt::Key_Period, Qt::ControlModifier, 500, 100, 100, 1.0, 98, 141},
        {"previous area before the first wraps", Qt::Key_Comma, Qt::ControlModifier, 50, 400, 400, 1.0, 398, 407},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        panel->SeekFrame(row.cursor);
        zoomTo(100, 140);
        const float scale = view->viewport.scale.x;
        QTest::keyClick(gl, row.key, row.mods);
        EXPECT_GE(panel->current(), row.landsFrom);
        EXPECT_LE(panel->current(), row.landsTo);
        EXPECT_FLOAT_EQ(view->viewport.scale.x, float(scale * row.zoom));
        EXPECT_TRUE(inView(panel->current()));
        if (row.selectFirst >= 0) {
            EXPECT_EQ(panel->selectionFirst(), row.selectFirst);
            EXPECT_EQ(panel->selectionLast(), row.selectLast);
        }
    }
    // The status bar tells of the last one in the take's own numbering.
    EXPECT_EQ(window->selectionLabel()->text(), QStringLiteral("Selection 399 to 408 (10 frames)"));
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Region 399 to 408 (10 frames)"));
}

// A shift drag selects frames, kept as the cursor moves; a left click seeks; a
// middle drag pans with the scale kept; the wheel zooms time about the mouse,
// with Ctrl the values too.
TEST_F(Viewer, MouseSelectsSeeksPansAndZooms)
{
    show();
    QSignalSpy selection(panel, &GraphPanel::SelectionChanged);
    const QPoint from = pixelAt(200.3), to = pixelAt(260.6);
    QTest::mousePress(gl, Qt::LeftButton, Qt::ShiftModifier, from);
    QTest::mouseRelease(gl, Qt::LeftButton, Qt::ShiftModifier, to);
    ASSERT_EQ(selection.count(), 1);
    const QList<QVariant> dragged{qint64(xAt(from) + 0.5), qint64(xAt(to) + 0.5)};
    EXPECT_EQ(selection.last(), dragged);

    const QPoint at = pixelAt(123.2);
    const qint64 clicked = qint64(std::floor(xAt(at) + 0.5));
    QTest::mouseClick(gl, Qt::LeftButton, Qt::NoModifier, at);
    EXPECT_EQ(panel->current(), clicked);
    EXPECT_EQ(panel->selectionFirst(), dragged.at(0).toLongLong());

    const Vector scale = view->viewport.scale;
    const QPoint a = pixelAt(300), b = a + QPoint(-60, 25);
    const double x = xAt(a);
    QTest::mousePress(gl, Qt::MiddleButton, Qt::NoModifier, a);
    QTest::mouseMove(gl, b);
    QTest::mouseRelease(gl, Qt::MiddleButton, Qt::NoModifier, b);
    EXPECT_NEAR(xAt(b), x, 1e-3);
    EXPECT_EQ(view->viewport.scale, scale);

    const auto wheel = [&](Qt::KeyboardModifiers mods) {
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

// F fits the selection, Home every frame at the data's height.
TEST_F(Viewer, FitAndPlayKeys)
{
    show();
    const int w = int(view->width()), h = int(view->height());
    panel->SelectFrames(100, 139);
    QTest::keyClick(gl, Qt::Key_F);
    // A little room on each side.
    EXPECT_NEAR(view->viewport.Left(w), 97.5, 2.5);
    EXPECT_NEAR(view->viewport.Right(w), 141.5, 2.5);
    QTest::keyClick(gl, Qt::Key_Home);
    EXPECT_LT(view->viewport.Left(w), 0);
    EXPECT_GT(view->viewport.Right(w), 600);
    float lo = 1e30f, hi = -1e30f;
    for (const TAV::Marker& m : panel->tracks().at(0).markers)
        if (m.cond > 0)
            for (float v : {m.x, m.y, m.z})
                lo = std::min(lo, v), hi = std::max(hi, v);
    const float margin = 0.1f * (hi - lo);
    EXPECT_NEAR(view->viewport.Bottom(h), lo - margin / 2, margin / 2);
    EXPECT_NEAR(view->viewport.Top(h), hi + margin / 2, margin / 2);

    // Space plays with the view following, and stops.
    zoomTo(0, 10);
    QTest::keyClick(gl, Qt::Key_Space);
    EXPECT_TRUE(window->playback()->isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel->current() > 25; }, patienceMs));
    EXPECT_TRUE(inView(panel->current()));
    QTest::keyClick(gl, Qt::Key_Space);
    EXPECT_FALSE(window->playback()->isPlaying());
    const qint64 stopped = panel->current();
    QTest::qWait(100);
    EXPECT_EQ(panel->current(), stopped);
}

// A window resized while hidden is told its new size without the old one when it
// is shown again; it still shows the frames it showed, stretched to the new size.
TEST_F(Viewer, AWindowResizedWhileHiddenShowsTheSameFrames)
{
    show();
    zoomTo(100, 140);
    const QSize before = gl->size();
    window->hide();
    window->resize(window->width() + 200, window->height() + 100);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs));
    QCoreApplication::processEvents();
    ASSERT_NE(gl->size(), before);
    const int w = int(view->width());
    EXPECT_NEAR(view->viewport.Left(w), 100, 0.01);
    EXPECT_NEAR(view->viewport.Right(w), 140, 0.01);
}

} // namespace
