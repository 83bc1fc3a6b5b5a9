// A known take painted by Mesa into a shown window, checked where the picture is
// certain; the picture is also kept as a PNG.
#include "tests/draw/renderfixture.h"
#include "tests/draw/takes.h"

#include <QColor>

#include <cmath>
#include <cstdlib>

using takes::marker;
using takes::rigid;
using takes::track;

namespace {

// 120 frames of two markers and a rigid body, all missing in frames 40-59, the
// second marker poor in 70-79.
TAV::Frames knownTake()
{
    QVector<TAV::Marker> m0, m1;
    QVector<TAV::Rigid> r5;
    for (int i = 0; i < 120; ++i) {
        const float a = i / 8.f, gap = (i >= 40 && i < 60) ? 0.f : 2.f;
        m0.append(marker(i, 20 + 3 * std::sin(a), 25 + 3 * std::cos(a), 30 + 2 * std::sin(a * 1.6f), gap));
        m1.append(marker(i, -10 + 3 * std::cos(a), -15 + 3 * std::sin(a), -20 + 2 * std::cos(a * 1.6f),
                         (i >= 70 && i < 80 && gap > 0) ? 0.3f : gap));
        r5.append(rigid(i, 40, 45, 50, gap));
    }
    TAV::Frames take;
    take << track(0, m0) << track(1, m1) << track(5, {}, r5);
    return take;
}

::testing::AssertionResult near(const QColor& got, int r, int g, int b)
{
    if (std::abs(got.red() - r) <= 2 && std::abs(got.green() - g) <= 2 && std::abs(got.blue() - b) <= 2)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got (" << got.red() << ", " << got.green() << ", " << got.blue()
                                         << "), expected (" << r << ", " << g << ", " << b << ")";
}

// Background 0.15. The gap: grey 0.3 at half alpha over it. Outside the data:
// black at 0.8 alpha over the working-range shade (grey 0.3 at 0.7). The cursor:
// one white column. Rigid points: their red of 8.0 clamped by GL. The picture is
// kept for the project's documentation (docs/render.png).
using KnownTake = RealRender;

TEST_F(KnownTake, ShowsTheGapTheDataEdgesTheCursorAndRigidPoints)
{
    load(graph, knownTake(), {0, 1}, {5}, FramesInfo(0, 120, 10, 110, 100)); // working range 10-110, cursor at 100
    // x -20 to 139.75, y -30 to 59.75: zoomed in far enough for lines.
    view.viewport.pos = Vector(-20, -30, 0);
    view.viewport.scale = Vector(4, 4, 1);
    const QImage image = render();
    // y 5 lies between the tracks.
    const auto at = [&](double x, double y = 5) { return image.pixelColor(pixelOf(x, y)); };
    ASSERT_TRUE(image.save(TAV_DRAW_RENDER_PNG)) << "no paint arrived, or " << TAV_DRAW_RENDER_PNG;
    EXPECT_TRUE(near(at(50), 57, 57, 57)) << "in the gap";
    EXPECT_TRUE(near(at(-10), 13, 13, 13)) << "left of the data";
    EXPECT_TRUE(near(at(130), 13, 13, 13)) << "right of the data";
    EXPECT_TRUE(near(at(100), 255, 255, 255)) << "the cursor";
    EXPECT_FALSE(near(at(99), 255, 255, 255)) << "left of the cursor";
    EXPECT_FALSE(near(at(101), 255, 255, 255)) << "right of the cursor";
    for (int frame : {12, 30, 95})
        EXPECT_TRUE(near(at(frame, 45), 255, 204, 51)) << "rigid point at frame " << frame;
    EXPECT_FALSE(near(at(50, 45), 255, 204, 51)) << "no rigid point in the gap";
}

} // namespace
