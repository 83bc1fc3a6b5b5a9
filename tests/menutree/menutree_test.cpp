#include "Qt/menutree.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace {

// A built menu as text: "-" for a separator, an action's object name, and a
// sub-menu as name{...}.
QString describe(const QWidget* menu)
{
    QStringList parts;
    for (QAction* a : menu->actions()) {
        if (a->isSeparator())
            parts << "-";
        else if (a->menu())
            parts << a->menu()->objectName() + "{" + describe(a->menu()) + "}";
        else
            parts << a->objectName();
    }
    return parts.join(' ');
}

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

// The tree used by the building tests: separators around actions, a tear-off
// sub-menu, a sub-menu without objects and one without children.
struct Built {
    QAction applytool, updateoffsets, markers;
    QObject plain;
    QMenu tools;
    MenuTree tree;

    Built()
    {
        tools.setObjectName("tools");
        tree.Insert("applytool", &applytool, 3, SeparatorBefore);
        tree.Insert("updateoffsets", &updateoffsets, 6, SeparatorBefore | SeparatorAfter);
        tree.Insert("tools", &tools, 7);
        tree.Insert("display", "Display", 10, TearOff | AddPopup);
        tree.Insert("display.enable_markers", &markers);
        tree.Insert("display.plain", &plain, 1);
        tree.Insert("empty", "Empty", 11, SeparatorBefore | SeparatorAfter);
        tree.Insert("empty.child", "Child");
        tree.Insert("lone", "Lone", 12);
    }
};

// A sub-menu left out by "autoremove" (no object below it) keeps its separator
// before but not the one after.
TEST(MenuTree, LaysOutActionsSeparatorsAndSubMenus)
{
    Built b;
    QMenu menu;
    EXPECT_EQ(b.tree.Build(&menu), 4);
    EXPECT_EQ(describe(&menu), "- applytool - updateoffsets - tools{} display{enable_markers} -");
    QMenu* display = menu.findChild<QMenu*>("display", Qt::FindDirectChildrenOnly);
    ASSERT_NE(display, nullptr);
    EXPECT_EQ(display->title(), "Display");
    EXPECT_EQ(display->windowTitle(), "Display");
    EXPECT_TRUE(display->isTearOffEnabled());
    EXPECT_TRUE(display->property("addpopup").toBool());

    QMenuBar bar;
    EXPECT_EQ(b.tree.Build(&bar), 4);
    EXPECT_EQ(describe(&bar), describe(&menu));
    EXPECT_EQ(b.tree.Build(&bar), 1);

    b.tree.setProperty("autoremove", false);
    QMenu all;
    EXPECT_EQ(b.tree.Build(&all), 4);
    EXPECT_EQ(describe(&all), "- applytool - updateoffsets - tools{} display{enable_markers} - empty{child{}} - lone{}");
}

TEST(MenuTree, RebuildsOnlyAfterAChangeOrWhenTheMenuWasEmptied)
{
    MenuTree empty;
    QMenu fresh;
    EXPECT_EQ(empty.Build(&fresh), 0) << "nothing to build, nothing built";

    Built b;
    auto gone = std::make_unique<QAction>(nullptr);
    b.tree.Insert("lone.gone", gone.get());
    QMenu menu;
    EXPECT_EQ(b.tree.Build(&menu), 5);
    EXPECT_EQ(describe(&menu), "- applytool - updateoffsets - tools{} display{enable_markers} - lone{gone}");
    const QPointer<QAction> separator = menu.actions().first();
    const QPointer<QMenu> display = menu.findChild<QMenu*>("display");

    EXPECT_EQ(b.tree.Build(&menu), 1);
    EXPECT_TRUE(separator && display) << "an unchanged tree leaves the menu alone";

    gone.reset();
    EXPECT_EQ(b.tree.Build(&menu), 4);
    EXPECT_TRUE(separator.isNull() && display.isNull()) << "the old separators and sub-menus are deleted";
    EXPECT_EQ(describe(&menu), "- applytool - updateoffsets - tools{} display{enable_markers} -")
        << "a sub-menu whose last object died is left out";

    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    EXPECT_EQ(b.tree.Build(&menu), 4) << "an emptied menu is filled again";

    b.tree.Clear();
    EXPECT_EQ(b.tree.Build(&menu), 0);
    EXPECT_TRUE(menu.actions().isEmpty()) << "a menu with entries of an emptied tree is cleared";
}

} // namespace
