// The graph object's construction, its view guard and repaint request, and the
// small slots that only store a value or ask for a repaint.
#include "modules/tavgraph.h"
#include "modules/paintcache.h"
#include "modules/trackindex.h"

#include "modules/core/contract.h"
#include "modules/core/framex.h"

TAVGraph::TAVGraph(QObject* parent, const char* name) : QObject(parent)
{
    setObjectName(name ? QString(name) : QString());
    for (const PropertyDefault& p : graphPropertyDefaults)
        QObject::setProperty(p.name, p.variant());
}

TAVGraph::~TAVGraph() = default;

void TAVGraph::forgetFastPaint()
{
    if (fastPaint)
        fastPaint->forget();
}

GLW* TAVGraph::liveView() const { return glw.data(); }

GLWindow* TAVGraph::liveWindow() const
{
    GLW* view = liveView();
    return view ? view->gl.data() : nullptr;
}

void TAVGraph::requestRepaint()
{
    // Looked up afresh on every call: a handler of a signal emitted just before may
    // have destroyed the view or its window.
    if (GLWindow* window = liveWindow())
        window->update += 1;
}

void TAVGraph::SetFramesInfo(FramesInfo* info)
{
    if (!info)
        return;
    framesInfo = *info;
    offsetX = framesInfo.start;
    period = framePeriod(framesInfo.freq);
    if (isValidRange(int(framesInfo.head), int(framesInfo.tail))) {
        const qint64 head = frameX(framesInfo.head, offsetX);
        const qint64 tail = frameX(framesInfo.tail, offsetX);
        emit UpdateSelect(head, tail);
    }
}

void TAVGraph::Init() {}

void TAVGraph::Pick2D(GLW*) {}

void TAVGraph::ModifyRegion(bool state) { setProperty<bool>(GraphProperty::modifyRegion, state); }

void TAVGraph::GLWUpdate(FramesInfo*) { Redraw(true); }

void TAVGraph::Redraw(bool) { requestRepaint(); }

void TAVGraph::ToggleDrawOriginal(bool b)
{
    setProperty<bool>(GraphProperty::drawOrig, b);
    emit EnableOriginal(b);
    Redraw(true);
}

void TAVGraph::ToggleDrawTC(bool b)
{
    setProperty<bool>(GraphProperty::drawTC, b);
    Redraw(true);
}

void TAVGraph::EnableMarkers(bool b)
{
    setProperty<bool>(GraphProperty::enableMarkers, b);
    Redraw(true);
}

void TAVGraph::EnableRigids(bool b)
{
    setProperty<bool>(GraphProperty::enableRigids, b);
    Redraw(true);
}

void TAVGraph::ToggleDrawAngles(bool b)
{
    setProperty<bool>(GraphProperty::drawRBAxisAngle, b);
    Redraw(true);
}
