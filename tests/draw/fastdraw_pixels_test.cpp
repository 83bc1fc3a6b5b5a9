// "fastDraw" paints exactly the same pixels as the exact drawing, through Mesa: it
// sends fewer points and segments (those that can still reach a pixel), never
// other ones.
#include "tests/draw/renderfixture.h"
#include "tests/draw/takes.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <GL/glext.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

struct View {
    const char* name;
    float left, scale;
    int pointSize; // 1 draws lines at every zoom
    bool lod = true;
    bool rgb = false;
};
void PrintTo(const View& row, std::ostream* os) { *os << row.name; }

// A take painted exactly and fast through one view of a row.
class BothWays : public RealRender {
protected:
    void expectFastIsExact(const View& row)
    {
        view.viewport.pos.x = row.left;
        view.viewport.scale.x = row.scale;
        graph.setProperty<int>("pointSize", row.pointSize);
        graph.setProperty<int>("pointSizeMin", row.pointSize);
        graph.setProperty<bool>("LOD", row.lod);
        graph.setProperty<bool>("enableRGB", row.rgb);
        const QImage exact = render();
        graph.setProperty<bool>("fastDraw", true);
        const QImage fast = render();
        ASSERT_FALSE(exact.isNull());
        EXPECT_TRUE(exact == fast);
    }
};

