// Per-track y offsets: every track's value at one reference frame becomes its origin.
#include "modules/tavgraph.h"

#include "modules/core/framex.h"
#include "modules/core/trackoffsets.h"
#include "utils/saturate.h"

void TAVGraph::UpdateTrackOffsets()
{
    trackOffsets.clear();
    rbtrackOffsets.clear();

    qint64 pos = 0;
    if (GLW* view = liveView())
        pos = saturate_cast<qint64>(view->Cursor().x);
    else
        pos = frameX(framesInfo.current, offsetX);
    pos = offsetFrame(pos, framesInfo.size(), offsetX);

    if (tracks.isEmpty())
        return;

    const TrackOffsets taken = offsetsAt(tracks, pos, period);
    trackOffsets = taken.markers;
    rbtrackOffsets = taken.rigids;
    requestRepaint();
}

void TAVGraph::ClearTrackOffsets()
{
    trackOffsets.clear();
    rbtrackOffsets.clear();
}
