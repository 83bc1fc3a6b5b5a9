#include "bench/stage.h"

#include "host/tavview/tracks.h"

#include <QGuiApplication>
#include <QTest>

Stage& Stage::instance()
{
    static Stage stage;
    return stage;
}

TakeShape Stage::shape(int frames)
{
    TakeShape s;
    s.frames = frames;
    return s;
}

void Stage::switchTo(int frames)
{
    if (frames == current)
        return;
    peerPlot.reset();
    graphWindow.reset();
    windowFailed = false;
    trackData.reset();
    takeData.reset();
    current = frames;
}

void Stage::release() { switchTo(-1); }

const Take& Stage::take(int frames)
{
    switchTo(frames);
    if (!takeData)
        takeData = std::make_unique<Take>(synthTake(shape(frames)));
    return *takeData;
}

TAV::Frames& Stage::tracks(int frames)
{
    switchTo(frames);
    if (!trackData) {
        trackData = std::make_unique<TAV::Frames>();
        if (takeData)
            buildTracks(*takeData, allTracks(shape(frames)), *trackData);
        else
            synthTracks(shape(frames), *trackData);
    }
    takeData.reset();
    return *trackData;
}

GraphView* Stage::window(int frames)
{
    TAV::Frames& t = tracks(frames);
    if (graphWindow || windowFailed)
        return graphWindow.get();
    windowFailed = true;
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return nullptr;
    auto view = std::make_unique<GraphView>(true);
    view->load(t, frames, allTracks(shape(frames)));
    GLWindow* w = view->window();
    w->show();
    if (!QTest::qWaitForWindowExposed(w) || !w->isValid() || w->width() != PaintWidth ||
        w->height() != PaintHeight)
        return nullptr;
    windowFailed = false;
    graphWindow = std::move(view);
    return graphWindow.get();
}

PeerPlot* Stage::peer(int frames, const QString& name)
{
    TAV::Frames& t = tracks(frames);
    if (peerPlot && peerPlot->name() == name)
        return peerPlot.get();
    peerPlot.reset();
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return nullptr;
    const TrackSelection all = allTracks(shape(frames));
    peerPlot = name == QLatin1String("qwt") ? makeQwtPlot(t, all) : makeCustomPlot(t, all);
    if (!peerPlot->show())
        peerPlot.reset();
    return peerPlot.get();
}
