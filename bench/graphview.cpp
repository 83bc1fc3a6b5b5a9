#include "bench/graphview.h"

#include "modules/core/contract.h"
#include "host/tavview/viewcamera.h"

QString caseName(const PaintCase& c)
{
    const char* style = c.style == PaintStyle::Lines ? "lines" : c.style == PaintStyle::Runs ? "runs" : "points";
    return QStringLiteral("%1/%2/%3").arg(c.fast ? "fast" : "exact", style, c.zoomedIn ? "in" : "out");
}

std::vector<PaintCase> paintCases()
{
    std::vector<PaintCase> cases;
    for (PaintStyle style : {PaintStyle::Points, PaintStyle::Lines})
        for (bool zoomedIn : {false, true})
            for (bool fast : {false, true})
                cases.push_back(PaintCase{fast, style, zoomedIn});
    for (bool zoomedIn : {false, true})
        cases.push_back(PaintCase{true, PaintStyle::Runs, zoomedIn});
    return cases;
}

GraphView::GraphView(bool withWindow) : glView(new GLW), graphObject(new TAVGraph)
{
    // As tavview's panel sets its view: centred in x, data from the bottom edge.
    glView->viewport.align = GL::AlignHCenter | GL::AlignBottom;
    glView->setProperty("visible", true);
    if (withWindow) {
        glWindow.reset(new GLWindow);
        glWindow->resize(PaintWidth, PaintHeight);
        glView->rect = QRectF(0, 0, 1, 1);
        glWindow->AddView(glView.get());
        glWindow->SetCurrentView(glView.get());
        QObject::connect(glWindow.get(), &GLWindow::Paint2D, graphObject.get(), &TAVGraph::Draw2D);
    } else {
        glView->rect = QRectF(0, 0, PaintWidth, PaintHeight);
    }
    TAVGraph* g = graphObject.get();
    defaultLinesLOD = g->property<float>(GraphProperty::linesLODpx);
    QObject::connect(g, &TAVGraph::Select, g, &TAVGraph::Selected);
    g->Connected(glView.get());
}

GraphView::~GraphView()
{
    // The graph first: it holds actions on the view and window.
    graphObject.reset();
    glView.reset();
    glWindow.reset();
}

void GraphView::load(TAV::Frames& tracks, int frames, const TrackSelection& selection)
{
    frameCount = frames;
    info = FramesInfo(0, frames, 0, frames, 0, 0.f);
    info.loop = true;
    TAVGraph& g = *graphObject;
    g.SetFramesInfo(&info);
    g.SetTrackSelection(selection.markers, QStringLiteral("markers"));
    g.SetTrackSelection(selection.rigids, QStringLiteral("rigids"));
    g.SetTracks(&tracks);
    whole = QRectF();
    g.Range2D(&whole, 1);
}

void GraphView::setUp(const PaintCase& c)
{
    TAVGraph& g = *graphObject;
    g.setProperty<bool>(GraphProperty::fastDraw, c.fast);
    g.setProperty<float>(GraphProperty::linesLODpx, c.style == PaintStyle::Lines ? 1e9f : defaultLinesLOD);
    g.setProperty<bool>(GraphProperty::enableMarkers, c.style != PaintStyle::Runs);
    g.setProperty<bool>(GraphProperty::enableRigids, c.style != PaintStyle::Runs);
    GL::Viewport& vp = glView->viewport;
    fitViewport(vp, whole, PaintWidth, PaintHeight);
    if (c.zoomedIn) {
        // The same heights, ZoomedInFrames frames from the middle of the take.
        const double first = double(frameCount / 2 - ZoomedInFrames / 2);
        fitViewportExact(vp, first, first + ZoomedInFrames - 1, vp.Bottom(PaintHeight), vp.Top(PaintHeight),
                         PaintWidth, PaintHeight);
    }
}

void GraphView::showData(const QRectF& data)
{
    fitViewportExact(glView->viewport, data.left(), data.right(), data.top(), data.bottom(), PaintWidth, PaintHeight);
}

QRectF GraphView::shown() const
{
    const GL::Viewport& vp = glView->viewport;
    const double left = vp.Left(PaintWidth), right = vp.Right(PaintWidth);
    const double bottom = vp.Bottom(PaintHeight), top = vp.Top(PaintHeight);
    return QRectF(left, bottom, right - left, top - bottom);
}

QImage GraphView::grab()
{
    QImage image(PaintWidth, PaintHeight, QImage::Format_RGBA8888);
    const auto read = QObject::connect(glWindow.get(), &GLWindow::Paint2D, [&image](GLW*) {
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(0, 0, PaintWidth, PaintHeight, GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
    });
    glWindow->updateGL();
    QObject::disconnect(read);
    return image.mirrored(); // GL rows run bottom up
}
