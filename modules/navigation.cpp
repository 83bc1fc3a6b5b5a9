// Jumps between runs of interest and selection of the run under the mouse.
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "utils/saturate.h"

#include <QCursor>

#include <iostream>

namespace {

bool contains(const Pair& r, int current) { return r.begin() <= current && current <= r.end(); }

// Index of the next run of interest after the one holding current, wrapping once
// past the end unless the last run holds current; -1 when there is none.
int nextTarget(const Regions& runs, int current, int jumpMask)
{
    const int last = int(runs.size()) - 1;
    bool currentFound = current <= runs.front().end() || current > runs.back().begin();
    bool loop = true;
    for (int i = 0; i <= last;) {
        const Pair& r = runs[size_t(i)];
        if (contains(r, current)) {
            currentFound = true;
            ++i;
        } else if (currentFound && (r.type & jumpMask)) {
            return i;
        } else if (loop && i == last) {
            i = 0;
            loop = false;
        } else {
            ++i;
        }
    }
    return -1;
}

// The mirror scan from the last run down. Signed indices: it counts down past 0.
// Its wrap resumes at the second-to-last run, so the last is not looked at again.
int prevTarget(const Regions& runs, int current, int jumpMask)
{
    const int last = int(runs.size()) - 1;
    bool currentFound = current >= runs.back().begin() || qint64(current) <= qint64(runs.front().end()) + 1;
    bool loop = true;
    for (int i = last; i >= 0;) {
        const Pair& r = runs[size_t(i)];
        if (contains(r, current)) {
            currentFound = true;
            --i;
        } else if (currentFound && (r.type & jumpMask)) {
            return i;
        } else if (loop && i == 0) {
            i = last - 1;
            loop = false;
        } else {
            --i;
        }
    }
    return -1;
}

} // namespace

void TAVGraph::NextAOI() { jumpToRun(true); }

void TAVGraph::PrevAOI() { jumpToRun(false); }

void TAVGraph::jumpToRun(bool forward)
{
    GLW* view = liveView();
    if (!view || regions.size() < 2)
        return;
    const int jumpMask = property<int>(GraphProperty::jumpMask);
    const int current = saturate_cast<int>(view->viewport.pos.x);
    const int target = forward ? nextTarget(regions, current, jumpMask) : prevTarget(regions, current, jumpMask);
    if (target < 0)
        return;
    // The view keeps the fraction of its position; forward in double, backward in float.
    const int begin = regions[size_t(target)].begin();
    if (forward) {
        if (begin == current)
            return;
        view->viewport.pos.x = float(double(view->viewport.pos.x) + double(diff32(begin, current)));
    } else {
        const float diff = float(diff32(begin, current));
        if (diff == 0.0f)
            return;
        view->viewport.pos.x = view->viewport.pos.x + diff;
    }
    selectRegionAt(saturate_cast<int>(view->viewport.pos.x));
    requestRepaint();
}

void TAVGraph::selectRegionAt(int current)
{
    if (current < 0)
        current = 0;
    const int n = int(framesInfo.size());
    if (current >= n)
        current = diff32(n, 1);
    for (const Pair& r : regions) {
        if (!contains(r, current))
            continue;
        double b = r.begin();
        double e = r.end();
        if (r.type & (RegionMissing | RegionPoor | RegionMixed)) {
            b -= 2;
            e += 2;
        }
        QRectF rect;
        rect.setLeft(b);
        rect.setRight(e);
        emit Select(rect);
        return;
    }
}

void TAVGraph::SelectRegion()
{
    GLW* view = liveView();
    GLWindow* window = liveWindow();
    if (!view || !window)
        return;
    const QPoint p = window->mapFromGlobal(QCursor::pos());
    if (p.x() < 0 || p.y() < 0 || double(p.x()) > view->width() || double(p.y()) > view->height()) {
        std::cout << "SelectRegion" << " ignores hits outside of window" << std::endl;
        return;
    }
    selectRegionAt(saturate_cast<int>(view->Cursor().x));
}
