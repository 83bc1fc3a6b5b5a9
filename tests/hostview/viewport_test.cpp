#include "GL/gl.h"

#include <gtest/gtest.h>

namespace {

using namespace GL;

TEST(ViewportArithmetic, EdgesAndCursorFollowTheAlignment)
{
    const struct {
        const char* name;
        int align;
        Vector pos, scale;
        int w, h;
        float left, right, top, bottom;
        float cx, cy;  // a pixel given to Cursor
        Vector cursor; // what Cursor maps it to
    } rows[] = {
        // The last pixel's centre is (w - 1) / scale from the left edge.
        {"LeftBottom", AlignLeft | AlignBottom, {10, 20, 0}, {2, 4, 1}, 200, 100, 10, 109.5f, 44.75f, 20, 25, 29,
         {22.5f, 27.25f, 0}},
        // Centred edges lie half the size away on both sides: w, not w - 1.
        {"Centred", AlignCenter, {100, 10, 0}, {2, 4, 1}, 640, 480, -60, 260, 70, -50, 320, 240, {100, 10, 0}},
        // Top alignment: Top stays at pos while Bottom moves below it by (h - 1) / scale,
        // and Cursor measures y down from the top row.
        {"TopAlignedBottomIsBelowPos", AlignLeft | AlignTop, {0, 5, 0}, {1, 2, 1}, 50, 101, 0, 49, 5, 55, 3, 0,
         {3, 55, 0}},
        // Without a vertical flag neither edge moves: Top tests AlignBottom, Bottom tests AlignTop.
        {"NoVerticalFlag", AlignLeft, {0, 7, 0}, {1, 1, 1}, 10, 10, 0, 9, 7, 7, 2, 3, {2, 10, 0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Viewport v;
        v.align = row.align;
        v.pos = row.pos;
        v.scale = row.scale;
        EXPECT_FLOAT_EQ(v.Left(row.w), row.left);
        EXPECT_FLOAT_EQ(v.Right(row.w), row.right);
        EXPECT_FLOAT_EQ(v.Top(row.h), row.top);
        EXPECT_FLOAT_EQ(v.Bottom(row.h), row.bottom);
        const Vector c = v.Cursor(row.cx, row.cy, row.w, row.h);
        EXPECT_FLOAT_EQ(c.x, row.cursor.x);
        EXPECT_FLOAT_EQ(c.y, row.cursor.y);
        EXPECT_EQ(c.z, 0.f);
    }
}

} // namespace
