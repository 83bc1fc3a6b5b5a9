#include "host/tavview/viewcamera.h"

#include <gtest/gtest.h>

namespace {

// For each alignment of the camera: an exact fit puts the range on the edge
// pixels; revealing a range out of view puts its start a tenth of the width in.
// Zoom and pan are driven through the window (navigate_test).
TEST(ViewCamera, FitAndReveal)
{
    const struct {
        const char* name;
        int align;
        int w, h;
    } rows[] = {
        {"left bottom", GL::AlignLeft | GL::AlignBottom, 640, 240},
        {"centre bottom", GL::AlignHCenter | GL::AlignBottom, 640, 240},
        {"centred", GL::AlignCenter, 301, 99},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const int w = row.w, h = row.h;
        GL::Viewport vp;
        vp.align = row.align;
        fitViewportExact(vp, 100, 700, -20, 380, w, h);
        EXPECT_NEAR(vp.Left(w), 100, 1e-3);
        EXPECT_NEAR(vp.Right(w), 700, 1e-3);
        EXPECT_NEAR(vp.Bottom(h), -20, 1e-3);
        EXPECT_NEAR(vp.Top(h), 380, 1e-3);
        revealRange(vp, 200, 300, w);
        EXPECT_NEAR(vp.Left(w), 100, 1e-3);
        revealRange(vp, 800, 900, w);
        EXPECT_NEAR(vp.Left(w), 740, 1e-3);
        EXPECT_NEAR(vp.Right(w), 1340, 1e-3);
    }
}

} // namespace
