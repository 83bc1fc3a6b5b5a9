// The data rectangle the graph wants shown: the frame range chosen by the mode and
// the y extent of the shown tracks.
#include "modules/minmax.h"
#include "modules/tavgraph.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"
#include "modules/core/trackoffsets.h"
#include "utils/saturate.h"

namespace {

template <class T>
void widenBySamples(const QVector<T>& samples, const IdMap<Vector>& offsets, qint64 offsetX, float minx,
                    float maxx, float& miny, float& maxy)
{
    OffsetOf offset(offsets);
    for (const T& s : samples) {
        const float x = float(frameX(s.time, offsetX));
        if (minx > x || x > maxx)
            continue;
        if (s.cond <= 0)
            continue;
        minmax(Vector(s) - offset(s.id), miny, maxy);
    }
}

} // namespace

int TAVGraph::rangeYTr(int mode, float& miny, float& maxy, float minx, float maxx, const TAV::Frames& tracks)
{
    if (mode == 0)
        return 1;
    const bool enableMarkers = property<bool>(GraphProperty::enableMarkers);
    const bool enableRigids = property<bool>(GraphProperty::enableRigids);
    for (const TAV::Frame& f : tracks) {
        if (enableMarkers && trackShown(markers, markers, rigids, f.id))
            widenBySamples(f.markers, trackOffsets, offsetX, minx, maxx, miny, maxy);
        if (enableRigids && trackShown(rigids, markers, rigids, f.id))
            widenBySamples(f.rigids, rbtrackOffsets, offsetX, minx, maxx, miny, maxy);
    }
    return 1;
}

void TAVGraph::Range2D(QRectF* rect, int mode)
{
    if (!rect)
        return;
    const qint64 n = framesInfo.size();
    if (n == 0)
        return;
    boundSelectState(size_t(n));

    float minx = 0.0f;
    float maxx = float(n);
    if (mode == 2 && isValidRange(int(selectStart), int(selectEnd))) {
        minx = float(selectStart);
        maxx = float(selectEnd);
    } else {
        const bool modifyRegion = property<bool>(GraphProperty::modifyRegion);
        if (mode == 2 || (mode == 0 && !modifyRegion)) {
            if (isValidRange(int(framesInfo.head), int(framesInfo.tail))) {
                minx = float(frameX(framesInfo.head, offsetX));
                maxx = float(frameX(framesInfo.tail, offsetX));
            } else {
                minx = 0.0f;
            }
        }
    }

    float miny = saturate_cast<float>(rect->bottom());
    float maxy = saturate_cast<float>(rect->top());
    if (!tracks.isEmpty())
        rangeYTr(mode, miny, maxy, minx, maxx, tracks);

    if (rect->height() == 0.0) {
        rect->setBottom(miny);
        rect->setTop(maxy);
    }
    if (rect->width() == 0.0) {
        rect->setLeft(minx);
        rect->setRight(maxx);
    }
    if (rect->left() > minx)
        rect->setLeft(minx);
    if (maxx > rect->right())
        rect->setRight(maxx);

    if (!property<bool>(GraphProperty::enableMarkers) && !property<bool>(GraphProperty::enableRigids))
        return;
    if (rect->bottom() > miny)
        rect->setBottom(miny);
    if (maxy > rect->top())
        rect->setTop(maxy);
    if (mode == 1) {
        rect->setTop(rect->top() * 5.0);
        rect->setBottom(rect->bottom() * 5.0);
    }
}
