// "fastDraw" paints exactly the same pixels as the exact drawing, through Mesa: it
// sends fewer points and segments (those that can still reach a pixel), never
// other ones.
#include "tests/draw/renderfixture.h"
#include "tests/draw/takes.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <GL/glext.h>

#include <cmath>
#include <vector>

namespace {

// 3000 frames of 12 markers and 2 rigid bodies, all missing in frames 1500-1529;
// one more marker track begins at frame 300.
void walkingTake(TAVGraph& g)
{
    TAV::Frames take = takes::generated({12, 2, 3000, 5, 1500, 1530});
    TAV::Frame late = take.at(4);
    late.id = 20;
    late.markers.remove(0, 300);
    take.append(late);
    load(g, take, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 20}, {12, 13}, FramesInfo(0, 3000, 100, 2900, 1510));
}

// Samples a host may hand over that the fast walk must not take for ordinary ones:
// a still marker (kept by the filter's x step alone), filled samples, a coordinate
// that is not finite, a track whose samples change id half way, times that go
// back, a track starting before the frame range, offsets on both kinds; 20,000
// frames, so that the index has several levels.
void oddTake(TAVGraph& g)
{
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
    take << takes::track(10, still) << takes::track(11, filled) << takes::track(12, odd) << takes::track(13, mixed)
         << takes::track(14, back);
    for (int i = frames / 2; i < frames; ++i)
        take[take.size() - 2].markers[i].id = 15;
    load(g, take, {0, 1, 2, 3, 10, 11, 12, 13, 14}, {4, 5}, FramesInfo(0, frames, 100, frames - 100, 5000));
    g.trackOffsets[1] = Vector(5, -5, 2);
    g.trackOffsets[15] = Vector(-3, 3, 1);
    g.rbtrackOffsets[5] = Vector(10, 10, 10);
    g.trackOffsets[5] = Vector(-8, 0, 4);
    g.setProperty<bool>("enableFill", false);
}

// The cull relies on the first fragment at a pixel keeping it, and on mapping data
// to pixels as GL does. Under any other state a host may leave in its paint
// "fastDraw" must still paint the exact picture, by sending everything.
//
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
    static GLuint buffer = 0;
    QOpenGLFunctions* f = QOpenGLContext::currentContext()->functions();
    if (!buffer) {
        f->glGenBuffers(1, &buffer);
        f->glBindBuffer(GL_ARRAY_BUFFER, buffer);
        f->glBufferData(GL_ARRAY_BUFFER, 1 << 20, nullptr, GL_STATIC_DRAW);
    }
    f->glBindBuffer(GL_ARRAY_BUFFER, buffer);
}

// A framebuffer with no depth buffer: the depth test then lets every fragment
// through, so the last one at a pixel stays. It is cleared as the window was, and
// the picture is read back from it.
void drawWithoutDepthBuffer()
{
    GLint size[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, size);
    QOpenGLFunctions* f = QOpenGLContext::currentContext()->functions();
    GLuint frame = 0, colour = 0;
    f->glGenRenderbuffers(1, &colour);
    f->glBindRenderbuffer(GL_RENDERBUFFER, colour);
    f->glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, size[2], size[3]);
    f->glGenFramebuffers(1, &frame);
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame);
    f->glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour);
    glClear(GL_COLOR_BUFFER_BIT);
}

// A modelview whose element (column-major) is not that of the identity: w varying
// with x or y (3, 7) or not 1 (15), depth varying with x or y (2, 6). Either way
// the first fragment at a pixel need not be the one that stays.
template <int element>
void tilt()
{
    GLdouble m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    m[element] = element == 15 ? 2 : element == 7 ? 5e-3 : 1e-4;
    glLoadMatrixd(m);
}

struct View {
    const char* name;
    void (*take)(TAVGraph&);
    float left, scale;
    int pointSize; // 1 draws lines at every zoom
    bool lod = true;
    bool rgb = false;
    void (*host)() = nullptr; // GL state the host sets in each paint before the graph draws
};
void PrintTo(const View& row, std::ostream* os) { *os << row.name; }

// Zoomed out, lines drawn after the points, colours by axis, under a host's state.
View under(const char* name, void (*host)())
{
    return View{name, walkingTake, -100, 640.f / 3200, 1, true, true, host};
}

// A take painted exactly and fast through one view of a row, y -60 to 60.
class FastDrawPixels : public RealRender, public testing::WithParamInterface<View> {
protected:
    void SetUp() override
    {
        RealRender::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        const View& row = GetParam();
        row.take(graph);
        view.viewport.pos = Vector(row.left, -60, 0);
        view.viewport.scale = Vector(row.scale, height / 120.f, 1);
        graph.setProperty<int>("pointSize", row.pointSize);
        graph.setProperty<int>("pointSizeMin", row.pointSize);
        graph.setProperty<bool>("LOD", row.lod);
        graph.setProperty<bool>("enableRGB", row.rgb);
        beforeGraph = row.host;
    }

