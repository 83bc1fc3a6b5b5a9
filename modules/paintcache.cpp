#include "modules/paintcache.h"

#include "GL/gl.h"
#include "modules/tavgraph.h"

#include <QOpenGLContext>

#include <algorithm>

FastPaintInputs FastPaintInputs::of(const TAVGraph& g, const GLW& glw, const Coverage& coverage)
{
    FastPaintInputs in;
    in.tracks = g.tracks;
    in.markers = g.markers;
    in.rigids = g.rigids;
    in.trackOffsets = g.trackOffsets;
    in.rbtrackOffsets = g.rbtrackOffsets;
    in.regions = g.regions;
    in.framesInfo = g.framesInfo;
    in.framesInfo.current = 0;
    in.period = g.period;
    in.offsetX = g.offsetX;
    in.propertyNames = g.dynamicPropertyNames();
    for (const QByteArray& name : qAsConst(in.propertyNames))
        in.propertyValues.append(g.property(name.constData()));
    in.view = &glw;
    const GL::Viewport& v = glw.viewport;
    const double viewport[7] = {v.pos.x, v.pos.y, v.scale.x, v.scale.y, glw.width(), glw.height(), double(v.align)};
    std::copy(viewport, viewport + 7, in.viewport);
    in.map = coverage.windowMap();
    in.pixels = coverage.pixels();
    in.margin = coverage.margin();
    return in;
}

bool FastPaintInputs::operator==(const FastPaintInputs& o) const
{
    // Runs compare with their type, which std::pair's comparison leaves out.
    const auto sameRuns = [](const Regions& a, const Regions& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const Pair& p, const Pair& q) { return p == q && p.type == q.type; });
    };
    return tracks.constData() == o.tracks.constData() && tracks.size() == o.tracks.size() && markers == o.markers &&
           rigids == o.rigids && trackOffsets == o.trackOffsets && rbtrackOffsets == o.rbtrackOffsets &&
           sameRuns(regions, o.regions) && framesInfo == o.framesInfo && period == o.period && offsetX == o.offsetX &&
           propertyNames == o.propertyNames && propertyValues == o.propertyValues && view == o.view &&
           std::equal(viewport, viewport + 7, o.viewport) && map == o.map && pixels == o.pixels && margin == o.margin;
}

FastPaintCache::~FastPaintCache()
{
    // The list belongs to its context; it can only be deleted while that is current,
    // and goes with the context otherwise.
    if (list && context && QOpenGLContext::currentContext() == context)
        glDeleteLists(list, 1);
}

bool FastPaintCache::replayOrRecord(FastPaintInputs inputs)
{
    QOpenGLContext* current = QOpenGLContext::currentContext();
    if (!current)
        return false;
    if (current != context) {
        context = current;
        list = 0;
        valid = seen = false;
    }
    if (valid && kept == inputs) {
        glCallList(list);
        return true;
    }
    // Recording costs as much again as the paint: only the second paint from the
    // same inputs is recorded, so that panning and zooming never pay for it.
    const bool again = seen && kept == inputs;
    valid = false;
    seen = true;
    kept = std::move(inputs);
    if (!again)
        return false;
    if (!list)
        list = glGenLists(1);
    if (!list)
        return false;
    glNewList(list, GL_COMPILE_AND_EXECUTE);
    recording = true;
    return false;
}

void FastPaintCache::endRecording()
{
    if (!recording)
        return;
    glEndList();
    recording = false;
    valid = true;
}

void FastPaintCache::forget()
{
    valid = seen = false;
    kept = FastPaintInputs();
}
