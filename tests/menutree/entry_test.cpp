#include "Qt/menutree.h"
#include "tests/support/capture.h"

#include <QAction>
#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

struct Child {
    const char* name;
    int priority;
};

struct Ordering {
    const char* name;
    std::vector<Child> inserted;
    std::vector<bool> results;
    QStringList order;
};

void PrintTo(const Ordering& row, std::ostream* os) { *os << row.name; }

class EntryOrdering : public testing::TestWithParam<Ordering> {};

TEST_P(EntryOrdering, KeepsChildrenByPriorityThenName)
{
    Entry root("root", static_cast<QObject*>(nullptr));
    std::vector<bool> results;
    for (const Child& c : GetParam().inserted)
        results.push_back(root.Insert(Entry(c.name, QString("text"), c.priority)));
    QStringList order;
    for (const Entry& e : root.children)
        order << e.name;
    EXPECT_EQ(order, GetParam().order);
    EXPECT_EQ(results, GetParam().results);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, EntryOrdering,
    testing::Values(Ordering{"NegativePriorityFirst", {{"b", 0}, {"a", 0}, {"c", -1}}, {true, true, true}, {"c", "a", "b"}},
                    Ordering{"SameNameOtherPriorityIsASibling", {{"x", 2}, {"x", 1}}, {true, true}, {"x", "x"}},
                    Ordering{"NamesCompareCaseSensitively", {{"a", 0}, {"B", 0}}, {true, true}, {"B", "a"}},
                    Ordering{"EqualIdentityWithoutObjectIsRefused", {{"a", 1}, {"a", 1}}, {true, false}, {"a"}}),
    [](const testing::TestParamInfo<Ordering>& i) { return std::string(i.param.name); });

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

TEST(Entry, RemoveByObjectTakesOnlyTheFirstDepthFirstMatch)
{
    QAction shared(nullptr);
    Entry root("root", static_cast<QObject*>(nullptr));
    Entry a("a", QString("A"), 0);
    a.Insert(Entry("inner", &shared));
    root.Insert(a);
    root.Insert(Entry("outer", &shared, 1));

    EXPECT_TRUE(root.Remove(&shared));
    EXPECT_TRUE(root.children.first().children.isEmpty());
    ASSERT_EQ(root.children.size(), 2);
    EXPECT_EQ(root.children.last().object, &shared);
}

TEST(Entry, MarkFlagsEveryLevelAboveAnObjectAndClearsEmptyBranches)
{
    QAction action(nullptr);
    Entry leaf("leaf", &action);
    Entry mid("mid", QString("Mid"));
    mid.Insert(leaf);
    Entry top("top", QString("Top"));
    top.Insert(mid);
    Entry root("root", static_cast<QObject*>(nullptr));
    root.Insert(top);
    root.Insert(Entry("empty", QString("Empty"), 1, HoldsObject | TearOff));

    EXPECT_TRUE(root.Mark());
    const Entry& t = root.children.at(0);
    EXPECT_TRUE(root.flag & HoldsObject);
    EXPECT_TRUE(t.flag & HoldsObject);
    EXPECT_TRUE(t.children.at(0).flag & HoldsObject);
    EXPECT_TRUE(t.children.at(0).children.at(0).flag & HoldsObject);
    EXPECT_EQ(root.children.at(1).flag, TearOff) << "a stale mark is cleared, other bits stay";
}

TEST(Entry, PrintsOneLinePerEntryIndentedByLevel)
{
    QAction action(nullptr);
    action.setObjectName("nextaoi");
    Entry root("root", static_cast<QObject*>(nullptr));
    Entry display("display", QString("Display"), -3, 0x1f);
    display.Insert(Entry("n", &action, 8, 0x11a));
    root.Insert(display);

    StdoutCapture out;
    root.Print(2);
    std::cout << 26;
    EXPECT_EQ(out.text(), "  [root::0:0]\n   [display:Display:-3:1f]\n    [n:QAction nextaoi:8:11a]\n26")
        << "the flag is hex, and the stream returns to decimal";
}

} // namespace
