#include "host/tavview/hovertip.h"

#include "modules/core/contract.h"
#include "host/tavview/graphpanel.h"

#include <QHelpEvent>
#include <QToolTip>

HoverTip::HoverTip(GraphPanel* p) : QObject(p), panel(p)
{
    if (p->window())
        p->window()->installEventFilter(this);
}

QString HoverTip::TextAt(const QPoint& widgetPos) const
{
    QObject* graph = panel ? panel->graph() : nullptr;
    GLW* view = panel ? panel->view() : nullptr;
    if (!graph || !view)
        return QString();
    ShownTracks shown;
    shown.markers = panel->trackSelection().markers;
    shown.rigids = panel->trackSelection().rigids;
    shown.enableMarkers = graph->property(GraphProperty::enableMarkers).toBool();
    shown.enableRigids = graph->property(GraphProperty::enableRigids).toBool();
    shown.enableFill = graph->property(GraphProperty::enableFill).toBool();
    shown.axisMask = graph->property(GraphProperty::axisMask).toInt();
    shown.offsetX = panel->framesInfo().start;
    shown.offsets = panel->trackOffsets();
    const int w = int(view->width()), h = int(view->height());
    const QPointF mouse(widgetPos.x(), h - 1 - widgetPos.y());
    const HoverHit hit = pickSample(panel->tracks(), shown, pixelMap(view->viewport, w, h), mouse,
                                    graph->property(GraphProperty::hoverDistance).toDouble());
    if (!hit.found)
        return QString();
    const Take& take = panel->take();
    const QString name = hit.rigid ? rigidLabel(take, hit.id) : markerLabel(take, hit.id);
    return hoverText(hit, name, hit.rigid ? take.units : markerUnits(take, hit.id), timeScale);
}

bool HoverTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ToolTip && panel && watched == panel->window()) {
        auto* e = static_cast<QHelpEvent*>(event);
        const QString text = TextAt(e->pos());
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(e->globalPos(), text, panel->window(), QRect(e->pos() - QPoint(4, 4), QSize(9, 9)));
        return true;
    }
    return QObject::eventFilter(watched, event);
}
