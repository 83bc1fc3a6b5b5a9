#include "GL/glwindow.h"
#include "tests/hostview/probe.h"
#include "tests/support/patience.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <string>

namespace {

// A shown 200 x 100 window whose one view covers its left 150 pixels; pixel (i, j)
// of the view (j up) shows data (10 + i / 2, 20 + j / 4).
class ShownWindow : public testing::Test {
protected:
    GLWindow window;
    GLW view;
    Probe probe;

    void SetUp() override
    {
        window.resize(200, 100);
        view.rect = QRectF(0, 0, 150, 100);
        view.viewport.pos = Vector(10, 20, 0);
        view.viewport.scale = Vector(2, 4, 1);
        window.AddView(&view);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, patienceMs));
    }

    // Other test processes may share the display and take its focus, so the window
    // is made active inside this process only, right before the key arrives.
    void activate()
    {
        QApplication::setActiveWindow(&window);
        window.setFocus();
        ASSERT_EQ(QApplication::focusWidget(), &window);
    }
};

// A view whose edges are not finite, or equal, is not painted: its projection would
// be undefined. Each row makes exactly one edge fail.
TEST_F(ShownWindow, ViewsWithoutFiniteDistinctEdgesAreNotPainted)
{
    const struct {
        const char* name;
        Vector pos, scale;
        bool painted;
    } rows[] = {{"ordinary", {10, 20, 0}, {2, 4, 1}, true},
                {"left edge overflows", {-3.4e38f, 0, 0}, {1e-36f, 1, 1}, false},
                {"right edge overflows", {0, 0, 0}, {1e-37f, 1, 1}, false},
                {"bottom edge overflows", {0, -3.4e38f, 0}, {1, 1e-36f, 1}, false},
                {"top edge overflows", {0, 0, 0}, {1, 1e-37f, 1}, false},
                {"zero width", {0, 0, 0}, {0, 1, 1}, false},
                {"edges round together", {1e6f, 0, 0}, {1e9f, 1, 1}, false}};
    QSignalSpy paints(&window, &GLWindow::Paint2D);
    for (const auto& r : rows) {
        view.viewport.pos = r.pos;
        view.viewport.scale = r.scale;
        paints.clear();
        window.updateGL();
        EXPECT_EQ(paints.count(), r.painted ? 1 : 0) << r.name;
    }
}

// Keys reach the window's key actions by their shortcut; mouse actions run on
// their exact binding (button and modifiers) when the event is over their view.
TEST_F(ShownWindow, ActionsRunTheirSlotOnTheirBindingOnly)
{
    window.NewAction("Ctrl+.", "nextaoi", &probe, SLOT(NextAOI()));
    window.NewAction("r", "selectregion", &probe, SLOT(SelectRegion()));
    view.NewMouseAction(0x1, 0, "movecursor", &probe, SLOT(MoveCursor(Mouse*, bool)));
    view.NewMouseAction(0x4000008, 0, "expandselect", &probe, SLOT(ExpandSelect()));
    const struct {
        const char* name;
        bool key;
        int code; // a Qt::Key or a Qt::MouseButton
        Qt::KeyboardModifiers modifiers;
        QStringList calls;
        QPoint at = QPoint(25, 70);
    } rows[] = {{"CtrlPeriod", true, Qt::Key_Period, Qt::ControlModifier, {"NextAOI"}},
                {"PeriodWithoutCtrl", true, Qt::Key_Period, Qt::NoModifier, {}},
                {"Letter", true, Qt::Key_R, Qt::NoModifier, {"SelectRegion"}},
                {"LeftClick", false, Qt::LeftButton, Qt::NoModifier, {"MoveCursor(true)", "MoveCursor(false)"}},
                {"CtrlXButton1", false, Qt::XButton1, Qt::ControlModifier, {"ExpandSelect"}},
                {"XButton1WithoutCtrl", false, Qt::XButton1, Qt::NoModifier, {}},
                {"ShiftLeft", false, Qt::LeftButton, Qt::ShiftModifier, {}},
                {"OutsideTheView", false, Qt::LeftButton, Qt::NoModifier, {}, {175, 70}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        probe.calls.clear();
        if (row.key) {
            activate();
            QTest::keyClick(&window, Qt::Key(row.code), row.modifiers);
        } else {
            QTest::mousePress(&window, Qt::MouseButton(row.code), row.modifiers, row.at);
            QTest::mouseRelease(&window, Qt::MouseButton(row.code), row.modifiers, row.at);
        }
        EXPECT_EQ(probe.calls, row.calls);
    }
}

// Each view holds its own actions, so a graph finds its own by name; a second
// action of the same name on the same view replaces the first.
TEST_F(ShownWindow, KeyActionsBelongToTheViewTheyServe)
{
    GLW other;
    other.rect = QRectF(150, 0, 50, 100);
    window.AddView(&other);
    Probe second;
    const QPointer<QAction> replaced = window.NewAction("t", "nextaoi", &probe, SLOT(SelectRegion()));
    QAction* mine = window.NewAction("", "nextaoi", &probe, SLOT(NextAOI()));
    window.SetCurrentView(&view);
    QAction* theirs = window.NewAction("", "nextaoi", &second, SLOT(NextAOI()));

    EXPECT_TRUE(replaced.isNull());
    EXPECT_TRUE(mine->shortcut().isEmpty()) << "an empty key is no shortcut";
    EXPECT_EQ(other.findChildren<QAction*>("nextaoi"), QList<QAction*>{mine});
    EXPECT_EQ(view.findChild<QAction*>("nextaoi"), theirs);
    window.SetCurrentView(&other);
    EXPECT_TRUE(window.DeleteAction("nextaoi"));
    EXPECT_EQ(view.findChild<QAction*>("nextaoi"), theirs);
    theirs->trigger();
    EXPECT_EQ(second.calls, QStringList{"NextAOI"});
    EXPECT_TRUE(probe.calls.isEmpty());
}

// The slot sees the window's own mouse record, rows counted up from the bottom.
TEST_F(ShownWindow, MouseSlotFollowsTheWindowMouseThroughADrag)
{
    view.NewMouseAction(0x1, 0, "movecursor", &probe, SLOT(MoveCursor(Mouse*, bool)));
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, QPoint(25, 70));
    EXPECT_EQ(probe.lastMouse, &window.mouse);
    EXPECT_EQ(QPoint(probe.seen.x, probe.seen.y), QPoint(25, 29));

    QMouseEvent drag(QEvent::MouseMove, QPointF(31, 70), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drag);
    EXPECT_EQ(QPoint(probe.seen.dx, probe.seen.x0), QPoint(6, 25));

    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, QPoint(31, 70));
    EXPECT_EQ(probe.calls, (QStringList{"MoveCursor(true)", "MoveCursor(true)", "MoveCursor(false)"}));
    EXPECT_EQ(window.mouse.button, 0);
}

