// A host's handlers run inside the graph's emits and may destroy the view; a view
// may also die while connected. The graph must never touch a dead view.
#include "graphfixture.h"

#include <QSignalSpy>

#include <functional>

namespace {

TEST(ViewLifetime, GraphNeverTouchesADeadView)
{
    const struct {
        const char* name;
        std::function<void(GraphOnView&)> run;
    } rows[] = {{"HandlerDeletesItDuringANavigationJump",
                 [](GraphOnView& g) {
                     QObject::connect(g.graph, &TAVGraph::Select, [&g] { delete g.view.data(); });
                     g.graph->NextAOI();
                 }},
                {"HandlerDeletesItDuringASeek",
                 [](GraphOnView& g) {
                     QObject::connect(g.graph, &TAVGraph::Seek, [&g] { delete g.view.data(); });
                     EXPECT_EQ(g.graph->MoveCursor(nullptr, true), 1);
                 }},
                {"HandlerDeletesItBeforeTheRepaintOfAToggle",
                 [](GraphOnView& g) {
                     QObject::connect(g.graph, &TAVGraph::EnableOriginal, [&g](bool) {
                         EXPECT_EQ(g.window->update, 0); // the signal comes before the repaint request
                         delete g.view.data();
                     });
                     g.graph->ToggleDrawOriginal(true);
                     EXPECT_TRUE(g.graph->property<bool>(GraphProperty::drawOrig));
                 }},
                {"DestroyedBeforeAnyCall", [](GraphOnView& g) {
                     delete g.view.data();
                     QSignalSpy select(g.graph, &TAVGraph::Select);
                     QSignalSpy seek(g.graph, &TAVGraph::Seek);
                     g.graph->Redraw();
                     g.graph->GLWUpdate(nullptr);
                     g.graph->NextAOI();
                     g.graph->PrevAOI();
                     g.graph->SelectRegion();
                     EXPECT_EQ(g.graph->MoveCursor(nullptr, true), 0);
                     EXPECT_EQ(select.count() + seek.count(), 0);
                 }}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphOnView g;
        g.setFrames(0, 100, 20, 40);
        g.graph->Connected(g.view);
        g.graph->regions = runsOf({{0, 9, 1}, {10, 99, 2}});
        g.window->update = 0;
        row.run(g);
        EXPECT_EQ(g.window->update, 0);
    }
}

// Without a window only the view's mouse actions can be made.
TEST_F(GraphWithView, ViewWhoseWindowIsGoneDoesNotRepaint)
{
    setFrames(0, 100, 20, 40);
    graph->Connected(view);
    graph->regions = runsOf({{0, 9, 1}, {10, 99, 2}});
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
