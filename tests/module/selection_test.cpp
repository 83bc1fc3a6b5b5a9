#include "graphfixture.h"

#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

// Records RegionChanged ("R a b") and SelectionChanged ("S a b") in emission order.
struct SignalLog {
    std::vector<std::string> lines;
    explicit SignalLog(TAVGraph& graph)
    {
        QObject::connect(&graph, &TAVGraph::RegionChanged, [this](qint64 a, qint64 b) { add("R", a, b); });
        QObject::connect(&graph, &TAVGraph::SelectionChanged, [this](qint64 a, qint64 b) { add("S", a, b); });
    }
    void add(const char* kind, qint64 a, qint64 b)
    {
        lines.push_back(std::string(kind) + " " + std::to_string(a) + " " + std::to_string(b));
    }
    std::string text() const
    {
        std::string t;
        for (const std::string& l : lines)
            t += (t.empty() ? "" : "; ") + l;
        return t;
    }
};

struct SelectedRow {
    const char* name;
    FramesInfo info;
    bool modifyRegion;
    qint64 start0, end0; // stored before
    QRectF rect;
    qint64 start, end; // stored after
    const char* emitted;
};

void PrintTo(const SelectedRow& row, std::ostream* os) { *os << row.name; }

class SelectedRows : public testing::TestWithParam<SelectedRow> {};

TEST_P(SelectedRows, StoresClampedRangeAndReportsIt)
{
    const SelectedRow& row = GetParam();
    TAVGraph graph;
    FramesInfo info = row.info;
    graph.SetFramesInfo(&info);
    graph.ModifyRegion(row.modifyRegion);
    graph.selectStart = row.start0;
    graph.selectEnd = row.end0;
    SignalLog log(graph);
    graph.Selected(row.rect);
    EXPECT_EQ(graph.selectStart, row.start);
    EXPECT_EQ(graph.selectEnd, row.end);
    EXPECT_EQ(log.text(), row.emitted);
}

const FramesInfo at1000(1000, 1100, 1000, 1000, 1000, 100.0f);
const FramesInfo hundred(0, 100, 0, 0, 0, 100.0f);
const FramesInfo headTail(0, 100, 20, 40, 0, 100.0f);
const double inf = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Rows, SelectedRows,
    testing::Values(
        SelectedRow{"RegionThenSelectionWithOffset", at1000, true, 0, 0, QRectF(10.4, 0, 5.3, 1), 10, 16,
                    "R 1010 1016; S 1010 1016"},
        SelectedRow{"SameRangeAgainEmitsNothing", at1000, true, 10, 16, QRectF(10.4, 0, 5.3, 1), 10, 16, ""},
        SelectedRow{"ClampsToTheFrames", hundred, true, 0, 0, QRectF(-3.7, 0, 200, 1), 0, 99, "R 0 99; S 0 99"},
        SelectedRow{"NoFramesStoresZero", FramesInfo(), true, 5, 7, QRectF(10, 0, 5, 0), 0, 0, "R 0 0; S 0 0"},
        SelectedRow{"NoFramesUnchangedEmitsNothing", FramesInfo(), true, 0, 0, QRectF(10, 0, 5, 0), 0, 0, ""},
        SelectedRow{"PlainSelectionClipsToHeadTail", headTail, false, 0, 0, QRectF(10, 0, 40, 0), 20, 40,
                    "S 20 40"},
        SelectedRow{"PlainSingleFrameIsNotClipped", headTail, false, 0, 0, QRectF(30, 0, 0, 0), 30, 30, "S 30 30"},
        // tail - offsetX is -5; -5 + 0.5 truncates to -4.
        SelectedRow{"NegativeTailClipsToOneMore", FramesInfo(100, 200, 90, 95, 100, 100.0f), false, 0, 0,
                    QRectF(0, 0, 10, 0), 0, -4, "S 100 96"},
        SelectedRow{"NaNRectIsFrameZero", hundred, true, 5, 6, QRectF(std::nan(""), 0, 1, 0), 0, 0,
                    "R 0 0; S 0 0"},
        SelectedRow{"InfiniteRightClampsToLastFrame", hundred, true, 0, 0, QRectF(5, 0, inf, 0), 5, 99,
                    "R 5 99; S 5 99"}),
    [](const testing::TestParamInfo<SelectedRow>& i) { return std::string(i.param.name); });

struct StepRow {
    const char* name;
    FramesInfo info;
    bool modifyRegion;
    qint64 start, end;
    bool expand;
    const char* emitted;
};

void PrintTo(const StepRow& row, std::ostream* os) { *os << row.name; }

class ExpandContractRows : public testing::TestWithParam<StepRow> {};

TEST_P(ExpandContractRows, ProposeARangeWithoutStoringIt)
{
    const StepRow& row = GetParam();
    TAVGraph graph;
    FramesInfo info = row.info;
    graph.SetFramesInfo(&info);
    graph.ModifyRegion(row.modifyRegion);
    graph.selectStart = row.start;
    graph.selectEnd = row.end;
    SignalLog log(graph);
    row.expand ? graph.ExpandSelect() : graph.ContractSelect();
    EXPECT_EQ(log.text(), row.emitted);
    EXPECT_EQ(graph.selectStart, row.start);
    EXPECT_EQ(graph.selectEnd, row.end);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ExpandContractRows,
    testing::Values(StepRow{"ExpandClampsAtBothEnds", hundred, true, 0, 99, true, "R 0 99"},
                    StepRow{"ExpandByOneFrame", hundred, true, 10, 20, true, "R 9 21"},
                    StepRow{"ExpandPlainSelection", hundred, false, 10, 20, true, "S 9 21"},
                    // The clamps compare absolute frame numbers with the frame count.
                    StepRow{"ExpandClampsAbsoluteNumbers", at1000, true, 10, 20, true, "R 1009 99"},
                    StepRow{"ExpandWithoutFrames", FramesInfo(), true, 10, 20, true, ""},
                    StepRow{"ContractTwoFramesDoesNothing", hundred, true, 5, 6, false, ""},
                    StepRow{"ContractByOneFrame", hundred, true, 5, 9, false, "R 6 8"},
                    StepRow{"ContractPlainSelection", hundred, false, 5, 9, false, "S 6 8"}),
    [](const testing::TestParamInfo<StepRow>& i) { return std::string(i.param.name); });

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
    QSignalSpy selection(&graph, &TAVGraph::SelectionChanged);
    graph.Selected(QRectF(10.4, 0, 5.3, 1));
    EXPECT_EQ(log.text(), "R 1010 1016; R 1020 1030; S 1020 1030; S 1010 1016");
    ASSERT_EQ(selection.count(), 2);
    EXPECT_EQ(selection.at(1), QList<QVariant>({qint64(1010), qint64(1016)}));
    EXPECT_EQ(graph.selectStart, 20);
}

} // namespace
