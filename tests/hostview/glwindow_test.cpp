#include "GL/glwindow.h"
#include "tests/hostview/probe.h"

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
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
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

TEST_F(ShownWindow, RepaintCounterPaintsOnceAskedAndResets)
{
    QSignalSpy paints(&window, &GLWindow::Paint2D);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.update == 0 && paints.count() > 0; }));
    QTest::qWait(100);
    const int settled = paints.count();
    ASSERT_EQ(window.update, 0);

    window.update += 1;
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.update == 0 && paints.count() > settled; }));
    EXPECT_EQ(paints.last().at(0).value<GLW*>(), &view);
}

struct KeyPress {
    const char* name;
    const char* key;
    const char* slot;
    Qt::Key press;
    Qt::KeyboardModifiers modifiers;
    QStringList calls;
};

void PrintTo(const KeyPress& row, std::ostream* os) { *os << row.name; }

class KeyActions : public ShownWindow, public testing::WithParamInterface<KeyPress> {};

TEST_P(KeyActions, RunTheirSlotOnTheirShortcutOnly)
{
    QAction* a = window.NewAction(GetParam().key, "action", &probe, GetParam().slot);
    ASSERT_EQ(view.findChild<QAction*>("action"), a);
    activate();
    QTest::keyClick(&window, GetParam().press, GetParam().modifiers);
    EXPECT_EQ(probe.calls, GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KeyActions,
    testing::Values(KeyPress{"CtrlPeriod", "Ctrl+.", SLOT(NextAOI()), Qt::Key_Period, Qt::ControlModifier, {"NextAOI"}},
                    KeyPress{"PeriodWithoutCtrl", "Ctrl+.", SLOT(NextAOI()), Qt::Key_Period, Qt::NoModifier, {}},
                    KeyPress{"Letter", "r", SLOT(SelectRegion()), Qt::Key_R, Qt::NoModifier, {"SelectRegion"}},
                    KeyPress{"EmptyKeyHasNoShortcut", "", SLOT(SelectRegion()), Qt::Key_R, Qt::NoModifier, {}}),
    [](const testing::TestParamInfo<KeyPress>& i) { return std::string(i.param.name); });

TEST_F(ShownWindow, KeyActionsBelongToTheViewTheyServe)
{
    GLW other;
    other.rect = QRectF(150, 0, 50, 100);
    window.AddView(&other);
    Probe second;
    QAction* mine = window.NewAction("", "nextaoi", &probe, SLOT(NextAOI()));
    window.SetCurrentView(&view);
    QAction* theirs = window.NewAction("", "nextaoi", &second, SLOT(NextAOI()));

    EXPECT_EQ(other.findChild<QAction*>("nextaoi"), mine);
    EXPECT_EQ(view.findChild<QAction*>("nextaoi"), theirs);
    window.SetCurrentView(&other);
    EXPECT_TRUE(window.DeleteAction("nextaoi"));
    EXPECT_EQ(view.findChild<QAction*>("nextaoi"), theirs);
    theirs->trigger();
    EXPECT_EQ(second.calls, QStringList{"NextAOI"});
    EXPECT_TRUE(probe.calls.isEmpty());
}

struct Click {
    const char* name;
    Qt::MouseButton button;
    Qt::KeyboardModifiers modifiers;
    QPoint at;
    QStringList calls;
};

void PrintTo(const Click& row, std::ostream* os) { *os << row.name; }

class MouseActions : public ShownWindow, public testing::WithParamInterface<Click> {};

TEST_P(MouseActions, RunOnTheirExactBindingOverTheView)
{
    view.NewMouseAction(0x1, 0, "movecursor", &probe, SLOT(MoveCursor(Mouse*, bool)));
    view.NewMouseAction(0x4000008, 0, "expandselect", &probe, SLOT(ExpandSelect()));
    QTest::mousePress(&window, GetParam().button, GetParam().modifiers, GetParam().at);
    QTest::mouseRelease(&window, GetParam().button, GetParam().modifiers, GetParam().at);
    EXPECT_EQ(probe.calls, GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MouseActions,
    testing::Values(Click{"LeftPressAndRelease", Qt::LeftButton, Qt::NoModifier, {25, 70},
                          {"MoveCursor(true)", "MoveCursor(false)"}},
                    Click{"CtrlXButton1", Qt::XButton1, Qt::ControlModifier, {25, 70}, {"ExpandSelect"}},
                    Click{"XButton1WithoutCtrl", Qt::XButton1, Qt::NoModifier, {25, 70}, {}},
                    Click{"ShiftLeft", Qt::LeftButton, Qt::ShiftModifier, {25, 70}, {}},
                    Click{"OutsideTheView", Qt::LeftButton, Qt::NoModifier, {175, 70}, {}}),
    [](const testing::TestParamInfo<Click>& i) { return std::string(i.param.name); });

TEST_F(ShownWindow, MouseSlotFollowsTheWindowMouseThroughADrag)
{
    view.NewMouseAction(0x1, 0, "movecursor", &probe, SLOT(MoveCursor(Mouse*, bool)));
    QMouseEvent hover(QEvent::MouseMove, QPointF(20, 70), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &hover);
    EXPECT_TRUE(probe.calls.isEmpty()) << "moving without a button runs nothing";

    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, QPoint(25, 70));
    EXPECT_EQ(probe.lastMouse, &window.mouse);
    EXPECT_EQ(probe.seen.x, 25);
    EXPECT_EQ(probe.seen.y, 29) << "rows count up from the bottom";
    EXPECT_EQ(probe.seen.button, int(Qt::LeftButton));
    EXPECT_EQ(view.Cursor(), Vector(22.5f, 27.25f, 0));

    QMouseEvent drag(QEvent::MouseMove, QPointF(31, 70), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drag);
    EXPECT_EQ(probe.seen.x, 31);
    EXPECT_EQ(probe.seen.dx, 6);
    EXPECT_EQ(probe.seen.x0, 25);

    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, QPoint(31, 70));
    EXPECT_EQ(probe.calls, (QStringList{"MoveCursor(true)", "MoveCursor(true)", "MoveCursor(false)"}));
    EXPECT_EQ(window.mouse.button, 0);
    EXPECT_EQ(window.mouse.last_button, int(Qt::LeftButton));
}

