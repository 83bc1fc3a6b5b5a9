#include "graphfixture.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace {

// RegionChanged as "R a b" and SelectionChanged as "S a b", in emission order.
struct SignalLog {
    std::string text;
    explicit SignalLog(TAVGraph& graph)
    {
        QObject::connect(&graph, &TAVGraph::RegionChanged, [this](qint64 a, qint64 b) { add("R", a, b); });
        QObject::connect(&graph, &TAVGraph::SelectionChanged, [this](qint64 a, qint64 b) { add("S", a, b); });
    }
    void add(const char* kind, qint64 a, qint64 b)
    {
        text += (text.empty() ? "" : "; ") + std::string(kind) + " " + std::to_string(a) + " " + std::to_string(b);
    }
};

// Selected(rect) stores the range; Expand and Contract only propose one.
enum class Op { Selected, Expand, Contract };

const FramesInfo at1000(1000, 1100, 1000, 1000, 1000, 100.0f);

TEST(Selection, StoreAndReportTheRange)
{
    const FramesInfo hundred(0, 100, 0, 0, 0, 100.0f);
    const FramesInfo headTail(0, 100, 20, 40, 0, 100.0f);
    const double inf = std::numeric_limits<double>::infinity();
    const Op S = Op::Selected, E = Op::Expand, C = Op::Contract;
    const struct {
        const char* name;
        FramesInfo info;
        bool modifyRegion;
        qint64 start0, end0; // stored before
        Op op;
        QRectF rect;
        qint64 start, end; // stored after
        const char* emitted;
    } rows[] = {
        {"RegionThenSelectionWithOffset", at1000, true, 0, 0, S, QRectF(10.4, 0, 5.3, 1), 10, 16,
         "R 1010 1016; S 1010 1016"},
        {"SameRangeAgainEmitsNothing", at1000, true, 10, 16, S, QRectF(10.4, 0, 5.3, 1), 10, 16, ""},
        {"ClampsToTheFrames", hundred, true, 0, 0, S, QRectF(-3.7, 0, 200, 1), 0, 99, "R 0 99; S 0 99"},
        {"RightEdgeAtTheCountIsClamped", hundred, true, 0, 0, S, QRectF(5, 0, 94.6, 0), 5, 99, "R 5 99; S 5 99"},
        {"NoFramesStoresZero", FramesInfo(), true, 5, 7, S, QRectF(10, 0, 5, 0), 0, 0, "R 0 0; S 0 0"},
        {"PlainSelectionClipsToHeadTail", headTail, false, 0, 0, S, QRectF(10, 0, 40, 0), 20, 40, "S 20 40"},
        {"PlainSingleFrameIsNotClipped", headTail, false, 0, 0, S, QRectF(30, 0, 0, 0), 30, 30, "S 30 30"},
        // tail - offsetX is -5; -5 + 0.5 truncates to -4.
        {"NegativeTailClipsToOneMore", FramesInfo(100, 200, 90, 95, 100, 100.0f), false, 0, 0, S, QRectF(0, 0, 10, 0),
         0, -4, "S 100 96"},
        {"NaNRectIsFrameZero", hundred, true, 5, 6, S, QRectF(std::nan(""), 0, 1, 0), 0, 0, "R 0 0; S 0 0"},
        {"InfiniteRightClampsToLastFrame", hundred, true, 0, 0, S, QRectF(5, 0, inf, 0), 5, 99, "R 5 99; S 5 99"},
        {"ExpandClampsAtBothEnds", hundred, true, 0, 99, E, {}, 0, 99, "R 0 99"},
        // The clamps compare absolute frame numbers with the frame count.
        {"ExpandClampsAbsoluteNumbers", at1000, true, 10, 20, E, {}, 10, 20, "R 1009 99"},
        {"ExpandPlainSelection", hundred, false, 10, 20, E, {}, 10, 20, "S 9 21"},
        {"ContractByOneFrame", hundred, true, 5, 9, C, {}, 5, 9, "R 6 8"},
        {"ContractClampsAtTheCount", FramesInfo(50, 150, 50, 50, 50, 100.0f), true, 10, 51, C, {}, 10, 51, "R 61 99"},
        {"ContractTwoFramesDoesNothing", hundred, true, 5, 6, C, {}, 5, 6, ""},
        {"ExpandWithoutFramesDoesNothing", FramesInfo(), true, 5, 7, E, {}, 5, 7, ""},
        {"ContractWithoutFramesDoesNothing", FramesInfo(), true, 5, 9, C, {}, 5, 9, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TAVGraph graph;
        FramesInfo info = row.info;
        graph.SetFramesInfo(&info);
        graph.ModifyRegion(row.modifyRegion);
        graph.selectStart = row.start0;
        graph.selectEnd = row.end0;
        SignalLog log(graph);
        if (row.op == Op::Selected)
            graph.Selected(row.rect);
        else
            row.op == Op::Expand ? graph.ExpandSelect() : graph.ContractSelect();
        EXPECT_EQ(graph.selectStart, row.start);
        EXPECT_EQ(graph.selectEnd, row.end);
        EXPECT_EQ(log.text, row.emitted);
    }
}

// A handler that answers RegionChanged with a new selection must not change the
// pair that the pending SelectionChanged carries.
TEST(Selected, ReentrantHandlerKeepsTheEmittedPair)
{
    TAVGraph graph;
    FramesInfo info = at1000;
    graph.SetFramesInfo(&info);
    SignalLog log(graph);
    bool once = true;
    QObject::connect(&graph, &TAVGraph::RegionChanged, [&](qint64, qint64) {
        if (std::exchange(once, false))
            graph.Selected(QRectF(20, 0, 10, 0));
    });
    graph.Selected(QRectF(10.4, 0, 5.3, 1));
    EXPECT_EQ(log.text, "R 1010 1016; R 1020 1030; S 1020 1030; S 1010 1016");
    EXPECT_EQ(graph.selectStart, 20);
}

} // namespace
