// The data rectangle the graph wants shown: the frame range chosen by the mode and
// the y extent of the shown tracks.
#include "modules/minmax.h"
#include "modules/tavgraph.h"
#include "modules/trackindex.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"
#include "modules/core/shown.h"
#include "modules/core/trackoffsets.h"
#include "utils/saturate.h"

#include <algorithm>
#include <cmath>

namespace {

template <class T>
void widenBySamples(const T* s, const T* end, const IdMap<Vector>& offsets, qint64 offsetX, float minx, float maxx,
                    float& miny, float& maxy)
{
    OffsetOf offset(offsets);
    for (; s != end; ++s) {
        const float x = float(frameX(s->time, offsetX));
        if (minx > x || x > maxx)
            continue;
        if (s->cond <= 0)
            continue;
        minmax(Vector(*s) - offset(s->id), miny, maxy);
    }
}

// The same widening over a track's index: a block wholly inside [minx, maxx] whose
// valid samples share one id widens by its box, which holds the least and greatest
// of their values less the offset (float subtraction keeps their order; both skip
// values that are not numbers). Which of two zeros comes first could differ, but
// the rectangle's arithmetic does not keep the sign of a zero edge.
template <class T>
void widenByIndex(const QVector<T>& samples, const TrackIndex& index, int level, int i,
                  const IdMap<Vector>& offsets, qint64 offsetX, float minx, float maxx, float& miny, float& maxy)
{
    const SampleBlock& block = index.block(level, i);
    if (block.empty())
        return;
    const float x0 = float(frameX(block.timeLo, offsetX)), x1 = float(frameX(block.timeHi, offsetX));
    if (minx > x1 || x0 > maxx)
        return;
    const int64_t span = TrackIndex::span(level);
    const int a = int(i * span), b = int(std::min<int64_t>(samples.size(), a + span));
    if (!(minx > x0) && !(x1 > maxx) && block.oneId) {
        Vector o;
        offsets.find(int(block.id), o);
        float lo[3], hi[3];
        bool plain = true;
        for (int axis = 0; axis < 3; ++axis) {
            lo[axis] = block.lo[axis] - o[axis];
            hi[axis] = block.hi[axis] - o[axis];
            plain = plain && std::isfinite(lo[axis]) && std::isfinite(hi[axis]); // an axis without a number
        }
        if (plain) {
            for (int axis = 0; axis < 3; ++axis) {
                minmax(lo[axis], miny, maxy);
                minmax(hi[axis], miny, maxy);
            }
            return;
        }
    }
    if (level == 0) {
        widenBySamples(samples.constData() + a, samples.constData() + b, offsets, offsetX, minx, maxx, miny, maxy);
        return;
    }
    for (int c = i * TrackIndex::fan; c < std::min(index.count(level - 1), (i + 1) * TrackIndex::fan); ++c)
        widenByIndex(samples, index, level - 1, c, offsets, offsetX, minx, maxx, miny, maxy);
}

} // namespace

int TAVGraph::rangeYTr(int mode, float& miny, float& maxy, float minx, float maxx, const TAV::Frames& tracks)
{
    if (mode == 0)
        return 1;
    const bool enableMarkers = property<bool>(GraphProperty::enableMarkers);
    const bool enableRigids = property<bool>(GraphProperty::enableRigids);
    // A host that has the graph draw fast also has it keep the tracks' index.
    const bool indexed = property<bool>(GraphProperty::fastDraw) && &tracks == &this->tracks;
    if (indexed && !trackIndexes)
        trackIndexes = std::make_unique<TrackIndexes>();
    const auto widen = [&](const auto& samples, const TrackIndex* index, const IdMap<Vector>& offsets) {
        if (index)
            widenByIndex(samples, *index, index->levels() - 1, 0, offsets, offsetX, minx, maxx, miny, maxy);
        else
            widenBySamples(samples.cbegin(), samples.cend(), offsets, offsetX, minx, maxx, miny, maxy);
    };
    for (int i = 0; i < tracks.size(); ++i) {
        const TAV::Frame& f = tracks.at(i);
        if (enableMarkers && trackShown(markers, markers, rigids, f.id))
            widen(f.markers, indexed && !f.markers.isEmpty() ? &trackIndexes->markers(tracks, i) : nullptr,
                  trackOffsets);
        if (enableRigids && trackShown(rigids, markers, rigids, f.id))
            widen(f.rigids, indexed && !f.rigids.isEmpty() ? &trackIndexes->rigids(tracks, i) : nullptr,
                  rbtrackOffsets);
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
