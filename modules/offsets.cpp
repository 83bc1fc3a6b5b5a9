// Per-track y offsets: every track's value at one reference frame becomes its origin.
#include "modules/tavgraph.h"

#include "utils/saturate.h"

#include <cmath>

void TAVGraph::UpdateTrackOffsets()
{
    trackOffsets.clear();
    rbtrackOffsets.clear();

    qint64 pos = 0;
    if (GLW* view = liveView())
        pos = saturate_cast<qint64>(view->Cursor().x);
    else
        pos = sub64(framesInfo.current, offsetX);
    const qint64 n = framesInfo.size();
    if (pos < 0)
        pos = 0;
    if (pos >= n)
        pos = sub64(n, 1);
    pos = add64(pos, offsetX);

    if (tracks.isEmpty())
        return;

    // The last track is the reference: its sample index at pos is used in every
    // track, as all tracks are sampled on the same frames.
    const TAV::Frame& reference = tracks.constLast();
    const int tol = saturate_cast<int>(std::fabs(0.5 * period));
    int index = 0;
    if (!reference.markers.isEmpty())
        index = TAV::findIndex(reference.markers, pos, tol);
    else if (!reference.rigids.isEmpty())
        index = TAV::findIndex(reference.rigids, pos, tol);
    else
        index = static_cast<int32_t>(pos);

    // findIndex gives -1 for a position outside the reference track: nothing is recorded.
    if (index >= 0) {
        for (const TAV::Frame& t : qAsConst(tracks)) {
            if (t.markers.size() > index) {
                const TAV::Marker& m = t.markers.at(index);
                if (m.cond > 0)
                    trackOffsets[int(m.id)] = Vector(m);
            }
            if (t.rigids.size() > index) {
                const TAV::Rigid& r = t.rigids.at(index);
                if (r.cond > 0)
                    rbtrackOffsets[int(r.id)] = Vector(r);
            }
        }
    }
    requestRepaint();
}

void TAVGraph::ClearTrackOffsets()
{
    trackOffsets.clear();
    rbtrackOffsets.clear();
}
