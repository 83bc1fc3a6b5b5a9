#include "host/tavview/graphpanel.h"

#include "modules/core/contract.h"
#include "host/tavview/moduleregistry.h"
#include "host/tavview/areas.h"
#include "host/tavview/filledmarks.h"
#include "host/tavview/selectionband.h"
#include "host/tavview/tracks.h"
#include "host/tavview/viewcamera.h"

#include "modules/core/framex.h"
#include "utils/saturate.h"

#include <QAction>
#include <QEvent>
#include <QMetaObject>
#include <QResizeEvent>

#include <algorithm>

namespace {
// What Range2D's "all frames" mode multiplies the value extent by.
const double allFramesWidening = 5.0;
// Fit's mode for FitFrames: the host's own, beside the graph's 1 and 2.
const int framesFit = 3;
} // namespace

GraphPanel::GraphPanel(const ModuleRegistry& registry, QWidget* windowParent, QObject* parent) : QObject(parent)
{
    glWindow = new GLWindow(windowParent);
    glWindow->installEventFilter(this);
    glView = new GLW(this);
    glView->rect = QRectF(0, 0, 1, 1);
    // Centred in x: jumping to an area of interest moves its start to the middle
    // of the view, with what leads up to it still in sight.
    glView->viewport.align = GL::AlignHCenter | GL::AlignBottom;
    glView->setProperty("visible", true);
    glWindow->AddView(glView);
    glWindow->SetCurrentView(glView);

    graphObject = registry.Create(QStringLiteral("TAVGraph"), this, "graph");
    if (!graphObject)
        return;
    // Send only what can be seen; the picture is the same.
    graphObject->setProperty(GraphProperty::fastDraw, true);
    // Every valid sample drawn, as the tooltip names them: the level-of-detail
    // filter would hide samples that moved less than a pixel, and its walk through
    // every sample before the view would make a long take slow to zoom.
    graphObject->setProperty(GraphProperty::LOD, false);

    QObject* g = graphObject;
    connect(glWindow, SIGNAL(Paint2D(GLW*)), g, SLOT(Draw2D(GLW*)));
    connect(g, SIGNAL(Seek(qint64, int)), this, SLOT(onSeek(qint64, int)));
    connect(g, SIGNAL(SelectionChanged(qint64, qint64)), this, SLOT(onSelectionChanged(qint64, qint64)));
    connect(g, SIGNAL(RegionChanged(qint64, qint64)), this, SLOT(onRegionChanged(qint64, qint64)));
    connect(g, SIGNAL(UpdateSelect(qint64, qint64)), this, SLOT(onUpdateSelect(qint64, qint64)));
    // The graph proposes a run as the selection; the host takes it as it is.
    connect(g, SIGNAL(Select(QRectF)), g, SLOT(Selected(QRectF)));
    connect(g, SIGNAL(Select(QRectF)), this, SLOT(onProposal(QRectF)));
    // After the graph's Draw2D: the band lies over what the graph drew.
    connect(glWindow, &GLWindow::Paint2D, this, &GraphPanel::drawOverlay);
    QMetaObject::invokeMethod(g, "Connected", Qt::DirectConnection, Q_ARG(GLW*, glView.data()));
    takeOverAreaActions();
    glWindow->AddContextMenuReceiver(g);
    watchOffsetActions();
}

// Connected after the graph's own bindings, so the mirror follows the graph.
void GraphPanel::watchOffsetActions()
{
    if (auto* a = glView->findChild<QAction*>(QLatin1String(GraphAction::updateOffsets)))
        connect(a, &QAction::triggered, this, &GraphPanel::takeOffsets);
    if (auto* a = glView->findChild<QAction*>(QLatin1String(GraphAction::clearOffsets)))
        connect(a, &QAction::triggered, this, &GraphPanel::clearOffsets);
}

void GraphPanel::takeOffsets()
{
    const qint64 index = saturate_cast<qint64>(glView->Cursor().x);
    offsets = offsetsAt(trackStore, offsetFrame(index, info.size(), info.start), framePeriod(info.freq));
}

void GraphPanel::clearOffsets() { offsets = TrackOffsets(); }

GraphPanel::~GraphPanel()
{
    delete graphObject;
    if (glWindow && !glWindow->parent()) {
        glWindow->removeEventFilter(this);
        delete glWindow;
    }
}

