#include "GL/glw.h"
#include "GL/glwindow.h"
#include "tests/hostview/probe.h"

#include <QCoreApplication>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

struct Placement {
    const char* name;
    int windowWidth, windowHeight; // 0: the view has no window
    QRectF rect;
    bool normal;
    QRectF geometry;
};

void PrintTo(const Placement& row, std::ostream* os) { *os << row.name; }

class ViewGeometry : public testing::TestWithParam<Placement> {};

TEST_P(ViewGeometry, PlacesTheViewInItsWindow)
{
    const Placement& row = GetParam();
    GLWindow window;
    window.resize(row.windowWidth, row.windowHeight);
    GLW view;
    if (row.windowWidth > 0)
        window.AddView(&view);
    view.rect = row.rect;

    EXPECT_EQ(view.normal(), row.normal);
    EXPECT_EQ(view.geometry(), row.geometry);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ViewGeometry,
    testing::Values(Placement{"RightHalfInFractions", 800, 600, {0.5, 0, 0.5, 1}, true, {400, 0, 400, 600}},
                    Placement{"NegativeXAnchorsToTheRight", 800, 600, {-10, 0, 200, 100}, false, {590, 0, 200, 100}},
                    Placement{"NegativeFractionAnchorsToo", 800, 600, {-0.25, 0, 0.5, 1}, true, {200, 0, 400, 600}},
                    Placement{"WidthAboveOneMeansPixels", 800, 600, {0.25, 0.5, 1.5, 0.5}, false, {0.25, 0.5, 1.5, 0.5}},
                    Placement{"NoWindowAnchorsToZero", 0, 0, {-10, 0, 200, 100}, false, {-210, 0, 200, 100}}),
    [](const testing::TestParamInfo<Placement>& i) { return std::string(i.param.name); });

// Both edges belong to the view: the right and bottom ones too.
TEST(GLW, HitIncludesEveryEdgeAndNothingBeyond)
{
    GLW view;
    view.rect = QRectF(100, 50, 200, 100);
    EXPECT_EQ(view.hit(100, 50), &view);
    EXPECT_EQ(view.hit(300, 150), &view);
    EXPECT_EQ(view.hit(301, 100), nullptr);
    EXPECT_EQ(view.hit(200, 151), nullptr);
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
    window->mouse.x = 25;
    window->mouse.y = 29;
    EXPECT_EQ(view.Cursor(), Vector(22.5f, 27.25f, 0));

    window.reset();
    EXPECT_EQ(view.Cursor(), Vector(0, 0, -1)) << "the window was destroyed";
}

TEST(GLW, AMouseActionReplacesTheOneOfTheSameName)
{
    GLW view;
    const QPointer<QAction> first = view.NewMouseAction(0x1, 0, "movecursor", nullptr, nullptr);
    QAction* second = view.NewMouseAction(0x2, 0, "movecursor", nullptr, nullptr);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(view.findChild<QAction*>("movecursor"), second);
    EXPECT_EQ(view.MouseEvent(0x1, nullptr, true), 0) << "the replaced binding is gone";
    EXPECT_EQ(view.MouseEvent(0x2, nullptr, true), 1);
    EXPECT_TRUE(view.DeleteAction("movecursor"));
    EXPECT_FALSE(view.DeleteAction("movecursor"));
    EXPECT_TRUE(view.actions().isEmpty());
}

TEST(GLW, ViewMouseAndTreePointersCrossQueuedCalls)
{
    Probe probe;
    GLW view;
    MenuTree tree;
    Mouse mouse;
    ASSERT_TRUE(QMetaObject::invokeMethod(&probe, "MoveCursor", Qt::QueuedConnection, Q_ARG(Mouse*, &mouse),
                                          Q_ARG(bool, true)));
    ASSERT_TRUE(QMetaObject::invokeMethod(&probe, "InitContextMenuTree", Qt::QueuedConnection, Q_ARG(GLW*, &view),
                                          Q_ARG(MenuTree*, &tree)));
    QCoreApplication::processEvents();
    EXPECT_EQ(probe.calls, (QStringList{"MoveCursor(true)", "InitContextMenuTree"}));
}

} // namespace
