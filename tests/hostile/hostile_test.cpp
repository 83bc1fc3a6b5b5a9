// Every mistake a host can make, each followed by everything a user can do: the
// graph must neither crash nor hang, and the sanitizer build must report nothing.
// Then a sound host's calls by name must work as always.
#include "tests/plugin/pluginhost.h"

#include <functional>
#include <limits>

namespace {

const int64_t i64min = std::numeric_limits<int64_t>::min(), i64max = std::numeric_limits<int64_t>::max();
const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();

struct Mistake {
    const char* name;
    std::function<void(PluginHost&, TAV::Frames&)> make;
};

// The store with the given tracks selected, then each frame range in turn, painted
// and navigated.
void sweep(PluginHost& x, TAV::Frames& store, const QList<int>& ids, std::initializer_list<FramesInfo> infos)
{
    x.tracks(&store);
    x.select(ids);
    for (const FramesInfo& info : infos) {
        x.frames(info);
        x.paint();
        x.navigate();
    }
}

class Hostile : public PluginHost, public testing::WithParamInterface<Mistake> {};

TEST_P(Hostile, LeavesTheGraphUsable)
{
    TAV::Frames store = markerTracks(3, 40);
    GetParam().make(*this, store);
    paint();
    navigate();
    menu();
    paint();

    newView();
    TAV::Frames sound = markerTracks(2, 30);
    QSignalSpy region(graph, SIGNAL(RegionChanged(qint64, qint64)));
    feed(FramesInfo(0, 30, 0, 1, 0, 0), &sound, {1, 2});
    QRectF fit;
    ASSERT_TRUE(call("Range2D", Q_ARG(QRectF*, &fit), Q_ARG(int, 1)));
    EXPECT_EQ(fit, QRectF(0, 145, 30, -290)); // x, y and z from -29 to 29, scaled five-fold
    EXPECT_TRUE(call("Selected", Q_ARG(QRectF, QRectF(3, 0, 4, 0))));
    EXPECT_EQ(region.count() == 1 ? region.at(0) : QList<QVariant>(), QList<QVariant>({3LL, 7LL}));
    EXPECT_EQ(view->actions().size(), 16); // the graph's 13 and the window's 3 editing actions
    EXPECT_EQ(menu(), "| applytool delete_data revert_data | updateoffsets nextaoi prevaoi select_region "
                      "display{enable_markers* enable_rigid_angles enable_rigids* enable_original enable_tc}");
    EXPECT_EQ(paint(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, Hostile,
    testing::Values(
        Mistake{"SlotsBeforeAnyData", [](PluginHost&, TAV::Frames&) {}},
        Mistake{"NullPointers",
                [](PluginHost& x, TAV::Frames&) {
                    MenuTree tree;
                    x.tracks(nullptr);
                    x.call("SetFramesInfo", Q_ARG(FramesInfo*, nullptr));
                    x.call("Range2D", Q_ARG(QRectF*, nullptr), Q_ARG(int, 1));
                    x.call("Draw2D", Q_ARG(GLW*, nullptr));
                    x.call("InitContextMenuTree", Q_ARG(GLW*, nullptr), Q_ARG(MenuTree*, &tree));
                    x.call("InitContextMenuTree", Q_ARG(GLW*, x.view.data()), Q_ARG(MenuTree*, nullptr));
                    x.call("MoveCursor", Q_ARG(Mouse*, nullptr), Q_ARG(bool, true));
                }},
        Mistake{"EmptyStoreWithASelection",
                [](PluginHost& x, TAV::Frames&) {
                    static TAV::Frames empty;
                    x.feed(FramesInfo(0, 100, 10, 20, 5, 100), &empty, {1, 2, 3});
                    x.select({1}, "rigids");
                }},
        Mistake{"ZeroLengthAndReversedRanges",
                [](PluginHost& x, TAV::Frames& s) {
                    sweep(x, s, {1, 2, 3}, {FramesInfo(5, 5, 5, 5, 5, 100), FramesInfo(40, 0, 30, 10, -7, 100)});
                }},
        Mistake{"ExtremeRanges",
                [](PluginHost& x, TAV::Frames& s) {
                    sweep(x, s, {1, 2, 3},
                          {FramesInfo(i64min, i64max, i64min, i64max, 0, 100),
                             FramesInfo(i64max - 3, i64max, i64max - 2, i64max, i64max - 1, 1),
                             FramesInfo(i64min, i64min + 40, i64min, i64min + 1, i64min, 1)});
                }},
        Mistake{"RatesOfZeroNaNAndInfinity",
                [](PluginHost& x, TAV::Frames& s) {
                    sweep(x, s, {1, 2},
                          {FramesInfo(0, 40, 3, 9, 4, 0.0f), FramesInfo(0, 40, 3, 9, 4, -50.0f),
                             FramesInfo(0, 40, 3, 9, 4, nan), FramesInfo(0, 40, 3, 9, 4, inf),
                             FramesInfo(0, 40, 3, 9, 4, 1e-30f)});
                }},
        Mistake{"NonFiniteCoordinatesAndConditions",
                [](PluginHost& x, TAV::Frames& s) {
                    const float bad[] = {nan, inf, -inf, 3e38f};
                    for (int i = 0; i < s[0].markers.size(); ++i) {
                        TAV::Marker& m = s[0].markers[i];
                        m.x = bad[i % 4];
                        m.y = bad[(i + 1) % 4];
                        m.cond = bad[(i + 2) % 4];
                    }
                    x.feed(FramesInfo(0, 40, 0, 0, 0, 0), &s, {1, 2, 3});
                }},
        Mistake{"IdsAtAndAboveTheKindBits",
                [](PluginHost& x, TAV::Frames& s) {
                    const uint32_t ids[] = {0x1000000, 0x2000000, 0xFFFFFFFF};
                    for (int t = 0; t < 3; ++t) {
                        s[t].id = ids[t];
                        for (TAV::Marker& m : s[t].markers)
                            m.id = ids[t];
                    }
                    x.feed(FramesInfo(0, 40, 0, 0, 0, 0), &s, {0x1000000, 0x2000000, -1});
                    x.select({0x1000000}, "rigids");
                }},
        Mistake{"TracksOfUnequalLengthAndDecreasingTimes",
                [](PluginHost& x, TAV::Frames& s) {
                    s[1].markers.resize(3);
                    s[2].markers.clear();
                    for (int i = 0; i < s[0].markers.size(); ++i)
                        s[0].markers[i].time = 1000 - 7 * i;
                    x.feed(FramesInfo(0, 60, 0, 0, 0, 0), &s, {1, 2, 3});
                }},
        Mistake{"ViewDestroyedWhileConnected",
                [](PluginHost& x, TAV::Frames& s) {
                    x.feed(FramesInfo(0, 40, 0, 0, 0, 0), &s, {1});
                    delete x.view.data();
                }},
        Mistake{"ActionsDeletedBehindTheGraphsBack",
                [](PluginHost& x, TAV::Frames& s) {
                    x.feed(FramesInfo(0, 40, 2, 8, 0, 0), &s, {1});
                    qDeleteAll(x.view->actions());
                }},
        Mistake{"MenuObjectsDestroyedBeforeTheBuild",
                [](PluginHost& x, TAV::Frames& s) {
                    x.feed(FramesInfo(0, 40, 2, 8, 0, 0), &s, {1});
                    x.call("Selected", Q_ARG(QRectF, QRectF(2, 0, 5, 0)));
                    MenuTree tree;
                    x.call("InitContextMenuTree", Q_ARG(GLW*, x.view.data()), Q_ARG(MenuTree*, &tree));
                    qDeleteAll(x.view->actions());
                    QMenu menu;
                    tree.Build(&menu);
                }},
        Mistake{"ModuleUnloadedAndLoadedAgain",
                [](PluginHost& x, TAV::Frames& s) {
                    x.tracks(&s);
                    delete x.graph.data();
                    x.library.unload();
                    x.start();
                }}),
    [](const testing::TestParamInfo<Mistake>& i) { return std::string(i.param.name); });

} // namespace