// Each right click fills a fresh tree, asking each receiver once, and pops it up
// where the click was: the receiver now inserts less, and only that shows.
TEST_F(ShownWindow, RightClickShowsAFreshMenuAndRunsNoSlot)
{
    QAction* markers = window.NewAction("", "enable_markers", &probe, SLOT(EnableMarkers(bool)));
    QAction* next = window.NewAction("Ctrl+.", "nextaoi", &probe, SLOT(NextAOI()));
    window.AddContextMenuReceiver(&probe);
    window.AddContextMenuReceiver(&probe);
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(25, 70), window.mapToGlobal(QPoint(25, 70)));
    const auto open = [&](const QStringList& paths) {
        probe.menuPaths = paths;
        QApplication::sendEvent(&window, &click);
        QMenu* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        const QList<QAction*> shown = menu ? menu->actions() : QList<QAction*>();
        if (menu) {
            EXPECT_EQ(menu->pos(), window.mapToGlobal(QPoint(25, 70)));
            menu->close();
        }
        return shown;
    };
    EXPECT_EQ(open({"nextaoi", "enable_markers"}), (QList<QAction*>{next, markers}));
    EXPECT_EQ(open({"enable_markers"}), QList<QAction*>{markers});
    EXPECT_EQ(probe.calls, (QStringList{"InitContextMenuTree", "InitContextMenuTree"}));
}

// A red rectangle whose edges lie a quarter pixel outside the centres of view pixels
// i 20..39 and j 10..29 covers exactly those (half a pixel off would lose a row or
// column), over a green one that fills the rest of the view.
TEST_F(ShownWindow, DataCoordinatesLandOnTheirPixels)
{
    // Read while painting: the back buffer then holds exactly this frame.
    QImage image;
    QObject::connect(&window, &GLWindow::Paint2D, [&image](GLW*) {
        glColor3f(0, 1, 0);
        glRectf(-1000, -1000, 1000, 1000);
        glColor3f(1, 0, 0);
        glRectf(19.875f, 22.4375f, 29.625f, 27.3125f);
        QImage rows(200, 100, QImage::Format_RGBA8888);
        glReadPixels(0, 0, 200, 100, GL_RGBA, GL_UNSIGNED_BYTE, rows.bits());
        image = rows.mirrored();
    });
    const struct {
        const char* name;
        QRectF rect;
        QPoint origin; // the view's top-left pixel in the window
        int height;
    } insets[] = {{"AtTheOrigin", QRectF(0, 0, 150, 100), {0, 0}, 100},
                  {"InsetBelowTheTop", QRectF(100, 10, 90, 50), {100, 10}, 50}};
    for (const auto& inset : insets) {
        SCOPED_TRACE(inset.name);
        view.rect = inset.rect;
        image = QImage();
        window.updateGL();
        ASSERT_FALSE(image.isNull());
        const QRgb red = qRgb(255, 0, 0), green = qRgb(0, 255, 0);
        const struct {
            int i, j;
            QRgb colour;
        } expected[] = {{20, 10, red},  {39, 29, red},   {19, 10, green}, {40, 29, green},
                        {20, 9, green}, {39, 30, green}, {0, 0, green},   {0, inset.height - 1, green}};
        for (const auto& e : expected)
            EXPECT_EQ(image.pixel(inset.origin.x() + e.i, inset.origin.y() + inset.height - 1 - e.j), e.colour)
                << "view pixel " << e.i << ", " << e.j;
        EXPECT_EQ(image.pixel(199, 0), qRgb(38, 38, 38)) << "outside every view: the clear colour";
    }
}

} // namespace