TEST_F(ShownWindow, RightClickShowsAFreshMenuAndRunsNoSlot)
{
    QAction* markers = window.NewAction("", "enable_markers", &probe, SLOT(EnableMarkers(bool)));
    QAction* next = window.NewAction("Ctrl+.", "nextaoi", &probe, SLOT(NextAOI()));
    markers->setCheckable(true);
    next->setCheckable(true);
    probe.menuPaths = QStringList{"nextaoi", "enable_markers"};
    window.AddContextMenuReceiver(&probe);
    QSignalSpy asked(&window, &GLWindow::ContextMenuRequested);

    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(25, 70), window.mapToGlobal(QPoint(25, 70)));
    QApplication::sendEvent(&window, &click);
    QMenu* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions(), (QList<QAction*>{next, markers}));
    EXPECT_TRUE(markers->isChecked() && next->isChecked());
    EXPECT_EQ(probe.calls, QStringList{"InitContextMenuTree"}) << "check marks are set without running slots";
    EXPECT_EQ(asked.count(), 1);
    menu->close();

    // The receiver now inserts less: a fresh tree shows only that.
    probe.menuPaths = QStringList{"enable_markers"};
    probe.checkAll = false;
    QApplication::sendEvent(&window, &click);
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions(), QList<QAction*>{markers});
    EXPECT_FALSE(markers->isChecked());
    EXPECT_EQ(probe.calls, (QStringList{"InitContextMenuTree", "InitContextMenuTree"}));
    menu->close();
}

struct Inset {
    const char* name;
    QRectF rect;
    QPoint origin; // the view's top-left pixel in the window
    int height;
};

void PrintTo(const Inset& row, std::ostream* os) { *os << row.name; }

class Pixels : public ShownWindow, public testing::WithParamInterface<Inset> {};

void quad(float x0, float y0, float x1, float y1, float z)
{
    glBegin(GL_QUADS);
    glVertex3f(x0, y0, z);
    glVertex3f(x1, y0, z);
    glVertex3f(x1, y1, z);
    glVertex3f(x0, y1, z);
    glEnd();
}

// A red quad whose edges lie a quarter pixel outside the centres of view pixels
// i 20..39 and j 10..29 covers exactly those (half a pixel off would lose a row or
// column); a green one behind it (smaller z) fills the rest of the view.
TEST_P(Pixels, DataCoordinatesLandOnTheirPixels)
{
    const Inset& row = GetParam();
    view.rect = row.rect;
    // Read while painting: the back buffer then holds exactly this frame.
    QImage image;
    QObject::connect(&window, &GLWindow::Paint2D, [&image](GLW*) {
        glEnable(GL_DEPTH_TEST);
        glColor3f(1, 0, 0);
        quad(19.875f, 22.4375f, 29.625f, 27.3125f, 0.2f);
        glColor3f(0, 1, 0);
        quad(-1000, -1000, 1000, 1000, 0.1f);
        glDisable(GL_DEPTH_TEST);
        QImage rows(200, 100, QImage::Format_RGBA8888);
        glReadPixels(0, 0, 200, 100, GL_RGBA, GL_UNSIGNED_BYTE, rows.bits());
        image = rows.mirrored();
    });
    window.updateGL();
    ASSERT_FALSE(image.isNull());
    const auto at = [&](int i, int j) { return image.pixel(row.origin.x() + i, row.origin.y() + row.height - 1 - j); };
    const QRgb red = qRgb(255, 0, 0), green = qRgb(0, 255, 0);

    EXPECT_EQ(at(20, 10), red);
    EXPECT_EQ(at(39, 29), red);
    EXPECT_EQ(at(19, 10), green);
    EXPECT_EQ(at(40, 29), green);
    EXPECT_EQ(at(20, 9), green);
    EXPECT_EQ(at(39, 30), green);
    EXPECT_EQ(at(0, 0), green);
    EXPECT_EQ(at(0, row.height - 1), green);
    EXPECT_EQ(image.pixel(199, 0), qRgb(38, 38, 38)) << "outside every view: the clear colour";
}

INSTANTIATE_TEST_SUITE_P(Rows, Pixels,
                         testing::Values(Inset{"AtTheOrigin", QRectF(0, 0, 150, 100), {0, 0}, 100},
                                         Inset{"InsetBelowTheTop", QRectF(100, 10, 90, 50), {100, 10}, 50}),
                         [](const testing::TestParamInfo<Inset>& i) { return std::string(i.param.name); });

} // namespace
