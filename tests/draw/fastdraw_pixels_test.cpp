// "fastDraw" paints exactly the same pixels as the exact drawing, through Mesa.
#include "tests/draw/renderfixture.h"
#include "tests/draw/takes.h"

namespace {

struct View {
    const char* name;
    float left, scale;
    int pointSize;
    bool lod = true;
};
void PrintTo(const View& row, std::ostream* os) { *os << row.name; }

// 3000 frames of 12 markers and 2 rigid bodies, all missing in frames 1500-1529;
// one more marker track begins at frame 300.
class FastDrawPixels : public RealRender, public testing::WithParamInterface<View> {
protected:
    void SetUp() override
    {
        RealRender::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        TAV::Frames take = takes::generated({12, 2, 3000, 5, 1500, 1530});
        TAV::Frame late = take.at(4);
        late.id = 20;
        late.markers.remove(0, 300);
        take.append(late);
        load(take, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 20}, {12, 13}, FramesInfo(0, 3000, 100, 2900, 1510));
        view.viewport.pos.y = -60;
        view.viewport.scale.y = height / 120.f;
    }
};

TEST_P(FastDrawPixels, PaintsTheSamePicture)
{
    view.viewport.pos.x = GetParam().left;
    view.viewport.scale.x = GetParam().scale;
    graph.setProperty<int>("pointSize", GetParam().pointSize);
    graph.setProperty<int>("pointSizeMin", GetParam().pointSize);
    graph.setProperty<bool>("LOD", GetParam().lod);

    const QImage exact = render();
    graph.setProperty<bool>("fastDraw", true);
    const QImage fast = render();

    ASSERT_FALSE(exact.isNull());
    EXPECT_TRUE(exact == fast);
}

INSTANTIATE_TEST_SUITE_P(Views, FastDrawPixels,
                         testing::Values(View{"ZoomedOut", -100, 640.f / 3200, 2},
                                         View{"FilterStepAboveAFrame", 900, 1.2f, 2},
                                         View{"ZoomedIn", 1200.3f, 8, 2},
                                         View{"TracksBeginLeftOfTheView", 700, 2.5f, 2},
                                         View{"GapAtTheLeftEdge", 1510, 6, 2},
                                         View{"GapAtTheRightEdge", 1420, 6, 2},
                                         View{"BigPointsAcrossTheEdges", 1450.5f, 10, 5},
                                         View{"AFewFrames", 2000.25f, 64, 3},
                                         View{"WithoutTheFilter", 1000, 1.5f, 2, false}),
                         [](const testing::TestParamInfo<View>& i) { return std::string(i.param.name); });

} // namespace
