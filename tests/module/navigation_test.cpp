#include "graphfixture.h"

#include "support/capture.h"

#include <QCursor>
#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

// Types 2 (gap) and 8 (poor) are of interest to the default jump mask 10.
const Regions fiveRuns = runsOf({{0, 9, 1}, {10, 14, 2}, {15, 29, 1}, {30, 34, 8}, {35, 99, 1}});
const Regions missingLast = runsOf({{0, 9, 1}, {10, 19, 1}, {20, 29, 1}, {30, 39, 2}});

std::string selectText(const QRectF& r) { return QString("%1+%2").arg(r.x()).arg(r.width()).toStdString(); }

// 'N' NextAOI or 'P' PrevAOI, then the view's pos.x and the emitted selection ("" for none).
struct Step {
    char op;
    float pos;
    std::string select;
};

struct NavigationRow {
    const char* name;
    Regions regions;
    float pos;
    std::vector<Step> steps;
};

void PrintTo(const NavigationRow& row, std::ostream* os) { *os << row.name; }

class Navigation : public GraphWithView, public testing::WithParamInterface<NavigationRow> {};

TEST_P(Navigation, JumpsToRunsOfInterest)
{
    setFrames(0, 100);
    graph->Connected(view);
    std::string selected;
    QObject::connect(graph, &TAVGraph::Select, [&](QRectF r) {
        EXPECT_EQ(QRectF(r.x(), 0, r.width(), 0), r);
        selected += selectText(r);
    });
    graph->regions = GetParam().regions;
    view->viewport.pos.x = GetParam().pos;
    for (const Step& step : GetParam().steps) {
        SCOPED_TRACE(std::string(1, step.op) + " to " + std::to_string(step.pos));
        selected.clear();
        window->update = 0;
        step.op == 'N' ? graph->NextAOI() : graph->PrevAOI();
        EXPECT_FLOAT_EQ(view->viewport.pos.x, step.pos);
        EXPECT_EQ(selected, step.select);
        EXPECT_EQ(window->update, step.select.empty() ? 0 : 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Navigation,
    testing::Values(
        NavigationRow{"NextVisitsGapAndPoorRunThenWraps", fiveRuns, 3.25f,
                      {{'N', 10.25f, "8+8"}, {'N', 30.25f, "28+8"}, {'N', 10.25f, "8+8"}}},
        NavigationRow{"PrevWrapsToTheLastMatch", fiveRuns, 12.0f, {{'P', 30.0f, "28+8"}}},
        // The first run's last frame counts as being at the front, as its start does.
        NavigationRow{"PrevFromTheFirstRunsEndWraps", fiveRuns, 9.0f, {{'P', 30.0f, "28+8"}}},
        NavigationRow{"PrevStepsBackThenWrapsFromTheFront", fiveRuns, 40.0f,
                      {{'P', 30.0f, "28+8"}, {'P', 10.0f, "8+8"}, {'P', 30.0f, "28+8"}}},
        NavigationRow{"PrevNeverRevisitsTheLastRunAfterItsWrap", missingLast, 15.0f, {{'P', 15.0f, ""}}},
        NavigationRow{"NextReachesTheMissingLastRun", missingLast, 15.0f, {{'N', 30.0f, "28+13"}}},
        NavigationRow{"NextFromTheLastRunDoesNotWrap", fiveRuns, 35.0f, {{'N', 35.0f, ""}}},
        NavigationRow{"OneRunIsNeverNavigated", runsOf({{0, 99, 2}}), 3.0f, {{'N', 3.0f, ""}, {'P', 3.0f, ""}}},
        NavigationRow{"JumpMaskMatchesNothing", runsOf({{0, 9, 1}, {10, 99, 4}}), 3.0f,
                      {{'N', 3.0f, ""}, {'P', 3.0f, ""}}}),
    [](const testing::TestParamInfo<NavigationRow>& i) { return std::string(i.param.name); });

// A position far outside int range saturates instead of overflowing the subtraction.
TEST_F(GraphWithView, NavigationFromAnInfinitePositionStaysDefined)
{
    setFrames(0, 100);
    graph->Connected(view);
    graph->regions = fiveRuns;
    view->viewport.pos.x = -INFINITY;
    graph->NextAOI();
    EXPECT_EQ(view->viewport.pos.x, -INFINITY);
    view->viewport.pos.x = 1e30f;
    graph->PrevAOI();
    EXPECT_FLOAT_EQ(view->viewport.pos.x, 1e30f + float(30 - 2147483647));
}

// SelectRegion reads the mouse twice: the global pointer for the inside test and the
// window's mouse state for the frame.
struct SelectRegionRow {
    const char* name;
    QPoint pointer; // in the 200 x 100 window
    int mouseX;
    const char* output;
    std::string select;
};

void PrintTo(const SelectRegionRow& row, std::ostream* os) { *os << row.name; }

class SelectRegionRows : public GraphWithView, public testing::WithParamInterface<SelectRegionRow> {};

TEST_P(SelectRegionRows, SelectsTheRunUnderTheMouse)
{
    // Small and away from the screen's edges, so that every pointer position exists.
    window->resize(200, 100);
    window->move(50, 50);
    setFrames(0, 100);
    graph->Connected(view);
    graph->regions = fiveRuns;
    window->mouse.x = GetParam().mouseX;
    QSignalSpy spy(graph, &TAVGraph::Select);
    // Suites running beside this one on the same display may move the pointer too:
    // a call during which the pointer moved is made again.
    const QPoint pointer = window->mapToGlobal(GetParam().pointer);
    std::string output;
    for (int attempt = 0; attempt < 5; ++attempt) {
        spy.clear();
        QCursor::setPos(pointer);
        StdoutCapture out;
        graph->SelectRegion();
        output = out.text();
        if (QCursor::pos() == pointer)
            break;
    }
    EXPECT_EQ(output, GetParam().output);
    ASSERT_EQ(spy.count(), GetParam().select.empty() ? 0 : 1);
    if (spy.count()) {
        EXPECT_EQ(selectText(spy.at(0).at(0).toRectF()), GetParam().select);
    }
}

const char* const outside = "SelectRegion ignores hits outside of window\n";

INSTANTIATE_TEST_SUITE_P(
    Rows, SelectRegionRows,
    testing::Values(SelectRegionRow{"PoorRunIsWidened", QPoint(10, 10), 31, "", "28+8"},
                    SelectRegionRow{"GoodRunIsNotWidened", QPoint(10, 10), 40, "", "35+64"},
                    SelectRegionRow{"LeftOfTheDataActsAsFrameZero", QPoint(10, 10), -5, "", "0+9"},
                    SelectRegionRow{"PastTheDataActsAsTheLastFrame", QPoint(10, 10), 100, "", "35+64"},
                    SelectRegionRow{"PointerOnTheFarCornerIsInside", QPoint(200, 100), 12, "", "8+8"},
                    SelectRegionRow{"PointerLeftOfTheWindow", QPoint(-10, 5), 12, outside, ""},
                    SelectRegionRow{"PointerBelowTheWindow", QPoint(5, 101), 12, outside, ""}),
    [](const testing::TestParamInfo<SelectRegionRow>& i) { return std::string(i.param.name); });

struct MoveCursorRow {
    const char* name;
    float scale, pos;
    int mouseX;
    bool state;
    int result;
    QList<QVariant> seek; // empty: nothing emitted
};

void PrintTo(const MoveCursorRow& row, std::ostream* os) { *os << row.name; }

class MoveCursorRows : public GraphWithView, public testing::WithParamInterface<MoveCursorRow> {};

TEST_P(MoveCursorRows, SeeksToTheFrameUnderTheMouse)
{
    const MoveCursorRow& row = GetParam();
    setFrames(1000, 1100);
    graph->Connected(view);
    view->viewport.scale.x = row.scale;
    view->viewport.pos.x = row.pos;
    window->mouse.x = row.mouseX;
    window->update = 0;
    QSignalSpy spy(graph, &TAVGraph::Seek);
    EXPECT_EQ(graph->MoveCursor(nullptr, row.state), row.result);
    EXPECT_EQ(window->update, row.result);
    ASSERT_EQ(spy.count(), row.seek.isEmpty() ? 0 : 1);
    if (spy.count()) {
        EXPECT_EQ(spy.at(0), row.seek);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MoveCursorRows,
    testing::Values(MoveCursorRow{"HalfRoundsUp", 2.0f, 0.0f, 83, true, 1, {qint64(1042), 0}},
                    MoveCursorRow{"BelowHalfRoundsDown", 1.0f, 0.49f, 41, true, 1, {qint64(1041), 0}},
                    MoveCursorRow{"ReleaseOnlyReads", 1.0f, 0.0f, 41, false, 0, {}},
                    MoveCursorRow{"NaNIsFrameZero", 0.0f, 0.0f, 0, true, 1, {qint64(1000), 0}},
                    MoveCursorRow{"InfinityClampsToTheLastNumber", 0.0f, 0.0f, 5, true, 1,
                                  {std::numeric_limits<qint64>::max(), 0}}),
    [](const testing::TestParamInfo<MoveCursorRow>& i) { return std::string(i.param.name); });

} // namespace