void GraphPanel::SetTake(const Take& take)
{
    currentTake = take;
    // Offsets are a position of the old take's tracks; the graph keeps them through
    // new data until told.
    if (graphObject)
        QMetaObject::invokeMethod(graphObject.data(), "ClearTrackOffsets", Qt::DirectConnection);
    clearOffsets();
    // The graph draws samples at their time less offsetX, as frame numbers, but
    // steps through runs in units of its period (1e6 / freq). The two agree only
    // for offsetX 0 and period 1, and the store needs sample time = frame index
    // anyway (write-back and swap use it). So the graph sees frames numbered from
    // 0 and no rate; the real rate and first frame number stay with the take and
    // are shown by tavview itself.
    info = FramesInfo(0, take.frameCount(), 0, take.frameCount(), 0, 0.f);
    info.loop = true;
    selFirst = selLast = -1;
    honouredFirst = honouredLast = -1;
    selection = TrackSelection();
    shownSamples = nullptr;
    trackStore = TAV::Frames();
    sendFramesInfo();
    SetTrackSelection(TrackSelection());
    emit TakeChanged();
    // A hidden window keeps the fit for when it is first shown at its size.
    Fit(2);
}

void GraphPanel::SetTrackSelection(const TrackSelection& s)
{
    selection = s;
    if (shownSamples) {
        Take shown = currentTake;
        shown.frames = *shownSamples;
        buildTracks(shown, selection, trackStore);
    } else {
        buildTracks(currentTake, selection, trackStore);
    }
    if (graphObject) {
        // Each of these slots rebuilds the graph's runs. The lists go over while the
        // graph holds no tracks, so only the last call, with the new tracks, has work.
        QObject* g = graphObject;
        TAV::Frames none;
        QMetaObject::invokeMethod(g, "SetTracks", Qt::DirectConnection, Q_ARG(TAV::Frames*, &none));
        QMetaObject::invokeMethod(g, "SetTrackSelection", Qt::DirectConnection, Q_ARG(QList<int>, s.markers),
                                  Q_ARG(QString, QStringLiteral("markers")));
        QMetaObject::invokeMethod(g, "SetTrackSelection", Qt::DirectConnection, Q_ARG(QList<int>, s.rigids),
                                  Q_ARG(QString, QStringLiteral("rigids")));
        QMetaObject::invokeMethod(g, "SetTracks", Qt::DirectConnection, Q_ARG(TAV::Frames*, &trackStore));
    }
    filled = filledStretches(trackStore);
    emit RunsChanged();
}

void GraphPanel::TakeEdited()
{
    SetTrackSelection(selection);
    Repaint();
}

void GraphPanel::ShowSamples(const TAV::Frames* frames)
{
    shownSamples = frames;
    TakeEdited();
}

int GraphPanel::jumpMask() const
{
    return graphObject ? graphObject->property(GraphProperty::jumpMask).toInt() : 0;
}

QRectF GraphPanel::DataRange(int mode) const
{
    QRectF rect;
    if (!graphObject)
        return rect;
    QMetaObject::invokeMethod(graphObject.data(), "Range2D", Qt::DirectConnection, Q_ARG(QRectF*, &rect),
                              Q_ARG(int, mode));
    // The graph widens the values of all frames five-fold about zero, on purpose;
    // fitting all frames wants the data's own height.
    if (mode == 1 && rect.height() != 0) {
        rect.setTop(rect.top() / allFramesWidening);
        rect.setBottom(rect.bottom() / allFramesWidening);
    }
    // No sample to fit: the graph's own value range, which it keeps for its host.
    if (rect.height() == 0) {
        rect.setTop(graphObject->property(GraphProperty::maximumY).toDouble());
        rect.setBottom(graphObject->property(GraphProperty::minimumY).toDouble());
    }
    return rect;
}

void GraphPanel::sendFramesInfo()
{
    if (graphObject)
        QMetaObject::invokeMethod(graphObject.data(), "SetFramesInfo", Qt::DirectConnection,
                                  Q_ARG(FramesInfo*, &info));
    Repaint();
}

void GraphPanel::Repaint()
{
    if (glWindow)
        ++glWindow->update;
}

void GraphPanel::SeekFrame(qint64 index)
{
    const qint64 old = info.current;
    info.Seek(index, 0);
    if (info.current == old)
        return;
    sendFramesInfo();
    emit CursorMoved(info.current);
}

void GraphPanel::StepFrames(qint64 n)
{
    const qint64 old = info.current;
    info.Step(n);
    if (info.current == old)
        return;
    sendFramesInfo();
    emit CursorMoved(info.current);
}

void GraphPanel::Fit(int mode)
{
    if (!glWindow || !glWindow->isVisible() || glView->width() < 2 || glView->height() < 2) {
        pendingFit = mode;
        return;
    }
    fitNow(mode);
}

void GraphPanel::FitFrames(qint64 first, qint64 last)
{
    fitFirst = first;
    fitLast = last;
    Fit(framesFit);
}

void GraphPanel::fitNow(int mode)
{
    pendingFit = 0;
    if (currentTake.frameCount() == 0)
        return;
    QRectF data = DataRange(mode == framesFit ? 1 : mode);
    if (mode == framesFit) {
        data.setLeft(double(fitFirst));
        data.setRight(double(fitLast));
    }
    fitViewport(glView->viewport, data, int(glView->width()), int(glView->height()));
    laidOutFor = glWindow->size();
    Repaint();
}

