#include "host/tavview/viewcamera.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct CameraRow {
    const char* name;
    int align;
    int w, h;
};
void PrintTo(const CameraRow& row, std::ostream* os) { *os << row.name; }

class ViewCamera : public testing::TestWithParam<CameraRow> {
protected:
    GL::Viewport vp;
    int w = 0, h = 0;
    void SetUp() override
    {
        vp.align = GetParam().align;
        w = GetParam().w;
        h = GetParam().h;
    }
};

TEST_P(ViewCamera, ExactFitPutsTheRangeOnTheEdgePixels)
{
    fitViewportExact(vp, 100, 700, -20, 380, w, h);
    EXPECT_NEAR(vp.Left(w), 100, 1e-3);
    EXPECT_NEAR(vp.Right(w), 700, 1e-3);
    EXPECT_NEAR(vp.Bottom(h), -20, 1e-3);
    EXPECT_NEAR(vp.Top(h), 380, 1e-3);
}

// The data rectangle comes y up (top() the larger y); the fit adds a margin.
TEST_P(ViewCamera, FitShowsTheDataWithRoomAround)
{
    fitViewport(vp, QRectF(QPointF(0, 15), QPointF(450, -10)), w, h);
    EXPECT_LT(vp.Left(w), -0.5);
    EXPECT_GT(vp.Left(w), -20);
    EXPECT_GT(vp.Right(w), 450.5);
    EXPECT_LT(vp.Right(w), 470);
    EXPECT_LT(vp.Bottom(h), -10);
    EXPECT_GT(vp.Top(h), 15);
    EXPECT_NEAR(vp.Left(w) + vp.Right(w), 450, 1e-2) << "centred";
}

TEST_P(ViewCamera, ZoomKeepsTheDataUnderTheMouse)
{
    fitViewportExact(vp, 0, 600, 0, 100, w, h);
    const QPointF at(w * 0.3, h * 0.8);
    const Vector before = vp.Cursor(float(at.x()), float(at.y()), w, h);
    zoomViewport(vp, 1.25, 1, at, w, h);
    const Vector after = vp.Cursor(float(at.x()), float(at.y()), w, h);
    EXPECT_NEAR(after.x, before.x, 1e-3);
    EXPECT_NEAR(after.y, before.y, 1e-3);
    EXPECT_NEAR(vp.Right(w) - vp.Left(w), 600 / 1.25, 0.01) << "time zoomed";
    EXPECT_NEAR(vp.Top(h) - vp.Bottom(h), 100, 1e-3) << "values untouched";
}

TEST_P(ViewCamera, PanMovesTheDataWithTheMouse)
{
    fitViewportExact(vp, 0, 600, 0, 100, w, h);
    const Vector before = vp.Cursor(10, 20, w, h);
    panViewport(vp, 30, -12);
    const Vector after = vp.Cursor(40, 8, w, h);
    EXPECT_NEAR(after.x, before.x, 1e-3);
    EXPECT_NEAR(after.y, before.y, 1e-3);
}

TEST_P(ViewCamera, RevealPansOnlyWhenTheRangeIsOutOfView)
{
    fitViewportExact(vp, 0, 100, 0, 1, w, h);
    revealRange(vp, 20, 30, w);
    EXPECT_NEAR(vp.Left(w), 0, 1e-3);
    revealRange(vp, 150, 160, w);
    EXPECT_NEAR(vp.Left(w), 140, 1e-3);
    EXPECT_NEAR(vp.Right(w), 240, 1e-3);
}

const CameraRow cameraRows[] = {
    {"LeftBottom", GL::AlignLeft | GL::AlignBottom, 640, 240},
    {"CentreBottom", GL::AlignHCenter | GL::AlignBottom, 640, 240},
    {"Centred", GL::AlignCenter, 301, 99},
};

INSTANTIATE_TEST_SUITE_P(Alignments, ViewCamera, testing::ValuesIn(cameraRows),
                         [](const testing::TestParamInfo<CameraRow>& i) { return std::string(i.param.name); });

} // namespace