// 3000 frames of 12 markers and 2 rigid bodies, all missing in frames 1500-1529;
// one more marker track begins at frame 300.
class WalkingTake : public BothWays {
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

class FastDrawPixels : public WalkingTake, public testing::WithParamInterface<View> {};

TEST_P(FastDrawPixels, PaintsTheSamePicture) { expectFastIsExact(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Views, FastDrawPixels,
                         testing::Values(View{"ZoomedOut", -100, 640.f / 3200, 2},
                                         View{"FilterStepAboveAFrame", 900, 1.2f, 2},
                                         View{"ZoomedIn", 1200.3f, 8, 2},
                                         View{"TracksBeginLeftOfTheView", 700, 2.5f, 2},
                                         View{"GapAtTheLeftEdge", 1510, 6, 2},
                                         View{"GapAtTheRightEdge", 1420, 6, 2},
                                         View{"BigPointsAcrossTheEdges", 1450.5f, 10, 5},
                                         View{"AFewFrames", 2000.25f, 64, 3},
                                         View{"WithoutTheFilter", 1000, 1.5f, 2, false},
                                         View{"ZoomedOutByAxis", -100, 640.f / 3200, 2, true, true},
                                         View{"ZoomedOutOddPoints", 37.3f, 640.f / 2900, 3, true, true},
                                         View{"ZoomedOutUnfiltered", -7.7f, 640.f / 3100, 3, false},
                                         View{"HalfPixelPerFrame", 990.25f, 0.5f, 2, false, true},
                                         View{"EvenPointsOnPixelCentres", 1000, 2, 2, false, true},
                                         View{"LinesZoomedOut", -100, 640.f / 3200, 1, true, true},
                                         View{"LinesZoomedOutGrey", 11.1f, 640.f / 2950, 1, false},
                                         View{"LinesAFewFramesPerPixel", 1300.4f, 0.37f, 1, true, true},
                                         View{"LinesZoomedIn", 1490.6f, 7.3f, 1, false, true},
                                         View{"EverySampleZoomedOut", -100, 640.f / 3200, 2, false},
                                         View{"EverySampleByAxis", 23.9f, 640.f / 3050, 3, false, true},
                                         View{"EverySampleWithLines", -50.5f, 640.f / 3100, 1, false}),
                         [](const testing::TestParamInfo<View>& i) { return std::string(i.param.name); });

// The cull relies on the first fragment at a pixel keeping it. Under any other
// state a host may leave (another depth rule, no depth writes, smoothing, wide
// lines) "fastDraw" must still paint the exact picture, by sending everything.
struct HostState {
    const char* name;
    void (*set)();
};
void PrintTo(const HostState& row, std::ostream* os) { *os << row.name; }

class FastDrawUnderHostState : public WalkingTake, public testing::WithParamInterface<HostState> {};

TEST_P(FastDrawUnderHostState, PaintsTheSamePicture)
{
    view.viewport.pos.x = -100;
    view.viewport.scale.x = 640.f / 3200;
    graph.setProperty<int>("pointSize", 1); // lines at every zoom, drawn after the points
    graph.setProperty<int>("pointSizeMin", 1);
    graph.setProperty<bool>("enableRGB", true);
    window->makeCurrent();
    GetParam().set();
    window->doneCurrent();

    const QImage exact = render();
    graph.setProperty<bool>("fastDraw", true);
    const QImage fast = render();

    ASSERT_FALSE(exact.isNull());
    EXPECT_TRUE(exact == fast);
}

// Arrays a host leaves on would be read with the fast paint's vertex arrays: a
// secondary colour added to every fragment, or a buffer bound that its pointers
// would be taken as offsets into.
void leaveSecondaryColours()
{
    static const std::vector<GLfloat> bright(3 << 20, 1.f);
    glEnable(GL_COLOR_SUM);
    glEnableClientState(GL_SECONDARY_COLOR_ARRAY);
    using Pointer = void(GLAPIENTRY*)(GLint, GLenum, GLsizei, const void*);
    auto secondary = reinterpret_cast<Pointer>(QOpenGLContext::currentContext()->getProcAddress("glSecondaryColorPointer"));
    secondary(3, GL_FLOAT, 0, bright.data());
}
void bindABuffer()
{
    QOpenGLFunctions* f = QOpenGLContext::currentContext()->functions();
    GLuint buffer = 0;
    f->glGenBuffers(1, &buffer);
    f->glBindBuffer(GL_ARRAY_BUFFER, buffer);
    f->glBufferData(GL_ARRAY_BUFFER, 1 << 20, nullptr, GL_STATIC_DRAW);
}

INSTANTIATE_TEST_SUITE_P(
    States, FastDrawUnderHostState,
    testing::Values(HostState{"SecondaryColoursLeftOn", leaveSecondaryColours},
                    HostState{"ABufferBound", bindABuffer},
                    HostState{"LaterFragmentsWin", [] { glDepthFunc(GL_LEQUAL); }},
                    HostState{"NoDepthWrites", [] { glDepthMask(GL_FALSE); }},
                    HostState{"SmoothPoints", [] { glEnable(GL_POINT_SMOOTH); }},
                    HostState{"SmoothLines", [] { glEnable(GL_LINE_SMOOTH); }},
                    HostState{"WideLines", [] { glLineWidth(3.f); }}),
    [](const testing::TestParamInfo<HostState>& i) { return std::string(i.param.name); });

// A host may also leave a modelview whose w is not 1 (varying along x, along y, or
// the same everywhere): GL then does not map data to pixels as the cull would.
TEST_F(WalkingTake, FastDrawSendsEverythingUnderAProjectionThatIsNotAffineOrTiltsDepth)
{
    view.viewport.pos.x = -100;
    view.viewport.scale.x = 640.f / 3200;
    GLdouble tilt[16];
    beforeGraph = [&tilt] { glLoadMatrixd(tilt); };
    // w varying with x or y (3, 7) or not 1 (15), depth varying with x or y (2, 6):
    // either way the first fragment at a pixel need not be the one that stays.
    for (const auto& [element, value] :
         {std::pair<int, double>{3, 1e-4}, {7, 5e-3}, {15, 2}, {2, 1e-4}, {6, 1e-4}}) {
        std::fill(std::begin(tilt), std::end(tilt), 0.0);
        tilt[0] = tilt[5] = tilt[10] = tilt[15] = 1;
        tilt[element] = value;
        graph.setProperty<bool>("fastDraw", false);
        const QImage exact = render();
        graph.setProperty<bool>("fastDraw", true);
        const QImage fast = render();
        ASSERT_FALSE(exact.isNull());
        EXPECT_TRUE(exact == fast) << "modelview element " << element;
    }
}

} // namespace

namespace {

// A fast paint is replayed while nothing it read has changed; after any change the
// next one is the exact picture of the new state.
struct Change {
    const char* name;
    void (*apply)(TAVGraph&, GLW&);
};
void PrintTo(const Change& row, std::ostream* os) { *os << row.name; }

class FastDrawRepaint : public WalkingTake, public testing::WithParamInterface<Change> {};

TEST_P(FastDrawRepaint, ShowsTheNewState)
{
    view.viewport.pos.x = -100;
    view.viewport.scale.x = 640.f / 3200;
    graph.setProperty<bool>("fastDraw", true);
    render();
    const QImage before = render(); // the same again: kept for replay
    GetParam().apply(graph, view);
    const QImage fast = render();
    graph.setProperty<bool>("fastDraw", false);
    const QImage exact = render();

    ASSERT_FALSE(exact.isNull());
    EXPECT_FALSE(exact == before) << "the change shows";
    EXPECT_TRUE(exact == fast);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, FastDrawRepaint,
    testing::Values(Change{"CursorOnly",
                           [](TAVGraph& g, GLW&) {
                               FramesInfo info = g.framesInfo;
                               info.current = 2000;
                               g.SetFramesInfo(&info);
                           }},
                    Change{"Property", [](TAVGraph& g, GLW&) { g.setProperty<bool>("enableRGB", true); }},
                    Change{"Pan", [](TAVGraph&, GLW& v) { v.viewport.pos.x += 40; }},
                    Change{"Selection", [](TAVGraph& g, GLW&) { g.SetTrackSelection({0, 1}, "markers"); }},
                    Change{"Offsets", [](TAVGraph& g, GLW&) { g.trackOffsets[0] = Vector(20, 20, 20); }},
                    Change{"NewTracksAsManyAsBefore",
                           [](TAVGraph& g, GLW&) {
                               TAV::Frames take = takes::generated({13, 2, 3000, 6, 1500, 1530});
                               g.SetTracks(&take);
                           }},
                    Change{"SamplesEditedInPlace",
                           [](TAVGraph& g, GLW&) {
                               for (TAV::Marker& m : g.tracks[0].markers)
                                   m.y += 30;
                           }}),
    [](const testing::TestParamInfo<Change>& i) { return std::string(i.param.name); });

} // namespace

namespace {

// Samples a host may hand over that the fast walk must not take for ordinary ones:
// a still marker (kept by the filter's x step alone), filled samples, a coordinate
// that is not finite, a track whose samples change id half way, times that go
// back, a track starting before the frame range, offsets on both kinds; 20,000
// frames, so that the index has several levels.
class OddTake : public BothWays, public testing::WithParamInterface<View> {
protected:
    void SetUp() override
    {
        BothWays::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        const int frames = 20000;
        TAV::Frames take = takes::generated({4, 2, frames, 9, 12000, 12400});
        QVector<TAV::Marker> still, filled, odd, mixed, back;
        for (int i = 0; i < frames; ++i) {
            still.append(takes::marker(i, 5, -5, 12, i % 4000 < 3000 ? 1.f : 0.f));
            const float a = i / 300.f;
            filled.append(takes::marker(i, 20 * std::sin(a), 15 * std::cos(a), -10, 1, i % 50 < 20 ? 0x10 : 0));
            odd.append(takes::marker(i, 30 * std::cos(a), i == 7000 ? NAN : 10 * std::sin(2 * a),
                                     i == 9000 ? INFINITY : -20, 1));
            mixed.append(takes::marker(i, -25 + std::sin(a), 25 - std::cos(a), 0, 1));
            back.append(takes::marker(i < 15000 ? i - 500 : 30000 - i, 10 * std::sin(3 * a), -30, 35 * std::cos(a)));
        }
        take << takes::track(10, still) << takes::track(11, filled) << takes::track(12, odd)
             << takes::track(13, mixed) << takes::track(14, back);
        TAV::Frame& m = take[take.size() - 2];
        for (int i = frames / 2; i < frames; ++i)
            m.markers[i].id = 15;
        load(take, {0, 1, 2, 3, 10, 11, 12, 13, 14}, {4, 5}, FramesInfo(0, frames, 100, frames - 100, 5000));
        graph.trackOffsets[1] = Vector(5, -5, 2);
        graph.trackOffsets[15] = Vector(-3, 3, 1);
        graph.rbtrackOffsets[5] = Vector(10, 10, 10);
        graph.trackOffsets[5] = Vector(-8, 0, 4);
        graph.setProperty<bool>("enableFill", false);
        view.viewport.pos.y = -60;
        view.viewport.scale.y = height / 120.f;
    }
};

TEST_P(OddTake, FastDrawPaintsTheSamePicture) { expectFastIsExact(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Views, OddTake,
                         testing::Values(View{"ZoomedOut", -600, 640.f / 21000, 2},
                                         View{"ZoomedOutEverySample", -600, 640.f / 21000, 2, false, true},
                                         View{"ZoomedOutLines", -250.5f, 640.f / 20500, 1, true, true},
                                         View{"AroundTheTurnBack", 14700.2f, 0.9f, 2, true},
                                         View{"AroundTheIdChange", 9900.7f, 0.35f, 3, false, true},
                                         View{"ZoomedIn", 6990.1f, 6, 2, true, true}),
                         [](const testing::TestParamInfo<View>& i) { return std::string(i.param.name); });

} // namespace
