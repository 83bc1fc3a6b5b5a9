#include "GL/glw.h"
#include "GL/glwindow.h"
#include "tests/hostview/probe.h"

#include <QAction>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace {

// Fractions of the window below 1, pixels above; a negative x anchors to the right
// edge of the window, or to 0 without one.
TEST(GLW, PlacesTheViewInItsWindow)
{
    const struct {
        const char* name;
        int windowWidth, windowHeight; // 0: the view has no window
        QRectF rect;
        bool normal;
        QRectF geometry;
    } rows[] = {{"RightHalfInFractions", 800, 600, {0.5, 0, 0.5, 1}, true, {400, 0, 400, 600}},
                {"NegativeXAnchorsToTheRight", 800, 600, {-10, 0, 200, 100}, false, {590, 0, 200, 100}},
                {"NegativeFractionAnchorsToo", 800, 600, {-0.25, 0, 0.5, 1}, true, {200, 0, 400, 600}},
                {"WidthAboveOneMeansPixels", 800, 600, {0.25, 0.5, 1.5, 0.5}, false, {0.25, 0.5, 1.5, 0.5}},
                {"NoWindowAnchorsToZero", 0, 0, {-10, 0, 200, 100}, false, {-210, 0, 200, 100}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GLWindow window;
        window.resize(row.windowWidth, row.windowHeight);
        GLW view;
        if (row.windowWidth > 0)
            window.AddView(&view);
        view.rect = row.rect;
        EXPECT_EQ(view.normal(), row.normal);
        EXPECT_EQ(view.geometry(), row.geometry);
    }
}

// A window marks its views visible (an absent property draws nothing) unless the
// host said otherwise; the cursor needs a live window.
TEST(GLW, CursorMapsTheWindowMouseAndAWindowShowsItsViews)
{
    GLW view, hidden;
    hidden.setProperty("visible", false);
    view.rect = QRectF(0, 0, 200, 100);
    view.viewport.pos = Vector(10, 20, 0);
    view.viewport.scale = Vector(2, 4, 1);
    EXPECT_EQ(view.Cursor(), Vector(0, 0, -1));

    auto window = std::make_unique<GLWindow>();
    window->AddView(&view);
    window->AddView(&hidden);
    EXPECT_TRUE(view.property<bool>("visible"));
    EXPECT_FALSE(hidden.property<bool>("visible"));
    GLW stranger;
    window->update = 0;
    window->RemoveView(nullptr);
    window->RemoveView(&stranger);
    EXPECT_EQ(window->update, 0) << "removing what the window does not hold changes nothing";
    window->mouse.x = 25;
    window->mouse.y = 29;
    EXPECT_EQ(view.Cursor(), Vector(22.5f, 27.25f, 0));

    window.reset();
    EXPECT_EQ(view.Cursor(), Vector(0, 0, -1)) << "the window was destroyed";
}

TEST(GLW, AMouseActionReplacesTheOneOfTheSameName)
{
    GLW view;
    Probe probe;
    Mouse mouse;
    const QPointer<QAction> first = view.NewMouseAction(0x1, 0, "movecursor", &probe, SLOT(ExpandSelect()));
    // Any method code comes off, METHOD's 0 as SLOT's 1: the slot gets the mouse directly.
    QAction* second = view.NewMouseAction(0x2, 0, "movecursor", &probe, "0MoveCursor(Mouse*, bool)");
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(view.findChild<QAction*>("movecursor"), second);
    EXPECT_EQ(view.MouseEvent(0x1, &mouse, true), 0) << "the replaced binding is gone";
    EXPECT_EQ(view.MouseEvent(0x2, &mouse, true), 1);
    EXPECT_EQ(probe.calls, QStringList{"MoveCursor(true)"});
    EXPECT_EQ(probe.lastMouse, &mouse);
    EXPECT_TRUE(view.DeleteAction("movecursor"));
    EXPECT_FALSE(view.DeleteAction("movecursor"));
    EXPECT_TRUE(view.actions().isEmpty());
    // A name without a code is taken as it is.
    view.NewMouseAction(0x4, 0, "bare", &probe, "MoveCursor(Mouse*, bool)");
    EXPECT_EQ(view.MouseEvent(0x4, &mouse, false), 1);
    EXPECT_EQ(probe.calls, (QStringList{"MoveCursor(true)", "MoveCursor(false)"}));
}

} // namespace
