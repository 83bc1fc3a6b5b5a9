#include "graphfixture.h"

#include "tests/menutree/menutext.h"

#include <QKeySequence>
#include <QMenu>
#include <QSignalSpy>

#include <iterator>
#include <string>

namespace {

namespace A = GraphAction;

// Each action is made once on the view, and its binding reaches its slot the way
// the window's input does. The display toggles and the area jumps are checkable,
// though the jumps' slots take no argument.
TEST_F(GraphWithView, ConnectedMakesEachActionOnceAndBindsItsSlot)
{
    const struct {
        const char* name;
        const char* key;
        bool checkable;
    } rows[] = {{A::enableMarkers, "", true},     {A::enableRigids, "", true},   {A::enableRigidAngles, "", true},
                {A::enableTC, "", true},          {A::enableOriginal, "", true}, {A::nextAOI, "Ctrl+.", true},
                {A::prevAOI, "Ctrl+,", true},     {A::selectRegion, "r", false}, {A::updateOffsets, "t", false},
                {A::clearOffsets, "", false},     {A::moveCursor, "", false},    {A::expandSelect, "", false},
                {A::contractSelect, "", false}};
    setFrames(0, 100);
    const int hostActions = view->actions().size();
    graph->Connected(view);
    graph->Connected(view); // again: the actions are replaced, not doubled
    graph->Connected(nullptr); // keeps the view
    EXPECT_EQ(view->actions().size(), hostActions + int(std::size(rows)));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QAction* a = view->findChild<QAction*>(row.name);
        ASSERT_NE(a, nullptr);
        EXPECT_EQ(a->shortcut(), QKeySequence(row.key));
        EXPECT_EQ(a->isCheckable(), row.checkable);
        EXPECT_FALSE(a->text().isEmpty());
    }

    graph->selectStart = 10;
    graph->selectEnd = 20;
    QSignalSpy seek(graph, &TAVGraph::Seek);
    QSignalSpy region(graph, &TAVGraph::RegionChanged);
    window->mouse.x = 7;
    for (int binding : {0x1, 0x4000008, 0x4000010})
        EXPECT_EQ(view->MouseEvent(binding, &window->mouse, true), 1);
    ASSERT_EQ(seek.count(), 1);
    EXPECT_EQ(seek.at(0).at(0).toLongLong(), 7);
    ASSERT_EQ(region.count(), 2);
    EXPECT_EQ(region.at(0), QList<QVariant>({qint64(9), qint64(21)}));
    EXPECT_EQ(region.at(1), QList<QVariant>({qint64(11), qint64(19)}));

    graph->EnableMarkers(false);
    view->findChild<QAction*>(A::enableMarkers)->trigger();
    EXPECT_TRUE(graph->property<bool>(GraphProperty::enableMarkers));
}

TEST(ContextMenu, LayoutFollowsSelectionOffsetsAndProperties)
{
    const std::string plain = "updateoffsets nextaoi prevaoi select_region display{";
    const std::string allShown = "enable_markers* enable_rigid_angles enable_rigids* enable_original enable_tc*}";
    const struct {
        const char* name;
        bool selection, markerOffsets, rigidOffsets, enableRigids;
        std::string menu;
    } rows[] = {{"NoSelectionNoOffsets", false, false, false, true, plain + allShown},
                {"SelectionAndOffsets", true, true, false, true,
                 "| applytool delete_data revert_data | updateoffsets clearoffsets nextaoi prevaoi display{" + allShown +
                     " select_region"},
                {"RigidOffsetsAloneBringNoClearEntry", false, false, true, true, plain + allShown},
                {"RigidsOffHideRotations", false, false, false, false,
                 plain + "enable_markers* enable_rigids enable_original enable_tc*}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphOnView g;
        // The window's editing actions, made checkable and checked by another part
        // of a host: the graph's menu shows them unchecked.
        for (const char* name : {A::applyTool, A::deleteData, A::revertData}) {
            QAction* a = g.view->findChild<QAction*>(name);
            a->setCheckable(true);
            a->setChecked(true);
        }
        g.setFrames(0, 10);
        g.graph->Connected(g.view);
        g.graph->selectStart = 2;
        g.graph->selectEnd = row.selection ? 5 : 2; // equal ends are no selection
        if (row.markerOffsets)
            g.graph->trackOffsets[1] = Vector(1, 2, 3);
        if (row.rigidOffsets)
            g.graph->rbtrackOffsets[1] = Vector(1, 2, 3);
        g.graph->setProperty<bool>(GraphProperty::enableRigids, row.enableRigids);
        g.graph->setProperty<bool>(GraphProperty::drawTC, true);
        MenuTree tree;
        g.graph->InitContextMenuTree(g.view, &tree);
        QMenu menu;
        tree.Build(&menu);
        EXPECT_EQ(menuText(&menu), row.menu);
    }
}

} // namespace
