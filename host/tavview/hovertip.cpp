#include "host/tavview/hovertip.h"

#include "host/tavview/graphpanel.h"

#include <QAction>
#include <QHelpEvent>
#include <QToolTip>

HoverTip::HoverTip(GraphPanel* p) : QObject(p), panel(p)
{
    if (p->window())
        p->window()->installEventFilter(this);
    watchActions();
    // New tracks do not move the graph's offsets, but a new take clears what they refer to.
    connect(p, &GraphPanel::TakeChanged, this, &HoverTip::clearOffsets);
}

void HoverTip::watchActions()
{
    GLW* view = panel->view();
    if (!view)
        return;
    if (auto* a = view->findChild<QAction*>(QStringLiteral("updateoffsets")))
        connect(a, &QAction::triggered, this, &HoverTip::takeOffsets);
    if (auto* a = view->findChild<QAction*>(QStringLiteral("clearoffsets")))
        connect(a, &QAction::triggered, this, &HoverTip::clearOffsets);
}

// As the graph does: the frame under the mouse, truncated, within the take.
void HoverTip::takeOffsets()
{
    const qint64 index = qint64(panel->view()->Cursor().x);
    trackOffsets = offsetsAt(panel->tracks(), index, panel->take().frameCount());
}

void HoverTip::clearOffsets() { trackOffsets = TrackOffsets(); }

QString HoverTip::TextAt(const QPoint& widgetPos) const
{
    QObject* graph = panel ? panel->graph() : nullptr;
    GLW* view = panel ? panel->view() : nullptr;
    if (!graph || !view || view->width() < 2 || view->height() < 2)
        return QString();
    ShownTracks shown;
    shown.markers = panel->trackSelection().markers;
    shown.rigids = panel->trackSelection().rigids;
    shown.enableMarkers = graph->property("enableMarkers").toBool();
    shown.enableRigids = graph->property("enableRigids").toBool();
    shown.enableFill = graph->property("enableFill").toBool();
    shown.axisMask = graph->property("axisMask").toInt();
    shown.offsets = trackOffsets;
    const int w = int(view->width()), h = int(view->height());
    const QPointF mouse(widgetPos.x(), h - 1 - widgetPos.y());
    const HoverHit hit = pickSample(panel->tracks(), shown, pixelMap(view->viewport, w, h), mouse,
                                    graph->property("hoverDistance").toDouble());
    if (!hit.found)
        return QString();
    const Take& take = panel->take();
    const QString name = hit.rigid ? rigidLabel(take, hit.id) : markerLabel(take, hit.id);
    return hoverText(hit, name, take.units, timeScale);
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
