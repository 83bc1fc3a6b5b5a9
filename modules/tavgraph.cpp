// The graph object's construction, its view guard and repaint request, and the
// small slots that only store a value or ask for a repaint.
#include "modules/tavgraph.h"

#include "utils/saturate.h"

TAVGraph::TAVGraph(QObject* parent, const char* name) : QObject(parent)
{
    setObjectName(name ? QString(name) : QString());
    setProperty<bool>("enableMarkers", true);
    setProperty<bool>("enableRigids", true);
    setProperty<bool>("enableFill", true);
    setProperty<bool>("enableRGB", false);
    setProperty<int>("axisMask", 7);
    setProperty<bool>("modifyRegion", true);
    setProperty<int>("pointSize", 2);
    setProperty<int>("pointSizeMin", 2);
    setProperty<int>("pointSizeMax", 5);
    setProperty<float>("maximumY", 100.0f);
    setProperty<float>("minimumY", -100.0f);
    setProperty<bool>("LOD", true);
    setProperty<float>("linesLODpx", 0.25f);
    setProperty<int>("jumpMask", 10);
    setProperty<float>("hoverDistance", 8.0f);
}

TAVGraph::~TAVGraph() = default;

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
    period = framesInfo.freq > 0.0f ? 1000000.0 / double(framesInfo.freq) : 1.0;
    if (isValidRange(int(framesInfo.head), int(framesInfo.tail))) {
        const qint64 head = sub64(framesInfo.head, framesInfo.start);
        const qint64 tail = sub64(framesInfo.tail, framesInfo.start);
        emit UpdateSelect(head, tail);
    }
}

void TAVGraph::Init() {}

void TAVGraph::Pick2D(GLW*) {}

void TAVGraph::ModifyRegion(bool state) { setProperty<bool>("modifyRegion", state); }

void TAVGraph::GLWUpdate(FramesInfo*) { Redraw(true); }

void TAVGraph::Redraw(bool) { requestRepaint(); }

void TAVGraph::ToggleDrawOriginal(bool b)
{
    setProperty<bool>("drawOrig", b);
    emit EnableOriginal(b);
    Redraw(true);
}

void TAVGraph::ToggleDrawTC(bool b)
{
    setProperty<bool>("drawTC", b);
    Redraw(true);
}

void TAVGraph::EnableMarkers(bool b)
{
    setProperty<bool>("enableMarkers", b);
    Redraw(true);
}

void TAVGraph::EnableRigids(bool b)
{
    setProperty<bool>("enableRigids", b);
    Redraw(true);
}

void TAVGraph::ToggleDrawAngles(bool b)
{
    setProperty<bool>("drawRBAxisAngle", b);
    Redraw(true);
}
