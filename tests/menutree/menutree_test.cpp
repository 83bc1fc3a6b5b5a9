#include "Qt/menutree.h"
#include "tests/menutree/menutext.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(MenuTree, SplitsThePathAndConnectsTheObject)
{
    const struct {
        const char* name;
        bool withParent; // an entry "a" exists before the insert
        const char* path;
        bool withObject;
        bool inserted;
        int updates;       // change of the counter by the insert
        bool removedOnDie; // the destroyed signal reaches the tree
    } rows[] = {{"MissingParentStillConnects", false, "a.b", true, false, 1, true},
                {"UnderExistingParent", true, "a.b", true, true, 1, true},
                {"LeadingDotRefused", true, ".b", true, false, 1, false},
                {"EmptyPathUntouched", true, "", true, false, 0, false},
                {"NullObjectUntouched", true, "b", false, false, 0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        MenuTree tree;
        if (row.withParent)
            tree.Insert("a", "A");
        tree.update = 0;
        auto action = std::make_unique<QAction>(nullptr);

        QObject* result = tree.Insert(row.path, row.withObject ? action.get() : nullptr, 0, 0);
        EXPECT_EQ(result != nullptr, row.inserted);
        EXPECT_EQ(tree.update, row.updates);
        if (row.inserted) {
            EXPECT_EQ(tree.Find(row.path)->object, action.get());
        }

        action.reset();
        EXPECT_EQ(tree.update, row.updates + (row.removedOnDie ? 1 : 0));
        if (row.inserted) {
            EXPECT_EQ(tree.Find(row.path), nullptr);
        }
    }
}

// By path only what is there goes; a destroyed object leaves every path, through
// one connection however often it was inserted.
TEST(MenuTree, RemovesByPathAndOnDestruction)
{
    MenuTree tree;
    QAction markers(nullptr);
    tree.Insert("display", "Display");
    tree.Insert("display.markers", &markers);
    EXPECT_FALSE(tree.Remove("absent.markers"));
    EXPECT_FALSE(tree.Remove("display.absent"));
    EXPECT_TRUE(tree.Remove("display.markers"));
    EXPECT_EQ(tree.Find("display.markers"), nullptr);

    auto action = std::make_unique<QAction>(nullptr);
    for (int i = 0; i < 3; ++i)
        tree.Insert("nextaoi", action.get(), 4);
    tree.Insert("display.nextaoi", action.get());
    tree.update = 0;
    action.reset();
    EXPECT_EQ(tree.update, 1);
    EXPECT_EQ(tree.Find("nextaoi"), nullptr);
    EXPECT_EQ(tree.Find("display.nextaoi"), nullptr);
    EXPECT_NE(tree.Find("display"), nullptr);
}

// Separators around actions, a tear-off sub-menu, a sub-menu whose only object dies,
// one without objects and one without children: "autoremove" leaves out a sub-menu
// with no object below it, with the separator after it but not the one before.
TEST(MenuTree, BuildsItsLayoutAndRebuildsOnlyAfterAChange)
{
    MenuTree tree;
    QMenu fresh;
    EXPECT_EQ(tree.Build(&fresh), 0) << "nothing to build, nothing built";

    QAction applytool, updateoffsets, markers;
    QObject plain;
    QMenu tools;
    tools.setObjectName("tools");
    auto gone = std::make_unique<QAction>();
    tree.Insert("applytool", &applytool, 3, SeparatorBefore);
    tree.Insert("updateoffsets", &updateoffsets, 6, SeparatorBefore | SeparatorAfter);
    tree.Insert("tools", &tools, 7);
    tree.Insert("display", "Display", 10, TearOff | AddPopup);
    tree.Insert("display.enable_markers", &markers);
    tree.Insert("display.plain", &plain, 1);
    tree.Insert("empty", "Empty", 11, SeparatorBefore | SeparatorAfter);
    tree.Insert("empty.child", "Child");
    tree.Insert("lone", "Lone", 12);
    tree.Insert("lone.gone", gone.get());
    const std::string shown = "| applytool | updateoffsets | tools{} display{enable_markers} |";
    QMenu menu;
    EXPECT_EQ(tree.Build(&menu), 5);
    EXPECT_EQ(menuText(&menu), shown + " lone{gone}");
    const QPointer<QAction> separator = menu.actions().first();
    const QPointer<QMenu> display = menu.findChild<QMenu*>("display", Qt::FindDirectChildrenOnly);
    ASSERT_NE(display, nullptr);
    EXPECT_EQ(display->title(), "Display");
    EXPECT_EQ(display->windowTitle(), "Display");
    EXPECT_TRUE(display->isTearOffEnabled());
    EXPECT_TRUE(display->property("addpopup").toBool());

    EXPECT_EQ(tree.Build(&menu), 1);
    EXPECT_TRUE(separator && display) << "an unchanged tree leaves the menu alone";
    gone.reset();
    EXPECT_EQ(tree.Build(&menu), 4);
    EXPECT_TRUE(separator.isNull() && display.isNull()) << "the old separators and sub-menus are deleted";
    EXPECT_EQ(menuText(&menu), shown);

    QMenuBar bar;
    EXPECT_EQ(tree.Build(&bar), 4);
    EXPECT_EQ(menuText(&bar), shown);
    EXPECT_EQ(tree.Build(&bar), 1);
    tree.setProperty("autoremove", false);
    QMenu all;
    EXPECT_EQ(tree.Build(&all), 4);
    EXPECT_EQ(menuText(&all), shown + " empty{child{}} | lone{}");

    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    EXPECT_EQ(tree.Build(&menu), 4) << "an emptied menu is filled again";
    tree.Clear();
    EXPECT_EQ(tree.Build(&menu), 0);
    EXPECT_TRUE(menu.actions().isEmpty()) << "a menu with entries of an emptied tree is cleared";
}

} // namespace
