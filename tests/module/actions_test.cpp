#include "graphfixture.h"

#include <QKeySequence>
#include <QMenu>
#include <QSignalSpy>

#include <string>

namespace {

struct ActionRow {
    const char* name;
    const char* text;
    const char* tip; // "": the text
    const char* key;
    bool checkable;
};

void PrintTo(const ActionRow& row, std::ostream* os) { *os << row.name; }

class ConnectedActions : public GraphWithView, public testing::WithParamInterface<ActionRow> {};

TEST_P(ConnectedActions, LiveOnTheViewWithTextTipKeyAndCheckState)
{
    graph->Connected(view);
    const QList<QAction*> found = view->findChildren<QAction*>(GetParam().name);
    ASSERT_EQ(found.size(), 1);
    const QAction* a = found.first();
    EXPECT_EQ(a->text(), GetParam().text);
    EXPECT_EQ(a->toolTip(), GetParam().tip[0] ? QString(GetParam().tip) : a->text());
    EXPECT_EQ(a->shortcut(), QKeySequence(GetParam().key));
    EXPECT_EQ(a->isCheckable(), GetParam().checkable);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ConnectedActions,
    testing::Values(
        ActionRow{"enable_markers", "Marker Tracks", "Draw markers in the graph", "", true},
        ActionRow{"enable_rigid_angles", "Rigid Rotations", "Draw rigid rotations (axis-angle) in the graph", "",
                  true},
        ActionRow{"enable_tc", "Timecode Ticks", "", "", true},
        ActionRow{"nextaoi", "Next area of interest", "Jump frame to next peak or occlusion", "Ctrl+.", true},
        ActionRow{"prevaoi", "Previous area of interest", "Jump frame to previous peak or occlusion", "Ctrl+,",
                  true},
        ActionRow{"select_region", "Select Region", "Select Region under mouse cursor", "r", false},
        ActionRow{"updateoffsets", "Update track offsets",
                  "Offset display of graph tracks to the y-origin under the mouse", "t", false},
        ActionRow{"movecursor", "Move Cursor", "Sets current frame number", "", false}),
    [](const testing::TestParamInfo<ActionRow>& i) { return std::string(i.param.name); });

// The bindings reach the slots the way the window's input does.
TEST_F(GraphWithView, MouseAndKeyActionsRunTheirSlots)
{
    setFrames(0, 100);
    graph->Connected(view);
    graph->Connected(nullptr); // keeps the view
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
    view->findChild<QAction*>("enable_markers")->trigger();
    EXPECT_TRUE(graph->property<bool>("enableMarkers"));
}

// A built menu as object names, "|" for separators, submenu titles, "*" after checked entries.
std::string menuText(const QMenu& menu)
{
    std::string text;
    for (const QAction* a : menu.actions()) {
        text += text.empty() ? "" : " ";
        text += a->isSeparator() ? "|" : a->menu() ? a->menu()->title().toStdString() : a->objectName().toStdString();
        text += a->isChecked() ? "*" : "";
    }
    return text;
}

struct MenuRow {
    const char* name;
    bool selection, markerOffsets, rigidOffsets, enableRigids;
    const char* menu;
    const char* display; // the Display submenu
};

void PrintTo(const MenuRow& row, std::ostream* os) { *os << row.name; }

class ContextMenu : public GraphWithView, public testing::WithParamInterface<MenuRow> {
protected:
    ContextMenu()
    {
        // Editing actions belong to the view; another part of the host made them,
        // checked: the menu shows them unchecked.
        for (const char* name : {"applytool", "delete_data", "revert_data"}) {
            QAction* a = new QAction(name, view);
            a->setObjectName(name);
            a->setCheckable(true);
            a->setChecked(true);
        }
        setFrames(0, 10);
        graph->Connected(view);
    }
};

TEST_P(ContextMenu, LayoutFollowsSelectionOffsetsAndProperties)
{
    const MenuRow& row = GetParam();
    graph->selectStart = 2;
    graph->selectEnd = row.selection ? 5 : 2; // equal ends are no selection
    if (row.markerOffsets)
        graph->trackOffsets[1] = Vector(1, 2, 3);
    if (row.rigidOffsets)
        graph->rbtrackOffsets[1] = Vector(1, 2, 3);
    graph->setProperty<bool>("enableRigids", row.enableRigids);
    graph->setProperty<bool>("drawTC", true);

    MenuTree tree;
    graph->InitContextMenuTree(view, &tree);
    QMenu menu;
    tree.Build(&menu);
    EXPECT_EQ(menuText(menu), row.menu);
    QMenu* display = menu.findChild<QMenu*>("display");
    ASSERT_NE(display, nullptr);
    EXPECT_EQ(menuText(*display), row.display);
}

const char* const plainMenu = "updateoffsets nextaoi prevaoi select_region Display";
const char* const allShown = "enable_markers* enable_rigid_angles enable_rigids* enable_original enable_tc*";

INSTANTIATE_TEST_SUITE_P(
    Rows, ContextMenu,
    testing::Values(
        MenuRow{"NoSelectionNoOffsets", false, false, false, true, plainMenu, allShown},
        MenuRow{"SelectionAndOffsets", true, true, false, true,
                "| applytool delete_data revert_data | updateoffsets clearoffsets nextaoi prevaoi Display "
                "select_region",
                allShown},
        MenuRow{"RigidOffsetsAloneBringNoClearEntry", false, false, true, true, plainMenu, allShown},
        MenuRow{"RigidsOffHideRotations", false, false, false, false, plainMenu,
                "enable_markers* enable_rigids enable_original enable_tc*"}),
    [](const testing::TestParamInfo<MenuRow>& i) { return std::string(i.param.name); });

// NewAction serves the window's current view: each graph finds, and triggers, the
// actions made for it on its own view.
TEST_F(GraphWithView, TwoGraphsOnTwoViewsKeepTheirOwnActions)
{
    graph->Connected(view);
    auto second = std::make_unique<GLW>();
    second->rect = QRectF(0, 0, 1, 1);
    window->AddView(second.get());
    TAVGraph other;
    other.Connected(second.get());

    for (TAVGraph* g : {graph.data(), &other}) {
        MenuTree tree;
        g->InitContextMenuTree(g->glw, &tree);
        QMenu menu;
        tree.Build(&menu);
        menu.findChild<QMenu*>("display")->actions().first()->trigger();
    }
    EXPECT_FALSE(graph->property<bool>("enableMarkers"));
    EXPECT_FALSE(other.property<bool>("enableMarkers"));
    EXPECT_EQ(second->findChildren<QAction*>("enable_markers").size(), 1);
    EXPECT_EQ(view->findChildren<QAction*>("enable_markers").size(), 1);
}

} // namespace
