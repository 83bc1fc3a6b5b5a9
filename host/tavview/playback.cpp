#include "host/tavview/playback.h"

#include "host/tavview/graphpanel.h"

#include <cmath>

namespace {
// Often enough for 200 Hz takes; faster takes skip frames between repaints.
const int tickMs = 5;
} // namespace

Playback::Playback(GraphPanel* panel) : QObject(panel), panel(panel)
{
    timer.setInterval(tickMs);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &Playback::tick);
    if (panel)
        connect(panel, &GraphPanel::TakeChanged, this, &Playback::Stop);
}

void Playback::Play()
{
    if (isPlaying() || !panel || panel->take().frameCount() < 2 || !(panel->take().rate > 0))
        return;
    framesPlayed = 0;
    clock.start();
    timer.start();
    emit PlayingChanged(true);
}

void Playback::Stop()
{
    if (!isPlaying())
        return;
    timer.stop();
    emit PlayingChanged(false);
}

void Playback::Toggle() { isPlaying() ? Stop() : Play(); }

void Playback::tick()
{
    if (!panel) {
        Stop();
        return;
    }
    const qint64 due = qint64(std::floor(clock.nsecsElapsed() * 1e-9 * panel->take().rate));
    if (due > framesPlayed) {
        panel->StepFrames(due - framesPlayed);
        panel->ShowFrames(panel->current(), panel->current());
        framesPlayed = due;
    }
}