    void expectFastIsExact()
    {
        graph.setProperty<bool>("fastDraw", false);
        const QImage exact = render();
        graph.setProperty<bool>("fastDraw", true);
        const QImage fast = render();
        ASSERT_FALSE(exact.isNull());
        EXPECT_TRUE(exact == fast);
    }
};

TEST_P(FastDrawPixels, PaintsTheSamePicture) { expectFastIsExact(); }

INSTANTIATE_TEST_SUITE_P(Views, FastDrawPixels,
                         testing::Values(View{"ZoomedOut", walkingTake, -100, 640.f / 3200, 2},
                                         View{"FilterStepAboveAFrame", walkingTake, 900, 1.2f, 2},
                                         View{"ZoomedIn", walkingTake, 1200.3f, 8, 2},
                                         View{"TracksBeginLeftOfTheView", walkingTake, 700, 2.5f, 2},
                                         View{"GapAtTheLeftEdge", walkingTake, 1510, 6, 2},
                                         View{"BigPointsAcrossTheEdges", walkingTake, 1450.5f, 10, 5},
                                         View{"AFewFrames", walkingTake, 2000.25f, 64, 3},
                                         View{"WithoutTheFilter", walkingTake, 1000, 1.5f, 2, false},
                                         View{"ZoomedOutOddPoints", walkingTake, 37.3f, 640.f / 2900, 3, true, true},
                                         View{"EvenPointsOnPixelCentres", walkingTake, 1000, 2, 2, false, true},
                                         View{"LinesZoomedOut", walkingTake, -100, 640.f / 3200, 1, true, true},
                                         View{"LinesAFewFramesPerPixel", walkingTake, 1300.4f, 0.37f, 1, true, true},
                                         View{"LinesZoomedIn", walkingTake, 1490.6f, 7.3f, 1, false, true},
                                         View{"EverySampleWithLines", walkingTake, -50.5f, 640.f / 3100, 1, false},
                                         View{"OddZoomedOut", oddTake, -600, 640.f / 21000, 2},
                                         View{"OddZoomedOutEverySample", oddTake, -600, 640.f / 21000, 2, false, true},
                                         View{"OddZoomedOutLines", oddTake, -250.5f, 640.f / 20500, 1, true, true},
                                         View{"OddAroundTheTurnBack", oddTake, 14700.2f, 0.9f, 2, true},
                                         View{"OddAroundTheIdChange", oddTake, 9900.7f, 0.35f, 3, false, true},
                                         View{"OddZoomedIn", oddTake, 6990.1f, 6, 2, true, true},
                                         under("SecondaryColoursLeftOn", leaveSecondaryColours),
                                         under("ABufferBound", bindABuffer),
                                         under("LaterFragmentsWin", [] { glDepthFunc(GL_LEQUAL); }),
                                         under("NoDepthWrites", [] { glDepthMask(GL_FALSE); }),
                                         under("NoDepthBuffer", drawWithoutDepthBuffer),
                                         under("SmoothPoints", [] { glEnable(GL_POINT_SMOOTH); }),
                                         under("SmoothLines", [] { glEnable(GL_LINE_SMOOTH); }),
                                         under("WideLines", [] { glLineWidth(3.f); }),
                                         under("WVariesAlongX", tilt<3>),
                                         under("WVariesAlongY", tilt<7>),
                                         under("WIsTwo", tilt<15>),
                                         under("DepthVariesAlongX", tilt<2>),
                                         under("DepthVariesAlongY", tilt<6>)),
                         [](const testing::TestParamInfo<View>& i) { return std::string(i.param.name); });

// A fast paint is replayed while nothing it read has changed; after any change the
// next one is the exact picture of the new state.
struct Change {
    const char* name;
    void (*apply)(TAVGraph&, GLW&);
};
void PrintTo(const Change& row, std::ostream* os) { *os << row.name; }

class FastDrawRepaint : public RealRender, public testing::WithParamInterface<Change> {};

TEST_P(FastDrawRepaint, ShowsTheNewState)
{
    walkingTake(graph);
    view.viewport.pos = Vector(-100, -60, 0);
    view.viewport.scale = Vector(640.f / 3200, height / 120.f, 1);
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
                    Change{"Offsets", [](TAVGraph& g, GLW&) { g.trackOffsets[0] = Vector(20, 20, 20); }},
                    Change{"SamplesEditedInPlace",
                           [](TAVGraph& g, GLW&) {
                               for (TAV::Marker& m : g.tracks[0].markers)
                                   m.y += 30;
                           }}),
    [](const testing::TestParamInfo<Change>& i) { return std::string(i.param.name); });

} // namespace
