// The pixels a fast paint counts as certainly written: only those that GL writes
// whichever way its float transform and snapping round, and a primitive is dropped
// only when everything it could write is among them.
#include "modules/coverage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace {

// Data units are window pixels here; the view is 100 x 100 pixels at the origin.
Coverage identity(double margin = coverageMargin(200, 6))
{
    WindowMap map;
    map.ax = 1;
    map.by = 1;
    return Coverage(map, PixelRect{0, 0, 100, 100}, margin);
}

std::set<std::pair<int, int>> certainPixels(const Coverage& c)
{
    std::set<std::pair<int, int>> out;
    for (int x = -10; x < 110; ++x)
        for (int y = -10; y < 110; ++y)
            if (c.certain(x, y))
                out.insert({x, y});
    return out;
}

struct PointRow {
    const char* name;
    double x, y;
    int size;
    std::set<std::pair<int, int>> certain;
};
void PrintTo(const PointRow& row, std::ostream* os) { *os << row.name; }

class PointFootprint : public testing::TestWithParam<PointRow> {};

TEST_P(PointFootprint, MarksOnlyWhatEveryRoundingWrites)
{
    Coverage c = identity();
    EXPECT_TRUE(c.point(GetParam().x, GetParam().y, GetParam().size));
    EXPECT_EQ(certainPixels(c), GetParam().certain);
}

// A pixel's centre is at i + 0.5. An even point whose centre sits a hair off a
// pixel centre has edges a hair off the neighbours' centres: those two may go
// either way. Near the view's edge GL may clip the point: nothing is certain.
INSTANTIATE_TEST_SUITE_P(
    Rows, PointFootprint,
    testing::Values(PointRow{"OddSizeAwayFromEdges", 10.2, 20.7, 3,
                             {{9, 19}, {9, 20}, {9, 21}, {10, 19}, {10, 20}, {10, 21}, {11, 19}, {11, 20}, {11, 21}}},
                    PointRow{"EvenSizeOnAPixelCorner", 10.0, 20.0, 2, {{9, 19}, {9, 20}, {10, 19}, {10, 20}}},
                    PointRow{"EvenSizeAHairOffAPixelCentre", 10.5 + 1e-9, 20.5 - 1e-9, 2, {{10, 20}}},
                    PointRow{"OneAHairOffAPixelEdge", 10.0 + 1e-9, 20.3, 1, {}},
                    PointRow{"CentreWithinTheMarginOfTheViewEdge", 0.001, 50.2, 3, {}},
                    PointRow{"CentreAtTheTopEdge", 50.2, 100.0, 3, {}}),
    [](const testing::TestParamInfo<PointRow>& i) { return std::string(i.param.name); });

// A point is dropped once every pixel it could write is certain; a point whose
// centre is certainly outside the view is dropped at once.
TEST(PointCull, DropsWhatCanAddNothing)
{
    Coverage c = identity();
    EXPECT_TRUE(c.point(10.2, 20.7, 3));
    EXPECT_FALSE(c.point(10.2, 20.7, 3)) << "the same point again";
    EXPECT_TRUE(c.point(2.5, 2.5, 21));
    EXPECT_FALSE(c.point(2.5, 2.5, 21)) << "a big point again, certain up to the bitmap's first row and column";
    EXPECT_FALSE(c.point(10.5, 20.7, 3)) << "0.3 px to the right: still columns 9 to 11";
    EXPECT_TRUE(c.point(11.1, 20.7, 3)) << "0.9 px to the right reaches column 12's centre";
    EXPECT_TRUE(c.point(10.2, 20.7, 4)) << "a bigger point at the same place";
    for (double x = 9.7; x < 12.5; x += 0.25)
        for (double y = 19.7; y < 22.5; y += 0.25)
            c.point(x, y, 2);
    EXPECT_FALSE(c.point(10.9, 20.9, 2)) << "inside a block of certain pixels";
    EXPECT_FALSE(c.point(-0.1, 50, 2)) << "clipped: centre left of the view";
    EXPECT_TRUE(c.point(-0.001, 50, 2)) << "centre within the margin of the edge";
    EXPECT_TRUE(c.point(std::nan(""), 50, 2)) << "not finite: left to GL";
}

// A point whose reach ends exactly on a pixel's centre may write that pixel.
TEST(PointCull, KeepsAPointThatMayReachAnUncertainCentreExactly)
{
    Coverage c = identity(0.125); // sums of powers of two: exact
    c.point(12.0, 20.5, 3);       // columns 11 and 12, rows 19 to 21 certain
    ASSERT_TRUE(c.certain(11, 20) && c.certain(12, 21) && !c.certain(10, 20));
    // Reach 1 + 0.125 + 0.5 from 11.625 ends on column 10's centre, 10.5.
    EXPECT_TRUE(c.point(11.625, 20.5, 2));
}

// Columns and rows 10 to 19 certain: a block of points of size 2 is dropped when
// every pixel centre within 1 px and the margin of its box is among them.
TEST(PointCull, DropsABlockOnlyWhenAllItsPointsCouldWriteIsCertain)
{
    Coverage c = identity();
    for (double x : {11.5, 14.5, 17.5, 18.5})
        for (double y : {11.5, 14.5, 17.5, 18.5})
            c.point(x, y, 3);
    const double m = c.margin();
    EXPECT_TRUE(c.pointsCovered(10.5 + 2 * m, 19.5 - 2 * m, 10.5 + 2 * m, 19.5 - 2 * m, 2));
    EXPECT_FALSE(c.pointsCovered(10.5 + m / 2, 12, 12, 13, 2)) << "column 9 within the margin";
    EXPECT_FALSE(c.pointsCovered(12, 13, 12, 19.5 - m / 2, 2)) << "row 20 within the margin";
    EXPECT_FALSE(c.pointsCovered(12, 13, 12, 13, 7)) << "bigger points reach beyond";
}

// A one-pixel segment certainly writes one pixel per row it crosses (y-major)
// away from its ends; its possible pixels reach one pixel beyond its box.
TEST(SegmentCull, MarksTheRowsItCertainlyCrossesAndDropsWhatIsCovered)
{
    Coverage c = identity();
    EXPECT_TRUE(c.segment(20.3, 10.0, 20.3, 30.0));
    std::set<std::pair<int, int>> rows;
    for (int y = 11; y <= 28; ++y)
        rows.insert({20, y});
    EXPECT_EQ(certainPixels(c), rows) << "rows 10 and 29 end within half a pixel";

    Coverage d = identity();
    EXPECT_TRUE(d.segment(10.0, 21.0, 30.0, 21.0)) << "on the boundary of two rows";
    EXPECT_TRUE(certainPixels(d).empty());

    Coverage e = identity();
    for (double x = 40; x < 60; x += 0.5)
        e.point(x, 50, 9);
    EXPECT_FALSE(e.segment(48, 48, 52, 52)) << "inside what points covered";
    EXPECT_TRUE(e.segment(48, 48, 52, 56)) << "leaves it at the top";
    EXPECT_TRUE(identity().segment(-5, 50, 5, 50)) << "clipped by the view: sent, marks nothing";

    Coverage f = identity();
    for (double x = 2; x < 100; x += 4)
        for (double y = 2; y < 100; y += 4)
            f.point(x, y, 9);
    EXPECT_FALSE(f.segment(40, 40, 60, 60)) << "the whole view is certain";
    EXPECT_TRUE(f.segment(50, 50, 250, 50)) << "beyond the view nothing is known";
}

} // namespace
