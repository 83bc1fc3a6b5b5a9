// Every mistake a host can make, each followed by everything a user can do: the
// graph must neither crash nor hang, and the sanitizer build must report nothing.
// Where the graph's contract speaks, its answer is checked too.
#include "hostilehost.h"

#include <QAction>

#include <cmath>
#include <functional>
#include <limits>

namespace {

const int64_t i64min = std::numeric_limits<int64_t>::min(), i64max = std::numeric_limits<int64_t>::max();
const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();

struct Mistake {
    const char* name;
    std::function<void(HostileHost&, TAV::Frames&)> make;
};

class Hostile : public HostileHost, public testing::WithParamInterface<Mistake> {};

TEST_P(Hostile, LeavesTheGraphUsable)
{
    TAV::Frames store = markerTracks(3, 40);
    GetParam().make(*this, store);
    paint();
    navigate();
    buildMenu();
    paint();

    // Whatever came before, a sound host's next calls work as always.
    if (!view) {
        view = new GLW();
        view->rect = QRectF(0, 0, 1, 1);
        view->setProperty("visible", true);
        window->AddView(view);
        connected();
    }
    TAV::Frames sound = markerTracks(2, 30);
    frames(FramesInfo(0, 30, 0, 0, 0, 0));
    tracks(&sound);
    select({1, 2});
    QRectF fit;
    ASSERT_TRUE(call("Range2D", Q_ARG(QRectF*, &fit), Q_ARG(int, 1)));
    EXPECT_EQ(fit.width(), 30);
    EXPECT_EQ(paint(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, Hostile,
    testing::Values(
        Mistake{"SlotsBeforeAnyData", [](HostileHost&, TAV::Frames&) {}},
        Mistake{"NullPointers",
                [](HostileHost& x, TAV::Frames&) {
                    x.tracks(nullptr);
                    x.call("SetFramesInfo", Q_ARG(FramesInfo*, nullptr));
                    x.call("Range2D", Q_ARG(QRectF*, nullptr), Q_ARG(int, 1));
                    x.call("Draw2D", Q_ARG(GLW*, nullptr));
                    MenuTree tree;
                    x.call("InitContextMenuTree", Q_ARG(GLW*, nullptr), Q_ARG(MenuTree*, &tree));
                    x.call("InitContextMenuTree", Q_ARG(GLW*, x.view.data()), Q_ARG(MenuTree*, nullptr));
                    x.call("MoveCursor", Q_ARG(Mouse*, nullptr), Q_ARG(bool, true));
                }},
        Mistake{"EmptyStoreWithASelection",
                [](HostileHost& x, TAV::Frames&) {
                    static TAV::Frames empty;
                    x.frames(FramesInfo(0, 100, 10, 20, 5, 100));
                    x.tracks(&empty);
                    x.select({1, 2, 3});
                    x.select({1}, "rigids");
                }},
        Mistake{"ZeroLengthAndReversedRanges",
                [](HostileHost& x, TAV::Frames& s) {
                    x.tracks(&s);
                    x.select({1, 2, 3});
                    x.frames(FramesInfo(5, 5, 5, 5, 5, 100));
                    x.paint();
                    x.navigate();
                    x.frames(FramesInfo(40, 0, 30, 10, -7, 100));
                }},
        Mistake{"ExtremeRanges",
                [](HostileHost& x, TAV::Frames& s) {
                    x.tracks(&s);
                    x.select({1, 2, 3});
                    for (const FramesInfo& f : {FramesInfo(i64min, i64max, i64min, i64max, 0, 100),
                                                FramesInfo(i64max - 3, i64max, i64max - 2, i64max, i64max - 1, 1),
                                                FramesInfo(i64min, i64min + 40, i64min, i64min + 1, i64min, 1)}) {
                        x.frames(f);
                        x.paint();
                        x.navigate();
                    }
                }},
        Mistake{"RatesOfZeroNaNAndInfinity",
                [](HostileHost& x, TAV::Frames& s) {
                    x.tracks(&s);
                    x.select({1, 2});
                    for (float rate : {0.0f, -50.0f, nan, inf, 1e-30f}) {
                        x.frames(FramesInfo(0, 40, 3, 9, 4, rate));
                        x.paint();
                        x.navigate();
                    }
                }},
        Mistake{"NonFiniteCoordinatesAndConditions",
                [](HostileHost& x, TAV::Frames& s) {
                    for (int i = 0; i < s[0].markers.size(); ++i) {
                        TAV::Marker& m = s[0].markers[i];
                        const float bad[] = {nan, inf, -inf, 3e38f};
                        m.x = bad[i % 4];
                        m.y = bad[(i + 1) % 4];
                        m.cond = bad[(i + 2) % 4];
                    }
                    x.frames(FramesInfo(0, 40, 0, 0, 0, 0));
                    x.tracks(&s);
                    x.select({1, 2, 3});
                }},
        Mistake{"IdsAtAndAboveTheKindBits",
                [](HostileHost& x, TAV::Frames& s) {
                    const uint32_t ids[] = {0x1000000, 0x2000000, 0xFFFFFFFF};
                    for (int t = 0; t < 3; ++t) {
                        s[t].id = ids[t];
                        for (TAV::Marker& m : s[t].markers)
                            m.id = ids[t];
                    }
                    x.frames(FramesInfo(0, 40, 0, 0, 0, 0));
                    x.tracks(&s);
                    x.select({0x1000000, 0x2000000, -1});
                    x.select({0x1000000}, "rigids");
                }},
        Mistake{"TracksOfUnequalLengthAndDecreasingTimes",
                [](HostileHost& x, TAV::Frames& s) {
                    s[1].markers.resize(3);
                    s[2].markers.clear();
                    for (int i = 0; i < s[0].markers.size(); ++i)
                        s[0].markers[i].time = 1000 - 7 * i;
                    x.frames(FramesInfo(0, 60, 0, 0, 0, 0));
                    x.tracks(&s);
                    x.select({1, 2, 3});
                }},
        Mistake{"ViewDestroyedWhileConnected",
                [](HostileHost& x, TAV::Frames& s) {
                    x.frames(FramesInfo(0, 40, 0, 0, 0, 0));
                    x.tracks(&s);
                    x.select({1});
                    delete x.view.data();
                }},
        Mistake{"ActionsDeletedBehindTheGraphsBack",
                [](HostileHost& x, TAV::Frames& s) {
                    x.frames(FramesInfo(0, 40, 2, 8, 0, 0));
                    x.tracks(&s);
                    x.select({1});
                    qDeleteAll(x.view->actions());
                }},
        Mistake{"MenuObjectsDestroyedBeforeTheBuild",
                [](HostileHost& x, TAV::Frames& s) {
                    x.frames(FramesInfo(0, 40, 2, 8, 0, 0));
                    x.tracks(&s);
                    x.select({1});
                    x.call("Selected", Q_ARG(QRectF, QRectF(2, 0, 5, 0)));
                    MenuTree tree;
                    x.call("InitContextMenuTree", Q_ARG(GLW*, x.view.data()), Q_ARG(MenuTree*, &tree));
                    qDeleteAll(x.view->actions());
                    QMenu menu;
                    tree.Build(&menu);
                }},
        Mistake{"ModuleUnloadedAndLoadedAgain",
                [](HostileHost& x, TAV::Frames& s) {
                    x.tracks(&s);
                    delete x.graph.data();
                    x.library.unload();
                    x.load();
                }}),
    [](const testing::TestParamInfo<Mistake>& i) { return std::string(i.param.name); });

} // namespace
