#include "host/edit/spikes.h"

#include "host/edit/trackreader.h"

namespace {

// |p(f+1) - 2 p(f) + p(f-1)|, or -1 where one of the three is not valid.
double acceleration(const TrackReader& r, uint32_t id, int f)
{
    if (f < 1 || f + 1 >= r.frameCount() || !r.valid(id, f - 1) || !r.valid(id, f) || !r.valid(id, f + 1))
        return -1;
    return (r.position(id, f + 1) - 2 * r.position(id, f) + r.position(id, f - 1)).norm();
}

} // namespace

std::vector<int> spikeFrames(const TAV::Frames& take, uint32_t id, double threshold)
{
    std::vector<int> frames;
    const TrackReader r(take);
    double previous = -1, here = acceleration(r, id, 0);
    for (int f = 0; f < r.frameCount(); ++f) {
        const double next = acceleration(r, id, f + 1);
        if (here > threshold && here >= previous && here >= next)
            frames.push_back(f);
        previous = here;
        here = next;
    }
    return frames;
}

std::vector<FrameSpan> spikeSpans(const std::vector<int>& frames)
{
    std::vector<FrameSpan> spans;
    for (int f : frames) {
        if (!spans.empty() && spans.back().last + 1 == f)
            spans.back().last = f;
        else
            spans.push_back(FrameSpan{f, f});
    }
    return spans;
}