void GraphPanel::SelectFrames(double first, double last)
{
    if (graphObject)
        QMetaObject::invokeMethod(graphObject.data(), "Selected", Qt::DirectConnection,
                                  Q_ARG(QRectF, QRectF(first, 0, last - first, 0)));
}

void GraphPanel::ShowFrames(qint64 first, qint64 last)
{
    revealRange(glView->viewport, double(first), double(last), int(glView->width()));
    Repaint();
}

// The view's actions call the graph directly; these two go through the panel.
void GraphPanel::takeOverAreaActions()
{
    QObject* g = graphObject;
    const struct {
        const char* name;
        const char* slot;
        bool forward;
    } actions[] = {{GraphAction::nextAOI, SLOT(NextAOI()), true}, {GraphAction::prevAOI, SLOT(PrevAOI()), false}};
    for (const auto& a : actions)
        for (QAction* action : glView->findChildren<QAction*>(QString::fromLatin1(a.name))) {
            disconnect(action, SIGNAL(triggered(bool)), g, a.slot);
            const bool forward = a.forward;
            connect(action, &QAction::triggered, this, [this, forward] { StepArea(forward); });
        }
}

void GraphPanel::StepArea(bool forward)
{
    if (!graphObject || !glView)
        return;
    GL::Viewport& vp = glView->viewport;
    const float before = vp.pos.x;
    const float from = float(info.current);
    vp.pos.x = from;
    proposal = QRectF();
    QMetaObject::invokeMethod(graphObject.data(), forward ? "NextAOI" : "PrevAOI", Qt::DirectConnection);
    const float landed = vp.pos.x;
    // The graph pans its reference point; the host's view keeps its own place
    // and only follows when the area is out of sight.
    vp.pos.x = before;
    if (landed == from) {
        Repaint();
        return;
    }
    const qint64 first = qint64(landed);
    const qint64 last = proposal.isNull() ? first : std::max(first, qint64(proposal.right()) - 2);
    ShowFrames(first, last);
    SeekFrame(first);
}

void GraphPanel::onProposal(const QRectF& run) { proposal = run; }

bool GraphPanel::selectionShown() const
{
    return selFirst >= 0 && selLast >= selFirst && !(selFirst == 0 && selLast >= currentTake.frameCount() - 1);
}

void GraphPanel::drawOverlay(GLW* v)
{
    if (v != glView)
        return;
    drawFilledMarks(v, filled);
    if (selectionShown())
        drawSelectionBand(v, double(selFirst), double(selLast));
}

void GraphPanel::onSeek(qint64 frame, int offset) { SeekFrame(frame + offset); }

void GraphPanel::onSelectionChanged(qint64 first, qint64 last)
{
    selFirst = first;
    selLast = last;
    Repaint();
    emit SelectionChanged(first, last);
}

void GraphPanel::onRegionChanged(qint64 first, qint64 last) { emit RegionChanged(first, last); }

// The graph reports the host's working range (head, tail; tail exclusive) as a
// selection to take. Taken once per new range: a cursor move reports the same
// range again and must not undo a selection the user made since.
void GraphPanel::onUpdateSelect(qint64 first, qint64 last)
{
    if (first == honouredFirst && last == honouredLast)
        return;
    honouredFirst = first;
    honouredLast = last;
    SelectFrames(double(first), double(last - 1));
}

bool GraphPanel::eventFilter(QObject* watched, QEvent* event)
{
    // The type first: a window being destroyed still sends events, and comparing
    // with the guarded pointer would cast what is no longer a GLWindow.
    if (event->type() == QEvent::Resize && watched == glWindow) {
        const auto* e = static_cast<QResizeEvent*>(event);
        if (pendingFit && e->size().width() >= 2 && e->size().height() >= 2)
            fitNow(pendingFit);
        else
            keepRangeOnResize(e->size());
    }
    return QObject::eventFilter(watched, event);
}

// A resized window shows the same data range, stretched.
void GraphPanel::keepRangeOnResize(const QSize& newSize)
{
    const QSize oldSize = laidOutFor;
    if (!oldSize.isValid() || oldSize.width() < 2 || oldSize.height() < 2 || newSize.width() < 2 ||
        newSize.height() < 2)
        return;
    laidOutFor = newSize;
    GL::Viewport& vp = glView->viewport;
    const double l = vp.Left(oldSize.width()), r = vp.Right(oldSize.width());
    const double b = vp.Bottom(oldSize.height()), t = vp.Top(oldSize.height());
    fitViewportExact(vp, l, r, b, t, newSize.width(), newSize.height());
    Repaint();
}
