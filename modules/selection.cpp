// The selected range of frames: stored from the host's rubber band, reported back
// as a region edit or a plain selection, grown and shrunk on request.
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "utils/saturate.h"

#include <algorithm>
#include <utility>

void TAVGraph::Selected(QRectF r)
{
    qint64 _start = saturate_cast<qint64>(r.left() + 0.5);
    qint64 _end = saturate_cast<qint64>(r.right() + 0.5);
    const qint64 n = framesInfo.size();
    if (n == 0) {
        _start = 0;
        _end = 0;
    } else {
        if (_end >= n)
            _end = sub64(n, 1);
        if (_start < 0)
            _start = 0;
    }
    if (_start == selectStart && _end == selectEnd)
        return;
    selectStart = _start;
    selectEnd = _end;

    if (property<bool>(GraphProperty::modifyRegion)) {
        // The same pair goes out twice, even if a handler of the first signal
        // changes the selection.
        const qint64 a = add64(selectStart, offsetX);
        const qint64 b = add64(selectEnd, offsetX);
        emit RegionChanged(a, b);
        emit SelectionChanged(a, b);
        return;
    }
    if (selectStart != selectEnd) {
        const qint64 head = frameX(framesInfo.head, offsetX);
        const qint64 tail = frameX(framesInfo.tail, offsetX);
        if (head != tail) {
            if (selectStart < head)
                selectStart = saturate_cast<qint64>(head + 0.5);
            if (selectEnd > tail)
                selectEnd = saturate_cast<qint64>(tail + 0.5);
        }
    }
    emit SelectionChanged(add64(selectStart, offsetX), add64(selectEnd, offsetX));
}

void TAVGraph::ExpandSelect()
{
    const qint64 n = framesInfo.size();
    if (n <= 0)
        return;
    float s0 = float(sub64(add64(offsetX, selectStart), 1));
    float s1 = float(add64(add64(offsetX, selectEnd), 1));
    if (s0 < 0.0f)
        s0 = 0.0f;
    if (s1 >= float(n))
        s1 = float(n - 1);
    proposeRange(saturate_cast<qint64>(s0), saturate_cast<qint64>(s1));
}

void TAVGraph::ContractSelect()
{
    const qint64 n = framesInfo.size();
    if (n <= 0)
        return;
    float s0 = float(add64(add64(offsetX, selectStart), 1));
    float s1 = float(sub64(add64(offsetX, selectEnd), 1));
    s0 = std::max(s0, 0.0f);
    if (s1 >= float(n))
        s1 = float(n - 1);
    if (s0 >= s1)
        return;
    proposeRange(saturate_cast<qint64>(s0), saturate_cast<qint64>(s1));
}

void TAVGraph::proposeRange(qint64 start, qint64 end)
{
    if (property<bool>(GraphProperty::modifyRegion))
        emit RegionChanged(start, end);
    else
        emit SelectionChanged(start, end);
}

void TAVGraph::boundSelectState(size_t frames)
{
    if (selectEnd < selectStart)
        std::swap(selectStart, selectEnd);
    if (selectStart < 0)
        selectStart = 0;
    if (selectEnd >= static_cast<int>(frames))
        selectEnd = static_cast<qint64>(frames - 1);
}
