// A host's handlers run inside the graph's emits and may destroy the view; a view
// may also lose its window. The graph must never touch a dead view or window.
#include "graphfixture.h"

namespace {

class ViewLifetime : public GraphWithView {
protected:
    ViewLifetime()
    {
        setFrames(0, 100, 20, 40);
        graph->Connected(view);
        graph->regions = runsOf({{0, 9, 1}, {10, 99, 2}});
    }
};

TEST_F(ViewLifetime, HandlerDeletingTheViewDuringANavigationJump)
{
    QObject::connect(graph, &TAVGraph::Select, [this] { delete view.data(); });
    graph->NextAOI();
    EXPECT_TRUE(graph->glw.isNull());
    EXPECT_EQ(window->update, 0);
}

TEST_F(ViewLifetime, HandlerDeletingTheViewDuringASeek)
{
    QObject::connect(graph, &TAVGraph::Seek, [this] { delete view.data(); });
    EXPECT_EQ(graph->MoveCursor(nullptr, true), 1);
    EXPECT_EQ(window->update, 0);
}

TEST_F(ViewLifetime, HandlerDeletingTheViewBeforeTheRepaintOfAToggle)
{
    QObject::connect(graph, &TAVGraph::EnableOriginal, [this](bool) {
        EXPECT_EQ(window->update, 0); // the signal comes before the repaint request
        delete view.data();
    });
    graph->ToggleDrawOriginal(true);
    EXPECT_TRUE(graph->property<bool>(GraphProperty::drawOrig));
    EXPECT_EQ(window->update, 0);
}

// Without a window only the view's mouse actions can be made.
TEST_F(ViewLifetime, ViewWhoseWindowIsGoneDoesNotRepaint)
{
    window.reset();
    graph->Redraw();
    graph->DataChange();
    EXPECT_EQ(graph->MoveCursor(nullptr, true), 1); // the cursor reads (0, 0, -1)
    graph->NextAOI();
    qDeleteAll(view->actions());
    graph->Connected(view);
    EXPECT_EQ(view->actions().size(), 3);
}

} // namespace
