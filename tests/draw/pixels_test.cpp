// A known take painted by Mesa into a shown window, checked where the picture is
// certain; the picture is also kept as a PNG.
#include "tests/draw/renderfixture.h"
#include "tests/draw/takes.h"

#include <QColor>

#include <cmath>
#include <cstdlib>

using takes::marker;
using takes::rigid;

namespace {

// 120 frames of two markers and a rigid body, all missing in frames 40-59, the
// second marker poor in 70-79. Working range 10-110, cursor at 100.
class KnownTake : public RealRender {
protected:
    void SetUp() override
    {
        RealRender::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        TAV::Frame m0, m1, r5;
        m0.id = 0;
        m1.id = 1;
        r5.id = 5;
        for (int i = 0; i < 120; ++i) {
            const float a = i / 8.f, gap = (i >= 40 && i < 60) ? 0.f : 2.f;
            m0.markers.append(
                marker(i, 20 + 3 * std::sin(a), 25 + 3 * std::cos(a), 30 + 2 * std::sin(a * 1.6f), gap, 0, 0));
            m1.markers.append(marker(i, -10 + 3 * std::cos(a), -15 + 3 * std::sin(a), -20 + 2 * std::cos(a * 1.6f),
                                     (i >= 70 && i < 80 && gap > 0) ? 0.3f : gap, 0, 1));
            r5.rigids.append(rigid(i, 40, 45, 50, gap, 0, 5));
        }
        TAV::Frames take;
        take.append(m0);
        take.append(m1);
        take.append(r5);
        load(take, {0, 1}, {5}, FramesInfo(0, 120, 10, 110, 100));
        // x -20 to 139.75, y -30 to 59.75: zoomed in far enough for lines.
        view.viewport.pos = Vector(-20, -30, 0);
        view.viewport.scale = Vector(4, 4, 1);
    }

    // y 5 lies between the tracks.
    QColor at(const QImage& image, double x, double y = 5) const { return image.pixelColor(pixelOf(x, y)); }
};

::testing::AssertionResult near(const QColor& got, int r, int g, int b)
{
    const int tolerance = 2;
    if (std::abs(got.red() - r) <= tolerance && std::abs(got.green() - g) <= tolerance &&
        std::abs(got.blue() - b) <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got (" << got.red() << ", " << got.green() << ", " << got.blue()
                                         << "), expected (" << r << ", " << g << ", " << b << ")";
}

// Background 0.15; the gap's grey 0.3 at half alpha over it.
TEST_F(KnownTake, ShadesTheGap)
{
    const QImage image = render();
    EXPECT_TRUE(near(at(image, 50), 57, 57, 57));
}

// Black at 0.8 alpha over the working-range shade (grey 0.3 at 0.7 over the background).
TEST_F(KnownTake, DarkensOutsideTheData)
{
    const QImage image = render();
    EXPECT_TRUE(near(at(image, -10), 13, 13, 13)) << "left of the data";
    EXPECT_TRUE(near(at(image, 130), 13, 13, 13)) << "right of the data";
}

TEST_F(KnownTake, DrawsTheCursorColumnWhite)
{
    const QImage image = render();
    EXPECT_TRUE(near(at(image, 100), 255, 255, 255));
    EXPECT_FALSE(near(at(image, 99), 255, 255, 255)) << "the cursor is one column wide";
    EXPECT_FALSE(near(at(image, 101), 255, 255, 255));
}

// The rigid colour's red of 8.0 is clamped by GL.
TEST_F(KnownTake, ShowsRigidPointsInTheirColour)
{
    const QImage image = render();
    for (int frame : {12, 30, 95})
        EXPECT_TRUE(near(at(image, frame, 45), 255, 204, 51)) << "frame " << frame;
    EXPECT_FALSE(near(at(image, 50, 45), 255, 204, 51)) << "no rigid point in the gap";
}

// The picture of this take, for the project's documentation (docs/render.png).
TEST_F(KnownTake, SavesThePicture)
{
    const QImage image = render();
    ASSERT_TRUE(image.save(TAV_DRAW_RENDER_PNG)) << TAV_DRAW_RENDER_PNG;
}

} // namespace
