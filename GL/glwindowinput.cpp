#include "GL/glwindow.h"

#include <QMouseEvent>

namespace {
// Bindings carry these modifiers only (not the keypad flag).
constexpr int bindingModifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
} // namespace

void GLWindow::trackMouse(QMouseEvent* e)
{
    const int x = e->x(), y = height() - 1 - e->y();
    const time_t t = time_t(e->timestamp());
    mouse.dx = x - mouse.x;
    mouse.dy = y - mouse.y;
    mouse.dt = t - mouse.t;
    mouse.x = x;
    mouse.y = y;
    mouse.t = t;
    mouse.button = int(e->buttons());
    mouse.modifier = int(e->modifiers()) & bindingModifiers;
    mouse.area = views().indexOf(viewAtWidgetPos(e->pos()));
}

void GLWindow::mousePressEvent(QMouseEvent* e)
{
    trackMouse(e);
    mouse.x0 = mouse.x;
    mouse.y0 = mouse.y;
    mouse.last_button = int(e->button());
    mouse.last_modifier = mouse.modifier;
    mouse.double_press = 0;
    mouse.double_click = 0;
    pressView = viewAtWidgetPos(e->pos());
    pressButton = int(e->button());
    pressBinding = quint32(pressButton) | quint32(mouse.modifier);
    if (pressView)
        pressView->MouseEvent(pressBinding, &mouse, true);
}

void GLWindow::mouseDoubleClickEvent(QMouseEvent* e)
{
    mousePressEvent(e);
    mouse.double_press = 1;
}

// A drag keeps the binding and view of its press, whatever the modifiers do meanwhile.
void GLWindow::mouseMoveEvent(QMouseEvent* e)
{
    trackMouse(e);
    if (pressView && (int(e->buttons()) & pressButton))
        pressView->MouseEvent(pressBinding, &mouse, true, true);
}

void GLWindow::mouseReleaseEvent(QMouseEvent* e)
{
    trackMouse(e);
    mouse.last_button = int(e->button());
    mouse.double_click = mouse.double_press;
    if (int(e->button()) != pressButton)
        return;
    const QPointer<GLW> view = pressView;
    pressView = nullptr;
    pressButton = 0;
    if (view)
        view->MouseEvent(pressBinding, &mouse, false);
}
