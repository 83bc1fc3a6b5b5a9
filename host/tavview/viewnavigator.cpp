#include "host/tavview/viewnavigator.h"

#include "host/tavview/graphpanel.h"
#include "host/tavview/viewcamera.h"

#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include <cmath>

namespace {
// One wheel notch (120 units) zooms by 1.25 and scrolls a tenth of the view.
const double zoomPerNotch = 1.25;
const double scrollPerNotch = 0.1;
// A shorter band is taken for a click.
const int minimumBand = 3;
} // namespace

ViewNavigator::ViewNavigator(GraphPanel* panel) : QObject(panel), panel(panel)
{
    if (panel && panel->window())
        panel->window()->installEventFilter(this);
}

bool ViewNavigator::eventFilter(QObject* watched, QEvent* event)
{
    // Only input events are looked at (and only then is the window compared):
    // a window being destroyed still sends others.
    const QEvent::Type type = event->type();
    if (type != QEvent::Wheel && type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return QObject::eventFilter(watched, event);
    if (!panel || watched != panel->window())
        return QObject::eventFilter(watched, event);
    switch (type) {
    case QEvent::Wheel:
        wheel(static_cast<QWheelEvent*>(event));
        return true;
    case QEvent::MouseButtonPress:
        press(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        move(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        release(static_cast<QMouseEvent*>(event));
        break;
    default:
        break;
    }
    // The window still sees every mouse event: it keeps the mouse state that the
    // graph reads and runs the graph's own mouse actions.
    return QObject::eventFilter(watched, event);
}

QPointF ViewNavigator::viewPixel(const QPointF& p) const
{
    return QPointF(p.x(), panel->window()->height() - 1 - p.y());
}

void ViewNavigator::wheel(QWheelEvent* e)
{
    const QPoint d = e->angleDelta();
    const int delta = d.y() != 0 ? d.y() : d.x();
    if (delta == 0)
        return;
    GLW* view = panel->view();
    const int w = int(view->width()), h = int(view->height());
    const double notches = delta / 120.0;
    const Qt::KeyboardModifiers mods = e->modifiers();
    if (mods & Qt::ShiftModifier) {
        panViewport(view->viewport, notches * scrollPerNotch * w, 0);
    } else {
        const double f = std::pow(zoomPerNotch, notches);
        const bool values = mods & Qt::ControlModifier;
        zoomViewport(view->viewport, values ? 1.0 : f, values ? f : 1.0, viewPixel(e->position()), w, h);
    }
    panel->Repaint();
}

void ViewNavigator::press(QMouseEvent* e)
{
    const Qt::KeyboardModifiers mods = e->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    origin = last = e->pos();
    if (e->button() == Qt::MiddleButton || (e->button() == Qt::LeftButton && mods == Qt::ControlModifier)) {
        drag = Drag::Pan;
    } else if (e->button() == Qt::LeftButton && mods == Qt::ShiftModifier) {
        drag = Drag::Band;
        if (!band)
            band = new QRubberBand(QRubberBand::Rectangle, panel->window());
        band->setGeometry(QRect(origin.x(), 0, 1, panel->window()->height()));
        band->show();
    }
}

void ViewNavigator::move(QMouseEvent* e)
{
    if (drag == Drag::Pan) {
        const QPoint d = e->pos() - last;
        panViewport(panel->view()->viewport, d.x(), -d.y());
        panel->Repaint();
    } else if (drag == Drag::Band) {
        const int x0 = std::min(origin.x(), e->pos().x()), x1 = std::max(origin.x(), e->pos().x());
        band->setGeometry(QRect(x0, 0, x1 - x0 + 1, panel->window()->height()));
    }
    last = e->pos();
}

void ViewNavigator::release(QMouseEvent* e)
{
    if (drag == Drag::Band) {
        band->hide();
        if (std::abs(e->pos().x() - origin.x()) >= minimumBand) {
            GLW* view = panel->view();
            const double a = view->Cursor(float(viewPixel(origin).x()), 0).x;
            const double b = view->Cursor(float(viewPixel(e->pos()).x()), 0).x;
            panel->SelectFrames(std::min(a, b), std::max(a, b));
        }
    }
    drag = Drag::None;
}
