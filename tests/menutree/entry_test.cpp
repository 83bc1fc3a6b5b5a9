#include "Qt/menutree.h"

#include <QAction>
#include <gtest/gtest.h>

#include <vector>

namespace {

// Priority first (negative ones lead), then the name, case-sensitively; the same
// name at another priority is a sibling, and an equal identity without an object
// is refused.
TEST(Entry, KeepsChildrenByPriorityThenName)
{
    Entry root("root", static_cast<QObject*>(nullptr));
    const std::vector<std::pair<const char*, int>> inserted = {{"b", 0}, {"a", 0}, {"c", -1}, {"x", 2},
                                                               {"x", 1}, {"B", 0}, {"a", 0}};
    std::vector<bool> results;
    for (const auto& c : inserted)
        results.push_back(root.Insert(Entry(c.first, QString("text"), c.second)));
    QStringList order;
    for (const Entry& e : root.children)
        order << e.name + QString::number(e.priority);
    EXPECT_EQ(order, (QStringList{"c-1", "B0", "a0", "b0", "x1", "x2"}));
    EXPECT_EQ(results, (std::vector<bool>{true, true, true, true, true, true, false}));
}

// The children are replaced even by an empty list: the lists cannot be compared.
TEST(Entry, EqualIdentityWithObjectUpdatesInPlaceAndReplacesChildren)
{
    Entry root("root", static_cast<QObject*>(nullptr));
    Entry sub("display", QString("Display"), 10, SeparatorBefore);
    sub.Insert(Entry("old", QString("Old")));
    root.Insert(sub);

    QAction action(nullptr);
    EXPECT_FALSE(root.Insert(Entry("display", &action, 10, SeparatorAfter)));
    ASSERT_EQ(root.children.size(), 1);
    const Entry& e = root.children.first();
    EXPECT_EQ(e.object, &action);
    EXPECT_EQ(e.flag, SeparatorAfter);
    EXPECT_TRUE(e.text.isEmpty());
    EXPECT_TRUE(e.children.isEmpty());
    EXPECT_EQ(action.objectName(), "display") << "a nameless object is named after its entry";
}

} // namespace
