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

TEST(Navigation, JumpsToRunsOfInterest)
{
    // 'N' NextAOI or 'P' PrevAOI, then the view's pos.x and the emitted selection ("" for none).
    struct Step {
        char op;
        float pos;
        std::string select;
    };
    const struct {
        const char* name;
        Regions regions;
        float pos;
        std::vector<Step> steps;
    } rows[] = {
        {"NextVisitsGapAndPoorRunThenWraps", fiveRuns, 3.25f,
         {{'N', 10.25f, "8+8"}, {'N', 30.25f, "28+8"}, {'N', 10.25f, "8+8"}}},
        {"PrevWrapsToTheLastMatch", fiveRuns, 12.0f, {{'P', 30.0f, "28+8"}}},
        // The first run's last frame counts as being at the front, as its start does.
        {"PrevFromTheFirstRunsEndWraps", fiveRuns, 9.0f, {{'P', 30.0f, "28+8"}}},
        {"PrevStepsBackThenWrapsFromTheFront", fiveRuns, 40.0f,
         {{'P', 30.0f, "28+8"}, {'P', 10.0f, "8+8"}, {'P', 30.0f, "28+8"}}},
        {"PrevNeverRevisitsTheLastRunAfterItsWrap", missingLast, 15.0f, {{'P', 15.0f, ""}}},
        {"NextReachesTheMissingLastRun", missingLast, 15.0f, {{'N', 30.0f, "28+13"}}},
        {"NextWrapsToTheFirstRun", runsOf({{0, 9, 2}, {10, 99, 1}}), 50.0f, {{'N', 0.0f, "-2+13"}}},
        {"NextFromTheLastRunDoesNotWrap", fiveRuns, 35.0f, {{'N', 35.0f, ""}}},
        {"OneRunIsNeverNavigated", runsOf({{0, 99, 2}}), 3.0f, {{'N', 3.0f, ""}, {'P', 3.0f, ""}}},
        {"JumpMaskMatchesNothing", runsOf({{0, 9, 1}, {10, 99, 4}}), 3.0f, {{'N', 3.0f, ""}, {'P', 3.0f, ""}}},
        // Positions far outside int range saturate instead of overflowing the subtraction.
        {"FromMinusInfinity", fiveRuns, -INFINITY, {{'N', -INFINITY, "0+9"}}},
        {"FromBeyondIntRange", fiveRuns, 1e30f, {{'P', 1e30f, "35+64"}}}};
    for (const auto& row : rows) {
        GraphOnView g;
        g.setFrames(0, 100);
        g.graph->Connected(g.view);
        std::string selected;
        QObject::connect(g.graph, &TAVGraph::Select, [&](QRectF r) {
            EXPECT_EQ(QRectF(r.x(), 0, r.width(), 0), r);
            selected += selectText(r);
        });
        g.graph->regions = row.regions;
        g.view->viewport.pos.x = row.pos;
        for (const Step& step : row.steps) {
            SCOPED_TRACE(row.name + std::string(": ") + step.op + " to " + std::to_string(step.pos));
            selected.clear();
            g.window->update = 0;
            step.op == 'N' ? g.graph->NextAOI() : g.graph->PrevAOI();
            EXPECT_FLOAT_EQ(g.view->viewport.pos.x, step.pos);
            EXPECT_EQ(selected, step.select);
            EXPECT_EQ(g.window->update, step.select.empty() ? 0 : 1);
        }
    }
}

// SelectRegion reads the mouse twice: the global pointer for the inside test and the
// window's mouse state for the frame.
TEST(SelectRegion, SelectsTheRunUnderTheMouse)
{
    const struct {
        const char* name;
        QPoint pointer; // in the 200 x 100 window
        int mouseX;
        std::string select; // "" for a pointer outside of the view
    } rows[] = {{"PoorRunIsWidened", {10, 10}, 31, "28+8"},
                {"GoodRunIsNotWidened", {10, 10}, 40, "35+64"},
                {"LeftOfTheDataActsAsFrameZero", {10, 10}, -5, "0+9"},
                {"PastTheDataActsAsTheLastFrame", {10, 10}, 100, "35+64"},
                {"PointerOnTheFarCornerIsInside", {200, 100}, 12, "8+8"},
                {"PointerLeftOfTheWindow", {-10, 5}, 12, ""},
                {"PointerAboveTheWindow", {5, -1}, 12, ""},
                {"PointerRightOfTheWindow", {201, 5}, 12, ""},
                {"PointerBelowTheWindow", {5, 101}, 12, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphOnView g;
        // Small and away from the screen's edges, so that every pointer position exists.
        g.window->resize(200, 100);
        g.window->move(50, 50);
        g.setFrames(0, 100);
        g.graph->Connected(g.view);
        g.graph->regions = fiveRuns;
        g.window->mouse.x = row.mouseX;
        QSignalSpy spy(g.graph, &TAVGraph::Select);
        // Suites running beside this one on the same display may move the pointer too:
        // a call during which the pointer moved is made again.
        const QPoint pointer = g.window->mapToGlobal(row.pointer);
        std::string output;
        for (int attempt = 0; attempt < 5; ++attempt) {
            spy.clear();
            QCursor::setPos(pointer);
            StdoutCapture out;
            g.graph->SelectRegion();
            output = out.text();
            if (QCursor::pos() == pointer)
                break;
        }
        EXPECT_EQ(output, row.select.empty() ? "SelectRegion ignores hits outside of window\n" : "");
        EXPECT_EQ(spy.isEmpty() ? "" : selectText(spy.at(0).at(0).toRectF()), row.select);
        EXPECT_LE(spy.count(), 1);
    }
}

TEST(MoveCursor, SeeksToTheFrameUnderTheMouse)
{
    const struct {
        const char* name;
        float scale, pos;
        int mouseX;
        bool state; // a press seeks, a release only reads
        QList<QVariant> seek;
    } rows[] = {{"HalfRoundsUp", 2.0f, 0.0f, 83, true, {qint64(1042), 0}},
                {"BelowHalfRoundsDown", 1.0f, 0.49f, 41, true, {qint64(1041), 0}},
                {"ReleaseOnlyReads", 1.0f, 0.0f, 41, false, {}},
                {"NaNIsFrameZero", 0.0f, 0.0f, 0, true, {qint64(1000), 0}},
                {"InfinityClampsToTheLastNumber", 0.0f, 0.0f, 5, true, {std::numeric_limits<qint64>::max(), 0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphOnView g;
        g.setFrames(1000, 1100);
        g.graph->Connected(g.view);
        g.view->viewport.scale.x = row.scale;
        g.view->viewport.pos.x = row.pos;
        g.window->mouse.x = row.mouseX;
        g.window->update = 0;
        QSignalSpy spy(g.graph, &TAVGraph::Seek);
        EXPECT_EQ(g.graph->MoveCursor(nullptr, row.state), row.state ? 1 : 0);
        EXPECT_EQ(g.window->update, row.state ? 1 : 0);
        EXPECT_EQ(spy.isEmpty() ? QList<QVariant>() : spy.at(0), row.seek);
        EXPECT_LE(spy.count(), 1);
    }
}

} // namespace
