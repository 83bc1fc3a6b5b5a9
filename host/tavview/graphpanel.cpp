#include "host/tavview/graphpanel.h"

#include "host/tavview/moduleregistry.h"
#include "host/tavview/tracks.h"
#include "host/tavview/viewcamera.h"

#include <QEvent>
#include <QMetaObject>
#include <QResizeEvent>

#include <algorithm>

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
    graphObject->setProperty("fastDraw", true);

    QObject* g = graphObject;
    connect(glWindow, SIGNAL(Paint2D(GLW*)), g, SLOT(Draw2D(GLW*)));
    connect(g, SIGNAL(Seek(qint64, int)), this, SLOT(onSeek(qint64, int)));
    connect(g, SIGNAL(SelectionChanged(qint64, qint64)), this, SLOT(onSelectionChanged(qint64, qint64)));
    connect(g, SIGNAL(RegionChanged(qint64, qint64)), this, SLOT(onRegionChanged(qint64, qint64)));
    connect(g, SIGNAL(UpdateSelect(qint64, qint64)), this, SLOT(onUpdateSelect(qint64, qint64)));
    // The graph proposes a run as the selection; the host takes it as it is.
    connect(g, SIGNAL(Select(QRectF)), g, SLOT(Selected(QRectF)));
    QMetaObject::invokeMethod(g, "Connected", Qt::DirectConnection, Q_ARG(GLW*, glView.data()));
    glWindow->AddContextMenuReceiver(g);
}

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
    trackStore = TAV::Frames();
    pendingFit = 2;
    sendFramesInfo();
    SetTrackSelection(TrackSelection());
    emit TakeChanged();
    if (glWindow && glWindow->isVisible())
        Fit(2);
}

void GraphPanel::SetTrackSelection(const TrackSelection& s)
{
    selection = s;
    buildTracks(currentTake, selection, trackStore);
    if (graphObject) {
        QObject* g = graphObject;
        QMetaObject::invokeMethod(g, "SetTrackSelection", Qt::DirectConnection, Q_ARG(QList<int>, s.markers),
                                  Q_ARG(QString, QStringLiteral("markers")));
        QMetaObject::invokeMethod(g, "SetTrackSelection", Qt::DirectConnection, Q_ARG(QList<int>, s.rigids),
                                  Q_ARG(QString, QStringLiteral("rigids")));
        QMetaObject::invokeMethod(g, "SetTracks", Qt::DirectConnection, Q_ARG(TAV::Frames*, &trackStore));
    }
    emit RunsChanged();
}

int GraphPanel::jumpMask() const { return graphObject ? graphObject->property("jumpMask").toInt() : 0; }

QRectF GraphPanel::DataRange(int mode) const
{
    QRectF rect;
    if (!graphObject)
        return rect;
    QMetaObject::invokeMethod(graphObject.data(), "Range2D", Qt::DirectConnection, Q_ARG(QRectF*, &rect),
                              Q_ARG(int, mode));
    // No sample to fit: the graph's own value range, which it keeps for its host.
    if (rect.height() == 0) {
        rect.setTop(graphObject->property("maximumY").toDouble());
        rect.setBottom(graphObject->property("minimumY").toDouble());
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

void GraphPanel::fitNow(int mode)
{
    pendingFit = 0;
    if (currentTake.frameCount() == 0)
        return;
    fitViewport(glView->viewport, DataRange(mode), int(glView->width()), int(glView->height()));
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

void GraphPanel::onSeek(qint64 frame, int offset) { SeekFrame(frame + offset); }

void GraphPanel::onSelectionChanged(qint64 first, qint64 last)
{
    selFirst = first;
    selLast = last;
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
            keepRangeOnResize(e->oldSize(), e->size());
    }
    return QObject::eventFilter(watched, event);
}

// A resized window shows the same data range, stretched.
void GraphPanel::keepRangeOnResize(const QSize& oldSize, const QSize& newSize)
{
    if (!oldSize.isValid() || oldSize.width() < 2 || oldSize.height() < 2 || newSize.width() < 2 ||
        newSize.height() < 2)
        return;
    GL::Viewport& vp = glView->viewport;
    const double l = vp.Left(oldSize.width()), r = vp.Right(oldSize.width());
    const double b = vp.Bottom(oldSize.height()), t = vp.Top(oldSize.height());
    fitViewportExact(vp, l, r, b, t, newSize.width(), newSize.height());
    Repaint();
}
